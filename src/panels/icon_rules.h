// Shortcuts on the desktop for one logger: what they are called, and what they hand to the unload program.
#pragma once

#include "identify/panel_steps.h"
#include "platform/desktop.h"
#include "settings/logger_record.h"

#include <functional>
#include <optional>
#include <string>

namespace harvelop
{

// What the user has asked for.
struct IconChoice {
    std::string IconKind;         // "Data" unloads the logger, "Command" sends it commands; empty: not chosen yet
    std::string IconCommand;      // the commands
    std::string IconTerminalMark; // "%" to stay in the terminal after them, or empty
    std::string IconName;         // empty: the shortcut gets a name of its own
    bool IconCancelled = true;    // until Ok
};

// The logger's description, or else that of its link. That a description loses its dots and colons too, on a network
// logger, is meant.
std::string DefaultIconName(const LoggerRecord& record);

// The name of a shortcut that the user has given none.
std::string UnnamedIcon(const IconChoice& choice, const std::string& defaultName);

// The shortcut to the unload program in `appPath`, which ends in a separator. The logger's key is one argument; the
// commands are one further argument as they were typed, between their marks. Nothing if cancelled or not chosen.
std::optional<Shortcut> IconShortcut(const IconChoice& choice, const LoggerRecord& record,
                                     const std::string& defaultName, const std::string& appPath);

// Stores the panel's values of the logger, asks what the shortcut is to be, and puts it on the desktop. False if there
// is none then.
bool MakeIcon(const PanelServices& services, int number,
              const std::function<IconChoice(const std::string& defaultName)>& ask);

} // namespace harvelop
