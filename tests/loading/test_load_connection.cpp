// Which loggers a program can be sent to, and programs that are sent at a start.
#include "identify/panel_work.h"
#include "links/connection_test.h"
#include "loading/load_bench.h"

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr BoxAnswer Yes = BoxAnswer::Yes;
constexpr BoxAnswer No = BoxAnswer::No;
constexpr BoxAnswer Ok = BoxAnswer::Ok;

struct LoadConnection : ProgramLoadTest {
    void Load()
    {
        dialogs.ExpectChooser(ProgramFile);
        LoadOnLogger(heart.panelServices(), heart.state.CurrentLogger);
        EXPECT_FALSE(heart.loggerControls.Working());
        EXPECT_FALSE(serial.PortOpen());
    }
    std::vector<std::string> Texts() const
    {
        std::vector<std::string> texts;
        for (const Box& box : Boxes())
            texts.push_back(box.text);
        return texts;
    }
};

TEST(ConnectionTest, GoesByTheNumberOfTheLoggerInTheTableOfPorts)
{
    LinkState link;
    link.LinkConnected = true;
    EXPECT_EQ(TestConnected(link, 0), ConnectionTest::Connected);
    EXPECT_EQ(TestConnected(link, 16), ConnectionTest::Connected);
    EXPECT_EQ(TestConnected(link, 17), ConnectionTest::NoEntry);
    EXPECT_EQ(TestConnected(link, 50), ConnectionTest::NoEntry);
    link.PortOpenFailed.Set(4, true);
    EXPECT_EQ(TestConnected(link, 4), ConnectionTest::NotConnected);
    EXPECT_EQ(TestConnected(link, 5), ConnectionTest::Connected);
    link.LinkConnected = false;
    EXPECT_EQ(TestConnected(link, 5), ConnectionTest::NotConnected);
    EXPECT_EQ(TestConnected(link, 17), ConnectionTest::NoEntry);
}

TEST_F(LoadConnection, ALoggerThatDoesNotAnswerFreesTheControls)
{
    far->silent = true;
    Expect({Ok});
    Load();
    EXPECT_THAT(Texts(), ElementsAre("Could not find a KR200 Series 2 on Com 3.     "));
    EXPECT_FALSE(messages.Visible());
}

