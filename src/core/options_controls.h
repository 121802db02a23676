// The lock on the options panel's controls: the only guard against a second operation starting inside a wait.
#pragma once

#include "core/forms.h"
#include "core/program_state.h"

namespace harvelop
{

class OptionsControls
{
public:
    // `lockControls` is the option of that name: a locked installation can't change its logger list.
    OptionsControls(const Forms& forms, const ProgramState& state, const bool& lockControls)
        : m_forms(forms), m_state(state), m_lockControls(lockControls)
    {
    }

    void DisableOptionsControls();

    // Enables them again, but for the Find, Add and Delete buttons of a locked installation and for the Terminal button
    // while a connection is made for the terminal.
    void EnableOptionsControls();

    // Gives the options panel back to the user, with the focus on its Ok button.
    void FreeOptions();

    // The parts of it: the panel as a whole, and the focus.
    void SetFormEnabled(bool enabled);
    void FocusOk();
    void SetCaption(const std::string& caption);

private:
    const Forms& m_forms;
    const ProgramState& m_state;
    const bool& m_lockControls;
};

} // namespace harvelop
