#include "identify/panel_steps.h"

#include "core/text_lines.h"
#include "platform/separator.h"
#include "settings/panel_loading.h"

namespace harvelop
{

std::string LinkDescriptionOf(const LoggerRecord& record)
{
    if (record.LoggerLinkType == "Ethernet")
        return record.LoggerModel + " at " + record.LoggerHost + ":" + record.LoggerTcpPort;
    const std::string way = record.LoggerLinkType == "Dialup" ? " via Modem on Com " : " on Com ";
    return record.LoggerModel + way + record.LoggerPort;
}

std::string StandardSaveFolder(const std::string& driveRoot)
{
    return driveRoot + "tallyCore" + PathSeparator;
}

void LoadPanel(const PanelServices& services, int number, const std::function<void(const PanelValues&)>& show)
{
    services.controls.SetFormEnabled(false);
    services.controls.DisableOptionsControls();
    LoggerRecord* record = services.tables.Record(number);
    if (!record)
        return;
    const bool fresh = services.state.NewLoggerMode || !services.tables.HaveFoundLoggers;
    const PanelValues values = LoadPanelValues(*record, services.options, fresh);
    // A comma in the name of the home directory would end the field.
    if (record->LoggerSaveFolder.empty() && !Holds(services.state.DriveRoot, ","))
        record->LoggerSaveFolder = StandardSaveFolder(services.state.DriveRoot);
    if (!services.state.SearchRunning)
        services.state.NewLoggerMode = false;
    if (record->LoggerTab == 0)
        record->LoggerTab = 1;
    // That merely viewing a panel writes these into the record is meant.
    if (record->LoggerSerial.empty())
        record->LoggerSerial = "none";
    if (record->LoggerVersion.empty())
        record->LoggerVersion = "Unknown";
    show(values);
    services.records.BuildLoggerSettings(number);
    services.link.ConnectionKind = record->LoggerLinkType;
    services.link.LinkDescription = LinkDescriptionOf(*record);
}

void StorePanel(const PanelServices& services, int number)
{
    services.records.BuildLoggerSettings(number);
    services.records.SaveFoundLoggers();
    services.records.LoadFoundLoggers();
    services.viewing.RebuildList();
    services.state.cbxUnload_TallyCores.Select(services.state.CurrentLogger - 1);
}

void StoreMdb(const PanelServices& services, int number, bool on)
{
    if (LoggerRecord* record = services.tables.Record(number))
        record->LoggerMdbOn = on ? "1" : "0";
    services.records.KeepTables(number);
}

void ClosePanel(const PanelServices& services, int number, bool mdb)
{
    StoreMdb(services, number, mdb);
    services.store.SaveOptions();
    if (!services.state.LaunchCommand.empty()) {
        services.end.EndProgram();
        return;
    }
    // While work on a logger goes on, no second one may start: the end of that work frees the options panel then.
    if (services.panels.CountVisiblePanels() == 1 && !services.loggerControls.Working())
        services.controls.FreeOptions();
}

} // namespace harvelop
