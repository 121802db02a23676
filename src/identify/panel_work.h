// What the buttons of a logger's panel do: work on the logger, and the start of the unload program. All of it may wait,
// and a panel can be closed in any wait; so these are free functions, handed copies, and none comes back to the panel.
#pragma once

#include "identify/panel_steps.h"

namespace harvelop
{

// Makes the logger the one in work: the shared number, kind of link and description follow. With several panels open
// the shared state may be that of another one.
void MakeCurrent(const PanelServices& services, int number);

// Sends something to the logger: `action` between locked controls, then the link is closed.
void RunOnLogger(PanelServices services, int number, std::function<void()> action);

// The same with the bar of the progress window put to 0 first; a program that was started for this alone then ends.
void LoadOnLogger(PanelServices services, int number);

// Connects to the logger, clears something on it and closes the link. A failed connection leaves the controls enabled.
// With `clearMode` the flag of that name is set meanwhile.
void ClearOnLogger(PanelServices services, int number, std::function<void()> action, bool clearMode);

// Opens the link settings of the logger.
void SetCom(PanelServices services, int number);

// Saves all and starts the unload program for this logger.
void UnloadLogger(PanelServices services, int number);

// The same for all loggers, which is no panel's work.
struct UnloadServices {
    Essentials use;
    const LoggerTables& tables;
    OptionsStore& store;
    Desktop& desktop;
    const std::string& directory; // `AppPath`
};
void UnloadAllLoggers(const UnloadServices& services);

// Lets the user choose where the logger's data go; what it is now stands where nothing usable was chosen. True if it
// changed.
bool ChooseSaveFolder(PanelServices services, int number);

// The folder as it is stored: with a trailing separator. Nothing for a drive's root, and for one whose path holds a
// comma or a line end, which would end its field or its record.
std::optional<std::string> SaveFolderOf(const std::string& chosen);

} // namespace harvelop
