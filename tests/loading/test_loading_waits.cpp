// Every wait of everything that sends programs or empties cards, with something bad in its middle.
#include "identify/panel_work.h"
#include "loading/load_bench.h"
#include "loading/wait_walk.h"

#include <ostream>

namespace harvelop::test
{
namespace
{

using testing::AnyOf;
using testing::StartsWith;

struct Work {
    const char* name;
    LoadingWalk::Step prepare;
    LoadingWalk::Step go;
};

void PrintTo(const Work& work, std::ostream* out)
{
    *out << work.name;
}

// The answers of a logger with data and a card.
void answers(LoadingTest& t)
{
    t.StoreProgram("BEGIN\r\n\r\nEND\r\n");
    t.far->Answer("9SV(FF0) /U/N", "\r\n1\r\n");
    t.far->Answer("H BEGIN", "Tallycore 2E4\r\n");
    t.far->Answer("CLEAR CDATA", "CLEAR CDATA\r\n");
    t.far->Answer("CPROG", "CPROG\r\n");
    t.far->Answer("13SV", "13SV\r\n2\r\n");
    t.far->Answer("RUNPROG", "RUNPROG\r\n");
}
void answersWithAnError(LoadingTest& t)
{
    answers(t);
    t.far->Answer("", "Tallycore 2E12\r\n");
}
void answersOverTheNetwork(LoadingTest& t)
{
    t.UseNetworkLogger(LoadingTest::KR4Model);
    answers(t);
}

void load(LoadingTest& t)
{
    t.dialogs.ExpectChooser(LoadingTest::ProgramFile);
    LoadOnLogger(t.heart.panelServices(), 1);
}
void loadAtStart(LoadingTest& t)
{
    t.heart.state.LaunchCommand = std::string("::5 ") + LoadingTest::ProgramFile;
    LoadOnLogger(t.heart.panelServices(), 1);
    EXPECT_TRUE(t.heart.end.Ended());
}
void loadCard(LoadingTest& t)
{
    t.dialogs.ExpectChooser(LoadingTest::ProgramFile);
    RunOnLogger(t.heart.panelServices(), 1, t.heart.actions.LoadCardProgram);
}
void clearCard(LoadingTest& t)
{
    ClearOnLogger(t.heart.panelServices(), 1, t.heart.actions.ClearCardPrograms, false);
}

const Work Works[] = {
    {"Load", answers, load},
    {"LoadWithAnError", answersWithAnError, load},
    {"LoadOverTheNetwork", answersOverTheNetwork, load},
    {"LoadAtStart", answers, loadAtStart},
    {"LoadOfACard", answers, loadCard},
    {"LoadOfACardOverTheNetwork", answersOverTheNetwork, loadCard},
    {"ClearingOfACard", answers, clearCard},
};

class LoadingWaits : public testing::TestWithParam<Work>
{
protected:
    static void Walk(const LoadingWalk::Step& event, const LoadingWalk::Check& check)
    {
        LoadingWalk{GetParam().prepare, GetParam().go, event}.Walk(
            [&](AgreedLoading& t, const LoadingWalk::Moment& then) {
                check(t, then);
                EXPECT_FALSE(t.heart.loggerControls.Working());
                EXPECT_FALSE(t.messages.Visible());
                EXPECT_FALSE(t.serial.PortOpen());
                EXPECT_EQ(t.heart.link.LinkMode, "None");
                EXPECT_EQ(t.heart.link.DefaultTimeout, 5000);
                EXPECT_TRUE(t.files.writes.empty());
                for (const auto* socket : t.sockets.made)
                    EXPECT_TRUE(!socket || socket->State() == SocketControl::Condition::Closed);
            });
    }
    // The last box tells how such work ends.
    static void ExpectReport(const LoadingTest& t)
    {
        ASSERT_FALSE(t.Boxes().empty());
        EXPECT_THAT(t.Boxes().back().text,
                    AnyOf(StartsWith("Could not find a "), StartsWith("Program sent successfully to the "),
                          StartsWith("There was a syntax error "), StartsWith("No memory card found in the "),
                          StartsWith("Do you want to start running "), "Memory card program started.     ",
                          "Memory card programs successfully deleted.     "));
    }
};

TEST_P(LoadingWaits, EndedByTheProgramsEndAtOnce)
{
    Walk([](LoadingTest& t) { t.heart.end.EndProgram(); },
         [](LoadingTest& t, const LoadingWalk::Moment& then) {
             EXPECT_EQ(t.pump.NowMs(), then.ms);
             EXPECT_EQ(t.far->lines.size(), then.lines);
             EXPECT_EQ(t.Boxes().size(), then.boxes);
         });
}

// A load takes its silence for what it is before the first line, for success behind it.
TEST_P(LoadingWaits, OutlivesALoggerThatGoesSilent)
{
    Walk([](LoadingTest& t) { t.far->silent = true; },
         [](LoadingTest& t, const LoadingWalk::Moment& then) {
             EXPECT_LE(t.pump.NowMs(), then.ms + 45000);
             ExpectReport(t);
         });
}

TEST_P(LoadingWaits, OutlivesALoggerThatIsUnplugged)
{
    Walk([](LoadingTest& t) { t.Unplug(); },
         [](LoadingTest& t, const LoadingWalk::Moment& then) {
             EXPECT_LE(t.pump.NowMs(), then.ms + 45000);
             EXPECT_EQ(t.far->lines.size(), then.lines);
             ExpectReport(t);
         });
}

TEST_P(LoadingWaits, OutlivesAnAbort)
{
    Walk([](LoadingTest& t) { t.heart.state.AbortWait = true; },
         [](LoadingTest& t, const LoadingWalk::Moment& then) {
             EXPECT_LE(t.pump.NowMs(), then.ms + 20000);
             ExpectReport(t);
         });
}

INSTANTIATE_TEST_SUITE_P(Of, LoadingWaits, testing::ValuesIn(Works),
                         [](const auto& run) { return std::string(run.param.name); });

} // namespace
} // namespace harvelop::test
