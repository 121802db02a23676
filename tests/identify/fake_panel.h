// A logger's panel that remembers what it was told.
#pragma once

#include "identify_program.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace harvelop::test
{

class FakePanel : public LoggerPanel
{
public:
    FakePanel(int loggerNumber, const PanelServices& services) : number(loggerNumber), m_services(services) {}

    void Load() override
    {
        LoadPanel(m_services, number, [this](const PanelValues& loaded) { values = loaded; });
        steps.emplace_back("load");
    }
    PanelValues Values() const override { return values; }
    void SetUp(const PanelSetUp& panelSetUp) override
    {
        setUp = panelSetUp;
        steps.emplace_back("set up");
    }
    void SetCaption(const std::string& text) override
    {
        caption = text;
        steps.emplace_back("caption");
    }
    void Place(int placeTwips) override
    {
        twips = placeTwips;
        steps.emplace_back("place");
    }
    void SetVisible(bool on) override
    {
        visible = on;
        if (on)
            shownTabs.push_back(m_services.tables.Record(number)->LoggerTab);
        steps.emplace_back(on ? "show" : "hide");
    }
    bool IsVisible() const override { return visible; }
    void DescribeModel(const std::string& model) override { steps.push_back("describe " + model); }
    void SetControlEnabled(std::string_view control, bool enabled) override
    {
        if (enabled)
            disabled.erase(std::string(control));
        else
            disabled.insert(std::string(control));
    }
    void SetPanelEnabled(bool) override {}
    void SetDelivery(std::optional<bool>, std::optional<bool>) override {}
    void Unload() override
    {
        steps.emplace_back("unload");
        ClosePanel(m_services, number, values.mdb);
        visible = false;
        m_services.panels.Forget(this);
    }
    void Replaced() override { steps.emplace_back("replaced"); }

    int number;
    PanelValues values;
    PanelSetUp setUp;
    std::string caption;
    int twips = 0;
    std::vector<int> shownTabs; // the tab to be seen, each time that it was shown
    std::set<std::string> disabled;
    bool visible = false;
    std::vector<std::string> steps;

private:
    PanelServices m_services;
};

struct PanelProgram : IdentifyProgram {
    std::vector<std::unique_ptr<FakePanel>> made;

    PanelProgram()
    {
        heart.panels.Make = [this](int number) {
            made.push_back(std::make_unique<FakePanel>(number, heart.panelServices()));
            return made.back().get();
        };
    }
    ~PanelProgram() { heart.panels.Make = nullptr; }

    // Stores a logger and lists all.
    void StoreAndList(int number, const LoggerRecord& record)
    {
        Store(number, record);
        heart.records.SaveFoundLoggers();
        heart.viewing.RebuildList();
        heart.state.cbxUnload_TallyCores.Select(number - 1);
    }

    FakePanel& View()
    {
        heart.viewing.cmdUnload_View_Click();
        return *made.back();
    }
};

inline LoggerRecord SerialRecord(const std::string& model, const std::string& port)
{
    LoggerRecord record;
    record.LoggerModel = model;
    record.LoggerPort = port;
    record.LoggerBaud = "9600";
    record.LoggerParity = "E";
    record.LoggerDataBits = "7";
    record.LoggerStopBits = "2";
    record.LoggerFlow = "HWFC";
    return record;
}

} // namespace harvelop::test
