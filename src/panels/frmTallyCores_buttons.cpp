// The buttons of the panel.
#include "identify/panel_work.h"
#include "panels/frmEditMDB.h"
#include "panels/frmIcon.h"
#include "panels/frmRun.h"
#include "panels/frmSupport.h"
#include "panels/frmTallyCores.h"
#include "panels/frmUnloadLists.h"
#include "ui_frmTallyCores.h"

namespace harvelop
{

void frmTallyCores::connectButtons()
{
    connectToLogger();
    connect(m_ui->cmdCreateIcon, &QPushButton::clicked, this, &frmTallyCores::cmdCreateIcon_Click);
    connect(m_ui->cmdEditDiskList, &QPushButton::clicked, this, &frmTallyCores::cmdEditDiskList_Click);
    connect(m_ui->cmdEditEmailList, &QPushButton::clicked, this, &frmTallyCores::cmdEditEmailList_Click);
    connect(m_ui->cmdEditMDB, &QPushButton::clicked, this, &frmTallyCores::cmdEditMDB_Click);
    connect(m_ui->cmdRun, &QPushButton::clicked, this, [this] { editRun("Program"); });
    connect(m_ui->cmdCommand, &QPushButton::clicked, this, [this] { editRun("Command"); });
    connect(m_ui->cmdTallyCoresUnload, &QPushButton::clicked, this, &frmTallyCores::cmdTallyCoresUnload_Click);
    connect(m_ui->cmdOk, &QPushButton::clicked, this, &frmTallyCores::cmdOk_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmTallyCores::Unload);
    connect(m_ui->cmdApply, &QPushButton::clicked, this, &frmTallyCores::cmdApply_Click);
}

void frmTallyCores::connectToLogger()
{
    const LoggerActions& actions = m_use.actions;
    const auto onClick = [this](QPushButton* button, bool possible, const auto& work) {
        if (possible)
            connect(button, &QPushButton::clicked, this, [this, work] { work(m_use, m_tag); });
        else
            button->setToolTip(NotAvailable);
    };
    const auto run = [](const std::function<void()>& action) {
        return [action](const PanelServices& services, int number) { RunOnLogger(services, number, action); };
    };
    const auto clear = [](const std::function<void()>& action, bool clearMode) {
        return [action, clearMode](const PanelServices& services, int number) {
            ClearOnLogger(services, number, action, clearMode);
        };
    };
    const auto isSet = [](const std::function<void()>& action) { return static_cast<bool>(action); };
    const bool connects = static_cast<bool>(actions.ConnectLogger);
    onClick(m_ui->cmdSetCom, isSet(actions.ShowAddDialog), SetCom);
    onClick(m_ui->cmdProgram, isSet(actions.LoadProgram), LoadOnLogger);
    onClick(m_ui->cmdCard, isSet(actions.LoadCardProgram), run(actions.LoadCardProgram));
    onClick(m_ui->cmdFlash, isSet(actions.LoadFlashProgram), run(actions.LoadFlashProgram));
    onClick(m_ui->cmdProgramClear, connects && isSet(actions.ClearPrograms), clear(actions.ClearPrograms, true));
    onClick(m_ui->cmdCardClear, connects && isSet(actions.ClearCardPrograms), clear(actions.ClearCardPrograms, false));
    onClick(m_ui->cmdFlashClear, connects && isSet(actions.ClearFlash), clear(actions.ClearFlash, false));
}

void frmTallyCores::cmdCreateIcon_Click()
{
    MakeCurrent(m_use, m_tag);
    CreateIcon(m_use, *this, m_tag);
}

void frmTallyCores::cmdEditDiskList_Click()
{
    const QPointer<frmTallyCores> self(this);
    const bool changed = ChooseSaveFolder(m_use, m_tag);
    const LoggerRecord* edited = self ? record() : nullptr;
    if (!changed || !edited)
        return;
    m_ui->txtSaveFolder->setText(ToQString(edited->LoggerSaveFolder));
    enableApply(true);
}

void frmTallyCores::cmdEditEmailList_Click()
{
    m_use.state.ListKind = "Email";
    MakeCurrent(m_use, m_tag);
    ShowModally<frmUnloadLists>(m_use, *this);
}

void frmTallyCores::cmdEditMDB_Click()
{
    OptionsStore& store = m_use.store;
    MakeCurrent(m_use, m_tag);
    ShowModally<frmEditMDB>(m_use, *this);
    store.SaveOptions(); // the panel may be gone by now
}

void frmTallyCores::editRun(const char* kind)
{
    MakeCurrent(m_use, m_tag);
    m_use.state.RunEditKind = kind;
    const auto stored = [this] {
        const LoggerRecord* edited = record();
        return edited ? edited->LoggerRunProgram + '\n' + edited->LoggerRunCommand : std::string();
    };
    const std::string before = stored();
    const QPointer<frmTallyCores> self(this);
    ShowModally<frmRun>(m_use, *this);
    if (!self || stored() == before)
        return;
    m_use.records.KeepTables(m_tag);
    enableApply(true);
}

void frmTallyCores::cmdTallyCoresUnload_Click()
{
    cmdApply_Click();
    UnloadLogger(m_use, m_tag);
}

void frmTallyCores::cmdApply_Click()
{
    StripDescription();
    enableApply(false);
    StorePanel(m_use, m_tag);
}

void frmTallyCores::cmdOk_Click()
{
    StripDescription();
    StorePanel(m_use, m_tag);
    Unload();
}

} // namespace harvelop
