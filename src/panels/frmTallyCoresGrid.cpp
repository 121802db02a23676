#include "panels/frmTallyCoresGrid.h"

#include "panels/frmSupport.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QToolButton>

namespace harvelop
{

namespace
{

void showBox(QCheckBox& box, bool checked, bool enabled, const char* whyNot)
{
    box.setChecked(checked);
    EnableWithReason(box, enabled, whyNot);
}

} // namespace

ScheduleGrid::ScheduleGrid(QGroupBox& frame, const QString& family, std::string_view letters, char headings)
    : QObject(&frame), m_frame(frame)
{
    const auto box = [&](const QString& name) { return frame.findChild<QCheckBox*>("chk" + family + name); };
    for (size_t i = 0; i < letters.size(); ++i) {
        const QString number = "_" + QString::number(i);
        const Row row = {box(QChar(letters[i])), box("Ulast" + number), box("CSV" + number), box("HTML" + number),
                         frame.findChild<QLineEdit*>("txt" + family + number)};
        constexpr int RecordsCharacters = 7;
        SetWidthInCharacters(*row.records, RecordsCharacters);
        connectRow(row);
        m_rows.push_back(row);
    }
    const QChar suffix(headings);
    connectHeading(QString("lblOn") + suffix, GridColumn::On);
    connectHeading((headings == '8' ? QString("lblULAST") : QString("lblUlast")) + suffix, GridColumn::Ulast);
    connectHeading(QString("lblCSV") + suffix, GridColumn::CSV);
    connectHeading(QString("lblHTML") + suffix, GridColumn::HTML);
    frame.installEventFilter(this);
}

void ScheduleGrid::connectRow(const Row& row)
{
    for (QCheckBox* box : {row.on, row.ulast, row.csv})
        connect(box, &QCheckBox::clicked, this, &ScheduleGrid::BoxClicked);
    connect(row.html, &QCheckBox::clicked, this, &ScheduleGrid::HtmlClicked);
    connect(row.records, &QLineEdit::textEdited, this, [this, box = row.records] { emit RecordsChanged(box); });
}

void ScheduleGrid::connectHeading(const QString& name, GridColumn column)
{
    connect(m_frame.findChild<QToolButton*>(name), &QToolButton::clicked, this,
            [this, column] { emit HeadingClicked(column); });
}

void ScheduleGrid::Read(PanelValues& values) const
{
    for (size_t i = 0; i < m_rows.size(); ++i) {
        values.on[i] = m_rows[i].on->isChecked();
        values.ulast[i] = m_rows[i].ulast->isChecked();
        values.csv[i] = m_rows[i].csv->isChecked();
        values.html[i] = m_rows[i].html->isChecked();
        values.records[i] = ToText(m_rows[i].records->text());
    }
}

void ScheduleGrid::Show(const PanelValues& values)
{
    for (size_t i = 0; i < m_rows.size(); ++i) {
        const Row& row = m_rows[i];
        const RowAccess access = AccessOf(values, static_cast<int>(i));
        const char* const heldByHtml = "HTML needs it.";
        row.on->setChecked(values.on[i]);
        row.html->setChecked(values.html[i]);
        showBox(*row.ulast, values.ulast[i], access.ulast, heldByHtml);
        showBox(*row.csv, values.csv[i], access.csv, values.html[i] ? heldByHtml : "The database needs it.");
        if (ToText(row.records->text()) != values.records[i]) // setting it would move the caret
            ShowStored(*row.records, values.records[i]);
        SetFieldEnabled(*row.records, access.records);
        EnableWithReason(*row.records, access.records, "Check HTML first.");
    }
}

bool ScheduleGrid::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_frame && event->type() == QEvent::MouseButtonRelease) {
        // A click on a disabled control also arrives here; only the background counts.
        const auto* mouse = static_cast<const QMouseEvent*>(event);
        const QPoint place = mouse->position().toPoint();
        if (mouse->button() == Qt::LeftButton && m_frame.rect().contains(place) && !m_frame.childAt(place))
            emit HeadingClicked(GridColumn::On);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace harvelop
