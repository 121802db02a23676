#include "identify/port_search.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "identify/free_slots.h"
#include "settings/message_texts.h"

#include <algorithm>

namespace harvelop
{

namespace
{

constexpr const char* Probe = "127";

// The number at the end of a line of the port list, read off its last `count` characters; 0 if there is none.
int numberAtEnd(const std::string& text, size_t count)
{
    const std::string end = text.size() > count ? text.substr(text.size() - count) : text;
    return ToInt16(end).value_or(0);
}

} // namespace

PortSearch::PortSearch(Essentials essentials, modRS232& rs232, CommandExchange& exchange,
                       Identification& identification, LoggerViewing& viewing, OptionsControls& controls,
                       LinkState& link, SearchState& search, LoggerTables& tables, LoggerPanels& panels,
                       Options& options, ProgramState& state, ProgramEnd& end)
    : m_use(essentials),
      m_rs232(rs232),
      m_exchange(exchange),
      m_identification(identification),
      m_viewing(viewing),
      m_controls(controls),
      m_link(link),
      m_search(search),
      m_tables(tables),
      m_panels(panels),
      m_options(options),
      m_state(state),
      m_end(end)
{
}

void PortSearch::cmdUnload_FindTallycores_Click()
{
    m_controls.DisableOptionsControls();
    m_link.ConnectionKind = "RS232";
    m_state.AbortWait = false;
    const std::string chosen = m_state.cbxUnload_Ports.Text();
    if (!mayReplaceLoggers()) {
        m_controls.EnableOptionsControls();
        return;
    }
    beginSearch();
    forgetLoggers();
    searchPorts(chosen);
    if (m_search.FoundCount != 0)
        m_viewing.PopulateTallycoresFormsWithFoundTallyCores();
    else
        tellNothingFound(chosen);
    listFoundLoggers();
    m_state.SearchRunning = false;
    m_link.ConnectionKind = "RS232"; // listing has told each logger's own kind, and a modem would be hung up
    m_rs232.CloseLink();
    viewFoundLoggers();
}

bool PortSearch::mayReplaceLoggers()
{
    if (m_state.cbxUnload_TallyCores.Text().empty())
        return true;
    m_use.progress.HideMessageForm();
    return m_use.dialogs.Show({m_use.language.Text(551), BoxTitle, BoxIcon::Exclamation, BoxButtons::OkCancel}) ==
           BoxAnswer::Ok;
}

void PortSearch::beginSearch()
{
    m_viewing.ForgetFoundLoggers();
    m_state.SearchRunning = true;
    m_use.progress.ShowMessageForm();
    m_state.cbxUnload_TallyCores.Clear();
    if (m_options.AvailablePorts == "0" || m_options.FindPorts) {
        m_rs232.FindComPorts();
        m_rs232.ReportAvailablePorts();
        m_use.waiting.ServeEvents();
    }
    m_rs232.FillPortLists(false);
    m_use.progress.ShowProgressText(m_use.language.Text(300) + " ...");
    m_use.progress.SetProgressRange(SweepSteps);
    m_state.SearchRunning = true;
    m_options.LastUtallyCore = 0;
}

void PortSearch::forgetLoggers()
{
    for (int number = 1; number <= MaxLoggers && !m_end.Ended(); ++number) {
        const bool kept = IsKept(m_tables, number);
        // Before its panel goes, whose closing saves: no save brings the logger back.
        if (!kept)
            m_tables.FoundLoggerStrings[static_cast<size_t>(number - 1)].clear();
        m_panels.Unload(number);
        if (kept)
            continue;
        LoggerRecord& record = *m_tables.Record(number);
        record = LoggerRecord();
        record.LoggerPort = "0";
    }
    // What an earlier search has identified says nothing about the loggers of this one.
    m_search.IdentifiedModel.Fill("");
    m_search.IdentifiedSeries.Fill("");
    m_search.IdentifiedVersion.Fill("");
    m_search.IdentifiedSerial.Fill("");
}

void PortSearch::searchPorts(const std::string& chosen)
{
    m_search.FoundCount = 0;
    m_state.CurrentLogger = 0;
    if (chosen != AllPorts) {
        constexpr size_t PortDigits = 2;
        searchAndCount(numberAtEnd(chosen, PortDigits));
        return;
    }
    for (int port = 1; port <= ComPorts; ++port)
        if (m_link.PortAvailable[static_cast<size_t>(port - 1)])
            searchAndCount(port);
}

void PortSearch::searchAndCount(int port)
{
    m_search.LoggerFound = false; // a search that was stopped leaves it as it was
    SearchPort(port, Probe);
    if (m_search.LoggerFound)
        m_search.FoundPorts[static_cast<size_t>(m_search.FoundCount++)] = port;
}

void PortSearch::tellNothingFound(const std::string& chosen)
{
    const LanguageTables& language = m_use.language;
    m_controls.EnableOptionsControls();
    m_use.progress.ShowProgressText(language.Text(301));
    if (Holds(chosen, "All Ports")) {
        tellBox(language.LangActive ? language.Text(552) + " " + language.Text(503) + ".     "
                                    : "No tallyCores were found connected to this Computer.     ");
    } else {
        // The last digit alone, above port 9 too: that is meant.
        const std::string digit = chosen.empty() ? "" : chosen.substr(chosen.size() - 1);
        if (!m_link.PortBusySeen.Get(numberAtEnd(digit, 1)))
            tellBox(language.LangActive ? language.Text(553) + digit + language.Text(503) + ".     "
                                        : "No tallyCores were found connected to Com " + digit + ".     ");
    }
    m_controls.EnableOptionsControls();
    if (!m_state.LaunchCommand.empty())
        m_end.EndProgram();
}

void PortSearch::tellBox(const std::string& text)
{
    m_use.progress.HideMessageForm();
    m_use.dialogs.Show({text, BoxTitle, BoxIcon::Critical, BoxButtons::Ok});
}

void PortSearch::listFoundLoggers()
{
    m_use.progress.HideMessageForm();
    m_use.waiting.WaitMs(50);
    m_controls.SetCaption(" tallyCore Harvel Options");
    for (const int slot : foundSlots())
        m_viewing.MakePanelReady(slot, true);
    m_viewing.RefreshFoundLoggers();
    m_state.cbxUnload_TallyCores.Select(0);
}

void PortSearch::viewFoundLoggers()
{
    ListState& list = m_state.cbxUnload_TallyCores;
    for (const int slot : foundSlots()) {
        if (m_end.Ended())
            return;
        m_use.waiting.WaitMs(20);
        const int entry = slot - 1; // a logger's place in the list is its number minus 1
        if (entry < list.Count()) {
            list.Select(entry);
            m_viewing.View(true); // or the found panels would hide each other
        }
        m_use.waiting.WaitMs(20);
    }
    // No panel stands open whose closing would free the options panel.
    if (m_panels.CountVisiblePanels() == 0) {
        m_controls.EnableOptionsControls();
        m_controls.SetFormEnabled(true);
    }
}

std::vector<int> PortSearch::foundSlots() const
{
    auto slots = FreeSlots(m_tables);
    slots.resize(std::min(slots.size(), static_cast<size_t>(m_search.FoundCount)));
    return slots;
}

} // namespace harvelop
