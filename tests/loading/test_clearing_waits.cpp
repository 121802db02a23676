// Every wait of everything that clears a logger, interrupted in its middle.
#include "identify/panel_work.h"
#include "loading/clear_bench.h"
#include "loading/wait_walk.h"

#include <ostream>

namespace harvelop::test
{
namespace
{

struct Work {
    const char* name;
    const char* model;
    std::function<void()> LoggerActions::*action;
    const char* job = nullptr; // the entry to choose; empty: the chooser is closed
    bool data = false;         // the older family's logger holds some
};

constexpr const char* Older = "KR200 Series 3";

const Work Works[] = {
    {"OlderPrograms", Older, &LoggerActions::ClearPrograms},
    {"OlderProgramsAndData", Older, &LoggerActions::ClearPrograms, nullptr, true},
    {"CardPrograms", Older, &LoggerActions::ClearCardPrograms},
    {"OlderFlash", Older, &LoggerActions::ClearFlash},
    {"KR4Flash", "KR400", &LoggerActions::ClearFlash},
    {"Job", "KR400", &LoggerActions::ClearPrograms, "*ALPHA"},
    {"JobWithData", "KR400", &LoggerActions::ClearPrograms, "BETA"},
    {"AllJobs", "KR400", &LoggerActions::ClearPrograms, "DIRJOBS"},
    {"NoJob", "KR400", &LoggerActions::ClearPrograms, ""},
};

void PrintTo(const Work& work, std::ostream* out)
{
    *out << work.name;
}

void prepare(LoadingTest& t, const Work& work)
{
    t.UseLogger(work.model);
    t.heart.link.DefaultTimeout = 5000;
    AnswerAsJobs(*t.far);
    t.far->Answer("9SV(FF0) /U/N", "\r\n1\r\n");
    t.far->Answer("H BEGIN", work.data ? "E4\r\n" : "");
    t.far->Answer("CLEAR CDATA", "CLEAR CDATA\r\n");
    t.far->Answer("CALARMS CSCANS", "CSCANS\r\n");
    t.far->Answer("CPROG", "CPROG\r\n");
    t.far->Answer("DELONRESET", "DELONRESET\r\n");
    t.far->Answer("DELFLASHONRESET", "DELFLASHONRESET\r\n");
    t.far->Answer(Bootstrap, "Bootstrap mode\r\n>\r\n");
    t.far->Answer("EF 60000,1", "Erasing FLASH memory\r\nErase successful\r\n");
    t.far->Answer("J", "Tallycore\r\nDone.\r\n");
    const auto jobs = UseChooser(t);
    jobs->whenShown = [&t] { EXPECT_FALSE(t.heart.end.Ended()); };
    if (!work.job)
        return;
    const std::string entry = work.job;
    if (entry.empty())
        CloseIn(t, jobs);
    else
        ChooseIn(t, jobs, entry);
}

class ClearingWaits : public testing::TestWithParam<Work>
{
protected:
    static LoadingWalk WalkOf(const LoadingWalk::Step& event)
    {
        const auto go = [](LoadingTest& t) {
            const bool programs = GetParam().action == &LoggerActions::ClearPrograms;
            ClearOnLogger(t.heart.panelServices(), 1, t.heart.actions.*GetParam().action, programs);
        };
        return {[](LoadingTest& t) { prepare(t, GetParam()); }, go, event};
    }
    // However it went.
    static void ExpectReleased(const LoadingTest& t)
    {
        EXPECT_FALSE(t.serial.PortOpen());
        EXPECT_EQ(t.heart.link.LinkMode, "None");
        EXPECT_FALSE(t.heart.loggerControls.Working());
    }
    // And the next work finds everything as it should.
    static void ExpectUsable(const LoadingTest& t)
    {
        ExpectReleased(t);
        EXPECT_FALSE(t.messages.Visible());
        EXPECT_TRUE(GetParam().action != &LoggerActions::ClearPrograms ||
                    t.heart.state.ClearMode != t.heart.link.LinkConnected);
    }
    static constexpr double LongestMs = 60000; // that anything takes which waits for answers in vain
};

} // namespace

TEST_P(ClearingWaits, EndedByTheProgramsEndAtOnce)
{
    WalkOf([](LoadingTest& t) { t.heart.end.EndProgram(); }).Walk([](LoadingTest& t, const LoadingWalk::Moment& then) {
        EXPECT_EQ(t.pump.NowMs(), then.ms);
        EXPECT_EQ(t.far->lines.size(), then.lines);
        EXPECT_EQ(t.Boxes().size(), then.boxes);
        EXPECT_EQ(t.files.writes.size(), then.writes);
        ExpectReleased(t);
    });
}

TEST_P(ClearingWaits, UnpluggedNothingMoreIsSentAndTheControlsComeBack)
{
    WalkOf([](LoadingTest& t) { t.Unplug(); }).Walk([](LoadingTest& t, const LoadingWalk::Moment& then) {
        EXPECT_EQ(t.far->lines.size(), then.lines);
        EXPECT_LE(t.pump.NowMs(), then.ms + LongestMs);
        ExpectUsable(t);
    });
}

TEST_P(ClearingWaits, ASilentLoggerIsGivenUp)
{
    WalkOf([](LoadingTest& t) { t.far->silent = true; }).Walk([](LoadingTest& t, const LoadingWalk::Moment& then) {
        EXPECT_LE(t.pump.NowMs(), then.ms + LongestMs);
        ExpectUsable(t);
    });
}

TEST_P(ClearingWaits, AnAbortEndsEveryWaitForAnAnswer)
{
    WalkOf([](LoadingTest& t) {
        t.heart.state.AbortWait = true;
    }).Walk([](LoadingTest& t, const LoadingWalk::Moment& then) {
        EXPECT_LE(t.pump.NowMs(), then.ms + LongestMs);
        ExpectUsable(t);
    });
}

INSTANTIATE_TEST_SUITE_P(Of, ClearingWaits, testing::ValuesIn(Works),
                         [](const auto& work) { return std::string(work.param.name); });

} // namespace harvelop::test
