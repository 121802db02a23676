// Stands for the loggers' panels where there is no display: holds what their controls would hold, and is never visible.
#pragma once

#include "identify/panel_steps.h"

#include <memory>
#include <vector>

namespace harvelop
{

class HeadlessPanel : public LoggerPanel
{
public:
    explicit HeadlessPanel(const PanelServices& services) : m_services(services) {}

    bool Closed() const { return m_closed; }
    void SetValues(const PanelValues& values) { m_values = values; } // what a user does to the controls

    void Load() override;
    PanelValues Values() const override { return m_values; }
    void SetUp(const PanelSetUp&) override {}
    void SetCaption(const std::string&) override {}
    void Place(int) override {}
    void SetVisible(bool) override {}
    bool IsVisible() const override { return false; }
    void DescribeModel(const std::string&) override {}
    void SetControlEnabled(std::string_view, bool) override {}
    void SetPanelEnabled(bool) override {}
    void SetDelivery(std::optional<bool> emailEnabled, std::optional<bool> ftpEnabled) override;
    void Unload() override;
    void Replaced() override { m_closed = true; }

private:
    PanelServices m_services;
    int m_tag = 0; // the logger's number
    PanelValues m_values;
    bool m_closed = false;
};

// Makes such panels for the program while it lives, and owns them. A closed one may still be on the stack, so it goes
// only when the next one is made.
class HeadlessPanels
{
public:
    explicit HeadlessPanels(const PanelServices& services);
    ~HeadlessPanels();
    HeadlessPanels(const HeadlessPanels&) = delete;
    HeadlessPanels& operator=(const HeadlessPanels&) = delete;

    // Opens the panel of a logger as viewing it does; nullptr outside 1 to 50. It lives until it is unloaded.
    HeadlessPanel* Open(int number);

private:
    LoggerPanel* make();

    PanelServices m_services;
    std::vector<std::unique_ptr<HeadlessPanel>> m_made;
};

} // namespace harvelop
