#include "identify/identification.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "identify/free_slots.h"
#include "identify/model_table.h"

namespace harvelop
{

namespace
{

// Lines that go out with two line ends: one of their own and that of the link.
constexpr const char* WakeUp = "Q /H/r\r\n";
constexpr const char* Quiet = "Q /H/r/M/U/N\r\n";
constexpr const char* BackToNormal = "/h/R/U/N\r\n";

constexpr const char* CarriageReturn = "\r";
constexpr const char* Delete = "\x7f";

constexpr const char* PasswordQuestion =
    "A tallyCore was found but there was an error when "
    "trying to communicate with it. The tallyCore may be very busy, or it may have a password enabled. Either enter a "
    "password below "
    "and click OK, or click Cancel to cancel the search and try again.";

constexpr double MsOfSecond = 1000.0;

} // namespace

Identification::Identification(Essentials essentials, CommandExchange& exchange, SerialControl& serial, LinkState& link,
                               SearchState& search, LoggerTables& tables, OptionsStore& store, ProgramState& state)
    : m_use(essentials),
      m_exchange(exchange),
      m_port(serial),
      m_link(link),
      m_search(search),
      m_tables(tables),
      m_store(store),
      m_state(state)
{
}

void Identification::IdentifyLogger(bool keepNumber)
{
    if (m_state.StopSearch)
        return;
    if (!keepNumber)
        ++m_state.CurrentLogger;
    if (!m_state.AbortWait)
        m_use.progress.ShowMessageForm();
    m_search.IdentifiedModel.Set(m_state.CurrentLogger, "");
    m_link.LastReply.clear();
    m_exchange.txtCharacterWindow.Clear();
    wakeLogger();
    if (quietWithoutTerminal())
        return;
    askForModel();
    // With an accepted password a whole pass has run inside and has told everything.
    if (!m_search.PasswordRetry && PromptLoggerPassword())
        return;
    ReadLoggerModel();
}

LoggerRecord* Identification::RecordOf(int number)
{
    if (!m_state.SearchRunning)
        return m_tables.Record(number);
    const auto free = FreeSlots(m_tables);
    const bool exists = number >= 1 && number <= static_cast<int>(free.size());
    return exists ? m_tables.Record(free[static_cast<size_t>(number - 1)]) : nullptr;
}

bool Identification::quietWithoutTerminal() const
{
    return m_state.QuietConnect && !m_state.TerminalOpen;
}

void Identification::sendTwice(const std::string& text)
{
    for (int i = 0; i < 2; ++i) {
        m_exchange.SendToLogger(text);
        m_use.waiting.WaitMs(200);
    }
}

// What a logger chatters while it wakes up is not collected.
void Identification::wakeLogger()
{
    const auto listen = [this](int threshold) {
        if (m_link.LinkMode != "ComPort")
            return;
        m_port.RThreshold(threshold);
        m_port.ClearInBuffer();
    };
    listen(0);
    m_use.waiting.WaitMs(500);
    sendTwice(WakeUp);
    m_use.waiting.WaitMs(500);
    listen(1);
}

void Identification::askForModel()
{
    // Sent also when it is empty.
    if (const LoggerRecord* record = RecordOf(m_state.CurrentLogger))
        m_exchange.SendToLogger(record->LoggerPassword);
    m_use.waiting.WaitMs(2000);
    sendTwice(Quiet);
    m_exchange.SendToLogger("END");
    m_exchange.txtCharacterWindow.Clear();
    m_use.waiting.WaitMs(1000);

    const double usual = m_link.DefaultTimeout;
    if (const LoggerRecord* record = RecordOf(m_state.CurrentLogger))
        if (const auto seconds = ToDouble(record->LoggerTimeout))
            m_link.DefaultTimeout = *seconds * MsOfSecond;
    m_exchange.SendAndWait("TEST0", {"T,", 1, CarriageReturn, 1});
    m_link.DefaultTimeout = usual;
}

bool Identification::PromptLoggerPassword()
{
    if (quietWithoutTerminal())
        return false;
    m_search.PasswordRetry = false;
    if (!m_link.LastReply.empty())
        return false;
    m_use.progress.HideMessageForm();
    m_exchange.SendToLogger(Delete);
    m_exchange.WaitForResponse({"<", 1, "<", 1}, 250, false, false);
    m_link.LastReply.clear();                                 // what stood between the two is no model
    if (m_link.ResponseStatus != "PASS" || m_state.AbortWait) // who has cancelled is asked nothing
        return false;

    m_use.progress.ClearTopmost();
    const std::string password = m_use.dialogs.AskPassword(PasswordQuestion, " Harvel");
    m_use.progress.SetTopmost();
    m_link.ResponseText = password;
    m_use.progress.ShowMessageForm();
    if (password.empty()) {
        m_search.LoggerFound = false;
        return false;
    }
    m_exchange.SendAndWait(password, {"Accepted", 1, CarriageReturn, 1});
    if (m_link.ResponseStatus != "PASS")
        return false;
    m_search.PasswordRetry = true;
    keepPassword(password);
    IdentifyLogger(true);
    m_search.PasswordRetry = false;
    return true;
}

void Identification::keepPassword(const std::string& password)
{
    LoggerRecord* record = RecordOf(m_state.CurrentLogger);
    if (!record)
        return;
    record->LoggerPassword = password;
    // A stored logger's text follows, or the next load of the records would bring the old password back.
    if (!m_state.SearchRunning && m_tables.Holds(m_state.CurrentLogger))
        m_tables.FoundLoggerStrings[static_cast<size_t>(m_state.CurrentLogger - 1)] = RecordText(*record);
    m_store.SaveOptions();
}

void Identification::ReadLoggerModel()
{
    if (const auto named = ModelByName(m_link.LastReply))
        readNamedModel(*named);
    else
        readSignedModel();
    m_exchange.SendToLogger(BackToNormal);
    if (m_state.SearchRunning && !m_search.IdentifiedModel.Get(m_state.CurrentLogger).empty()) {
        sayFound();
        m_use.waiting.WaitMs(1000);
    }
}

void Identification::readNamedModel(const NamedModel& named)
{
    constexpr size_t VersionLength = 9;
    constexpr size_t SerialLength = 6;
    m_search.IdentifiedModel.Set(m_state.CurrentLogger, std::string(named.model));
    m_exchange.SendToLogger("/h/U/N");
    m_use.waiting.WaitMs(500);
    const std::string told = m_exchange.WaitForResponse({std::string(named.versionPrompt), 1, CarriageReturn, 1},
                                                        m_link.DefaultTimeout, false, false);
    storeVersion(told.substr(0, VersionLength), told);

    m_exchange.SendAndWait("CHARAC1", {"Serial Number", 1, CarriageReturn, 1});
    const std::string& reply = m_link.ResponseText;
    const auto start = static_cast<size_t>(named.serialPosition - 1);
    const std::string serial = start < reply.size() ? reply.substr(start, SerialLength) : std::string();
    m_search.IdentifiedSerial.Set(m_state.CurrentLogger - 1, serial);
}

void Identification::readSignedModel()
{
    constexpr size_t ReportLength = 30;
    constexpr size_t TailLength = 5;
    constexpr size_t VersionLength = 4;
    const std::string report = m_link.LastReply.substr(0, ReportLength);
    const std::string tail = report.size() > TailLength ? report.substr(report.size() - TailLength) : report;
    storeVersion(tail.substr(0, VersionLength), m_link.LastReply);

    if (const auto model = ModelBySignature(report)) {
        m_search.IdentifiedModel.Set(m_state.CurrentLogger, std::string(model->model));
        m_search.IdentifiedSeries.Set(m_state.CurrentLogger, std::string(model->series));
        return;
    }
    m_use.progress.ShowProgressText(m_use.language.Text(304) + " " + std::to_string(m_link.CurrentPort));
}

void Identification::storeVersion(const std::string& version, const std::string& reply)
{
    m_search.IdentifiedVersion.Set(m_state.CurrentLogger - 1, version);
    // A logger that is only silent today keeps the version that its record holds.
    LoggerRecord* record = RecordOf(m_state.CurrentLogger);
    if (record && !reply.empty())
        record->LoggerVersion = version;
}

void Identification::sayFound()
{
    const LanguageTables& language = m_use.language;
    const std::string model = m_search.IdentifiedModel.Get(m_state.CurrentLogger);
    const std::string series = m_search.IdentifiedSeries.Get(m_state.CurrentLogger);
    const std::string port = std::to_string(m_link.CurrentPort);
    std::string text = language.LangActive ? language.Text(305) + model : "Found a " + model;
    if (!IsKR4(model))
        text += language.LangActive ? language.Text(306) + series : " Series " + series;
    text += language.LangActive ? language.Text(307) + port : " on Com " + port;
    m_use.progress.ShowProgressText(text);
}

} // namespace harvelop
