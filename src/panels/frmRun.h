// What happens after an unload: a program is run, or a command sent to the logger.
#pragma once

#include "identify/panel_steps.h"

#include <QDialog>

#include <memory>

namespace Ui
{
class frmRun;
}

namespace harvelop
{

// Edits `LoggerRunProgram` or `LoggerRunCommand`, by `RunEditKind`, of the logger that is `CurrentLogger` when it
// opens. Modal; only its Ok stores, and only into the tables: the logger's panel saves them. A program is chosen, not
// typed; a command is typed.
class frmRun : public QDialog
{
    Q_OBJECT

public:
    frmRun(const PanelServices& services, QWidget* owner);
    ~frmRun() override;

private:
    // What the button says and does, by the number of its caption.
    enum class Word : int { Ok = 233, Edit = 234 };

    void cmdEdit_Click();
    void chooseProgram();
    void txtRun_Change();
    void showWord(Word word);
    void showHint();
    std::string text() const; // as Ok stores it

    PanelServices m_use;
    std::unique_ptr<Ui::frmRun> m_ui;
    const int m_logger;
    const bool m_program;
    std::string LoggerRecord::*const m_stored;
    Word m_word = Word::Ok;
};

} // namespace harvelop
