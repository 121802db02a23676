// The lower pane of the terminal.
#pragma once

#include "terminal/terminal_rules.h"

#include <QGroupBox>

#include <memory>
#include <string>

class QKeyEvent;

namespace Ui
{
class frmTransmit;
}

namespace harvelop
{

// A small editor from which lines are sent. Its keys work when they are released, and only if they were pressed here:
// the Enter that dismissed a box is none of ours.
class frmTransmit : public QGroupBox
{
    Q_OBJECT

public:
    explicit frmTransmit(QWidget* parent = nullptr);
    ~frmTransmit() override;

    void Clear();
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void Sent(const std::string& text); // to be sent as one line

private:
    using Rule = SendOutcome (*)(const SendPane&);
    static Rule ruleOf(const QKeyEvent& key); // nullptr: the key belongs to the editor
    void apply(Rule rule);

    std::unique_ptr<Ui::frmTransmit> m_ui;
    int m_pressed = 0; // the key of ours that is down
};

} // namespace harvelop
