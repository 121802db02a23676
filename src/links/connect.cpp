#include "links/connect.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "settings/message_texts.h"

#include <array>

namespace harvelop
{

namespace
{

// A record that was entered by hand holds the word, one that a search found the letter.
std::string parityLetter(std::string_view parity)
{
    constexpr std::array<std::string_view, 3> Words = {"None", "Odd", "Even"};
    for (const std::string_view word : Words)
        if (parity == word || parity == word.substr(0, 1))
            return std::string(word.substr(0, 1));
    return {};
}

} // namespace

Connecting::Connecting(Essentials essentials, modRS232& rs232, modEthernet& ethernet, Modem& modem,
                       CommandExchange& exchange, LinkState& link, const LoggerTables& tables, ProgramState& state,
                       const Options& options, ProgramEnd& end)
    : m_use(essentials),
      m_rs232(rs232),
      m_ethernet(ethernet),
      m_modem(modem),
      m_exchange(exchange),
      m_link(link),
      m_tables(tables),
      m_state(state),
      m_options(options),
      m_end(end)
{
}

void Connecting::ConnectLogger(int number)
{
    m_state.AbortWait = false;
    if (!m_state.TerminalOpen && m_state.QuietConnect)
        return;
    if (!m_state.QuietConnect) {
        m_use.progress.ClearBar();
        m_use.progress.ShowMessageForm();
    }
    m_link.LinkConnected = false;
    m_link.ConnectionKind = "RS232";
    if (const LoggerRecord* record = m_tables.Record(number))
        m_link.ConnectionKind = LinkTypeOf(*record);
    const LoggerRecord* record = m_tables.Record(m_state.CurrentLogger);
    if (m_state.StopLinkWork || !record)
        return;
    if (m_link.ConnectionKind == "Ethernet")
        ConnectEthernet(record->LoggerHost, record->LoggerTcpPort);
    else if (const auto port = ToInt16(record->LoggerPort); port && m_link.ConnectionKind == "Dialup")
        m_modem.ConnectDialup(*port);
    else if (port)
        ConnectRS232(*port);
}

void Connecting::ConnectRS232(int port)
{
    if (m_state.StopLinkWork)
        return;
    m_link.LinkMode = "ComPort";
    const LoggerRecord* record = m_tables.Record(m_state.CurrentLogger);
    if (record)
        m_link.LinkDescription = record->LoggerModel + " on Com " + record->LoggerPort;
    tellLooking(313);
    SerialControl& serial = m_rs232.MSComm1;
    if (serial.PortOpen())
        serial.Close();
    if (record) {
        serial.Settings(record->LoggerBaud + "," + parityLetter(record->LoggerParity) + "," + record->LoggerDataBits +
                        "," + record->LoggerStopBits);
        m_rs232.SetHandshaking(record->LoggerFlow);
    }
    m_rs232.OpenComPort(port);
    if (const bool* failed = m_link.PortOpenFailed.At(port); failed && !*failed)
        ConfirmConnected();
}

void Connecting::ConnectEthernet(const std::string& host, const std::string& tcpPort)
{
    if (m_state.StopLinkWork)
        return;
    m_link.LinkMode = "Ethernet";
    if (const LoggerRecord* record = m_tables.Record(m_state.CurrentLogger))
        m_link.LinkDescription = record->LoggerModel + " at " + host + ":" + tcpPort;
    tellLooking(322);
    m_link.DefaultTimeout = 5000;
    m_link.EthernetConnected = false;
    m_ethernet.OpenEthernet(host, tcpPort, "TCP");
    WaitForEthernet();
    ConfirmConnected();
}

// A language file's pieces are joined as they stand; the English one wants a blank.
void Connecting::tellLooking(int number)
{
    const char* gap = m_use.language.LangActive ? "" : " ";
    m_use.progress.ShowProgressText(m_use.language.Text(number) + gap + m_link.LinkDescription + " ...");
}

void Connecting::ReleaseLink()
{
    if (m_link.ConnectionKind == "Ethernet")
        m_ethernet.CloseEthernet();
    else
        m_rs232.CloseLink();
}

void Connecting::WaitForEthernet()
{
    constexpr int Tries = 6;
    constexpr double TryMs = 1000;
    for (int tries = 0; tries < Tries && !m_link.EthernetConnected && !isGivenUp(); ++tries)
        m_use.waiting.WaitMs(TryMs);
}

// With the options panel closed, or the program ended, nobody waits for the link.
bool Connecting::isGivenUp() const
{
    return m_state.StopLinkWork || m_end.Ended();
}

void Connecting::ConfirmConnected()
{
    const LoggerRecord* record = m_tables.Record(m_state.CurrentLogger);
    if (m_link.ConnectionKind != "Ethernet" && !isGivenUp()) {
        if (record)
            m_exchange.SendToLogger(record->LoggerPassword);
        constexpr double WakeMs = 1500;
        m_use.waiting.WaitMs(WakeMs);
    }
    const std::string model = isGivenUp() ? std::string() : IdentifyLogger();
    record = m_tables.Record(m_state.CurrentLogger); // the wait may have changed which logger that is
    constexpr size_t Compared = 5;
    if (isGivenUp())
        m_link.LinkConnected = false;
    else if (!model.empty() && record && Holds(record->LoggerModel, model.substr(0, Compared)))
        tellRightLogger();
    else
        tellWrongLogger();
    m_exchange.txtTerminal.clear();
}

void Connecting::tellRightLogger()
{
    m_link.LinkConnected = true;
    m_use.progress.ShowMessageForm();
    m_use.progress.ShowProgressText(m_use.language.Text(325) + " " + m_link.LinkDescription);
    m_use.waiting.WaitMs(1000);
    if (m_state.QuietConnect)
        m_use.progress.ShowProgressText(m_use.language.Text(326) + " " + m_link.LinkDescription);
}

void Connecting::tellWrongLogger()
{
    const LanguageTables& language = m_use.language;
    m_link.LinkConnected = false;
    if (!m_state.TerminalOpen && m_state.QuietConnect)
        return;
    m_use.progress.ShowProgressText(language.Text(323) + " " + m_link.LinkDescription);
    m_use.waiting.WaitMs(1000);
    if (isGivenUp())
        return;
    m_use.progress.HideMessageForm();
    if (m_options.ShowMessages) {
        const std::string notFound =
            language.LangActive ? language.Text(323) : "Could not find a"; // not as above: meant
        m_use.dialogs.Show({notFound + " " + m_link.LinkDescription + ".     ", BoxTitle, BoxIcon::Critical});
    }
    if (!m_state.LaunchCommand.empty())
        m_end.EndProgram();
    if (!m_state.TerminalOpen)
        return;
    if (m_link.ConnectionKind == "Ethernet")
        m_use.progress.ShowProgressText(language.Text(394));
    else
        m_use.progress.ShowProgressText(language.Text(324) + " " + std::to_string(m_link.CurrentPort) + " @ " +
                                        m_rs232.MSComm1.Settings());
}

} // namespace harvelop
