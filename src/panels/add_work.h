// What the add dialog does: the test of a connection, the storing of a logger, and what belongs to its closing. The
// test waits, and the dialog can be closed in any wait; so these are free functions, handed copies, and none comes back
// to the dialog but through `Forms::add`.
#pragma once

#include "core/forms.h"
#include "core/options_controls.h"
#include "core/program_state.h"
#include "identify/identification.h"
#include "identify/logger_viewing.h"
#include "identify/search_state.h"
#include "links/command_exchange.h"
#include "links/connect.h"
#include "links/link_state.h"
#include "links/modEthernet.h"
#include "links/modRS232.h"
#include "links/modem.h"
#include "panels/add_rules.h"
#include "settings/essentials.h"
#include "settings/logger_controls.h"
#include "settings/logger_panels.h"
#include "settings/logger_records.h"
#include "settings/options_store.h"

#include <functional>

namespace harvelop
{

struct AddServices {
    Essentials use;
    const Options& options;
    ProgramState& state;
    OptionsStore& store;
    LoggerTables& tables;
    LoggerRecords& records;
    LoggerPanels& panels;
    LoggerViewing& viewing;
    OptionsControls& controls;
    LoggerControls& loggerControls;
    Forms& forms;
    LinkState& link;
    const SearchState& search;
    modRS232& rs232;
    modEthernet& ethernet;
    CommandExchange& exchange;
    Modem& modem;
    Identification& identification;
    Connecting& connecting;
};

// Looks for a logger by what the controls hold and tells in a box what was found; stores nothing. The caption of the
// dialog tells the steps. Once the dialog is gone (`AddDialogOpen`) nothing more is told, and the link is released as
// soon as the running step ends; no other work can start before.
void TestConnection(AddServices services, const AddValues& values);

// Resets the modem, under the same locks.
void ResetModem(AddServices services, const AddValues& values);

// Stores what the controls hold: into the record of `CurrentLogger` while `EditingExisting` is set, otherwise into the
// first free slot, whose panel is then opened, which closes the dialog. Both files are saved.
void StoreLogger(AddServices services, const AddValues& values);

// What belongs to closing, in whatever way: a running wait ends, a modem is told to hang up, the modes are left.
void CloseAddDialog(AddServices services);

} // namespace harvelop
