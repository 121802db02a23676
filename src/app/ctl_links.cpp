#include "app/ctl_links.h"

#include "app/add_services.h"
#include "app/ctl_commands.h"
#include "app/ctl_json.h"
#include "app/ctl_loggers.h"
#include "app/start_up.h"
#include "identify/headless_panel.h"

namespace harvelop
{

namespace
{

// What the caption of the add dialog would tell.
class CaptionLines : public AddForm
{
public:
    explicit CaptionLines(Console& console) : m_lines(console) {}
    void SetTopmost(bool) override {}
    std::string Caption() const override { return {}; }
    void SetCaption(const std::string& caption) override { m_lines.SetCaption(caption); }

private:
    ConsoleMessages m_lines;
};

// Stands for the dialog while it lives.
class HeadlessDialog
{
public:
    HeadlessDialog(Program& program, Console& console) : m_program(program), m_form(console)
    {
        m_program.forms.add = &m_form;
        m_program.state.AddDialogOpen = true;
        m_program.viewing.UnloadAddDialog = [this] { Close(); };
    }
    ~HeadlessDialog()
    {
        Close();
        m_program.forms.add = nullptr;
        m_program.viewing.UnloadAddDialog = nullptr;
    }
    HeadlessDialog(const HeadlessDialog&) = delete;
    HeadlessDialog& operator=(const HeadlessDialog&) = delete;

    void Close()
    {
        if (m_program.state.AddDialogOpen)
            CloseAddDialog(AddServicesOf(m_program));
    }

private:
    Program& m_program;
    CaptionLines m_form;
};

int store(Program& p, Console& console, const AddValues& values, std::ostream& out)
{
    HeadlessPanels panels(p.panelServices());
    p.viewing.RebuildList();
    p.state.AddingLogger = p.state.AddRebuildPending = p.state.NewLoggerMode = true;
    const HeadlessDialog dialog(p, console);
    p.link.ConnectionKind = values.kind;
    StoreLogger(AddServicesOf(p), values);
    if (p.records.Saved() && !p.end.Ended()) {
        out << p.state.CurrentLogger << "\n";
        return CtlDone;
    }
    console.Line("The file " + p.state.AppPath + "found.ini can't be written.");
    return CtlFailed;
}

// What has answered, right or wrong.
void tellFound(Program& p, const CtlCommand& command, std::ostream& out)
{
    const int number = command.number;
    const std::string& model = p.search.IdentifiedModel.Get(number);
    if (command.json && !model.empty())
        out << JsonText({{"model", model},
                         {"series", p.search.IdentifiedSeries.Get(number)},
                         {"serial", p.search.IdentifiedSerial.Get(number - 1)},
                         {"version", p.search.IdentifiedVersion.Get(number - 1)}});
}

} // namespace

int AddLogger(Program& program, Console& console, const CtlCommand& command, std::ostream& out)
{
    Program& p = program;
    if (!LoadLoggers(p, console) || !OptionsReadable(p, console))
        return CtlFailed;
    p.store.FindComPorts = nullptr; // no port is touched for this
    if (HasOptions(p))
        LoadSettings(p);
    if (p.end.Ended())
        return CtlFailed;
    if (p.tables.Count() >= MaxLoggers) {
        p.dialogs.Show({p.language.Text(554), "", BoxIcon::Exclamation});
        return CtlFailed;
    }
    if (!HasOptions(p))
        LoadSettings(p); // which makes the file
    return store(p, console, command.logger, out);
}

bool TakeLogger(Program& program, Console& console, int number)
{
    if (!LoadLogger(program, console, number) || !OptionsReadable(program, console))
        return false;
    program.store.FindComPorts = nullptr; // only the logger's own port is touched
    LoadSettings(program);
    program.state.CurrentLogger = program.state.ChosenLogger = static_cast<std::int16_t>(number);
    return !program.end.Ended();
}

int TestLogger(Program& program, Console& console, const CtlCommand& command, std::ostream& out)
{
    Program& p = program;
    if (!TakeLogger(p, console, command.number))
        return CtlFailed;
    p.files.ChangeNothing(); // also not a password that is asked for
    ConsoleMessages messages(console);
    p.forms.loadMessages = [&]() -> MessageForm* { return &messages; };
    p.state.EditingExisting = true;
    const HeadlessDialog dialog(p, console);
    const AddValues values = ValuesOf(*p.tables.Record(command.number), AddValues());
    p.link.ConnectionKind = values.kind;
    TestConnection(AddServicesOf(p), values);
    console.EndProgressLine();
    tellFound(p, command, out);
    if (!p.search.IdentifiedModel.Get(command.number).empty() && !p.end.Ended())
        return CtlDone;
    console.Line("No logger was found.");
    return CtlFailed;
}

int ReachLogger(Program& program, Console& console, const CtlCommand& command, std::ostream& out)
{
    Program& p = program;
    if (!TakeLogger(p, console, command.number))
        return CtlFailed;
    ConsoleMessages messages(console);
    p.forms.loadMessages = [&]() -> MessageForm* { return &messages; };
    p.connecting.ConnectLogger(command.number);
    const bool reached = p.link.LinkConnected;
    p.connecting.ReleaseLink();
    tellFound(p, command, out);
    console.EndProgressLine();
    return reached ? CtlDone : NotReached(console, command.number);
}

bool LinkStands(Program& program)
{
    const LinkState& link = program.link;
    return link.LinkMode == "Ethernet" ? link.EthernetConnected
                                       : link.LinkMode == "ComPort" && program.rs232.MSComm1.PortOpen();
}

int NotReached(Console& console, int number)
{
    console.Line("Logger " + std::to_string(number) + " was not reached.");
    return CtlFailed;
}

int LinkLost(Console& console, int number)
{
    console.Line("The link to logger " + std::to_string(number) + " is lost.");
    return CtlFailed;
}

} // namespace harvelop
