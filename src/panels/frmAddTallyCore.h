// Entering a logger by hand, and changing how a logger is reached.
#pragma once

#include "panels/add_work.h"

#include <QDialog>

#include <memory>

namespace Ui
{
class frmAddTallyCore;
}

namespace harvelop
{

// Changes the logger that is `CurrentLogger` while `EditingExisting` is set, otherwise adds one. Modal; only its Ok
// stores. While a test or a reset runs only Cancel is live. It is made for each showing; once it has been unloaded it
// is hidden and only waits to be deleted.
class frmAddTallyCore : public QDialog, public AddForm
{
    Q_OBJECT

public:
    frmAddTallyCore(const AddServices& services, QWidget* owner);
    ~frmAddTallyCore() override;

    void SetTopmost(bool topmost) override;
    std::string Caption() const override;
    void SetCaption(const std::string& caption) override;

    void Unload();          // closes it, with what belongs to closing; the first call counts
    void reject() override; // Esc and the close box: as Cancel

protected:
    void showEvent(QShowEvent* event) override;

private:
    void fillLists();
    void connectControls();
    void applyLanguage();
    void showStored(const AddValues& values); // with the kind of its link; its model is locked
    void showValues(const AddValues& values);
    AddValues values() const;
    void opt_Click(const char* kind);
    void cbxModel_Click();
    void cmdTest_Click();
    void cmdResetModem_Click();
    void cmdOk_Click();
    void cmdCancel_Click();
    void runLocked(void (*work)(AddServices, const AddValues&));
    void setControlsEnabled(bool enabled);

    AddServices m_use;
    std::unique_ptr<Ui::frmAddTallyCore> m_ui;
    const bool m_changing;
    const char* m_kind = "RS232";
    bool m_unloaded = false;
};

} // namespace harvelop
