#include "identify/panel_work.h"

#include "links/connection_test.h"
#include "platform/separator.h"

namespace harvelop
{

namespace
{

void showBox(const PanelServices& services, const Box& box)
{
    services.use.progress.HideMessageForm();
    services.use.dialogs.Show(box);
}

void endWork(const PanelServices& services)
{
    services.loggerControls.EnableLoggerControls();
    // The last panel may have been closed meanwhile, which leaves this to the end of the work.
    if (services.panels.CountVisiblePanels() == 0)
        services.controls.FreeOptions();
}

} // namespace

void MakeCurrent(const PanelServices& services, int number)
{
    services.state.ChosenLogger = static_cast<std::int16_t>(number);
    if (services.state.CurrentLogger == number)
        return;
    services.state.CurrentLogger = static_cast<std::int16_t>(number);
    if (const LoggerRecord* record = services.tables.Record(number)) {
        services.link.ConnectionKind = record->LoggerLinkType;
        services.link.LinkDescription = LinkDescriptionOf(*record);
    }
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the panel that it came from may go meanwhile
void RunOnLogger(PanelServices services, int number, std::function<void()> action)
{
    MakeCurrent(services, number);
    services.loggerControls.DisableLoggerControls();
    action();
    services.actions.CloseLink();
    endWork(services);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the panel that it came from may go meanwhile
void LoadOnLogger(PanelServices services, int number)
{
    RunOnLogger(services, number, [&services] {
        services.use.progress.ClearBar();
        services.actions.LoadProgram();
    });
    if (!services.state.LaunchCommand.empty())
        services.end.EndProgram();
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the panel that it came from may go meanwhile
void ClearOnLogger(PanelServices services, int number, std::function<void()> action, bool clearMode)
{
    MakeCurrent(services, number);
    if (clearMode)
        services.state.ClearMode = true;
    services.loggerControls.DisableLoggerControls();
    services.actions.ConnectLogger(number);
    const ConnectionTest test = TestConnected(services.link, number);
    const bool connected = test == ConnectionTest::Connected;
    if (test == ConnectionTest::NoEntry)
        showBox(services, OutOfRangeBox);
    if (connected)
        action();
    if (connected || !services.state.TerminalOpen) // a terminal goes on with a link that failed
        services.actions.CloseLink();
    endWork(services);
    if (clearMode && connected) // that it stays set otherwise is meant
        services.state.ClearMode = false;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the panel that it came from may go meanwhile
void SetCom(PanelServices services, int number)
{
    services.state.EditingExisting = true;
    MakeCurrent(services, number);
    services.actions.ShowAddDialog();
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the panel that it came from may go meanwhile
void UnloadLogger(PanelServices services, int number)
{
    const LanguageTables& language = services.use.language;
    if (!services.tables.HaveFoundLoggers) {
        showBox(services, {language.Text(524), " " + language.Text(503), BoxIcon::Information});
        return;
    }
    services.store.SaveOptions();
    const LoggerRecord* record = services.tables.Record(number);
    const std::string& directory = services.state.AppPath;
    if (!record || services.desktop.StartProgram(directory + "harvel.exe", {record->LoggerIconKey}, directory))
        return;
    showBox(services, {language.Text(531) + " " + directory + "harvel.exe " + language.Text(532) + ".     ", "",
                       BoxIcon::Critical});
}

void UnloadAllLoggers(const UnloadServices& services)
{
    const LanguageTables& language = services.use.language;
    if (!services.tables.HaveFoundLoggers) {
        ShowInFront(services.use, {language.Text(555), " " + language.Text(503), BoxIcon::Information});
        return;
    }
    services.store.SaveOptions();
    const std::string& directory = services.directory;
    if (!services.desktop.StartProgram(directory + "harvel.exe", {}, directory))
        ShowInFront(services.use,
                    {language.Text(531) + " " + directory + "harvel.exe " + language.Text(532), "", BoxIcon::Critical});
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the panel that it came from may go meanwhile
bool ChooseSaveFolder(PanelServices services, int number)
{
    MakeCurrent(services, number);
    services.state.ListKind = "Disk";
    LoggerRecord* record = services.tables.Record(number);
    if (!record)
        return false;
    const std::string title = services.use.language.Text(102) + " " + services.link.LinkDescription;
    const auto folder = SaveFolderOf(services.use.dialogs.BrowseFolder(title, record->LoggerSaveFolder));
    if (!folder)
        return false;
    record->LoggerSaveFolder = *folder;
    services.records.KeepTables(number);
    return true;
}

std::optional<std::string> SaveFolderOf(const std::string& chosen)
{
    constexpr size_t LongestRoot = 4;
    const bool root = chosen.size() <= LongestRoot && chosen.ends_with(PathSeparator);
    if (chosen.empty() || root || chosen.find_first_of(",\r\n") != std::string::npos)
        return std::nullopt;
    return chosen.ends_with(PathSeparator) ? chosen : chosen + PathSeparator;
}

} // namespace harvelop
