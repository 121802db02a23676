#include "settings/logger_panels.h"

#include <algorithm>
#include <utility>

namespace harvelop
{

namespace
{

bool isLogger(int number)
{
    return number >= 1 && number <= MaxLoggers;
}

} // namespace

LoggerPanel* LoggerPanels::Create(int number)
{
    LoggerPanel* panel = isLogger(number) && Make ? Make(number) : nullptr;
    if (!panel)
        return nullptr;
    // The table is right before the former instance goes: its going may run handlers that look here.
    LoggerPanel* former = std::exchange(m_panels[static_cast<size_t>(number - 1)], panel);
    if (former)
        former->Replaced();
    return panel;
}

LoggerPanel* LoggerPanels::At(int number) const
{
    return isLogger(number) ? m_panels[static_cast<size_t>(number - 1)] : nullptr;
}

void LoggerPanels::Unload(int number)
{
    LoggerPanel* panel = At(number);
    if (!panel)
        return;
    // While it closes it still counts as open.
    panel->Unload();
    Forget(panel);
}

void LoggerPanels::Forget(const LoggerPanel* panel)
{
    std::replace_if(
        m_panels.begin(), m_panels.end(), [&](const LoggerPanel* one) { return one == panel; }, nullptr);
}

int LoggerPanels::CountVisiblePanels() const
{
    return static_cast<int>(std::count_if(m_panels.begin(), m_panels.end(),
                                          [](const LoggerPanel* panel) { return panel && panel->IsVisible(); }));
}

} // namespace harvelop
