#include "core/progress.h"

namespace harvelop
{

void Progress::ShowMessageForm()
{
    if (m_state.QuietConnect || m_waiting.Ended())
        return;
    if (!m_form && m_forms.loadMessages)
        Loaded(m_forms.loadMessages());
    if (m_form)
        m_form->SetVisible(true);
}

void Progress::HideMessageForm()
{
    if (!m_state.QuietConnect && m_form)
        m_form->SetVisible(false);
}

void Progress::ClearTopmost()
{
    setTopmost(false);
}

void Progress::SetTopmost()
{
    setTopmost(true);
}

void Progress::setTopmost(bool topmost)
{
    if (m_state.AddDialogOpen && m_forms.add)
        m_forms.add->SetTopmost(topmost);
}

void Progress::ShowProgressText(const std::string& text)
{
    if (m_state.StopLinkWork)
        return;
    if (!m_state.QuietConnect) {
        if (m_state.MessagesLoaded && m_form)
            m_form->SetCaption("<- " + text);
    } else if (m_state.TerminalOpen && m_forms.terminal) {
        m_forms.terminal->SetCaption(" " + text);
    }
}

void Progress::SetProgressRange(int count)
{
    if (!m_state.MessagesLoaded)
        return;
    m_value = 0;
    m_max = count;
    showBar();
}

void Progress::StepProgress(int count)
{
    if (!m_state.MessagesLoaded || m_max <= m_value + count)
        return;
    m_value += count;
    showBar();
}

void Progress::ResetProgress()
{
    if (!m_state.MessagesLoaded)
        return;
    m_value = m_max;
    showBar();
}

void Progress::ClearBar()
{
    if (!m_state.MessagesLoaded)
        return;
    m_value = 0;
    showBar();
}

void Progress::FillProgress()
{
    constexpr int Steps = 10;
    SetProgressRange(Steps);
    for (int i = 0; i < Steps; ++i) {
        StepProgress(1);
        m_waiting.WaitMs(100);
    }
    ResetProgress();
    m_waiting.WaitMs(500);
}

void Progress::Loaded(MessageForm* form)
{
    m_form = form;
    m_value = 0;
    m_state.MessagesLoaded = form != nullptr;
    showBar();
}

void Progress::Unloaded()
{
    m_state.MessagesLoaded = false;
}

void Progress::showBar()
{
    if (m_form)
        m_form->SetBar(m_value, m_max);
}

} // namespace harvelop
