// A test or a reset that ends early, in the middle of each of its waits.
#include "add_fixture.h"
#include "simulator/simulated_modem.h"

#include <algorithm>

namespace harvelop::test
{
namespace
{

// A way through the dialog's waits.
struct Course {
    const char* name;
    const char* option;
    const char* button;
    void (*plug)(AddBench&);
};

void plugLogger(AddBench& b)
{
    b.serial.Plug(3, AddBench::Logger("KR200"), "9600");
}
void plugLocked(AddBench& b)
{
    LoggerConfig config;
    config.password = "key";
    b.serial.Plug(3, std::make_shared<SimulatedLogger>(config), "9600");
}
void plugSilent(AddBench& b)
{
    b.serial.ports[3] = {};
}
void plugBusy(AddBench& b)
{
    b.serial.ports[3].openError = PortBusy;
}
void plugSocket(AddBench& b)
{
    b.sockets.Plug("logger", 99, AddBench::Logger("KR40"));
}
void plugSilentHost(AddBench& b)
{
    b.sockets.places["logger:99"].answers = false;
}
void plugModem(AddBench& b)
{
    const auto logger = AddBench::Logger("KR200");
    b.serial.Plug(3, std::make_shared<SimulatedModem>(ModemConfig(), PhoneBook{{"12", logger}}), "9600");
}
void plugModemWithoutLine(AddBench& b)
{
    b.heart.options.ModemTimeout = "7";
    b.heart.options.ShowMessages = true;
    b.serial.Plug(3, std::make_shared<SimulatedModem>(ModemConfig(), PhoneBook{}), "9600");
}
void plugNoModem(AddBench& b)
{
    b.heart.options.ShowMessages = true;
    plugSilent(b);
}

constexpr Course Courses[] = {{"ComPort", "optRS232", "cmdTest", plugLogger},
                              {"LockedLogger", "optRS232", "cmdTest", plugLocked},
                              {"SilentPort", "optRS232", "cmdTest", plugSilent},
                              {"BusyPort", "optRS232", "cmdTest", plugBusy},
                              {"Network", "optEthernet", "cmdTest", plugSocket},
                              {"SilentHost", "optEthernet", "cmdTest", plugSilentHost},
                              {"Modem", "optDialup", "cmdTest", plugModem},
                              {"ModemWithoutLine", "optDialup", "cmdTest", plugModemWithoutLine},
                              {"NoModem", "optDialup", "cmdTest", plugNoModem},
                              {"BusyModem", "optDialup", "cmdTest", plugBusy},
                              {"Reset", "optDialup", "cmdResetModem", plugModem},
                              {"ResetOfNoModem", "optDialup", "cmdResetModem", plugNoModem},
                              {"ResetOfBusyModem", "optDialup", "cmdResetModem", plugBusy}};

// One attempt of a course, in whose `number`th wait, a box that stands open among them, something happens.
struct Attempt {
    Attempt(const Course& course, int number, const std::function<void(AddBench&)>& event, bool changing = false)
    {
        course.plug(b);
        if (changing) {
            b.Store({SerialLogger()});
            b.View(1);
            b.Change(1);
        } else {
            b.Add();
        }
        b.Choose("cbxPort", "3");
        b.Choose("cbxModemPort", "3");
        b.Choose("cbxBaud", "9600");
        b.Fill("txtIP", "logger");
        b.Fill("txtTCPPort", "99");
        b.Fill("txtPhoneNumber", "12");
        b.Click(course.option);
        caption = b.Caption();
        int waits = 0;
        const auto wait = [&] {
            waitedAfterwards = happened;
            if (++waits != number)
                return;
            happened = true;
            event(b);
            m_sent = b.serial.Sent();
            m_boxes = b.dialogs.shown.size();
            m_questions = b.dialogs.asked.size();
        };
        b.pump.whenWaiting = [&](double) { wait(); };
        b.dialogs.whileShown = [&] {
            wait();
            if (b.dialogs.asked.size() > m_asked) {
                m_asked = b.dialogs.asked.size();
                b.dialogs.ExpectPassword("");
            } else {
                b.dialogs.Expect(BoxAnswer::Ok);
            }
        };
        b.Click(course.button);
        b.pump.whenWaiting = nullptr;
        b.dialogs.whileShown = nullptr;
        b.heart.waiting.ServeEvents();
    }

    // What was sent to the port after the event.
    std::string SentAfterwards() const { return b.serial.Sent().substr(m_sent.size()); }
    bool ToldAfterwards() const { return b.dialogs.shown.size() > m_boxes || b.dialogs.asked.size() > m_questions; }
    bool LinkReleased() const
    {
        const auto& sockets = b.sockets.made;
        return !b.serial.PortOpen() && b.heart.link.LinkMode == "None" && !b.heart.link.EthernetConnected &&
               std::all_of(sockets.begin(), sockets.end(), [](const FakeSocket* socket) {
                   return !socket || socket->State() == SocketControl::Condition::Closed;
               });
    }
    bool OptionsGivenBack() const
    {
        bool enabled = true;
        for (const auto& [control, on] : b.options.changes)
            if (control == "cmdUnload_Add")
                enabled = on;
        return enabled;
    }
    void ExpectQuietEnd() const
    {
        EXPECT_FALSE(ToldAfterwards());
        EXPECT_TRUE(LinkReleased());
        EXPECT_FALSE(b.heart.state.TestRunning || b.heart.state.AbortWait || b.heart.state.StopSearch ||
                     b.heart.state.AddDialogOpen || b.heart.state.EditingExisting);
        EXPECT_FALSE(b.form && b.form->isVisible());
        EXPECT_EQ(b.heart.link.DefaultTimeout, 5000);
    }

