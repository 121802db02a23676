// The search for loggers on the com ports.
#pragma once

#include "core/options_controls.h"
#include "core/program_state.h"
#include "identify/identification.h"
#include "identify/logger_viewing.h"
#include "identify/search_state.h"
#include "links/command_exchange.h"
#include "links/modRS232.h"
#include "settings/essentials.h"
#include "settings/logger_records.h"

#include <string>
#include <vector>

namespace harvelop
{

class PortSearch
{
public:
    PortSearch(Essentials essentials, modRS232& rs232, CommandExchange& exchange, Identification& identification,
               LoggerViewing& viewing, OptionsControls& controls, LinkState& link, SearchState& search,
               LoggerTables& tables, LoggerPanels& panels, Options& options, ProgramState& state, ProgramEnd& end);

    // The Find button: asks if loggers are stored, then replaces them by those found on the chosen port, the text of
    // `cbxUnload_Ports` (" All Ports", " Com 3"). Loggers entered by hand stay. Nothing changes if the user declines.
    void cmdUnload_FindTallycores_Click();

    // Sweeps one port over the baud rates, from fast to slow; `probe` is the code of the character that wakes a logger.
    void SearchPort(int port, const std::string& probe);

    // Tries one rate on the current port, and identifies the logger that answers.
    void TryPortAtBaud(const std::string& baud, const std::string& probe);

private:
    // The steps of the Find button, in their order.
    bool mayReplaceLoggers();
    void beginSearch();
    void forgetLoggers();
    void searchPorts(const std::string& chosen);
    void tellNothingFound(const std::string& chosen);
    void listFoundLoggers();
    void viewFoundLoggers();

    void searchAndCount(int port);
    void tellBox(const std::string& text);
    std::vector<int> foundSlots() const;

    // The steps of a sweep over the rates of one port.
    static constexpr int SweepSteps = 11;
    bool sweep(const std::string& probe); // true if a logger answered at some rate
    bool stopped() const;
    void setLine(const std::string& baud);
    void sayTrying(const std::string& baud);
    void sendProbe(const std::string& baud, const std::string& probe);

    Essentials m_use;
    modRS232& m_rs232;
    CommandExchange& m_exchange;
    Identification& m_identification;
    LoggerViewing& m_viewing;
    OptionsControls& m_controls;
    LinkState& m_link;
    SearchState& m_search;
    LoggerTables& m_tables;
    LoggerPanels& m_panels;
    Options& m_options;
    ProgramState& m_state;
    ProgramEnd& m_end;
};

} // namespace harvelop
