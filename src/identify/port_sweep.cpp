#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "identify/port_search.h"

#include <algorithm>
#include <iterator>

namespace harvelop
{

namespace
{

struct SweepRate {
    const char* baud;
    double replyMs; // how long a logger may take to answer the probe
};

constexpr SweepRate SweepRates[] = {
    {"115200", 10}, {"57600", 20}, {"56000", 30}, {"38400", 40}, {"28800", 50},  {"19200", 100},
    {"14400", 200}, {"9600", 300}, {"4800", 400}, {"2400", 500}, {"1200", 1000},
};

double replyMsOf(const std::string& baud)
{
    const auto found = std::find_if(std::begin(SweepRates), std::end(SweepRates),
                                    [&baud](const SweepRate& rate) { return rate.baud == baud; });
    return found == std::end(SweepRates) ? 0 : found->replyMs;
}

bool isPort(int port)
{
    return port >= 1 && port <= ComPorts;
}

} // namespace

void PortSearch::SearchPort(int port, const std::string& probe)
{
    if (stopped())
        return;
    m_search.FoundBaud = 0;
    m_search.LoggerFound = false;
    m_link.BusyPorts.clear();
    if (!isPort(port))
        return;
    m_rs232.OpenComPort(port);
    if (Holds(m_link.BusyPorts, std::to_string(port)))
        return;
    m_use.progress.SetProgressRange(SweepSteps);
    if (!sweep(probe)) {
        if (stopped())
            return;
        m_use.progress.ResetProgress();
        m_use.waiting.WaitMs(500);
        m_use.progress.ShowProgressText(m_use.language.Text(371) + " " + std::to_string(port));
        m_use.waiting.WaitMs(1000);
        m_use.progress.ClearBar();
    }
    m_search.PortBaud[static_cast<size_t>(port - 1)] = NumberText(m_search.FoundBaud);
}

bool PortSearch::sweep(const std::string& probe)
{
    static_assert(std::size(SweepRates) == SweepSteps);
    for (const SweepRate& rate : SweepRates) {
        TryPortAtBaud(rate.baud, probe);
        if (m_link.ResponseStatus == "PASS") {
            m_search.FoundBaud = static_cast<float>(ToDouble(rate.baud).value_or(0));
            return true;
        }
        if (stopped())
            return false;
    }
    return false;
}

bool PortSearch::stopped() const
{
    return m_state.StopSearch || m_end.Ended();
}

void PortSearch::TryPortAtBaud(const std::string& baud, const std::string& probe)
{
    if (m_state.StopSearch || !isPort(m_link.CurrentPort))
        return;
    setLine(baud);
    m_use.progress.StepProgress(1);
    if (!m_state.AddDialogOpen && !m_state.AbortWait)
        sayTrying(baud);
    m_use.waiting.ServeEvents();
    m_exchange.txtCharacterWindow.Clear();
    sendProbe(baud, probe);
    if (!m_state.StopSearch && m_link.ResponseStatus == "PASS") {
        m_search.LoggerFound = true;
        m_identification.IdentifyLogger(false);
        // The probe's own status ends the sweep, whatever the exchanges of the identification came to.
        m_link.ResponseStatus = "PASS";
        // A cancelled password question gives the number back.
        if (!m_search.LoggerFound)
            --m_state.CurrentLogger;
    }
    m_rs232.MSComm1.RThreshold(m_link.ReceiveThreshold);
}

void PortSearch::setLine(const std::string& baud)
{
    SerialControl& port = m_rs232.MSComm1;
    const auto entry = static_cast<size_t>(m_link.CurrentPort - 1);
    m_search.BaudText = baud;
    if (port.PortOpen())
        port.Close();
    m_search.PortParity[entry] = "N";
    m_search.PortDataBits[entry] = "8";
    m_search.PortStopBits[entry] = "1";
    m_search.PortFlow[entry] = "SWFC";
    m_rs232.SetComSettings(baud, m_search.PortParity[entry], m_search.PortDataBits[entry], m_search.PortStopBits[entry],
                           m_search.PortFlow[entry]);
    port.ClearInBuffer();
    port.Open();
}

void PortSearch::sayTrying(const std::string& baud)
{
    const LanguageTables& language = m_use.language;
    const std::string port = std::to_string(m_link.CurrentPort);
    m_use.progress.ShowProgressText(language.LangActive ? language.Text(372) + baud + " : " + port + language.Text(373)
                                                        : "Trying Com " + port + " : " + baud + " baud");
}

void PortSearch::sendProbe(const std::string& baud, const std::string& probe)
{
    if (m_link.ConnectionKind == "Dialup") {
        m_exchange.SendToLogger(probe);
        m_exchange.WaitForResponse({"", 1, "OK", 1}, 250, false, false);
        return;
    }
    const std::string character(1, static_cast<char>(ToInt16(probe).value_or(0)));
    m_exchange.SendToLogger(character);
    m_exchange.SendToLogger(character);
    m_use.waiting.WaitMs(500);
    m_exchange.WaitForResponse({"<<", 1, "<<", 1}, replyMsOf(baud), true, false);
}

} // namespace harvelop
