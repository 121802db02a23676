// The upper pane of the terminal.
#pragma once

#include "terminal/terminal_rules.h"

#include <QGroupBox>
#include <QTimer>

#include <memory>
#include <string>

namespace Ui
{
class frmReceive;
}

namespace harvelop
{

// Shows everything the logger says, and stays where the user has scrolled to. Text is collected and shown in portions
// that leave the window time to answer, however fast it comes.
class frmReceive : public QGroupBox
{
    Q_OBJECT

public:
    explicit frmReceive(QWidget* parent = nullptr);
    ~frmReceive() override;

    void Append(const std::string& text);
    void Clear();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void ClearAsked(); // Alt+C

private:
    void showPortion();
    void showRows(const ReceivedRows::Rows& rows);

    std::unique_ptr<Ui::frmReceive> m_ui;
    QTimer m_timer;
    ReceivedRows m_rows;
    std::string m_waiting;     // collected, from `m_shown` on
    std::size_t m_shown = 0;   // how much of it is in the pane
    bool m_tailWaited = false; // a character's first bytes have been left for its others once
};

} // namespace harvelop
