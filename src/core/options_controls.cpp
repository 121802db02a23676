#include "core/options_controls.h"

#include <array>

namespace harvelop
{

namespace
{

// View goes before Delete here, and after it when they come back.
constexpr std::array<std::string_view, 14> ToDisable = {"cmdUnload_FindTallycores",
                                                        "cmdUnload_Add",
                                                        "cmdUnload_View",
                                                        "cmdUnload_Delete",
                                                        "cmdUnload_Unload",
                                                        "cmdTerminal",
                                                        "chkUnload_FindPorts",
                                                        "cbxUnload_Ports",
                                                        "cbxUnload_TallyCores",
                                                        "cmdSMTPTestLogin",
                                                        "cmdFTPTestLogin",
                                                        "cmdApply",
                                                        "cmdCancel",
                                                        "cmdOk"};

enum class Unless { Never, ControlsLocked, QuietConnect };

struct EnableRule {
    std::string_view control;
    Unless unless = Unless::Never;
};

constexpr std::array<EnableRule, 14> ToEnable = {{{"cmdUnload_FindTallycores", Unless::ControlsLocked},
                                                  {"cmdUnload_Add", Unless::ControlsLocked},
                                                  {"cmdUnload_Delete", Unless::ControlsLocked},
                                                  {"cmdUnload_View"},
                                                  {"cmdUnload_Unload"},
                                                  {"cmdTerminal", Unless::QuietConnect},
                                                  {"chkUnload_FindPorts"},
                                                  {"cbxUnload_Ports"},
                                                  {"cbxUnload_TallyCores"},
                                                  {"cmdSMTPTestLogin"},
                                                  {"cmdFTPTestLogin"},
                                                  {"cmdApply"},
                                                  {"cmdCancel"},
                                                  {"cmdOk"}}};

} // namespace

void OptionsControls::DisableOptionsControls()
{
    for (const auto control : ToDisable)
        if (m_forms.options)
            m_forms.options->SetControlEnabled(control, false);
}

void OptionsControls::EnableOptionsControls()
{
    for (const auto& rule : ToEnable) {
        const bool held = (rule.unless == Unless::ControlsLocked && m_lockControls) ||
                          (rule.unless == Unless::QuietConnect && m_state.QuietConnect);
        if (m_forms.options && !held)
            m_forms.options->SetControlEnabled(rule.control, true);
    }
}

void OptionsControls::FreeOptions()
{
    EnableOptionsControls();
    SetFormEnabled(true);
    FocusOk();
}

void OptionsControls::SetFormEnabled(bool enabled)
{
    if (m_forms.options)
        m_forms.options->SetFormEnabled(enabled);
}

void OptionsControls::FocusOk()
{
    if (m_forms.options)
        m_forms.options->FocusOk();
}

void OptionsControls::SetCaption(const std::string& caption)
{
    if (m_forms.options)
        m_forms.options->SetCaption(caption);
}

} // namespace harvelop
