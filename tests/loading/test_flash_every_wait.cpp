// Every wait of a program on its way into flash memory, interrupted in its middle, and every box that shows.
#include "identify/panel_work.h"
#include "loading/flash_bench.h"
#include "loading/wait_walk.h"

#include <algorithm>
#include <ostream>

namespace harvelop::test
{
namespace
{

constexpr const char* Older = "KR200 Series 3";
constexpr const char* KR4 = "KR400";

struct Run {
    const char* name;
    const char* model;
    void (*vary)(LoadingTest&) = nullptr; // in what it differs from a run in which all goes well
    bool network = false;
};

void refuse(LoadingTest& t)
{
    t.answer = [](const Box& box) { return box.buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok; };
}
void takeConvertersAway(LoadingTest& t)
{
    t.desktop.start = nullptr;
    t.desktop.starts = false;
}
void makeTooLarge(LoadingTest& t)
{
    t.heart.loading.CleanedProgramSize = 4090;
}
void silence(LoadingTest& t)
{
    t.far->silent = true;
}

const Run Runs[] = {
    {"Older", Older},
    {"OlderOverTheNetwork", Older, nullptr, true},
    {"OlderRefused", Older, refuse},
    {"OlderWithoutConverters", Older, takeConvertersAway},
    {"OlderTooLarge", Older, makeTooLarge},
    {"OlderSilent", Older, silence},
    {"KR4", KR4},
    {"KR4OverTheNetwork", KR4, nullptr, true},
    {"KR4Refused", KR4, refuse},
    {"KR4Silent", KR4, silence},
};

void PrintTo(const Run& run, std::ostream* out)
{
    *out << run.name;
}

void prepare(LoadingTest& t, const Run& run)
{
    if (run.network)
        t.UseNetworkLogger(run.model);
    else
        t.UseLogger(run.model);
    t.heart.connecting.IdentifyLogger = [&run] { return run.model; }; // its own waits are no part of this
    PrepareFlash(t);
    t.StoreProgram("BEGIN\"WIND\"\r\nRA1S 1V\r\n\r\nEND\r\n");
    t.dialogs.ExpectChooser(LoadingTest::ProgramFile);
    if (run.vary)
        run.vary(t);
}

// As the click does it.
void go(LoadingTest& t)
{
    RunOnLogger(t.heart.panelServices(), 1, t.heart.actions.LoadFlashProgram);
}

bool hasReported(const LoadingTest& t)
{
    return std::ranges::any_of(t.Boxes(), [](const Box& box) { return box.text.starts_with("Program successfully"); });
}

class FlashEveryWait : public testing::TestWithParam<Run>
{
protected:
    static LoadingWalk WalkOf(const LoadingWalk::Step& event)
    {
        return {[](LoadingTest& t) { prepare(t, GetParam()); }, go, event};
    }
    static void ExpectReleased(const LoadingTest& t)
    {
        EXPECT_FALSE(t.serial.PortOpen());
        EXPECT_EQ(t.heart.link.LinkMode, "None");
        EXPECT_FALSE(t.heart.loading.FlashLoadMode);
    }
    // `event` in each box; gives how many there were.
    static size_t WalkBoxes(const LoadingWalk::Step& event, const LoadingWalk::Check& check)
    {
        for (size_t box = 1;; ++box) {
            SCOPED_TRACE("box " + std::to_string(box));
            AgreedLoading t;
            prepare(t, GetParam());
            LoadingWalk::Moment moment;
            t.whenBoxShows = [&](const Box&) {
                if (t.Boxes().size() != box)
                    return;
                event(t);
                t.heart.waiting.ServeEvents(); // as a box does while it stands open
                moment = t.Now();
            };
            go(t);
            if (t.Boxes().size() < box)
                return box - 1;
            check(t, moment);
            ExpectReleased(t);
            if (HasFailure())
                return box;
        }
    }
};

constexpr double LongestRestMs = 60000;

} // namespace

TEST_P(FlashEveryWait, EndedByTheProgramsEndAtOnce)
{
    std::map<std::string, std::string> files;
    size_t started = 0;
    const auto end = [&](LoadingTest& t) {
        t.heart.end.EndProgram();
        files = t.files.files;
        started = t.desktop.started.size();
    };
    const auto check = [&](LoadingTest& t, const LoadingWalk::Moment& then) {
        EXPECT_EQ(t.pump.NowMs(), then.ms);
        EXPECT_EQ(t.far->lines.size(), then.lines);
        EXPECT_EQ(t.Boxes().size(), then.boxes);
        EXPECT_EQ(t.files.files, files);
        EXPECT_EQ(t.desktop.started.size(), started);
        ExpectReleased(t);
    };
    WalkOf(end).Walk(check);
    EXPECT_GT(WalkBoxes(end, check), 0U);
}

// Whatever is told then, it is not that all went well; and the work comes to its end.
TEST_P(FlashEveryWait, OutlivesAnUnpluggedLogger)
{
    bool reported = false;
    const auto unplug = [&](LoadingTest& t) {
        t.Unplug();
        const auto& lines = t.far->lines;
        const std::string last = lines.empty() ? "" : lines.back().text;
        reported = last == "J" || last == "FLASHONRESET" || last == "SINGLEPUSH"; // its answer has been there
    };
    const auto check = [&](LoadingTest& t, const LoadingWalk::Moment& then) {
        EXPECT_LE(t.pump.NowMs(), then.ms + LongestRestMs);
        EXPECT_EQ(t.far->lines.size(), then.lines);
        EXPECT_TRUE(reported || !hasReported(t));
        ExpectReleased(t);
    };
    WalkOf(unplug).Walk(check);
    EXPECT_GT(WalkBoxes(unplug, check), 0U);
}

TEST_P(FlashEveryWait, OutlivesALoggerThatFallsSilent)
{
    AgreedLoading undisturbed;
    prepare(undisturbed, GetParam());
    go(undisturbed);
    const auto check = [&](LoadingTest& t, const LoadingWalk::Moment& then) {
        EXPECT_LE(t.pump.NowMs(), then.ms + LongestRestMs);
        EXPECT_EQ(t.Lines(), undisturbed.Lines()); // what goes out does not hang on any answer
        EXPECT_EQ(t.files.files, undisturbed.files.files);
        ExpectReleased(t);
    };
    WalkOf(silence).Walk(check);
    EXPECT_GT(WalkBoxes(silence, check), 0U);
}

// No wait for an answer lasts any longer then, and all else goes its way.
TEST_P(FlashEveryWait, OutlivesACancel)
{
    const auto cancel = [](LoadingTest& t) { t.heart.state.AbortWait = t.heart.state.StopLinkWork = true; };
    const auto check = [](LoadingTest& t, const LoadingWalk::Moment& then) {
        EXPECT_LE(t.pump.NowMs(), then.ms + LongestRestMs);
        ExpectReleased(t);
    };
    WalkOf(cancel).Walk(check);
    EXPECT_GT(WalkBoxes(cancel, check), 0U);
}

INSTANTIATE_TEST_SUITE_P(Of, FlashEveryWait, testing::ValuesIn(Runs),
                         [](const auto& run) { return std::string(run.param.name); });

} // namespace harvelop::test
