// The one progress window: a caption that names the step, and a bar; and who stands before it.
#pragma once

#include "core/forms.h"
#include "core/program_state.h"
#include "core/waiting.h"

#include <string>

namespace harvelop
{

// Callers never test whether the window exists: while it does not, the calls fall through, so a command from a shortcut
// runs the same code as the window.
class Progress
{
public:
    Progress(Forms& forms, ProgramState& state, Waiting& waiting) : m_forms(forms), m_state(state), m_waiting(waiting)
    {
    }

    // Neither does anything while `QuietConnect` is set. The first show loads the window; hiding never does, as the
    // load locks the options panel and nobody would free it.
    void ShowMessageForm();
    void HideMessageForm();

    // Lets an open `frmAddTallyCore` stand behind a box, and before all windows again; it is the only form that they
    // act on.
    void ClearTopmost();
    void SetTopmost();

    // Names the step: on the window, or on the terminal's caption while `QuietConnect` is set. With no terminal the
    // text is lost: whoever connects for the terminal has loaded it.
    void ShowProgressText(const std::string& text);

    void SetProgressRange(int count); // empties the bar and sets its range
    void StepProgress(int count);     // a step that would reach or pass the range is dropped
    void ResetProgress();             // despite the name it fills the bar: the end of a run
    void ClearBar();                  // puts the bar to 0, the range as it is
    void FillProgress();              // a busy animation of about 1.5 seconds

    int Value() const { return m_value; }
    int Max() const { return m_max; }

    // Called by the window once it has loaded, and when it is closed.
    void Loaded(MessageForm* form);
    void Unloaded();

private:
    void setTopmost(bool topmost);
    void showBar();

    Forms& m_forms;
    ProgramState& m_state;
    Waiting& m_waiting;
    MessageForm* m_form = nullptr;
    int m_value = 0;
    int m_max = 100;
};

} // namespace harvelop
