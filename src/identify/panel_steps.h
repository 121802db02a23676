// What a logger's panel does to the tables and the shared state. The panel and its stand-in for programs without a
// display take the same steps, so the loggers' file comes out the same from both.
#pragma once

#include "core/options_controls.h"
#include "core/program_end.h"
#include "core/program_state.h"
#include "identify/logger_viewing.h"
#include "identify/search_state.h"
#include "links/link_state.h"
#include "platform/data_files.h"
#include "platform/desktop.h"
#include "settings/delivery_lists.h"
#include "settings/essentials.h"
#include "settings/logger_controls.h"
#include "settings/logger_panels.h"
#include "settings/logger_records.h"
#include "settings/options_store.h"

#include <functional>
#include <string>

namespace harvelop
{

// What the buttons of a panel do with its logger; they find it by `CurrentLogger`. One that is not set is something
// that this program does not do yet: its button then does nothing, and says so in its tool tip.
struct LoggerActions {
    std::function<void()> ShowAddDialog; // `frmAddTallyCore`, modal; returns when it closes
    std::function<void()> LoadProgram;
    std::function<void()> LoadCardProgram;
    std::function<void()> LoadFlashProgram;
    std::function<void()> ClearPrograms;
    std::function<void()> ClearCardPrograms;
    std::function<void()> ClearFlash;
    std::function<void(int)> ConnectLogger; // the logger's number
    std::function<void()> CloseLink;
};

// What a panel and its editors work with.
struct PanelServices {
    Essentials use;
    const Options& options;
    ProgramState& state;
    OptionsStore& store;
    LoggerTables& tables;
    LoggerRecords& records;
    LoggerPanels& panels;
    LoggerViewing& viewing;
    OptionsControls& controls;
    const Forms& forms;
    LinkState& link;
    ProgramEnd& end;
    const SearchState& search;
    DeliveryLists& lists;
    LoggerControls& loggerControls;
    const LoggerActions& actions;
    DataFiles& files;
    Desktop& desktop;
};

// Where a logger's data go that has no folder of its own yet; the unload program makes it.
std::string StandardSaveFolder(const std::string& driveRoot);

// How messages name a logger: "KR40 at 10.0.0.5:3000". As the link type, the host and the TCP port of the record stand.
std::string LinkDescriptionOf(const LoggerRecord& record);

// Loads the panel of a logger: locks the options panel, fills what the record lacks, hands `show` the state of the
// controls, and builds the record from what the panel then shows. A number outside 1 to 50 has no values to show.
void LoadPanel(const PanelServices& services, int number, const std::function<void(const PanelValues&)>& show);

// Takes the logger's panel into its record, saves and reloads all records and lists them anew.
void StorePanel(const PanelServices& services, int number);

// Whether the logger's data also go to a database: written at once, so that no reload of the records loses it.
void StoreMdb(const PanelServices& services, int number, bool on);

// What belongs to closing, in whatever way: `mdb` is the state of `chkMdb`. The panel still counts as open; the last
// one frees the options panel, unless work on a logger still goes on. A program that was started for one command ends.
void ClosePanel(const PanelServices& services, int number, bool mdb);

} // namespace harvelop
