// The names of the tables that a logger's data go to in the database.
#pragma once

#include "identify/panel_steps.h"

#include <QDialog>

#include <memory>
#include <vector>

class QLineEdit;

namespace Ui
{
class frmEditMDB;
}

namespace harvelop
{

// Edits `LoggerTableNames` of the logger that is `CurrentLogger` when it opens. Modal; only its Ok stores. Names that
// are not unique are told in a box: they are then in the tables, but not saved, and the dialog stays open.
class frmEditMDB : public QDialog
{
    Q_OBJECT

public:
    frmEditMDB(const PanelServices& services, QWidget* owner);
    ~frmEditMDB() override;

private:
    void showRows(const LoggerRecord& record);
    void showTexts();
    void cmdOk_Click();
    void storeNames(LoggerRecord& record);
    void tellDuplicate(size_t entry);

    PanelServices m_use;
    std::unique_ptr<Ui::frmEditMDB> m_ui;
    const int m_logger;
    std::vector<QLineEdit*> m_names; // the rows of the logger's family
};

} // namespace harvelop
