#include "links/modem.h"

#include "core/text_numbers.h"
#include "settings/message_texts.h"

namespace harvelop
{

namespace
{

// What the line to a modem is set to, whatever the logger behind it wants.
constexpr const char* Parity = "N";
constexpr const char* DataBits = "8";
constexpr const char* StopBits = "1";
constexpr const char* Flow = "HWFC";

constexpr double ReadingMs = 1000; // how long a step stands before the next one replaces it
constexpr double ModemMs = 100;    // what a modem gets to take in a command
constexpr std::string_view LineEnds = "\r\n";

constexpr std::string_view ConnectWord = "CONNECT";
const Markers OkAnswer = {"", 1, "OK", 1};
const Markers ConnectAnswer = {"", 1, std::string(ConnectWord), 1};

std::string trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

// Puts `DefaultTimeout` back however the dialogue ends: after a failed call, too, as otherwise every later wait would
// last as long as a dialling one.
class KeptTimeout
{
public:
    explicit KeptTimeout(double& timeout) : m_timeout(timeout), m_former(timeout) {}
    ~KeptTimeout() { m_timeout = m_former; }
    KeptTimeout(const KeptTimeout&) = delete;
    KeptTimeout& operator=(const KeptTimeout&) = delete;

private:
    double& m_timeout;
    const double m_former;
};

} // namespace

std::string ConnectSpeed(std::string_view window)
{
    constexpr size_t Longest = 5;
    std::string speed;
    for (size_t at = window.find(ConnectWord); at != std::string_view::npos; at = window.find(ConnectWord, at + 1)) {
        const std::string_view behind = window.substr(at + ConnectWord.size());
        const std::string_view line = behind.substr(0, behind.find_first_of(LineEnds));
        if (!line.empty())
            speed = trimmed(speed + std::string(line.substr(1, Longest)));
    }
    return speed;
}

Modem::Modem(Essentials essentials, modRS232& rs232, CommandExchange& exchange, LinkState& link,
             const LoggerTables& tables, const Options& options, ProgramState& state, Forms& forms, ProgramEnd& end)
    : m_use(essentials),
      m_rs232(rs232),
      m_exchange(exchange),
      m_link(link),
      m_tables(tables),
      m_options(options),
      m_state(state),
      m_forms(forms),
      m_end(end)
{
}

void Modem::ConnectDialup(int port)
{
    const LoggerRecord* record = m_tables.Record(m_state.CurrentLogger);
    if (m_state.StopLinkWork || !record)
        return;
    m_link.LinkDescription = record->LoggerModel + " via the Modem on Com " + std::to_string(port);
    const Call call{port, record->LoggerBaud, record->LoggerParity, false};
    switch (dial(call)) {
    case Outcome::Connected:
        tell(call, m_use.language.Text(313) + " " + m_link.LinkDescription);
        if (ConfirmConnected)
            ConfirmConnected();
        break;
    case Outcome::NoModem:
        tellNoModem(call);
        break;
    case Outcome::NoConnect:
        tellNoConnect(call);
        break;
    case Outcome::PortFailed:
    case Outcome::GivenUp:
        break;
    }
}

bool Modem::TestDialup(int port, const std::string& number, const std::string& init)
{
    if (m_state.StopLinkWork)
        return false;
    if (const LoggerRecord* record = m_tables.Record(m_state.CurrentLogger))
        m_link.LinkDescription = record->LoggerModel + " via the Modem on Com " + std::to_string(port);
    const Call call{port, number, init, true};
    const Outcome outcome = dial(call);
    if (outcome == Outcome::NoModem)
        tellNoModem(call);
    else if (outcome == Outcome::NoConnect)
        tellNoTestConnect(call);
    else if (outcome == Outcome::GivenUp)
        m_state.AbortWait = false;
    if (outcome != Outcome::Connected)
        return false;
    if (const LoggerRecord* record = m_tables.Record(m_state.CurrentLogger))
        tell(call, m_use.language.Text(313) + " " + record->LoggerModel + " ...");
    return !m_state.AbortWait;
}

// From finding the modem to the call that stands. What went wrong is left to the caller to tell.
Modem::Outcome Modem::dial(const Call& call)
{
    const LanguageTables& language = m_use.language;
    const std::string port = std::to_string(call.port);
    tell(call, language.Text(314) + " " + port + " ...");
    if (!pause(call, ReadingMs))
        return Outcome::GivenUp;
    setLine();
    m_rs232.OpenComPort(call.port);
    if (m_link.PortOpenFailed.Get(call.port))
        return Outcome::PortFailed;
    const bool found = findModem(call);
    if (isGivenUp(call))
        return Outcome::GivenUp;
    if (!found)
        return Outcome::NoModem;

    m_link.LinkConnected = true;
    tell(call, language.Text(315) + " " + port);
    if (!pause(call, ReadingMs))
        return Outcome::GivenUp;
    tell(call, language.Text(317) + " " + call.number + " ...");
    const KeptTimeout kept(m_link.DefaultTimeout);
    if (const auto seconds = ToDouble(m_options.ModemTimeout))
        m_link.DefaultTimeout = *seconds * 1000;
    m_exchange.SendToLogger(call.init);
    if (!pause(call, 2000))
        return Outcome::GivenUp;
    m_exchange.SendAndWait("atdt" + call.number, ConnectAnswer);
    if (isGivenUp(call))
        return Outcome::GivenUp;
    if (m_link.ResponseStatus == "FAIL")
        return Outcome::NoConnect;

    awaitRestOfLine();
    const std::string speed = ConnectSpeed(m_exchange.txtCharacterWindow.Text());
    if (call.forTest)
        tell(call, "Connected at " + speed + " baud");
    else
        tell(call, language.Text(319) + " " + call.number + " " + language.Text(320) + " " + speed + " " +
                       language.Text(321));
    return pause(call, call.forTest ? 2000 : ReadingMs) ? Outcome::Connected : Outcome::GivenUp;
}

bool Modem::findModem(const Call& call)
{
    m_link.ResponseStatus = "FAIL"; // until the modem has been asked
    m_rs232.WriteToPort("+++");
    if (!pause(call, ModemMs))
        return false;
    m_exchange.SendToLogger("ath0");
    if (!pause(call, ModemMs))
        return false;
    m_exchange.SendAndWait("ate0v1", OkAnswer);
    return m_link.ResponseStatus == "PASS";
}

// Without a logger in work the port keeps the settings that it has.
void Modem::setLine()
{
    if (const LoggerRecord* record = m_tables.Record(m_state.CurrentLogger))
        m_rs232.SetComSettings(record->LoggerDataBits, Parity, DataBits, StopBits, Flow);
}

// The wait for an answer ends at its word; what the modem says behind it may still be on the line.
void Modem::awaitRestOfLine()
{
    constexpr double LongestMs = 100;
    constexpr double StepMs = 10;
    const auto lineEnded = [this] {
        const std::string& text = m_exchange.txtCharacterWindow.Text();
        const size_t word = text.rfind(ConnectWord);
        return word == std::string::npos || text.find_first_of(LineEnds, word) != std::string::npos;
    };
    for (double waited = 0; waited < LongestMs && !lineEnded() && !m_end.Ended(); waited += StepMs)
        m_use.waiting.WaitMs(StepMs);
}

// Waits, and says whether the work may go on.
bool Modem::pause(const Call& call, double ms)
{
    m_use.waiting.WaitMs(ms);
    return !isGivenUp(call);
}

bool Modem::isGivenUp(const Call& call)
{
    if (giveUp())
        return true;
    if (!call.forTest || !m_state.AbortWait)
        return false;
    m_link.LinkConnected = false;
    return true;
}

// With the options panel or the terminal closed, or the program ended, nobody waits for the call: what a modem answered
// must not pass for a logger that was reached.
bool Modem::giveUp()
{
    const bool terminalClosed = m_state.QuietConnect && !m_state.TerminalOpen;
    if (!m_state.StopLinkWork && !terminalClosed && !m_end.Ended())
        return false;
    m_link.LinkConnected = false;
    return true;
}

void Modem::tellNoModem(const Call& call)
{
    const std::string port = " " + std::to_string(call.port);
    m_link.LinkConnected = false;
    tell(call, m_use.language.Text(316) + port);
    if (!pause(call, ReadingMs))
        return;
    m_use.progress.HideMessageForm();
    if (m_options.ShowMessages)
        tellBox(either(316, "Could not find a modem on com") + port + ".     ", BoxIcon::Critical, BoxTitle);
    if (!m_state.LaunchCommand.empty())
        m_end.EndProgram();
}

void Modem::tellNoConnect(const Call& call)
{
    m_link.LinkConnected = false;
    tell(call, m_use.language.Text(318) + " " + call.number);
    if (!pause(call, ReadingMs))
        return;
    if (m_options.ShowMessages)
        tellBox(either(318, "Could not dial") + " " + call.number + ".     ", BoxIcon::Critical, BoxTitle);
    if (m_state.RunMode == "IconProgram")
        return m_end.EndProgram();
    tell(call, m_use.language.Text(324) + " " + std::to_string(call.port) + " @ " + m_rs232.MSComm1.Settings());
}

void Modem::tellNoTestConnect(const Call& call)
{
    m_exchange.SendToLogger("at&h");
    m_rs232.CloseLink();
    m_link.LinkConnected = false;
    tell(call, "Could Not Connect to " + call.number);
    if (pause(call, ReadingMs) && m_options.ShowMessages)
        tellBox("Could not Connect to " + call.number + ".     ", BoxIcon::Critical, BoxTitle);
}

void Modem::ResetModem(int port, const std::string& init)
{
    if (m_state.StopLinkWork)
        return;
    m_link.ConnectionKind = "Dialup";
    m_state.TestRunning = true;
    m_state.AbortWait = false;
    const std::string caption = m_forms.add ? m_forms.add->Caption() : std::string();
    {
        const KeptTimeout kept(m_link.DefaultTimeout);
        m_link.DefaultTimeout = 1500;
        tellCaption(" " + m_use.language.Text(518) + " " + std::to_string(port) + " ...");
        setLine();
        m_rs232.OpenComPort(port);
        if (!m_link.PortOpenFailed.Get(port))
            tellReset(port, init);
        m_exchange.SendAndWait("at&h", OkAnswer);
        m_rs232.CloseLink();
        tellCaption(caption);
    }
    m_state.TestRunning = false;
    m_state.AbortWait = false;
}

void Modem::tellReset(int port, const std::string& init)
{
    const LanguageTables& language = m_use.language;
    const std::string onPort = " " + std::to_string(port);
    // With the dialog gone nobody waits for it.
    const auto cancelled = [this] { return m_state.AbortWait || m_state.StopLinkWork || m_end.Ended(); };
    const auto cancelledIn = [&](double ms) {
        m_use.waiting.WaitMs(ms);
        return cancelled();
    };
    m_rs232.WriteToPort("+++");
    // Meant: nothing is sent between these two, though a line would fit.
    if (cancelledIn(ModemMs) || cancelledIn(ModemMs))
        return;
    m_exchange.SendAndWait("at", OkAnswer);
    if (cancelled())
        return;
    if (m_link.ResponseStatus == "FAIL") {
        tellCaption(" " + either(316, "No Modem Found on Com") + onPort);
        tellBox(either(316, "Could Not Find a Modem on Com Port") + onPort + ".     ", BoxIcon::Critical,
                " tallyCore Search");
        return;
    }
    tellCaption(" " + language.Text(315) + onPort);
    if (cancelledIn(ReadingMs))
        return;
    m_link.LinkConnected = true;
    m_exchange.SendToLogger(init);
    if (cancelledIn(ReadingMs))
        return;
    tellCaption(" " + language.Text(520));
    if (cancelledIn(ReadingMs))
        return;
    tellBox(language.Text(521), BoxIcon::Information, " " + language.Text(503));
}

void Modem::tell(const Call& call, const std::string& text)
{
    if (call.forTest)
        tellCaption(text);
    else
        m_use.progress.ShowProgressText(text);
}

// The dialog may have been closed during the wait before.
void Modem::tellCaption(const std::string& text)
{
    if (m_forms.add && !m_end.Ended())
        m_forms.add->SetCaption(text);
}

void Modem::tellBox(const std::string& text, BoxIcon icon, const std::string& title)
{
    ShowInFront(m_use, {text, title, icon});
}

// Where the English words differ from those that the number stands for elsewhere.
std::string Modem::either(int number, const char* english) const
{
    return m_use.language.LangActive ? m_use.language.Text(number) : english;
}

} // namespace harvelop
