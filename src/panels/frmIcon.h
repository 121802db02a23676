// A shortcut on the desktop that unloads a logger or sends it commands.
#pragma once

#include "identify/panel_steps.h"
#include "panels/icon_rules.h"

#include <QDialog>

#include <memory>

namespace Ui
{
class frmIcon;
}

namespace harvelop
{

// What `frmIcon` asks. The answer is its asker's: the panel may be gone first.
struct IconQuestion {
    const LanguageTables& language;
    std::string defaultName;
    IconChoice& answer;
};

// Asks what the shortcut is to be. Modal; closed by any other way than Ok, the answer stays cancelled.
class frmIcon : public QDialog
{
    Q_OBJECT

public:
    frmIcon(const IconQuestion& question, QWidget* owner);
    ~frmIcon() override;

private:
    void optCommand_Click();
    void optUnload_Click();
    void chkTerminal_Click();
    void txtName_Change();
    void txtCommand_Change();
    void cmdOk_Click();

    void applyLanguage();
    void showKind();
    void showOk();

    const LanguageTables& m_language;
    std::string m_defaultName;
    IconChoice& m_icon;
    std::unique_ptr<Ui::frmIcon> m_ui;
};

// Stores the panel's values of the logger, asks what the shortcut is to be, and puts it on the desktop. Nothing is told
// where the desktop takes none.
void CreateIcon(PanelServices services, QWidget& owner, int number);

} // namespace harvelop
