#include "app/ctl_upkeep.h"

#include "app/ctl_commands.h"
#include "app/ctl_loggers.h"
#include "app/ctl_outcome.h"
#include "app/start_up.h"
#include "identify/headless_panel.h"
#include "identify/panel_work.h"
#include "panels/icon_rules.h"

namespace harvelop
{

namespace
{

// Loads all that the windows have loaded. False, and told, if that can't be or there is no such logger; 0: any will do.
bool loadAll(Program& p, Console& console, int number)
{
    const bool loaded = number == 0 ? LoadLoggers(p, console) : LoadLogger(p, console, number);
    if (!loaded || !OptionsReadable(p, console))
        return false;
    p.store.FindComPorts = nullptr; // no port is touched for this
    LoadSettings(p);
    p.viewing.RebuildList();
    return !p.end.Ended();
}

int saved(Program& p, Console& console)
{
    if (p.records.Saved())
        return CtlDone;
    console.Line("The file " + p.state.AppPath + "found.ini can't be written.");
    return CtlFailed;
}

} // namespace

int DeleteStored(Program& program, Console& console, const CtlCommand& command)
{
    Program& p = program;
    if (!LoadLogger(p, console, command.number))
        return CtlFailed;
    if (HasOptions(p))
        LoadSettings(p); // for the user's language
    if (p.end.Ended())
        return CtlFailed;
    p.viewing.RebuildList();
    p.state.cbxUnload_TallyCores.Select(command.number - 1);
    const int before = p.tables.Count();
    p.viewing.DeleteLogger(command.number);
    return p.tables.Count() < before ? saved(p, console) : CtlFailed;
}

int StartUnload(Program& program, Console& console, const CtlCommand& command)
{
    Program& p = program;
    if (!loadAll(p, console, command.number))
        return CtlFailed;
    const Outcome outcome(p.dialogs);
    if (command.number == 0) {
        UnloadAllLoggers({p.essentials(), p.tables, p.store, p.desktop, p.state.AppPath});
    } else {
        HeadlessPanels panels(p.panelServices());
        HeadlessPanel* panel = panels.Open(command.number);
        if (!panel)
            return CtlFailed;
        StorePanel(p.panelServices(), command.number);
        UnloadLogger(p.panelServices(), command.number);
        panel->Unload();
    }
    return outcome.Told() ? CtlFailed : saved(p, console);
}

int MakeShortcut(Program& program, Console& console, const CtlCommand& command)
{
    Program& p = program;
    if (!loadAll(p, console, command.number))
        return CtlFailed;
    HeadlessPanels panels(p.panelServices());
    HeadlessPanel* panel = panels.Open(command.number);
    if (!panel)
        return CtlFailed;
    const bool made = MakeIcon(p.panelServices(), command.number, [&](const std::string&) { return command.icon; });
    panel->Unload();
    if (!made) {
        console.Line("The shortcut can't be made.");
        return CtlFailed;
    }
    return saved(p, console);
}

} // namespace harvelop
