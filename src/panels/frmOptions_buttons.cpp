// The buttons of the panel.
#include "identify/panel_work.h"
#include "panels/frmOptions.h"
#include "panels/frmSupport.h"
#include "ui_frmOptions.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{
constexpr std::array<std::string_view, 6> HeldByTest = {"cmdSMTPTestLogin",         "cmdFTPTestLogin",
                                                        "cmdUnload_FindTallycores", "cmdUnload_Add",
                                                        "cmdUnload_View",           "cmdTerminal"};
} // namespace

void frmOptions::connectButtons()
{
    const auto onClick = [this](QPushButton* button, auto handler) {
        connect(button, &QPushButton::clicked, this, handler);
    };
    onClick(m_ui->cmdUnload_FindTallycores, [this] { m_use.portSearch.cmdUnload_FindTallycores_Click(); });
    onClick(m_ui->cmdUnload_View, [this] { m_use.viewing.cmdUnload_View_Click(); });
    onClick(m_ui->smdShowLog, [this] { m_use.desktop.ShowTextFile(m_use.state.AppPath + "harvel.Log"); });
    onClick(m_ui->cmdUnload_Add, &frmOptions::cmdUnload_Add_Click);
    onClick(m_ui->cmdUnload_Delete, &frmOptions::cmdUnload_Delete_Click);
    onClick(m_ui->cmdUnload_Unload, &frmOptions::cmdUnload_Unload_Click);
    onClick(m_ui->cmdTerminal, &frmOptions::cmdTerminal_Click);
    onClick(m_ui->cmdSMTPTestLogin, &frmOptions::cmdSMTPTestLogin_Click);
    onClick(m_ui->cmdFTPTestLogin, &frmOptions::cmdFTPTestLogin_Click);
    onClick(m_ui->cmdOk, &frmOptions::cmdOk_Click);
    onClick(m_ui->cmdCancel, &frmOptions::cmdCancel_Click);
    onClick(m_ui->cmdApply, &frmOptions::cmdApply_Click);
}

void frmOptions::cmdUnload_Add_Click()
{
    if (m_use.state.cbxUnload_TallyCores.Count() >= MaxLoggers) {
        ShowInFront(m_use.use, {m_use.use.language.Text(554), boxTitle(), BoxIcon::Exclamation});
        m_use.controls.EnableOptionsControls();
        return;
    }
    if (!m_use.ShowAddDialog)
        return;
    m_use.state.AddingLogger = true;
    m_use.state.AddRebuildPending = true;
    m_use.state.NewLoggerMode = true;
    m_use.ShowAddDialog();
}

void frmOptions::cmdUnload_Delete_Click()
{
    const ListState& list = m_use.state.cbxUnload_TallyCores;
    if (!list.Text().empty())
        m_use.viewing.DeleteLogger(list.Selected() + 1);
}

void frmOptions::cmdUnload_Unload_Click()
{
    UnloadAllLoggers({m_use.use, m_use.tables, m_use.store, m_use.desktop, m_use.state.AppPath});
}

void frmOptions::cmdTerminal_Click()
{
    if (!m_use.ShowTerminal || !m_use.ConnectLogger)
        return;
    ProgramState& state = m_use.state;
    state.TerminalStarting = true;
    m_use.ShowTerminal();
    state.TerminalStarting = false;
    state.QuietConnect = true;
    state.CurrentLogger = static_cast<std::int16_t>(state.cbxUnload_TallyCores.Selected() + 1);
    m_use.ConnectLogger(state.CurrentLogger);
    state.QuietConnect = false;
    if (!state.TerminalOpen) // also if it was closed when the logger had just been reached
        m_ui->cmdTerminal->setEnabled(true);
}

void frmOptions::cmdSMTPTestLogin_Click()
{
    if (!m_use.TestSMTPLogin)
        return;
    holdForTest();
    FocusOk();
    runLoginTest(m_use.TestSMTPLogin);
}

void frmOptions::cmdFTPTestLogin_Click()
{
    if (!m_use.TestFTPLogin)
        return;
    holdForTest();
    if (m_ui->cmdOk->isEnabled())
        FocusOk();
    runLoginTest(m_use.TestFTPLogin);
}

// The button itself, and what else would begin a dialogue in the waits of the test. Ok and Cancel end it, with the
// program.
void frmOptions::holdForTest()
{
    m_use.state.AbortWait = false;
    m_testing = true;
    for (const std::string_view control : HeldByTest)
        SetControlEnabled(control, false);
}

void frmOptions::runLoginTest(const std::function<void()>& test)
{
    test();
    m_testing = false;
    for (const std::string_view control : HeldByTest)
        SetControlEnabled(control, true);
    applyLockControls();
}

bool frmOptions::isHeldByTest(std::string_view control) const
{
    return m_testing && std::find(HeldByTest.begin(), HeldByTest.end(), control) != HeldByTest.end();
}

void frmOptions::cmdApply_Click()
{
    ValidateServerFields();
    m_use.store.SaveOptions();
    m_ui->cmdApply->setEnabled(false);
}

void frmOptions::cmdOk_Click()
{
    ValidateServerFields();
    m_use.options.SiteID = ToText(m_ui->txtSMTPSiteID->text());
    m_use.options.LastUtallyCore = static_cast<std::int16_t>(m_use.state.cbxUnload_TallyCores.Selected());
    for (const auto& row : m_texts)
        m_use.options.*row.option = ToText(row.field->text());
    m_use.state.OptionsLoaded = false;
    close();
}

// That `OptionsLoaded` stays set is meant.
void frmOptions::cmdCancel_Click()
{
    RestoreSnapshot(m_snapshot, m_use.options);
    close();
}

} // namespace harvelop
