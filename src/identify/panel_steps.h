// What a logger's panel does to the tables and the shared state. The panel and its stand-in for programs without a
// display take the same steps, so the loggers' file comes out the same from both.
#pragma once

#include "core/options_controls.h"
#include "core/program_end.h"
#include "core/program_state.h"
#include "identify/logger_viewing.h"
#include "links/link_state.h"
#include "settings/essentials.h"
#include "settings/logger_panels.h"
#include "settings/logger_records.h"
#include "settings/options_store.h"

#include <functional>
#include <string>

namespace harvelop
{

// What a panel works with.
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
};

// How messages name a logger: "KR40 at 10.0.0.5:3000". As the link type, the host and the TCP port of the record stand.
std::string LinkDescriptionOf(const LoggerRecord& record);

// Loads the panel of a logger: locks the options panel, fills what the record lacks, hands `show` the state of the
// controls, and builds the record from what the panel then shows. A number outside 1 to 50 has no values to show.
void LoadPanel(const PanelServices& services, int number, const std::function<void(const PanelValues&)>& show);

// Takes the logger's panel into its record, saves and reloads all records and lists them anew.
void StorePanel(const PanelServices& services, int number);

// What belongs to closing, in whatever way: `mdb` is the state of `chkMdb`. The panel still counts as open; the last
// one frees the options panel. A program that was started for one command ends.
void ClosePanel(const PanelServices& services, int number, bool mdb);

} // namespace harvelop
