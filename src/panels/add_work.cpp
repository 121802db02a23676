#include "panels/add_work.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "settings/message_texts.h"

#include <optional>

namespace harvelop
{

namespace
{

// The language file's captions come without the leading blank.
std::string captionOf(const LanguageTables& language, int number)
{
    return (language.LangActive ? "" : " ") + language.Text(number) + " ...";
}

void setCaption(const AddServices& services, const std::string& caption)
{
    if (services.state.AddDialogOpen && services.forms.add)
        services.forms.add->SetCaption(caption);
}

// Keeps everything else from starting while the dialog talks to something: a dialog that is closed meanwhile no longer
// stands before the other windows.
class TestLock
{
public:
    explicit TestLock(const AddServices& services) : m_use(services), m_editing(services.state.EditingExisting)
    {
        m_use.state.TestRunning = true;
        m_use.state.AbortWait = false;
        m_use.state.StopSearch = false;
        if (m_use.forms.add)
            m_caption = m_use.forms.add->Caption();
        m_use.controls.DisableOptionsControls();
        if (m_editing)
            m_use.loggerControls.DisableLoggerControls();
    }
    ~TestLock()
    {
        setCaption(m_use, m_caption);
        m_use.state.TestRunning = false;
        m_use.state.AbortWait = false;
        if (m_editing)
            m_use.loggerControls.EnableLoggerControls();
        m_use.use.progress.HideMessageForm();
        const bool panelOpen = m_use.panels.CountVisiblePanels() > 0; // it frees the options when it is closed
        if (m_use.state.CurrentLogger == 0 || !panelOpen)
            m_use.controls.EnableOptionsControls();
        if (m_editing && !panelOpen)
            m_use.controls.FreeOptions();
    }
    TestLock(const TestLock&) = delete;
    TestLock& operator=(const TestLock&) = delete;

private:
    AddServices m_use;
    bool m_editing;
    std::string m_caption;
};

bool isGone(const AddServices& services)
{
    return !services.state.AddDialogOpen || services.use.waiting.Ended();
}

bool openPort(const AddServices& services, const AddValues& values)
{
    services.link.LinkMode = "ComPort";
    services.rs232.SetComSettings(values.baud, TestParityLetter(values.parity), values.dataBits, values.stopBits,
                                  values.flow);
    services.link.LinkConnected = true;
    const auto port = ToInt16(values.port);
    if (!port)
        return false;
    services.rs232.OpenComPort(*port);
    return !services.link.PortOpenFailed.Get(*port) && !Holds(services.link.BusyPorts, std::to_string(*port));
}

bool openModem(const AddServices& services, const AddValues& values)
{
    const auto port = ToInt16(values.modemPort);
    return port && services.modem.TestDialup(*port, values.phone, values.init) && !services.state.AbortWait;
}

// Both kinds of serial link. False once the dialog is gone.
bool identifySerial(const AddServices& services, const std::string& password)
{
    constexpr double WakeMs = 1500;
    services.exchange.SendToLogger(password);
    services.use.waiting.WaitMs(WakeMs);
    for (int tries = 0; tries < 2 && !isGone(services); ++tries) {
        services.identification.IdentifyLogger(true);
        if (!services.search.IdentifiedModel.Get(services.state.CurrentLogger).empty())
            break;
    }
    return !isGone(services);
}

bool identifyNetwork(const AddServices& services, const AddValues& values)
{
    services.link.LinkMode = "Ethernet";
    services.link.EthernetConnected = false;
    services.ethernet.CloseEthernet();
    services.ethernet.OpenEthernet(values.address, values.tcpPort, "TCP");
    services.connecting.WaitForEthernet();
    if (!isGone(services))
        services.identification.IdentifyLogger(true);
    return !isGone(services);
}

// True if the outcome of an identification is to be told.
bool identify(const AddServices& services, const AddValues& values)
{
    if (values.kind == "Ethernet")
        return identifyNetwork(services, values);
    const bool open = values.kind == "Dialup" ? openModem(services, values) : openPort(services, values);
    return open && !isGone(services) && identifySerial(services, values.password);
}

void tell(const AddServices& services, const AddValues& values)
{
    const int number = services.state.CurrentLogger;
    ShowInFront(services.use, TestBox(services.use.language, values, services.search.IdentifiedModel.Get(number),
                                      services.search.IdentifiedSeries.Get(number)));
}

// While a logger is being added, `CurrentLogger` may still be another one: what is found out, or asked for, is not its.
void restore(const AddServices& services, int number, const LoggerRecord& before)
{
    LoggerRecord& record = *services.tables.Record(number);
    const bool saved = record.LoggerPassword != before.LoggerPassword;
    record.LoggerVersion = before.LoggerVersion;
    record.LoggerPassword = before.LoggerPassword;
    if (!saved)
        return;
    services.records.KeepTables(number);
    services.store.SaveOptions();
}

int firstFreeSlot(const LoggerTables& tables)
{
    for (int number = 1; number <= MaxLoggers; ++number)
        if (!tables.Holds(number))
            return number;
    return 0;
}

void listAnew(const AddServices& services)
{
    ListState& list = services.state.cbxUnload_TallyCores;
    const int selected = list.Selected();
    services.viewing.RebuildList();
    list.Select(selected);
}

// Gives the number of the logger, 0 if there is no slot for it. Its panel may have been closed again already.
int addLogger(const AddServices& services, const AddValues& values)
{
    const int number = firstFreeSlot(services.tables);
    LoggerRecord* record = services.tables.Record(number);
    if (!record)
        return 0;
    services.state.ChosenLogger = static_cast<std::int16_t>(number);
    *record = LoggerRecord(); // a logger that was deleted leaves its settings in its slot
    record->LoggerModel = StoredModel(values.model, values.series);
    record->LoggerMdbOn = "0";
    StoreValues(values, true, *record);
    services.store.SaveOptions();
    services.viewing.cmdUnload_View_Click();
    return number;
}

int changeLogger(const AddServices& services, const AddValues& values)
{
    const int number = services.state.CurrentLogger;
    LoggerRecord* record = services.tables.Record(number);
    if (!record)
        return 0;
    StoreValues(values, false, *record);
    if (LoggerPanel* panel = services.panels.At(number))
        panel->SetSerial(record->LoggerSerial);
    services.store.SaveOptions();
    return number;
}

} // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): the dialog that it came from may go meanwhile
void TestConnection(AddServices services, const AddValues& values)
{
    const TestLock lock(services);
    const AddValues tested = values;
    const int number = services.state.CurrentLogger;
    std::optional<LoggerRecord> before;
    if (const LoggerRecord* record = services.tables.Record(number); record && !services.state.EditingExisting)
        before = *record;
    services.link.BusyPorts.clear();
    setCaption(services, captionOf(services.use.language, 808));
    if (identify(services, tested))
        tell(services, tested);
    if (tested.kind == "Ethernet")
        services.ethernet.CloseEthernet();
    setCaption(services, captionOf(services.use.language, 510));
    if (tested.kind == "Dialup")
        services.exchange.SendToLogger("at&h");
    services.rs232.CloseLink();
    if (before)
        restore(services, number, *before);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the dialog that it came from may go meanwhile
void ResetModem(AddServices services, const AddValues& values)
{
    const auto port = ToInt16(values.modemPort);
    if (services.state.StopLinkWork || !port)
        return;
    const TestLock lock(services);
    services.modem.ResetModem(*port, std::string(values.init));
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): opening the panel closes the dialog that it came from
void StoreLogger(AddServices services, const AddValues& values)
{
    const bool adding = !services.state.EditingExisting;
    if (services.state.NewLoggerMode)
        services.state.AddingLogger = true;
    const int number = adding ? addLogger(services, values) : changeLogger(services, values);
    LoggerRecord* record = services.tables.Record(number);
    if (!record)
        return;
    services.link.ConnectionKind = LinkTypeOf(*record);
    if (LoggerPanel* panel = services.panels.At(number))
        panel->SetCaption(AddedCaption(services.use.language, *record));
    if (!services.state.AddRebuildPending)
        listAnew(services);
    services.state.AddRebuildPending = false;
    if (adding)
        if (const auto key = services.store.NextIconKey())
            record->LoggerIconKey = *key;
    services.store.SaveOptions();
    services.records.BuildLoggerSettings(number);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the dialog that it came from is going
void CloseAddDialog(AddServices services)
{
    ProgramState& state = services.state;
    state.AbortWait = true;
    if (services.link.ConnectionKind == "Dialup") {
        services.exchange.SendToLogger("at&h");
        services.exchange.SendToLogger("atz");
    }
    state.EditingExisting = false;
    state.AddDialogOpen = false;
    state.NewLoggerMode = false;
    state.AddingLogger = false;
    state.StopSearch = false;
}

} // namespace harvelop
