// The addresses that a logger's data are mailed to, and their descriptions.
#pragma once

#include "identify/panel_steps.h"

#include <QDialog>

#include <memory>

namespace Ui
{
class frmUnloadLists;
}

namespace harvelop
{

// Edits the delivery lists of `ChosenLogger`, which is also `CurrentLogger`. Modal; only its Ok writes the file. Lists
// whose file can't be read can't be edited either: nobody would know what a save replaces.
class frmUnloadLists : public QDialog
{
    Q_OBJECT

public:
    frmUnloadLists(const PanelServices& services, QWidget* owner);
    ~frmUnloadLists() override;

private:
    void load();
    void lock();
    void applyLanguage();
    void showSchedule(int schedule);
    void storeText();
    void cbxSchedules_Click(int schedule);
    void txtList_Change();
    void cmdDeleteAllEmails_Click();
    void cmdOk_Click();
    const LoggerRecord* record() const { return m_use.tables.Record(m_use.state.ChosenLogger); }
    LoggerLists* lists() const { return m_use.lists.Tables().Lists(m_use.state.ChosenLogger); }

    PanelServices m_use;
    std::unique_ptr<Ui::frmUnloadLists> m_ui;
    int m_schedule = 0; // the index of the one shown
};

} // namespace harvelop
