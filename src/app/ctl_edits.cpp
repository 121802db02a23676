#include "app/ctl_edits.h"

#include "app/ctl_commands.h"
#include "app/ctl_loggers.h"
#include "app/ctl_output.h"
#include "app/start_up.h"
#include "identify/headless_panel.h"
#include "panels/record_edits.h"
#include "settings/panel_loading.h"

#include <filesystem>

namespace harvelop
{

namespace
{

bool isFolder(const std::string& path)
{
    std::error_code error; // one that can't be looked at is none
    return std::filesystem::is_directory(path, error);
}

} // namespace

int SetFields(Program& program, Console& console, const CtlCommand& command, std::ostream& out)
{
    Program& p = program;
    if (!LoadLogger(p, console, command.number) || !OptionsReadable(p, console))
        return CtlFailed;
    p.store.FindComPorts = nullptr; // no port is touched for this
    if (HasOptions(p))
        LoadSettings(p);
    if (p.end.Ended())
        return CtlFailed;

    const auto refused = [&](EditedLogger& logger) {
        const auto refusal = ApplyEdits(logger, command.edits, {p.language, isFolder});
        if (refusal)
            console.Line(Printable(*refusal));
        return refusal.has_value();
    };
    // First to copies: the opening of a panel alone saves already.
    LoggerRecord& record = *p.tables.Record(command.number);
    const LoggerRecord before = record;
    EditedLogger tried = {LoadPanelValues(record, p.options, false), record};
    if (refused(tried))
        return CtlFailed;
    if (!HasOptions(p))
        LoadSettings(p); // which makes the file

    HeadlessPanels panels(p.panelServices());
    p.viewing.RebuildList();
    HeadlessPanel* panel = panels.Open(command.number);
    if (!panel)
        return CtlFailed;
    EditedLogger edited = {panel->Values(), record};
    if (refused(edited)) // a folder may have gone meanwhile
        return CtlFailed;
    panel->SetValues(edited.values);
    record = edited.record;
    StorePanel(p.panelServices(), command.number);
    panel->Unload();
    if (p.records.Saved()) {
        if (command.json)
            out << ChangesAsJson(before, record);
        return CtlDone;
    }
    console.Line("The file " + p.state.AppPath + "found.ini can't be written.");
    return CtlFailed;
}

} // namespace harvelop
