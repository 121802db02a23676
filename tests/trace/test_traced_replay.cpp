// The writer of a trace and its reader hold together: what a program did once it does again against its trace.
#include "simulator/simulated_modem.h"
#include "trace/traced_ctl.h"

namespace harvelop::test
{

namespace
{

using testing::IsEmpty;
using Words = std::vector<std::string>;

struct Outcome {
    int code;
    std::string out;
    std::string said;
    std::map<std::string, std::string> files;
    bool operator==(const Outcome&) const = default;
};

class ReplayTest : public testing::TestWithParam<ReplayDevice::Pace>
{
protected:
    static Outcome Run(TracedCtl& ctl, const Words& words)
    {
        const int code = ctl.RunTraced(words);
        return {code, ctl.out.str(), ctl.said.str(), ctl.files.files};
    }
    // The same commands on the loggers and then on the trace of that.
    void ExpectSame(const std::function<void(TracedCtl&)>& plug, const std::vector<LoggerRecord>& loggers,
                    const std::vector<Words>& commands)
    {
        std::vector<Outcome> first;
        std::string trace;
        {
            TracedCtl ctl(loggers);
            plug(ctl);
            for (const Words& words : commands)
                first.push_back(Run(ctl, words));
            trace = ctl.Trace();
        }
        TracedCtl again(loggers);
        again.Plug(ReadTrace(trace), GetParam());
        for (size_t i = 0; i < commands.size(); ++i) {
            const Outcome second = Run(again, commands[i]);
            EXPECT_EQ(second.code, CtlDone) << trace;
            EXPECT_EQ(second.said, first[i].said) << trace << again.Trace();
            EXPECT_EQ(second.out, first[i].out);
            EXPECT_EQ(second.files, first[i].files);
        }
        EXPECT_THAT(again.departures, IsEmpty());
    }
};

TEST_P(ReplayTest, ASearchOfAllPortsFindsTheSame)
{
    ExpectSame(
        [](TracedCtl& ctl) {
            ctl.serial.Plug(1, Simulated("KR200", "2", "", true), "9600");
            ctl.serial.Plug(3, Simulated("KR305", "3", "GREENHOUSE"), "1200");
            ctl.serial.Plug(9, Simulated("KR400"), "57600");
            ctl.serial.ports[5] = {};
        },
        {}, {{"find", "--all", "--yes", "--password", "GREENHOUSE"}, {"list"}, {"show", "1"}});
}

TEST_P(ReplayTest, AllKindsOfLinksAnswerTheSame)
{
    ExpectSame(
        [](TracedCtl& ctl) {
            ModemConfig modem;
            modem.baud = 19200;
            ctl.serial.Plug(1, Simulated("KR200", "2"), "9600");
            ctl.serial.Plug(
                3, std::make_shared<SimulatedModem>(modem, PhoneBook{{"0,,12345", Simulated("KR305", "3", "se cret")}}),
                "19200");
            ctl.sockets.Plug("10.0.0.5", 3000, Simulated("KR40"));
        },
        {SerialLogger(), ModemLogger(), NetworkLogger()},
        {{"connect", "1"}, {"send", "2", "TEST0"}, {"send", "3", "DIRJOBS"}, {"test", "3"}, {"send", "3", "CHARAC1"}});
}

INSTANTIATE_TEST_SUITE_P(Paces, ReplayTest, testing::Values(ReplayDevice::Pace::AsRecorded, ReplayDevice::Pace::Fast),
                         [](const auto& pace) {
                             return pace.param == ReplayDevice::Pace::Fast ? "Fast" : "AsRecorded";
                         });

TEST(TraceReader, ReadsEveryByteThatTheWriterWrites)
{
    std::string all;
    for (int code = 0; code < 256; ++code)
        if (code != '\n')
            all += static_cast<char>(code);
    TraceFormat format;
    const std::string shown(all.size(), SecretFilter::Shown);
    const std::string text =
        "# harvelop trace 1, test\n" +
        format.Line({1, "com16", "open", QuotedForTrace("9600,N,8,1") + " 2 " + QuotedForTrace(all)}) +
        format.Line({2, "com16", "in", all, shown}) + format.Line({3, "com16", "drop", all, shown});
    const RecordedTrace trace = ReadTrace(text);
    ASSERT_THAT(trace.errors, IsEmpty());
    ASSERT_EQ(trace.lines.size(), 1U);
    ASSERT_EQ(trace.lines[0].steps.size(), 3U);
    EXPECT_EQ(trace.lines[0].steps[1].text, all);
    EXPECT_EQ(trace.lines[0].steps[2].text, all);
    EXPECT_TRUE(trace.lines[0].steps[2].isDropped);
}

} // namespace

} // namespace harvelop::test
