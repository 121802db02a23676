#include "app/start_up.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "links/get_field.h"
#include "platform/separator.h"

#include <algorithm>

namespace harvelop
{

namespace
{

constexpr const char* Application = "Harvel";
constexpr const char* Section = "Parameters";
constexpr const char* Mark = "install.ini"; // of a directory that has been set up

// A directory as a key of the settings store.
std::string storeKey(std::string directory)
{
    const auto parts = [](char c) { return c == '/' || c == '\\' || c == ':'; };
    std::replace_if(directory.begin(), directory.end(), parts, '_');
    return directory;
}

std::string firstLine(const FileText& file)
{
    std::string_view line;
    return LineReader(file.text).Next(line) ? std::string(line) : std::string();
}

std::string join(const std::string& directory, const std::string& name)
{
    return !directory.empty() && directory.back() == PathSeparator ? directory + name
                                                                   : directory + PathSeparator + name;
}

} // namespace

void SetAppPath(Program& program, const std::string& directory)
{
    program.state.AppPath = directory + PathSeparator;
    program.state.DriveRoot = program.desktop.DriveRoot();
}

void LoadSettings(Program& program)
{
    program.store.ReadAllOptions();
    program.store.LoadTerminalGeometry();
    program.records.LoadFoundLoggers();
    program.state.FirstRun = false;
    if (program.options.Language.empty())
        program.options.Language = "English";
    program.language.LangActive = program.options.UseLangFile;
    if (program.language.LangActive)
        program.language.LoadLanguageFile();
    program.link.DefaultTimeout = 5000;
    program.link.CurrentPort = 1;
}

void TakeListedPorts(Program& program)
{
    for (int field = 1; field <= ComPorts; ++field) {
        // A list of "0" names port 0, which there is none: passed over.
        const auto port = ToInt16(GetField(program.options.AvailablePorts, field, ","));
        if (port && *port >= 1 && *port <= ComPorts)
            program.link.PortAvailable[static_cast<size_t>(*port - 1)] = true;
    }
}

void StartUp::Run(const std::string& commandLine)
{
    Program& p = m_program;
    findAppPath();
    p.state.RunMode.clear();
    if (!Holds(commandLine, "&") && !isSetUp() && !FirstRunSetup() && !workInDataDirectory()) {
        p.end.EndProgram(1);
        return;
    }
    LoadSettings(p);
    if (p.end.Ended())
        return;
    if (p.language.LangActive && m_hooks.speak)
        m_hooks.speak(p.options.Language);
    if (p.rs232.MSComm1.PortOpen())
        p.rs232.MSComm1.Close();
    if (p.options.FindPorts) {
        p.rs232.FindComPorts();
        p.rs232.FillPortLists(false);
    } else {
        TakeListedPorts(p);
    }
    p.state.LaunchCommand = LaunchCommandOf(commandLine);
    followPath();
    if (p.state.OptionsLoaded)
        greet();
    // No search has run yet on most starts, and then there is no panel to show.
    for (int i = 1; i <= p.search.FoundCount && !p.end.Ended(); ++i)
        if (LoggerPanel* panel = p.panels.At(i))
            panel->SetVisible(true);
}

void StartUp::greet()
{
    OptionsControls& form = m_program.controls;
    form.FocusOk();
    form.SetCaption(" tallyCore Harvel Options " HARVELOP_VERSION);
    m_program.waiting.WaitMs(800);
    form.SetCaption(" tallyCore Harvel Options");
}

void StartUp::findAppPath()
{
    const std::string key = storeKey(m_program.desktop.CurrentDirectory());
    SetAppPath(m_program, m_program.settings.Get(Application, Section, key).value_or(""));
}

bool StartUp::isSetUp()
{
    constexpr size_t ShortestMark = 4;
    return firstLine(m_program.files.Read(m_program.state.AppPath + Mark)).size() >= ShortestMark;
}

bool StartUp::FirstRunSetup()
{
    Program& p = m_program;
    p.state.FirstRun = true;
    const std::string directory = p.desktop.CurrentDirectory();
    const std::string line =
        "Harvel was installed on " + p.desktop.DateText() + " at " + p.desktop.TimeText() + "." + std::string(CrLf);
    // The root of the disk is the system's, also where this user may write there.
    const bool nobodys = directory.empty() || directory == std::string(1, PathSeparator);
    if (nobodys || !p.files.Replace(join(directory, Mark), line))
        return false;
    p.settings.Save(Application, Section, storeKey(directory), directory);
    findAppPath();
    // A store that can't be written must not send the data files to the root directory.
    if (p.settings.Get(Application, Section, storeKey(directory)).value_or("").empty())
        SetAppPath(p, directory);
    for (const auto& [name, program] : {std::pair{"Harvel Options", "harvelop.exe"}, std::pair{"Harvel", "harvel.exe"}})
        p.desktop.CreateShortcut({name, p.state.AppPath + program, {}, directory});
    return true;
}

bool StartUp::workInDataDirectory()
{
    Program& p = m_program;
    const std::string title = " tallyCore Harvel";
    const std::string here = p.desktop.CurrentDirectory();
    const std::string own = p.desktop.DataDirectory();
    const std::string place = here.empty() ? "the folder where it was started" : here;
    const std::string question = "Harvel can't write in " + place + ".\n\nShall it keep its files in " + own + "?";
    if (here != own && p.dialogs.Show({question, title, BoxIcon::Question, BoxButtons::YesNo}) != BoxAnswer::Yes)
        return false;
    if (p.desktop.EnterDirectory(own)) {
        findAppPath();
        if (isSetUp() || FirstRunSetup()) {
            if (!here.empty())
                p.settings.Save(Application, Section, storeKey(here), own);
            return true;
        }
    }
    p.dialogs.Show({"Harvel can't write in " + own + ".", title, BoxIcon::Critical});
    return false;
}

void StartUp::followPath()
{
    Program& p = m_program;
    const Launch launch = ParseLaunch(p.state.LaunchCommand);
    if (launch.path == Launch::Path::Normal) {
        m_hooks.showOptions();
        return;
    }
    const auto number = p.records.FindLoggerByKey(launch.key);
    if (!number || !p.tables.Holds(*number)) {
        p.end.EndProgram();
        return;
    }
    p.state.CurrentLogger = static_cast<std::int16_t>(*number);
    if (launch.path == Launch::Path::ShowPanel) {
        showSinglePanel();
        return;
    }
    const auto& begin = launch.path == Launch::Path::SendText ? m_hooks.sendText : m_hooks.loadProgram;
    if (begin) {
        begin(launch);
    } else {
        m_hooks.say("This version can't do that yet: " + std::string(launch.path == Launch::Path::SendText
                                                                         ? "sending a command to a logger"
                                                                         : "loading a program into a logger"));
        p.end.EndProgram(1);
    }
}

void StartUp::showSinglePanel()
{
    Program& p = m_program;
    constexpr int UnloadTab = 3;
    m_hooks.loadOptions();
    if (p.end.Ended())
        return;
    p.state.SingleLoggerMode = true;
    // Before it is shown, so that no other tab is seen first.
    p.tables.Record(p.state.CurrentLogger)->LoggerTab = UnloadTab;
    p.viewing.cmdUnload_View_Click();
}

} // namespace harvelop
