// The list of loggers and the opening of their panels: works entirely on stored data.
#pragma once

#include "core/options_controls.h"
#include "core/program_state.h"
#include "identify/search_state.h"
#include "links/link_state.h"
#include "settings/essentials.h"
#include "settings/logger_panels.h"
#include "settings/logger_records.h"
#include "settings/options_store.h"

#include <functional>
#include <string>

namespace harvelop
{

// The line of the list for a logger: its description, or model, serial number (KR4 family) and place.
std::string LoggerListLine(const LoggerRecord& record);

class LoggerViewing
{
public:
    LoggerViewing(Essentials essentials, LinkState& link, SearchState& search, LoggerTables& tables,
                  LoggerRecords& records, OptionsStore& store, LoggerPanels& panels, OptionsControls& controls,
                  ProgramState& state, DataFiles& files);

    std::function<void()> UnloadAddDialog; // closes `frmAddTallyCore` if it is open

    // Adds logger n's line to the list: at its head, or at its place while a logger is being added. A missing serial
    // number becomes "none".
    void AddLoggerToList(int number);

    // Saves and reloads the records if the options panel is loaded, then lists loggers 49 to 1. Slot 50 is never listed
    // here: that limit is meant.
    void RefreshFoundLoggers();

    // Empties the list and lists every stored logger.
    void RebuildList();

    // Opens the panel of the chosen logger, cascaded while a search runs. Nothing with an empty list.
    void cmdUnload_View_Click();
    // The same; a cascaded panel stands the further off the higher its logger's number.
    void View(bool cascaded);

    // Gives the panel of a logger its caption, its look and its place; nothing if it has none.
    void MakePanelReady(int number, bool cascaded);

    // Empties all slots but those of the loggers entered by hand; `found.ini` goes with the last of them.
    void ForgetFoundLoggers();

    // Makes a record and a hidden panel of each logger that a search has found, in the first slots that hold no logger
    // entered by hand.
    void PopulateTallycoresFormsWithFoundTallyCores();

    // Asks, then deletes the logger at `index` (from 1) of the list, with its delivery list.
    void DeleteLogger(int index);

private:
    bool chooseLogger(); // false if there is none
    std::string panelCaption(int number, const LoggerRecord& record) const;
    void setUp(LoggerPanel& panel, LoggerRecord& record, bool forView) const;
    void populateSlot(int find, int slot); // `find`: which find of the search, from 1
    bool mayDelete();

    Essentials m_use;
    LinkState& m_link;
    SearchState& m_search;
    LoggerTables& m_tables;
    LoggerRecords& m_records;
    OptionsStore& m_store;
    LoggerPanels& m_panels;
    OptionsControls& m_controls;
    ProgramState& m_state;
    DataFiles& m_files;
};

} // namespace harvelop
