#include "identify/headless_panel.h"

#include <algorithm>

namespace harvelop
{

void HeadlessPanel::Load()
{
    m_tag = m_services.state.CurrentLogger;
    LoadPanel(m_services, m_tag, [this](const PanelValues& values) { m_values = values; });
}

void HeadlessPanel::SetDelivery(std::optional<bool> emailEnabled, std::optional<bool> ftpEnabled)
{
    const auto allow = [](std::optional<bool> allowed, bool& enabled, bool& checked) {
        enabled = allowed.value_or(enabled);
        checked = checked && allowed.value_or(true);
    };
    allow(emailEnabled, m_values.emailEnabled, m_values.viaEmail);
    allow(ftpEnabled, m_values.ftpEnabled, m_values.viaFTP);
}

void HeadlessPanel::Unload()
{
    if (m_closed)
        return;
    m_closed = true;
    ClosePanel(m_services, m_tag, m_values.mdb);
    m_services.panels.Forget(this);
}

HeadlessPanels::HeadlessPanels(const PanelServices& services) : m_services(services)
{
    m_services.panels.Make = [this](int) { return make(); };
}

HeadlessPanels::~HeadlessPanels()
{
    m_services.panels.Make = nullptr;
    for (const auto& panel : m_made)
        m_services.panels.Forget(panel.get());
}

HeadlessPanel* HeadlessPanels::Open(int number)
{
    m_services.state.CurrentLogger = m_services.state.ChosenLogger = static_cast<std::int16_t>(number);
    LoggerPanel* panel = m_services.panels.Create(number);
    if (!panel)
        return nullptr;
    panel->Load();
    m_services.viewing.MakePanelReady(number, false);
    const auto made = std::find_if(m_made.begin(), m_made.end(), [&](const auto& one) { return one.get() == panel; });
    return made == m_made.end() ? nullptr : made->get();
}

LoggerPanel* HeadlessPanels::make()
{
    std::erase_if(m_made, [](const auto& panel) { return panel->Closed(); });
    m_made.push_back(std::make_unique<HeadlessPanel>(m_services));
    return m_made.back().get();
}

} // namespace harvelop
