// Every wait of everything that connects, interrupted in its middle: one after the other, until a run has no such wait.
#include "app/send_text.h"
#include "links/connect_bench.h"
#include "simulator/simulated_modem.h"
#include "support/wait_walk.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <ostream>
#include <set>

namespace harvelop::test
{
namespace
{

using testing::IsEmpty;

// What is on com port 3 and on the network differs; a run also releases its link, as its caller would.
struct Bench : ConnectTest {
    Bench()
    {
        Installed();
        heart.forms.add = &dialog;
        heart.state.AddDialogOpen = true;
        heart.options.ModemTimeout = "45";
        serial.ports[3] = {};
        dialogs.whileShown = [this] {
            const bool box = dialogs.shown.size() > boxes;
            boxes = dialogs.shown.size();
            if (box)
                dialogs.Expect(BoxAnswer::Ok);
            else
                dialogs.ExpectPassword("");
        };
        // As the programs do: what is still queued does not leave any more.
        heart.end.OnEnd = [this] { serial.ClearOutBuffer(); };
    }
    void TestBody() override {}

    void StoreDialup() { Store("KR200 Series 1", "3", "5551234", "at&f", "9600"); }
    void PlugModem(ModemFailure failure = ModemFailure::None)
    {
        ModemConfig config;
        config.failure = failure;
        const PhoneBook book{{"5551234", SimulatedModel("KR200", "1")}};
        serial.Plug(3, std::make_shared<SimulatedModem>(config, book), "9600");
    }
    void Send(const std::string& command)
    {
        heart.state.LaunchCommand = command;
        SendText(heart, ParseLaunch(command), [this] { heart.state.TerminalOpen = true; });
        heart.actions.CloseLink(); // where the terminal stays, its closing does it
    }

    // Each line that has gone out, over whichever link.
    std::vector<std::string> Sent() const
    {
        std::vector<std::string> sent;
        for (const auto& event : serial.events)
            if (event.kind == FakeSerial::Event::Kind::Sent)
                sent.push_back(event.text);
        for (const std::string& step : sockets.steps)
            if (!step.ends_with(" close"))
                sent.push_back(step.substr(2));
        return sent;
    }
    bool Released() const
    {
        return !serial.PortOpen() && std::all_of(sockets.made.begin(), sockets.made.end(), [](const auto* socket) {
            return !socket || socket->State() == SocketControl::Condition::Closed;
        });
    }

    struct Moment {
        double ms = 0;
        size_t sent = 0;
        size_t boxes = 0;
        size_t writes = 0;
    };
    Moment Now() const { return {pump.NowMs(), Sent().size(), dialogs.shown.size(), files.writes.size()}; }

    FakeAddDialog dialog;
    size_t boxes = 0;
};

struct Run {
    const char* name;
    void (*prepare)(Bench&);
    void (*go)(Bench&);
    std::set<std::string> closing; // lines that belong to its end, also when nobody waits for it any more
    size_t boxes = 0;              // and boxes that do
    bool ofDialog = false;         // Cancel in the add dialog ends it quietly
};

void serialLogger(Bench& t)
{
    t.StoreSerial();
    t.serial.Plug(3, SimulatedModel("KR200", "2"), "9600");
}
void busyPort(Bench& t)
{
    t.StoreSerial();
    t.serial.ports[3] = {PortBusy, "", nullptr};
}
void networkLogger(Bench& t)
{
    t.StoreNetwork();
    t.sockets.Plug("10.0.0.5", 3000, SimulatedModel("KR40"));
}
void otherModel(Bench& t)
{
    t.StoreNetwork("KR41");
    t.sockets.Plug("10.0.0.5", 3000, SimulatedModel("KR40"));
}
void silentHost(Bench& t)
{
    t.StoreNetwork();
    t.sockets.places["10.0.0.5:3000"] = {nullptr, false};
}
void modem(Bench& t)
{
    t.StoreDialup();
    t.PlugModem();
}
void modemWithoutLine(Bench& t)
{
    t.StoreDialup();
    t.PlugModem(ModemFailure::NoCarrier);
}
void noModem(Bench& t)
{
    t.StoreDialup();
}

void connects(Bench& t)
{
    t.Connect();
    t.heart.actions.CloseLink();
}
void tests(Bench& t)
{
    t.heart.link.ConnectionKind = "Dialup";
    t.heart.modem.TestDialup(3, "5551234", "at&f");
    t.heart.actions.CloseLink();
}
void resets(Bench& t)
{
    t.heart.modem.ResetModem(3, "atz");
}
void sends(Bench& t)
{
    t.Send("::2 %STATUS");
}
void sendsInTerminal(Bench& t)
{
    t.Send("::2 %STATUS%");
}

const std::set<std::string> HangUp = {"+++", "at&h\r\n", "at&h\r\n+++"};

const Run Runs[] = {
    {"Serial", serialLogger, connects, {}},
    {"BusyPort", busyPort, connects, {}, 1}, // the port's own box
    {"Network", networkLogger, connects, {}},
    {"AnotherModel", otherModel, connects, {}},
    {"SilentHost", silentHost, connects, {}},
    {"Dialup", modem, connects, HangUp},
    {"DialupWithoutLine", modemWithoutLine, connects, HangUp},
    {"DialupWithoutModem", noModem, connects, HangUp},
    {"TestDialup", modem, tests, HangUp, 0, true},
    {"TestDialupWithoutLine", modemWithoutLine, tests, HangUp, 0, true},
    {"TestDialupWithoutModem", noModem, tests, HangUp, 0, true},
    {"ResetModem", modem, resets, HangUp, 0, true},
    {"ResetWithoutModem", noModem, resets, HangUp, 0, true},
    {"SendTextOverAPort", serialLogger, sends, {"STATUS\r\n"}, 1},
    {"SendTextOverTheNetwork", networkLogger, sends, {"send STATUS\r\n"}, 1},
    {"SendTextOverAModem", modem, sends, {"+++", "STATUS\r\n"}, 1},
    {"SendTextInTheTerminal", serialLogger, sendsInTerminal, {"STATUS\r\n"}, 1},
};

void PrintTo(const Run& run, std::ostream* out)
{
    *out << run.name;
}

class EveryWait : public testing::TestWithParam<Run>
{
protected:
    using Moment = Bench::Moment;