    AddBench b;
    std::string caption; // before
    bool happened = false;
    bool waitedAfterwards = false;

private:
    std::string m_sent;
    size_t m_boxes = 0;
    size_t m_questions = 0;
    size_t m_asked = 0;
};

// Calls `check` with an attempt for every wait there is; the last one, in which nothing happened, is the whole course.
void walk(const Course& course, const std::function<void(AddBench&)>& event, const std::function<void(Attempt&)>& check,
          bool changing = false)
{
    int number = 0;
    for (bool happened = true; happened;) {
        SCOPED_TRACE("wait " + std::to_string(++number));
        Attempt attempt(course, number, event, changing);
        happened = attempt.happened;
        if (happened)
            check(attempt);
    }
    EXPECT_GT(number, 2) << "a course without waits";
}

class EveryWait : public testing::TestWithParam<Course>
{
};

TEST_P(EveryWait, CancelEndsItQuietlyAndReleasesTheLink)
{
    walk(
        GetParam(), [](AddBench& b) { b.Click("cmdCancel"); },
        [](Attempt& attempt) {
            attempt.ExpectQuietEnd();
            EXPECT_TRUE(attempt.OptionsGivenBack());
            EXPECT_EQ(attempt.SentAfterwards().find("atdt"), std::string::npos) << "a call that nobody waits for";
        });
}

TEST_P(EveryWait, TheCloseBoxEndsItAsCancelDoes)
{
    walk(
        GetParam(), [](AddBench& b) { b.form->close(); },
        [](Attempt& attempt) {
            attempt.ExpectQuietEnd();
            EXPECT_TRUE(attempt.OptionsGivenBack());
        });
}

TEST_P(EveryWait, TheDialogMayGoWithItsOwner)
{
    walk(
        GetParam(), [](AddBench& b) { delete b.form; },
        [](Attempt& attempt) {
            attempt.ExpectQuietEnd();
            EXPECT_TRUE(attempt.OptionsGivenBack());
        });
}

TEST_P(EveryWait, AfterTheProgramsEndNoByteLeavesAndNothingIsTold)
{
    walk(
        GetParam(),
        [](AddBench& b) {
            b.pump.ServePending(); // what was sent before leaves before
            b.heart.end.EndProgram();
        },
        [](Attempt& attempt) {
            EXPECT_EQ(attempt.SentAfterwards(), "");
            EXPECT_FALSE(attempt.ToldAfterwards());
            EXPECT_FALSE(attempt.waitedAfterwards);
            EXPECT_FALSE(attempt.b.serial.PortOpen());
            EXPECT_TRUE(attempt.b.files.writes.empty());
        });
}

TEST_P(EveryWait, ASecondClickStartsNothing)
{
    walk(
        GetParam(),
        [](AddBench& b) {
            for (const char* button : {"cmdTest", "cmdResetModem", "cmdOk"})
                b.Click(button);
            EXPECT_TRUE(b.heart.state.TestRunning);
        },
        [](Attempt& attempt) {
            EXPECT_TRUE(attempt.LinkReleased());
            EXPECT_EQ(attempt.b.Caption(), attempt.caption);
            EXPECT_EQ(attempt.b.heart.tables.Count(), 0);
            EXPECT_TRUE(attempt.b.The("cmdTest").isEnabled() && attempt.b.The("cmdOk").isEnabled());
            EXPECT_FALSE(attempt.b.heart.state.TestRunning || attempt.b.heart.state.AbortWait);
        });
}

TEST_P(EveryWait, ThePanelOfAChangedLoggerIsGivenBack)
{
    walk(
        GetParam(), [](AddBench& b) { b.Click("cmdCancel"); },
        [](Attempt& attempt) {
            attempt.ExpectQuietEnd();
            ASSERT_TRUE(attempt.b.Panel(1));
            EXPECT_TRUE(attempt.b.Panel(1)->isEnabled());
            for (const char* button : {"cmdCancel", "cmdOk", "cmdProgram"})
                EXPECT_TRUE(Find<QPushButton>(*attempt.b.Panel(1), button).isEnabled()) << button;
            EXPECT_EQ(attempt.b.RecordLine(1), RecordText(SerialLogger()));
        },
        true);
}

INSTANTIATE_TEST_SUITE_P(FrmAddTallyCore, EveryWait, testing::ValuesIn(Courses),
                         [](const auto& course) { return std::string(course.param.name); });

} // namespace
} // namespace harvelop::test
