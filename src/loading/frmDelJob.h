// The chooser of the job to delete.
#pragma once

#include "core/forms.h"
#include "core/progress.h"
#include "loading/loading_state.h"
#include "settings/language_tables.h"

#include <QDialog>

#include <memory>
#include <string>

namespace Ui
{
class frmDelJob;
}

namespace harvelop
{

struct DelJobServices {
    Progress& progress;
    const LanguageTables& language;
    LoadingState& loading;
    std::string logger;      // `LinkDescription`
    QWidget* over = nullptr; // the window to stand over, which may close before this one; may be empty
};

// The answer is in `JobDeleteConfirmed` and `ChosenJob`; closed by any other way than Delete nothing is confirmed. All
// other windows stay live meanwhile.
class frmDelJob : public QDialog, public JobForm
{
    Q_OBJECT

public:
    explicit frmDelJob(const DelJobServices& services);
    ~frmDelJob() override;

    void Show(const std::vector<std::string>& jobs) override;
    bool IsVisible() const override { return isVisible(); }

protected:
    void done(int result) override; // every way of closing ends here

private:
    void showInstructions();
    void cmdYes_Click();
    void cmdNo_Click();

    DelJobServices m_use;
    std::unique_ptr<Ui::frmDelJob> m_ui;
};

} // namespace harvelop
