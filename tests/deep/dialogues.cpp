// Every dialogue that the program has, on simulated loggers, a simulated modem and servers.
#include "app/send_text.h"
#include "deep/bench.h"
#include "identify/panel_work.h"
#include "servers/servers_bench.h"
#include "simulator/simulated_modem.h"

namespace harvelop::test
{

namespace
{

constexpr const char* Older = "KR200 Series 3";
constexpr const char* KR4 = "KR400";

std::shared_ptr<SimulatedLogger> logger(const std::string& model)
{
    LoggerConfig config;
    config.model = model.substr(0, model.find(" Series"));
    config.series = model == config.model ? "" : "3";
    config.memory.data = config.memory.card = true;
    config.memory.jobs = {{"ALPHA", true}, {"BETA", false, true}};
    return std::make_shared<SimulatedLogger>(config);
}
std::shared_ptr<SimulatedModem> modem()
{
    return std::make_shared<SimulatedModem>(ModemConfig(), PhoneBook{{"5551234", logger(Older)}});
}

void older(DeepBench& t)
{
    t.StoreSerial(Older);
    t.PlugPort(logger(Older));
}
void kr4(DeepBench& t)
{
    t.StoreSerial(KR4);
    t.PlugPort(logger(KR4));
}
void network(DeepBench& t)
{
    t.StoreNetwork(KR4);
    t.PlugHost(DeepBench::Host, DeepBench::HostPort, logger(KR4));
}
void dialup(DeepBench& t)
{
    t.StoreDialup(Older);
    t.PlugPort(modem());
}
void mail(DeepBench& t)
{
    UseServers(t.heart.options);
    t.PlugHost("mail.example", 25, std::make_shared<ScriptedServer>(GoodMailLogin()));
}
void ftp(DeepBench& t)
{
    UseServers(t.heart.options);
    t.PlugHost("ftp.example", 21, std::make_shared<ScriptedServer>(GoodFTP()));
}
void unknownOlder(DeepBench& t)
{
    t.serial.Plug(2, nullptr, "");
    t.PlugPort(logger(Older));
}
void unknownKR4(DeepBench& t)
{
    t.PlugPort(logger(KR4), "57600");
}

void search(DeepBench& t)
{
    t.Find(" All Ports");
}
void connect(DeepBench& t)
{
    ClearOnLogger(
        t.heart.panelServices(), 1, [] {}, false);
}
void testCall(DeepBench& t)
{
    t.heart.link.ConnectionKind = "Dialup";
    t.heart.modem.TestDialup(DeepBench::Port, "5551234", "at&f");
    t.heart.actions.CloseLink();
}
void resetModem(DeepBench& t)
{
    t.heart.modem.ResetModem(DeepBench::Port, "atz");
    t.heart.actions.CloseLink();
}
void load(DeepBench& t)
{
    LoadOnLogger(t.heart.panelServices(), 1);
}
void loadCard(DeepBench& t)
{
    RunOnLogger(t.heart.panelServices(), 1, t.heart.actions.LoadCardProgram);
}
void loadFlash(DeepBench& t)
{
    RunOnLogger(t.heart.panelServices(), 1, t.heart.actions.LoadFlashProgram);
}
void clearPrograms(DeepBench& t)
{
    ClearOnLogger(t.heart.panelServices(), 1, t.heart.actions.ClearPrograms, true);
}
void clearCard(DeepBench& t)
{
    ClearOnLogger(t.heart.panelServices(), 1, t.heart.actions.ClearCardPrograms, false);
}
void clearFlash(DeepBench& t)
{
    ClearOnLogger(t.heart.panelServices(), 1, t.heart.actions.ClearFlash, false);
}
// A shortcut's command, which ends the program at last.
void sendByShortcut(DeepBench& t)
{
    SendText(t.heart, ParseLaunch("::1 %STATUS"), [] {});
}
// The terminal: lines that the user types, each with its answer, until it is closed.
void useTerminal(DeepBench& t)
{
    t.ClosePanel();
    t.heart.forms.terminal = &t.terminal;
    t.heart.state.TerminalOpen = t.heart.state.QuietConnect = true;
    t.heart.connecting.ConnectLogger(1);
    t.heart.state.QuietConnect = false;
    for (const char* line : {"TEST0", "/h/U/N", "CHARAC1"}) {
        t.heart.exchange.SendToLogger(line);
        t.heart.waiting.WaitMs(500);
    }
    t.heart.state.TerminalOpen = false;
    t.heart.actions.CloseLink();
    t.heart.forms.terminal = nullptr;
    if (!t.heart.end.Ended())
        t.optionsForm.SetControlEnabled("cmdTerminal", true);
}
void testMail(DeepBench& t)
{
    t.heart.smtpTest.TestByUser();
    t.heart.actions.CloseLink();
}
void testFTP(DeepBench& t)
{
    t.heart.ftpTest.TestByUser();
    t.heart.actions.CloseLink();
}

} // namespace

std::vector<Dialogue> AllDialogues()
{
    return {
        {"Search", unknownOlder, search, true},
        {"SearchKR4", unknownKR4, search, true},
        {"ConnectOlder", older, connect},
        {"ConnectKR4", kr4, connect},
        {"ConnectNetwork", network, connect},
        {"ConnectModem", dialup, connect},
        {"TestModem", dialup, testCall},
        {"ResetModem", dialup, resetModem},
        {"LoadOlder", older, load},
        {"LoadKR4", kr4, load},
        {"LoadNetwork", network, load},
        {"LoadModem", dialup, load},
        {"LoadCard", older, loadCard},
        {"LoadFlashOlder", older, loadFlash},
        {"LoadFlashKR4", kr4, loadFlash},
        {"ClearProgramsOlder", older, clearPrograms},
        {"ClearJobs", kr4, clearPrograms},
        {"ClearJobsNetwork", network, clearPrograms},
        {"ClearCard", older, clearCard},
        {"ClearFlashOlder", older, clearFlash},
        {"ClearFlashKR4", kr4, clearFlash},
        {"Shortcut", older, sendByShortcut},
        {"ShortcutModem", dialup, sendByShortcut},
        {"Terminal", kr4, useTerminal},
        {"TerminalNetwork", network, useTerminal},
        {"Mail", mail, testMail},
        {"FTP", ftp, testFTP},
    };
}

} // namespace harvelop::test
