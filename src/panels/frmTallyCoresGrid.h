// One family's grid of schedules on a logger's panel.
#pragma once

#include "panels/panel_rules.h"

#include <QObject>

#include <string_view>
#include <vector>

class QCheckBox;
class QGroupBox;
class QLineEdit;

namespace harvelop
{

// Finds its controls by their names: for the family "KR400" `chkKR400A`, …, `chkKR400Ulast_0`, …, `txtKR400_0`, … Its
// signals tell what the user does, never what Show does.
class ScheduleGrid : public QObject
{
    Q_OBJECT

public:
    // `letters` are those of the rows, `headings` is the last character of the headings' names: '5' or '8'.
    ScheduleGrid(QGroupBox& frame, const QString& family, std::string_view letters, char headings);

    int Rows() const { return static_cast<int>(m_rows.size()); }
    void Read(PanelValues& values) const;
    void Show(const PanelValues& values); // the boxes, and which of them the user may change

signals:
    void BoxClicked();  // of a row, of ULAST or CSV
    void HtmlClicked(); // an HTML box
    void RecordsChanged(QLineEdit* box);
    void HeadingClicked(harvelop::GridColumn column); // also the frame's background

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Row {
        QCheckBox* on;
        QCheckBox* ulast;
        QCheckBox* csv;
        QCheckBox* html;
        QLineEdit* records;
    };

    void connectRow(const Row& row);
    void connectHeading(const QString& name, GridColumn column);

    QGroupBox& m_frame;
    std::vector<Row> m_rows;
};

} // namespace harvelop
