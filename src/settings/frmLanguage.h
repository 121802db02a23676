// A small chooser of the language. Nothing shows it at present: the language is chosen in `options.ini`.
#pragma once

#include "settings/options.h"

#include <QDialog>

#include <memory>

namespace Ui
{
class frmLanguage;
}

namespace harvelop
{

// Loading it turns the language file on. A choice, and closing by any way, goes to the option `Language` at once; both
// have their effect at the next start.
class frmLanguage : public QDialog
{
    Q_OBJECT

public:
    explicit frmLanguage(Options& options, QWidget* parent = nullptr);
    ~frmLanguage() override;

    void closeEvent(QCloseEvent* event) override;
    void reject() override; // Esc: as any closing

private:
    void cbxLanguage_Click();

    std::unique_ptr<Ui::frmLanguage> m_ui;
    Options& m_options;
};

} // namespace harvelop
