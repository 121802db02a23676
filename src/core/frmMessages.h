// The one progress window.
#pragma once

#include "core/forms.h"
#include "core/options_controls.h"
#include "core/program_end.h"
#include "core/progress.h"
#include "core/waiting.h"
#include "settings/language_tables.h"
#include "settings/options_store.h"

#include <QRect>
#include <QWidget>

#include <functional>
#include <memory>
#include <string>

namespace Ui
{
class frmMessages;
}

namespace harvelop
{

struct MessagesServices {
    Progress& progress;
    Waiting& waiting;
    LanguageTables& language;
    Options& options;
    OptionsStore& store;
    OptionsControls& controls;
    ProgramEnd& end;
    std::function<QRect()> OptionsPlace; // frame of `frmOptions` on the screen; null without that panel
};

// Its caption names the step of the work in hand; the bar repeats the words, for desktops that show no title bar. It
// stays on top and does not take the focus. The user closing it ends the program.
class frmMessages : public QWidget, public MessageForm
{
    Q_OBJECT

public:
    explicit frmMessages(const MessagesServices& services, QWidget* parent = nullptr);
    ~frmMessages() override;

    // Locks the options panel's controls and takes the stored place, or one under the options panel, or without that
    // panel the middle of the screen.
    void Load();

    void SetVisible(bool visible) override;
    void SetCaption(const std::string& caption) override;
    void SetBar(int value, int max) override;

    void closeEvent(QCloseEvent* event) override;

private:
    void takeFirstPlace();
    void unload();

    std::unique_ptr<Ui::frmMessages> m_ui;
    MessagesServices m_use;
    bool m_unloading = false;
};

} // namespace harvelop