TEST_F(LoadConnection, AnotherModelIsSentNothing)
{
    far->Identify("KR300 Series 2");
    Expect({Ok});
    Load();
    EXPECT_THAT(Texts(), ElementsAre("Could not find a KR200 Series 2 on Com 3.     "));
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(LoadConnection, ABusyPortIsSentNothing)
{
    serial.ports[3].openError = PortBusy;
    Expect({Ok});
    Load();
    EXPECT_THAT(Texts(), ElementsAre("Can't Connect to Com 3 : the Port is Busy.     "));
    EXPECT_THAT(serial.Sent(), IsEmpty());
}

TEST_F(LoadConnection, ABusyPortOfTheLoggersNumberKeepsTheLoggerOut)
{
    heart.link.PortOpenFailed.Set(1, true); // com port 1; the logger has number 1 and com port 3
    Load();
    EXPECT_TRUE(heart.link.LinkConnected);
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(LoadConnection, LoggersUpToNumber16AreSentTheirPrograms)
{
    UseLogger(OlderModel, 16);
    Expect({Yes, Ok});
    Load();
    EXPECT_THAT(ProgramLines(), ElementsAre("BEGIN", "RA1M 1TK", "", "END"));
}

TEST_F(LoadConnection, LoggersFromNumber17OnEndInASubscriptError)
{
    for (const int number : {17, 50}) {
        SCOPED_TRACE(number);
        UseLogger(OlderModel, number);
        Forget();
        Expect({Ok, Ok});
        Load();
        EXPECT_THAT(Boxes(),
                    ElementsAre(Box{"Could not find a KR200 Series 2 on Com 3.     ", BoxTitle, BoxIcon::Critical},
                                Box{"Subscript out of range", "", BoxIcon::Critical}));
        EXPECT_THAT(Lines(), IsEmpty());
        EXPECT_FALSE(heart.end.Ended());
    }
}

TEST_F(LoadConnection, TheSubscriptErrorEndsEveryWorkOnALoggersPrograms)
{
    UseLogger(OlderModel, 17);
    heart.options.ShowMessages = false; // that the logger is not found
    const PanelServices services = heart.panelServices();
    const std::function<void()> works[] = {
        [&] {
            dialogs.ExpectChooser(ProgramFile);
            RunOnLogger(services, 17, heart.actions.LoadCardProgram);
        },
        [&] { ClearOnLogger(services, 17, heart.actions.ClearCardPrograms, false); },
        [&] { ClearOnLogger(services, 17, heart.actions.ClearPrograms, true); },
        [&] { ClearOnLogger(services, 17, heart.actions.ClearFlash, false); },
    };
    for (const auto& work : works) {
        Forget();
        Expect({Ok});
        work();
        EXPECT_THAT(Boxes(), ElementsAre(Box{"Subscript out of range", "", BoxIcon::Critical}));
        EXPECT_THAT(Lines(), IsEmpty());
        EXPECT_FALSE(heart.loggerControls.Working());
        EXPECT_EQ(heart.link.LinkMode, "None");
    }
}

struct LaunchedLoad : LoadConnection {
    void Launch(const std::string& command)
    {
        heart.state.LaunchCommand = command;
        LoadOnLogger(heart.panelServices(), 1);
        EXPECT_TRUE(heart.end.Ended());
        EXPECT_EQ(heart.end.ExitCode(), 0);
        EXPECT_FALSE(serial.PortOpen());
        EXPECT_THAT(dialogs.choosers, IsEmpty());
    }
};

TEST_F(LaunchedLoad, SendsTheFileBehindTheFirstBlankAndEnds)
{
    files.files["/home/user/my pumps/new one.cmd"] = "1CV=1\r\n";
    Expect({Yes, Ok});
    bool ended = true;
    whenBoxShows = [&](const Box&) { ended = heart.end.Ended(); };
    Launch("::5 /home/user/my pumps/new one.cmd");
    EXPECT_FALSE(ended);
    EXPECT_EQ(heart.loading.ProgramFileName, "/home/user/my pumps/new one.cmd");
    EXPECT_THAT(ProgramLines(), ElementsAre("1CV=1"));
    EXPECT_EQ(journal.back(), "- ");
}

TEST_F(LaunchedLoad, EndsAfterAnErrorLineToo)
{
    far->Answer("BEGIN", "Tallycore 2E1\r\n");
    Expect({Yes, Ok});
    Launch(std::string("::5 ") + ProgramFile);
    EXPECT_THAT(ProgramLines(), ElementsAre("BEGIN"));
}

TEST_F(LaunchedLoad, EndsWhenItIsRefused)
{
    Expect({No});
    Launch(std::string("::5 ") + ProgramFile);
    EXPECT_EQ(Steps().back(), "Program not Sent to the tallyCore");
}

TEST_F(LaunchedLoad, EndsWhenTheDataAreKept)
{
    HasData();
    Expect({Yes, No});
    Launch(std::string("::5 ") + ProgramFile);
    EXPECT_EQ(Lines().back(), "H BEGIN");
}

TEST_F(LaunchedLoad, EndsWhenItsFileCannotBeRead)
{
    Expect({Yes, Ok, Ok});
    Launch("::5 /home/user/none.cmd");
    EXPECT_THAT(Texts().back(), "There was an error opening the File.     ");
    EXPECT_EQ(Lines().back(), "13SV");
}

TEST_F(LaunchedLoad, EndsWhenTheLoggerIsNotReached)
{
    far->silent = true;
    Expect({Ok});
    Launch(std::string("::5 ") + ProgramFile);
    EXPECT_THAT(Texts(), ElementsAre("Could not find a KR200 Series 2 on Com 3.     "));
}

TEST_F(LaunchedLoad, EndsWhenThePortIsBusy)
{
    serial.ports[3].openError = PortBusy;
    Expect({Ok});
    Launch(std::string("::5 ") + ProgramFile);
    EXPECT_THAT(serial.Sent(), IsEmpty());
}

TEST_F(LaunchedLoad, WithoutABlankThereIsNoFileAndNoConnection)
{
    Launch("::5");
    EXPECT_THAT(heart.loading.ProgramFileName, IsEmpty());
    EXPECT_THAT(serial.Sent(), IsEmpty());
    EXPECT_THAT(Texts(), IsEmpty());
}

} // namespace
} // namespace harvelop::test
