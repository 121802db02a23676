// Any bytes as what a logger says in each dialogue with it. The first byte tells which one: every dialogue ends, gives
// its link back and leaves files that can be read.
#include "fuzz_program.h"
#include "identify/panel_work.h"
#include "settings/logger_records.h"

#include <iterator>

using namespace harvelop;

namespace
{

using fuzz::FuzzProgram;

constexpr const char* Older = "KR200 Series 2";
constexpr const char* KR4 = "KR400";

void search(FuzzProgram& t)
{
    HeadlessPanels panels(t.heart.panelServices());
    t.heart.link.ConnectionKind = "RS232";
    t.heart.link.PortAvailable.at(2) = true;
    t.heart.state.cbxUnload_Ports.SetText(" Com 3");
    t.heart.portSearch.cmdUnload_FindTallycores_Click();
}
void connect(FuzzProgram& t)
{
    t.heart.connecting.ConnectLogger(1);
    t.heart.actions.CloseLink();
}
void load(FuzzProgram& t)
{
    LoadOnLogger(t.heart.panelServices(), 1);
}
void run(FuzzProgram& t, const std::function<void()>& action)
{
    RunOnLogger(t.heart.panelServices(), 1, action);
}
void clear(FuzzProgram& t, const std::function<void()>& action)
{
    ClearOnLogger(t.heart.panelServices(), 1, action, true);
}

struct Dialogue {
    const char* model;
    void (*go)(FuzzProgram&);
    bool identifies = false; // the identification is what is looked at; elsewhere it goes well
};

const Dialogue Dialogues[] = {
    {Older, search, true},
    {Older, connect, true},
    {KR4, connect, true},
    {Older, load},
    {KR4, load},
    {Older, [](FuzzProgram& t) { run(t, t.heart.actions.LoadCardProgram); }},
    {Older, [](FuzzProgram& t) { run(t, t.heart.actions.LoadFlashProgram); }},
    {KR4, [](FuzzProgram& t) { run(t, t.heart.actions.LoadFlashProgram); }},
    {Older, [](FuzzProgram& t) { clear(t, t.heart.actions.ClearPrograms); }},
    {KR4, [](FuzzProgram& t) { clear(t, t.heart.actions.ClearPrograms); }},
    {Older, [](FuzzProgram& t) { clear(t, t.heart.actions.ClearCardPrograms); }},
    {Older, [](FuzzProgram& t) { clear(t, t.heart.actions.ClearFlash); }},
    {KR4, [](FuzzProgram& t) { clear(t, t.heart.actions.ClearFlash); }},
};

void holdFoundIni(FuzzProgram& t)
{
    const auto found = t.files.files.find(std::string(FuzzProgram::Directory) + "found.ini");
    if (found == t.files.files.end())
        return;
    FuzzProgram again;
    again.files.files[found->first] = found->second;
    again.heart.records.LoadFoundLoggers();
    fuzz::Hold(again.heart.tables.Count() == t.heart.tables.Count(), "what was found is read again");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    if (size == 0)
        return 0;
    const Dialogue& dialogue = Dialogues[data[0] % std::size(Dialogues)];
    const std::string says(reinterpret_cast<const char*>(data) + 1, size - 1);
    FuzzProgram t;
    t.PlugPort(says);
    t.files.files[FuzzProgram::ProgramFile] = "BEGIN\"WIND\"\r\nRA1S 1V\r\nEND\r\n";
    t.files.files[std::string(FuzzProgram::Directory) + "temp.sre"] = "S00600004844521B\r\nS206060000AA55\r\n";
    if (dialogue.go != search)
        t.Store(dialogue.model);
    if (!dialogue.identifies)
        t.heart.connecting.IdentifyLogger = [&] { return std::string(dialogue.model); };
    dialogue.go(t);
    t.HoldReleased();
    holdFoundIni(t);
    return 0;
}