    static void Walk(const WaitWalk<Bench>::Step& event, const WaitWalk<Bench>::Check& check)
    {
        WaitWalk<Bench>{GetParam().prepare, GetParam().go, event}.Walk([&](Bench& t, const Moment& then) {
            check(t, then);
            EXPECT_EQ(t.heart.link.DefaultTimeout, 5000);
            EXPECT_EQ(t.heart.link.LinkMode, "None");
            EXPECT_TRUE(t.Released());
        });
    }
    static std::vector<std::string> SentSince(const Bench& bench, const Moment& moment)
    {
        const auto all = bench.Sent();
        return {all.begin() + static_cast<std::ptrdiff_t>(moment.sent), all.end()};
    }
};

} // namespace

TEST_P(EveryWait, EndedByTheProgramsEndAtOnce)
{
    Walk([](Bench& t) { t.heart.end.EndProgram(); },
         [](Bench& t, const Moment& then) {
             EXPECT_EQ(t.pump.NowMs(), then.ms);
             EXPECT_THAT(SentSince(t, then), IsEmpty());
             EXPECT_EQ(t.dialogs.shown.size(), then.boxes);
             EXPECT_EQ(t.files.writes.size(), then.writes);
         });
}

// As Cancel of a test does it. What it means for the dialogue is that no wait for an answer lasts any longer.
TEST_P(EveryWait, OutlivesACancel)
{
    Walk(
        [](Bench& t) {
            t.heart.state.AbortWait = true;
            t.heart.state.AddDialogOpen = false;
            t.heart.forms.add = nullptr;
        },
        [](Bench& t, const Moment& then) {
            EXPECT_LE(t.pump.NowMs(), then.ms + 20000);
            EXPECT_TRUE(!GetParam().ofDialog || t.dialogs.shown.size() == then.boxes);
        });
}

TEST_P(EveryWait, GivesUpQuietlyOnceTheOptionsPanelIsClosed)
{
    Walk([](Bench& t) { t.heart.state.StopLinkWork = t.heart.state.StopSearch = true; },
         [](Bench& t, const Moment& then) {
             const auto sent = t.Sent();
             const bool identifying = std::find_if(sent.begin(), sent.end(), [](const std::string& line) {
                                          return line.ends_with("Q /H/r\r\n\r\n");
                                      }) != sent.end();
             // An identification that has begun goes on to its end.
             for (const std::string& line : SentSince(t, then))
                 EXPECT_TRUE(identifying || GetParam().closing.contains(line)) << line;
             EXPECT_LE(t.dialogs.shown.size(), then.boxes + GetParam().boxes);
         });
}

INSTANTIATE_TEST_SUITE_P(Of, EveryWait, testing::ValuesIn(Runs),
                         [](const auto& run) { return std::string(run.param.name); });

} // namespace harvelop::test
