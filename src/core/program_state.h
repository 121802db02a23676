// The state that every subsystem shares: what `frmTaskbar` owns.
#pragma once

#include "core/list_state.h"

#include <cstdint>
#include <string>

namespace harvelop
{

struct ProgramState {
    // Where the program works.
    std::string AppPath;   // application directory with a trailing separator
    std::string DriveRoot; // the root under which the user may write, with a trailing separator
    bool FirstRun = false; // from the start of the first-run set-up until the records have been read

    // How it was started.
    std::string LaunchCommand;     // the command line without double quotes; empty unless it holds "::"
    std::string RunMode;           // "" or, for a program load from a shortcut, "IconProgram"
    bool SingleLoggerMode = false; // started for one logger's panel
    bool TerminalOnly = false;     // closing the terminal ends the program
    bool TerminalStarting = false; // only while the terminal is being shown at start-up

    // Which logger. Numbers run from 1 to 50; 0: none.
    std::int16_t CurrentLogger = 0; // being worked on
    std::int16_t ChosenLogger = 0;  // picked in a list

    // What is open or going on.
    bool OptionsLoaded = false;     // the options panel has loaded, and Ok has not been pressed
    bool MessagesLoaded = false;    // the progress window has loaded
    bool TerminalOpen = false;      // the terminal is up
    bool AddDialogOpen = false;     // the add-a-logger dialog is loaded
    bool QuietConnect = false;      // connecting for the terminal: no progress window
    bool StopLinkWork = false;      // the options panel was closed: connecting and login tests give up
    bool StopSearch = false;        // the options panel was closed: the port search gives up
    bool SearchRunning = false;     // a port search runs
    bool TestRunning = false;       // a test or modem reset of the add dialog runs
    bool AbortWait = false;         // a running wait for a reply gives up
    bool AddingLogger = false;      // a logger is being entered by hand
    bool AddRebuildPending = false; // the list has the logger that is being added already: it is not made anew
    bool NewLoggerMode = false;     // the panel that loads next is that of a new logger
    bool EditingExisting = false;   // the add dialog changes an existing logger
    bool DeletingLogger = false;    // a record is being deleted: building one does not save
    bool ClearMode = false;         // connecting to a logger to clear its programs

    // What the editors of a logger's panel are opened for.
    std::string ListKind;     // "Email": its delivery lists; "Disk": its save folder
    std::string RunEditKind;  // "Program" or "Command"
    std::string AllowedChars; // the character set of the field filter that ran last

    // The two lists of the options panel.
    ListState cbxUnload_Ports;
    ListState cbxUnload_TallyCores;
};

} // namespace harvelop
