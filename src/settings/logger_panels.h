// The panels of loggers that are being worked on: a panel is the live model of its logger while the user edits it.
#pragma once

#include "settings/logger_record.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

// The state of a panel's controls, as far as a record is built from it. Only the rows of the logger's family count.
struct PanelValues {
    std::array<bool, MaxSchedules> on{};
    std::array<bool, MaxSchedules> ulast{};
    std::array<bool, MaxSchedules> csv{};
    std::array<bool, MaxSchedules> html{};
    ScheduleTexts records{};
    bool mdb = false;
    bool toDisk = true;
    bool viaEmail = false;
    bool viaFTP = false;
    bool emailEnabled = true; // the accounts allow delivery by e-mail, by FTP
    bool ftpEnabled = true;
    std::string description;
};

// How a panel looks for a model.
struct PanelSetUp {
    int picture = 10; // item of the pictures; 10: unknown model
    bool kr4Schedules = false;
    bool known = true;    // an unknown model shows neither model nor serial number
    bool reduced = false; // and its panel, once viewed, can do nothing but be looked at
    int modelWidth = 0;   // of `lblModel` in twips; 0: that of the design
    std::string model;
    std::string serial;
};

// An instance of `frmTallyCores`, or what stands for it where there is no display.
class LoggerPanel
{
public:
    virtual ~LoggerPanel() = default;
    virtual void Load() = 0; // fills the controls from the tables; ends in a build of the record
    virtual PanelValues Values() const = 0;
    virtual void SetUp(const PanelSetUp& setUp) = 0;
    virtual void SetCaption(const std::string& caption) = 0;
    virtual void SetSerial(const std::string&) {} // of a panel that shows none: nothing
    virtual void Place(int twips) = 0;            // so far below and to the right of the options panel
    virtual void SetVisible(bool visible) = 0;    // true also brings a visible one to the front
    virtual bool IsVisible() const = 0;
    // Empties and fills the lines that describe the model, and what of its panel follows from them.
    virtual void DescribeModel(const std::string& model) = 0;
    virtual void SetControlEnabled(std::string_view control, bool enabled) = 0; // by the control's name
    virtual void SetPanelEnabled(bool enabled) = 0;                             // the panel as a whole
    // What the accounts allow: each delivery is enabled, or disabled and unchecked; none leaves it as it is.
    virtual void SetDelivery(std::optional<bool> emailEnabled, std::optional<bool> ftpEnabled) = 0;
    // Closes it, with what belongs to closing. The instance must not be used afterwards.
    virtual void Unload() = 0;
    // Another instance takes its place in the table: a hidden one goes, a visible one lives on until it is closed.
    virtual void Replaced() = 0;
};

class LoggerPanels
{
public:
    // Makes a panel for a logger, not yet loaded, hidden. The maker owns it until Unload or Replaced.
    std::function<LoggerPanel*(int number)> Make;

    LoggerPanel* Create(int number);       // replaces a former reference; nullptr outside 1 to 50 or without a maker
    LoggerPanel* At(int number) const;     // nullptr if none
    void Unload(int number);               // nothing if none is loaded
    void Forget(const LoggerPanel* panel); // the panel is gone
    int CountVisiblePanels() const;

private:
    std::array<LoggerPanel*, MaxLoggers> m_panels{};
};

} // namespace harvelop
