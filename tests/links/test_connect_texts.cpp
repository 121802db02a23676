// What a language file puts in the place of the words of a connection.
#include "links/connect_bench.h"

#include <gmock/gmock.h>

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;

const std::string LanguageLines =
    "313:1:8:[313]\r\n322:1:8:[322]\r\n323:1:8:[323]\r\n324:1:8:[324]\r\n325:1:8:[325]\r\n326:1:8:[326]\r\n"
    "394:1:8:[394]\r\n";

struct ConnectTexts : ConnectTest {
    ConnectTexts() { UseLanguageFile(LanguageLines); }
    void OpenTerminal()
    {
        heart.forms.terminal = &terminal;
        heart.state.TerminalOpen = heart.state.QuietConnect = true;
    }
    FakeTerminal terminal;
};

} // namespace

// The description follows the first of them without a blank: meant.
TEST_F(ConnectTexts, ASerialLoggerThatAnswers)
{
    serial.Plug(3, SimulatedModel("KR200", "2"), "9600");
    StoreSerial();
    Connect();
    EXPECT_THAT(messages.captions,
                ElementsAre("<- [313]KR200 Series 2 on Com 3 ...", "<- [325] KR200 Series 2 on Com 3"));
}

TEST_F(ConnectTexts, ANetworkLoggerThatDoesNotAnswer)
{
    heart.connecting.IdentifyLogger = [] { return std::string(); };
    StoreNetwork();
    dialogs.Expect(BoxAnswer::Ok);
    Connect();
    EXPECT_THAT(messages.captions, ElementsAre("<- [322]KR40 at 10.0.0.5:3000 ...", "<- [323] KR40 at 10.0.0.5:3000"));
    EXPECT_EQ(dialogs.shown.at(0).text, "[323] KR40 at 10.0.0.5:3000.     ");
    EXPECT_EQ(dialogs.shown.at(0).title, " tallyCore Harvel");
}

TEST_F(ConnectTexts, TheTerminalsCaption)
{
    OpenTerminal();
    heart.options.ShowMessages = false;
    heart.connecting.IdentifyLogger = [] { return std::string(); };
    StoreNetwork();
    Connect();
    EXPECT_EQ(terminal.caption, " [394]");

    serial.Plug(3, nullptr, "");
    StoreSerial();
    Connect();
    EXPECT_EQ(terminal.caption, " [324] 3 @ 9600,N,8,1");

    heart.connecting.IdentifyLogger = [] { return std::string("KR200"); };
    Connect();
    EXPECT_EQ(terminal.caption, " [326] KR200 Series 2 on Com 3");
}

} // namespace harvelop::test
