// The options panel: the list of loggers, the accounts, and the options of the unload program. Closing it, by any way,
// ends the program.
#pragma once

#include "core/forms.h"
#include "core/options_controls.h"
#include "core/program_end.h"
#include "identify/logger_viewing.h"
#include "identify/port_search.h"
#include "links/modRS232.h"
#include "panels/options_rules.h"
#include "platform/desktop.h"
#include "settings/essentials.h"
#include "settings/logger_panels.h"
#include "settings/logger_records.h"
#include "settings/options_store.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QCheckBox;
class QLineEdit;
class QRadioButton;

namespace Ui
{
class frmOptions;
}

namespace harvelop
{

// What the panel works with. A hook that is not set is something that this program does not do yet: its button then
// does nothing, and says so in its tool tip.
struct OptionsServices {
    Essentials use;
    Options& options;
    ProgramState& state;
    OptionsStore& store;
    LoggerTables& tables;
    LoggerPanels& panels;
    modRS232& rs232;
    PortSearch& portSearch;
    LoggerViewing& viewing;
    OptionsControls& controls;
    Forms& forms;
    Desktop& desktop;
    ProgramEnd& end;

    std::function<void()> ShowAddDialog{};    // `frmAddTallyCore`, modal over this panel; returns when it closes
    std::function<void()> ShowTerminal{};     // `frmTerminal`, without blocking
    std::function<void(int)> ConnectLogger{}; // the logger's number
    std::function<void()> TestSMTPLogin{};    // both as started by the user
    std::function<void()> TestFTPLogin{};
};

// The options are live: each handler writes its option at once. Setting a control from code counts as a click, so the
// handlers run while the panel loads too. The two lists mirror the ListState of the program.
class frmOptions : public QDialog, public OptionsForm
{
    Q_OBJECT

public:
    explicit frmOptions(const OptionsServices& services, QWidget* parent = nullptr);
    ~frmOptions() override;

    // Fills the panel, on the first call only. With no logger stored it asks whether to search, and may run a whole
    // search. The program may have ended when it returns.
    void Load();

    void SetControlEnabled(std::string_view control, bool enabled) override;
    void SetFormEnabled(bool enabled) override;
    void SetCaption(const std::string& caption) override;
    void FocusOk() override;

    // Ok, Cancel and the close box all end here: stores the position, stops work on links, saves, ends the program.
    // While a logger's panel is open the request is ignored, and that panel comes to the front.
    void closeEvent(QCloseEvent* event) override;
    void reject() override; // Esc: as Cancel
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct CheckRow {
        QCheckBox* box;
        bool Options::*option;
        void (frmOptions::*also)(bool checked);
    };
    struct TextRow {
        QLineEdit* field;
        std::string Options::*option;
        void (frmOptions::*also)();
    };
    struct AuthenticationRow {
        QRadioButton* button;
        AuthenticationButton kind;
    };
    // What a list showed last: tells a choice from a change of its lines.
    struct ListSeen {
        std::vector<std::string> lines;
        int selected = -1;
    };
    struct ListChange {
        bool lines = false;
        bool choice = false;
    };
    static ListChange look(ListSeen& seen, const ListState& list);

    // Load.
    void fillTabs();
    void fillControls();
    void fillAccounts();
    static void showStored(QLineEdit& field, std::string_view stored);
    void askFirstUse();
    void applyLockControls();

    // Change tracking.
    void connectChanges();
    void optionChanged();
    void chkShowHarvelOnStartup_Click(bool checked);
    void chkSaveToDesktop_Click(bool checked);
    void chkLockControls_Click(bool checked);
    void chkSaveLogFile_Click(bool checked);
    void ApplyAuthenticationState(bool required);
    void UpdateDeliveryChecks();
    void txtSize_Change();
    void txtDesktopDir_Change();
    void txtSMTPSiteID_Change();
    void txtFTPSiteID_Change();
    void ValidateServerFields();
    void dropOthers(QLineEdit& field, std::string_view allowed);

    // The lists.
    void connectLists();
    void showPorts();
    void showTallyCores();
    void showEmptyHint(); // not while a search runs, which empties the list only to fill it
    void cbxUnload_TallyCores_Click();

    // Buttons.
    void connectButtons();
    void cmdUnload_Add_Click();
    void cmdUnload_Delete_Click();
    void cmdUnload_Unload_Click();
    void cmdTerminal_Click();
    void cmdSMTPTestLogin_Click();
    void cmdFTPTestLogin_Click();
    void holdForTest();
    void runLoginTest(const std::function<void()>& test);
    bool isHeldByTest(std::string_view control) const;
    void cmdOk_Click();
    void cmdCancel_Click();
    void cmdApply_Click();
    void raisePanels();
    void unload();

    // With nothing before it: the progress window is hidden, and the add dialog stands behind meanwhile.

    // Texts.
    void tsOptions_Click();
    void ApplyOptionsLanguage();
    void fillAbout();
    void updateToolTip(QWidget& control);
    void updateToolTips();
    bool isMissing(std::string_view control) const;
    std::string boxTitle() const;

    std::unique_ptr<Ui::frmOptions> m_ui;
    OptionsServices m_use;
    std::vector<CheckRow> m_checks;
    std::vector<TextRow> m_texts;
    std::vector<AuthenticationRow> m_authentication;
    OptionsSnapshot m_snapshot;
    ListSeen m_portsSeen;
    ListSeen m_tallyCoresSeen;
    bool m_loaded = false;
    bool m_testing = false; // a login test runs
};

} // namespace harvelop
