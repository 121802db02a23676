// The two lists of the panel: mirrors of the program's ListState. The user's choice is written back; only a choice
// counts as a click, not a change of the lines.
#include "panels/frmOptions.h"
#include "panels/frmSupport.h"
#include "ui_frmOptions.h"

#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <utility>

namespace harvelop
{

namespace
{

QStringList linesOf(const ListState& list)
{
    QStringList lines;
    for (const auto& line : list.Lines())
        lines += ToQString(line);
    return lines;
}

// Shown in the empty list: what to do next.
QLabel* addEmptyHint(QListWidget& list)
{
    auto* hint = new QLabel(list.viewport());
    hint->setObjectName("lblEmpty");
    hint->setTextFormat(Qt::PlainText);
    hint->setWordWrap(true);
    hint->setAlignment(Qt::AlignCenter);
    hint->setForegroundRole(QPalette::Text); // not that of placeholders, which some dark themes leave black
    hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* layout = new QVBoxLayout(list.viewport());
    layout->addWidget(hint);
    return hint;
}

} // namespace

frmOptions::ListChange frmOptions::look(ListSeen& seen, const ListState& list)
{
    const ListSeen before = std::exchange(seen, {list.Lines(), list.Selected()});
    const bool lines = before.lines != seen.lines;
    return {lines, !lines && seen.selected >= 0 && seen.selected != before.selected};
}

void frmOptions::connectLists()
{
    ListState& ports = m_use.state.cbxUnload_Ports;
    ListState& tallyCores = m_use.state.cbxUnload_TallyCores;
    QLabel* hint = addEmptyHint(*m_ui->cbxUnload_TallyCores);
    hint->setText(ToQString(m_use.use.language.Text(555)).trimmed());

    ports.Changed = [this] { showPorts(); };
    tallyCores.Changed = [this] { showTallyCores(); };
    connect(m_ui->cbxUnload_Ports, &QComboBox::currentIndexChanged, this, [&ports](int row) { ports.Select(row); });
    connect(m_ui->cbxUnload_TallyCores, &QListWidget::currentRowChanged, this, [this, &tallyCores](int row) {
        // Moving through the list by the keys keeps the focus there; a click comes as one of its own.
        m_tallyCoresSeen.selected = row;
        tallyCores.Select(row);
    });
    connect(m_ui->cbxUnload_TallyCores, &QListWidget::itemClicked, this, &frmOptions::cbxUnload_TallyCores_Click);
    connect(m_ui->cbxUnload_TallyCores, &QListWidget::itemDoubleClicked, m_ui->cmdUnload_View, &QPushButton::click);
    showPorts();
    showTallyCores();
}

void frmOptions::showPorts()
{
    const ListState& ports = m_use.state.cbxUnload_Ports;
    const ListChange change = look(m_portsSeen, ports);
    QComboBox& box = *m_ui->cbxUnload_Ports;
    {
        const QSignalBlocker mirroring(box);
        if (change.lines) {
            box.clear();
            box.addItems(linesOf(ports));
        }
        box.setPlaceholderText(ToQString(ports.Text())); // a text that is none of the lines
        box.setCurrentIndex(ports.Selected());
    }
    if (change.choice && !m_use.state.SearchRunning)
        optionChanged();
}

void frmOptions::showTallyCores()
{
    const ListState& tallyCores = m_use.state.cbxUnload_TallyCores;
    const ListChange change = look(m_tallyCoresSeen, tallyCores);
    QListWidget& list = *m_ui->cbxUnload_TallyCores;
    {
        const QSignalBlocker mirroring(list);
        if (change.lines) {
            list.clear();
            list.addItems(linesOf(tallyCores));
        }
        list.setCurrentRow(tallyCores.Selected());
    }
    showEmptyHint();
    if (change.choice)
        cbxUnload_TallyCores_Click();
}

void frmOptions::showEmptyHint()
{
    const bool empty = m_use.state.cbxUnload_TallyCores.Count() == 0;
    m_ui->cbxUnload_TallyCores->findChild<QLabel*>("lblEmpty")->setVisible(empty && !m_use.state.SearchRunning);
}

void frmOptions::cbxUnload_TallyCores_Click()
{
    if (!m_use.state.SearchRunning && isVisible())
        m_ui->cmdUnload_View->setFocus();
}

bool frmOptions::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::EnabledChange) {
        // Whether Ok can be used tells whether work goes on, which is a reason for all.
        if (watched == m_ui->cmdOk)
            updateToolTips();
        else if (auto* control = qobject_cast<QWidget*>(watched))
            updateToolTip(*control);
    }
    // Enter in the list means View, not the window's default button.
    if (watched == m_ui->cbxUnload_TallyCores && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            m_ui->cmdUnload_View->click();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace harvelop
