#include "identify/logger_viewing.h"

#include "identify/free_slots.h"
#include "identify/model_set_up.h"
#include "settings/message_texts.h"

#include <algorithm>

namespace harvelop
{

namespace
{

constexpr int PanelStep = 500; // twips from one panel to the next

std::string wayText(const std::string& linkType)
{
    if (linkType == "Ethernet")
        return " at ";
    return linkType == "Dialup" ? " via Modem on Com " : " on Com ";
}

} // namespace

std::string LoggerListLine(const LoggerRecord& record)
{
    if (!record.LoggerDescription.empty())
        return record.LoggerDescription;
    const std::string serial = IsKR4(record.LoggerModel) ? " sn " + record.LoggerSerial : "";
    return record.LoggerModel + serial + wayText(LinkTypeOf(record)) + record.LoggerPort;
}

LoggerViewing::LoggerViewing(Essentials essentials, LinkState& link, SearchState& search, LoggerTables& tables,
                             LoggerRecords& records, OptionsStore& store, LoggerPanels& panels,
                             OptionsControls& controls, ProgramState& state, DataFiles& files)
    : m_use(essentials),
      m_link(link),
      m_search(search),
      m_tables(tables),
      m_records(records),
      m_store(store),
      m_panels(panels),
      m_controls(controls),
      m_state(state),
      m_files(files)
{
}

void LoggerViewing::AddLoggerToList(int number)
{
    LoggerRecord* record = m_tables.Record(number);
    if (!record)
        return;
    if (record->LoggerDescription.empty()) {
        if (record->LoggerSerial.empty())
            record->LoggerSerial = "none";
        m_link.ConnectionKind = LinkTypeOf(*record);
    }
    ListState& list = m_state.cbxUnload_TallyCores;
    const int position = m_state.AddingLogger ? std::min(number - 1, list.Count()) : 0;
    list.Insert(position, LoggerListLine(*record));
}

void LoggerViewing::RefreshFoundLoggers()
{
    if (m_state.OptionsLoaded) {
        m_records.SaveFoundLoggers();
        m_records.LoadFoundLoggers();
    }
    for (int number = MaxLoggers - 1; number >= 1; --number) // slot 50 is left out: that is meant
        if (m_tables.Holds(number))
            AddLoggerToList(number);
}

void LoggerViewing::RebuildList()
{
    m_state.cbxUnload_TallyCores.Clear();
    // Each line goes to the head of the list, so the last logger comes first.
    for (int number = MaxLoggers; number >= 1; --number)
        if (m_tables.Holds(number))
            AddLoggerToList(number);
}

void LoggerViewing::cmdUnload_View_Click()
{
    View(m_state.SearchRunning);
}

void LoggerViewing::View(bool cascaded)
{
    if (m_use.waiting.Ended() || !chooseLogger())
        return;
    const int number = m_state.CurrentLogger;
    if (LoggerPanel* panel = m_panels.Create(number)) {
        panel->Load();
        MakePanelReady(number, cascaded);
        if (UnloadAddDialog)
            UnloadAddDialog();
        if (m_panels.At(number) == panel) // the dialog's closing may have reached it
            panel->SetVisible(true);
    }
    m_use.waiting.WaitMs(200);
    // The panel may have been closed again in the wait.
    if (m_panels.CountVisiblePanels() == 0)
        m_controls.FreeOptions();
}

bool LoggerViewing::chooseLogger()
{
    ListState& list = m_state.cbxUnload_TallyCores;
    if (list.Text().empty() && !m_state.AddingLogger)
        return false;
    if (m_state.AddingLogger) {
        m_state.CurrentLogger = m_state.ChosenLogger;
        if (LoggerRecord* record = m_tables.Record(m_state.CurrentLogger))
            record->LoggerKept = 1;
        AddLoggerToList(m_state.CurrentLogger);
        list.Select(0);
    } else if (m_state.SingleLoggerMode) {
        m_state.SingleLoggerMode = false; // the start has chosen the logger
    } else {
        m_state.CurrentLogger = static_cast<std::int16_t>(list.Selected() + 1);
    }
    return m_tables.Record(m_state.CurrentLogger) != nullptr;
}

void LoggerViewing::MakePanelReady(int number, bool cascaded)
{
    LoggerRecord* record = m_tables.Record(number);
    LoggerPanel* panel = m_panels.At(number);
    if (!record || !panel)
        return;
    m_link.ConnectionKind = LinkTypeOf(*record);
    panel->SetCaption(panelCaption(number, *record));
    setUp(*panel, *record, true);
    panel->Place(cascaded ? number * PanelStep : PanelStep);
}

std::string LoggerViewing::panelCaption(int number, const LoggerRecord& record) const
{
    const LanguageTables& language = m_use.language;
    const std::string model = " " + record.LoggerModel + " ";
    if (m_link.ConnectionKind == "Ethernet")
        return model + language.Text(803) + " " + record.LoggerPort;
    if (m_link.ConnectionKind == "Dialup")
        return model + language.Text(802) + " " + record.LoggerPort;
    const std::string place = language.Text(801) + " " + record.LoggerPort + " @ " + record.LoggerBaud + ",";
    if (m_state.SearchRunning) {
        const auto free = FreeSlots(m_tables);
        const auto find = std::find(free.begin(), free.end(), number) - free.begin() + 1;
        const std::string found = m_search.IdentifiedModel.Get(static_cast<int>(find));
        return " " + language.Text(800) + " " + found + " " + place + "N,8,1,SWFC";
    }
    return model + place + record.LoggerParity + "," + record.LoggerDataBits + "," + record.LoggerStopBits + "," +
           record.LoggerFlow;
}

void LoggerViewing::setUp(LoggerPanel& panel, LoggerRecord& record, bool forView) const
{
    constexpr int ModelWidth = 1700;
    const auto look = LookOf(record.LoggerModel);
    if (!look)
        record.LoggerModel = "Unknown";
    PanelSetUp setUp;
    setUp.known = look.has_value();
    setUp.reduced = !look && forView;
    if (look) {
        setUp.picture = look->picture;
        setUp.kr4Schedules = look->kr4;
        const bool keepsWidth = forView && look->key == "KR45"; // the KR45 alone: that is meant
        setUp.modelWidth = look->kr4 && !keepsWidth ? ModelWidth : 0;
    }
    setUp.model = record.LoggerModel;
    setUp.serial = record.LoggerSerial;
    panel.SetUp(setUp);
}

void LoggerViewing::PopulateTallycoresFormsWithFoundTallyCores()
{
    if (m_use.waiting.Ended())
        return;
    const auto free = FreeSlots(m_tables);
    const int count = std::min<int>(m_search.FoundCount, static_cast<int>(free.size()));
    for (int find = 1; find <= count; ++find)
        populateSlot(find, free[static_cast<size_t>(find - 1)]);
    m_records.LoadFoundLoggers();
}

void LoggerViewing::populateSlot(int find, int slot)
{
    LoggerRecord& record = *m_tables.Record(slot);
    m_state.CurrentLogger = static_cast<std::int16_t>(slot);
    record.LoggerModel = m_search.IdentifiedModel.Get(find);
    record.LoggerVersion = m_search.IdentifiedVersion.Get(find - 1);
    record.LoggerSerial = m_search.IdentifiedSerial.Get(find - 1);
    LoggerPanel* panel = m_panels.Create(slot);
    if (panel)
        panel->Load();

    const int port = m_search.FoundPorts[static_cast<size_t>(find - 1)];
    const auto entry = static_cast<size_t>(port - 1);
    record.LoggerPort = std::to_string(port);
    record.LoggerBaud = m_search.PortBaud[entry];
    record.LoggerParity = m_search.PortParity[entry];
    record.LoggerDataBits = m_search.PortDataBits[entry];
    record.LoggerStopBits = m_search.PortStopBits[entry];
    record.LoggerFlow = m_search.PortFlow[entry];
    record.LoggerTimeout = "10";
    if (record.LoggerModel.empty()) {
        m_search.IdentifiedModel.Set(find, "Unknown");
        record.LoggerModel = "Unknown";
    }
    if (const auto look = LookOf(record.LoggerModel); look && !look->kr4)
        record.LoggerModel = std::string(look->key) + " Series " + m_search.IdentifiedSeries.Get(find);
    if (panel) {
        panel->DescribeModel(record.LoggerModel); // now that the series stands in it
        setUp(*panel, record, false);
    }
    m_state.cbxUnload_TallyCores.Select(0);
    if (const auto key = m_store.NextIconKey())
        record.LoggerIconKey = *key;
    m_store.SaveOptions();
    m_records.BuildLoggerSettings(slot);
}

void LoggerViewing::ForgetFoundLoggers()
{
    for (const int slot : FreeSlots(m_tables))
        m_tables.FoundLoggerStrings[static_cast<size_t>(slot - 1)].clear();
    m_records.GiveUpFile();
    // What was entered by hand is at no moment without its place in the file.
    if (m_tables.Count() > 0)
        m_records.SaveFoundLoggers();
    else if (const auto path = m_state.AppPath + "found.ini"; m_files.Read(path).state != FileState::Unreadable)
        m_files.Remove(path); // what could not be read is not ours to throw away
}

void LoggerViewing::DeleteLogger(int index)
{
    if (!mayDelete())
        return;
    m_state.DeletingLogger = true;
    LoggerRecord* record = m_tables.Record(index);
    if (record)
        m_tables.FoundLoggerStrings[static_cast<size_t>(index - 1)].clear();
    ListState& list = m_state.cbxUnload_TallyCores;
    if (list.Count() > 0) {
        list.RemoveAt(list.Selected());
        list.Select(list.Selected() + 1);
    }
    if (record) {
        constexpr size_t NumberStart = 2; // behind "::"
        constexpr size_t NumberLength = 5;
        const std::string& key = record->LoggerIconKey;
        const std::string keyNumber = key.size() > NumberStart ? key.substr(NumberStart, NumberLength) : "";
        m_files.Remove(m_state.AppPath + "emaillist" + keyNumber + ".ini");
        record->LoggerTableNames.fill("");
        record->LoggerTab = 1; // the next logger in this slot opens on its first tab
    }
    m_records.SaveFoundLoggers();
    m_records.LoadFoundLoggers();
    m_state.DeletingLogger = false;
}

bool LoggerViewing::mayDelete()
{
    const Box box{m_use.language.Text(737) + " ?     ", BoxTitle, BoxIcon::Exclamation, BoxButtons::YesNo};
    return ShowInFront(m_use, box) == BoxAnswer::Yes;
}

} // namespace harvelop
