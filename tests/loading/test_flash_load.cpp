// An image on its way into the flash memory of an older logger.
#include "loading/flash_bench.h"

namespace harvelop::test
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class FlashLoad : public FlashTest
{
protected:
    FlashLoad() { UseOlder(); }

    static std::string Caution()
    {
        return Told(BoxIcon::Exclamation, " Harvel",
                    "WARNING : You are about to send a new program to Flash RAM in the KR200 Series 3 on Com 3. This "
                    "action requires that the tallyCore be reset, which will also delete all programs currently "
                    "running in the tallyCore and will permanently erase any Data stored in internal memory. Programs "
                    "and Data stored on memory cards will not be affected. The new program will automatically start "
                    "running once the tallyCore has been reset.\r\rYou have selected the following file : "
                    "\r\r/home/user/pump.cmd\r\rClick Yes to delete all programs and Data stored in internal memory, "
                    "and to send the program to Flash RAM in the tallyCore, or click No to exit.");
    }
    static std::string Sent()
    {
        return Told(BoxIcon::Information, " Harvel",
                    "Program successfully sent to Flash in the KR200 Series 3 on Com 3 and started running.     ");
    }
    static std::string Fault()
    {
        return Told(BoxIcon::Critical, " tallyCore Harvel",
                    "There was an error sending the file to the tallyCore.     \r");
    }
};

} // namespace

TEST_F(FlashLoad, GoesStepByStep)
{
    Load("RA1S 1V\r\n");
    EXPECT_THAT(trace,
                ElementsAre("<- Found a KR200 Series 3 on Com 3", "wait 1000",
                            "start /app/imgbuild.exe temp temp.bin in /app/", "wait 500",
                            "start /app/objcopy.exe --change-addresses=0x60000 -I binary -O srec temp.bin temp.sre in "
                            "/app/",
                            "wait 500", "start /app/recnorm.exe temp.sre in /app/", "wait 500", Caution(),
                            BootstrapLine, "<- Erasing tallyCore Flash RAM ...", "wait 500", "> EF 60000,1",
                            "<- tallyCore Flash RAM Erased", "wait 500",
                            "<- Sending file to the KR200 Series 3 on Com 3", "wait 500",
                            "<- File sent to the KR200 Series 3 on Com 3", "> S00600004844521B", "> S206060000AA55",
                            "wait 500", "<- Resetting tallyCore ...", "wait 500", "> J", "<- tallyCore Reset",
                            "wait 500", "<- Program Sent", Sent(), "wait 500", "end"));
    EXPECT_EQ(heart.link.DefaultTimeout, 5000);
    EXPECT_FALSE(heart.loading.FlashLoadMode);
}

TEST_F(FlashLoad, TellsItsStepsInTheWordsOfALanguageFile)
{
    UseNumberedTexts();
    Load("RA1S 1V\r\n");
    EXPECT_THAT(Traced("<- "), ElementsAre("<- <325> KR200 Series 3 on Com 3", "<- <353> ...", "<- <354>",
                                           "<- <355> KR200 Series 3 on Com 3", "<- <356> KR200 Series 3 on Com 3",
                                           "<- <357> ...", "<- <358>", "<- <359>"));
    EXPECT_THAT(BoxesTold(),
                ElementsAre(Told(BoxIcon::Exclamation, " Harvel",
                                 "<648> KR200 Series 3 on Com 3. <649>.\r\r<650> : \r\r/home/user/pump.cmd"
                                 "\r\r<651>."),
                            Told(BoxIcon::Information, " Harvel", "<652> KR200 Series 3 on Com 3 <653>.     ")));
}

TEST_F(FlashLoad, ChooserNamesFlashAndTheLogger)
{
    dialogs.whileShown = [this] { EXPECT_TRUE(heart.loading.FlashLoadMode); };
    heart.loading.CardLoadMode = true; // as a cancelled choice for the card leaves it
    dialogs.ExpectChooser("");
    heart.flashLoading.LoadFlashProgram();
    ASSERT_EQ(dialogs.choosers.size(), 1U);
    EXPECT_EQ(dialogs.choosers[0].title, " Choose a Program to Send to Flash in the KR200 Series 3 on Com 3 ...");
    EXPECT_EQ(dialogs.choosers[0].startIn, FlashApp);
    EXPECT_EQ(dialogs.choosers[0].extension, "cmd");
    EXPECT_FALSE(heart.loading.FlashLoadMode);
}

TEST_F(FlashLoad, CancelledChoiceReachesNothing)
{
    dialogs.ExpectChooser("");
    heart.flashLoading.LoadFlashProgram();
    EXPECT_THAT(serial.events, IsEmpty());
    EXPECT_THAT(desktop.started, IsEmpty());
    EXPECT_THAT(files.writes, IsEmpty());
    EXPECT_EQ(pump.NowMs(), 0);
}

TEST_F(FlashLoad, NothingIsMadeForALoggerThatIsNotReached)
{
    heart.connecting.IdentifyLogger = [] { return std::string(); };
    Load("RA1S 1V\r\n");
    EXPECT_THAT(desktop.started, IsEmpty());
    EXPECT_THAT(files.writes, IsEmpty());
    EXPECT_FALSE(heart.loading.FlashLoadMode);
}

TEST_F(FlashLoad, LoggerNumberBeyondTheTableOfPortsIsTold)
{
    heart.state.CurrentLogger = 17;
    *heart.tables.Record(17) = *heart.tables.Record(1);
    Load("RA1S 1V\r\n");
    EXPECT_THAT(BoxesTold(), ElementsAre(Told(BoxIcon::Critical, "", "Subscript out of range")));
    EXPECT_THAT(desktop.started, IsEmpty());
    EXPECT_FALSE(heart.loading.FlashLoadMode);
}

TEST_F(FlashLoad, RefusalIsToldAndLeavesTheTemporaryFiles)
{
    reply = BoxAnswer::No;
    Load("RA1S 1V\r\n");
    EXPECT_THAT(TraceEnd(4), ElementsAre(Caution(), "<- Program not Sent to Flash", "wait 1000", "end"));
    EXPECT_THAT(LinesSent(), IsEmpty());
    EXPECT_TRUE(window.Visible());
    EXPECT_TRUE(Has("temp") && Has("temp.bin") && Has("temp.sre"));
    EXPECT_EQ(heart.link.DefaultTimeout, FirstTimeout);
    EXPECT_EQ(heart.link.ResponseText, "7");
}

TEST_F(FlashLoad, RefusalIsToldInTheWordsOfALanguageFile)
{
    UseNumberedTexts();
    reply = BoxAnswer::No;
    Load("RA1S 1V\r\n");
    EXPECT_THAT(trace, Contains("<- <352>"));
}

TEST_F(FlashLoad, AsksNothingWithoutTheOption)
{
    heart.options.ShowLoadMessages = false;
    Load("RA1S 1V\r\n");
    EXPECT_THAT(BoxesTold(), ElementsAre(Sent()));
    EXPECT_THAT(LinesSent(),
                ElementsAre(BootstrapLine, "> EF 60000,1", "> S00600004844521B", "> S206060000AA55", "> J"));
    EXPECT_FALSE(Has("temp") || Has("temp.bin") || Has("temp.sre"));
}

TEST_F(FlashLoad, OnlyTheLastAnswerDecides)
{
    far->Answer(Bootstrap, "");
    far->Answer("EF 60000,1", "");
    Load("RA1S 1V\r\n");
    EXPECT_THAT(std::vector(trace.begin() + 9, trace.begin() + 15),
                ElementsAre(BootstrapLine, "wait 3000", "<- Erasing tallyCore Flash RAM ...", "wait 500",
                            "> EF 60000,1", "wait 3000"));
    EXPECT_THAT(LinesSent(), Contains("> S206060000AA55"));
    EXPECT_THAT(BoxesTold(), ElementsAre(Caution(), Sent()));
}

TEST_F(FlashLoad, NothingIsSaidWithoutTheLastAnswer)
{
    far->Answer("J", "");
    Load("RA1S 1V\r\n");
    EXPECT_THAT(TraceEnd(5), ElementsAre("> J", "wait 5000", "<- tallyCore Reset", "wait 1000", "end"));
    EXPECT_THAT(BoxesTold(), ElementsAre(Caution()));
    EXPECT_FALSE(Has("temp") || Has("temp.bin") || Has("temp.sre"));
}

TEST_F(FlashLoad, AnswersWithOneMarkerAreNone)
{
    far->Answer(Bootstrap, "Bootstrap mode\r\n>"); // its second line does not end
    far->Answer("EF 60000,1", "Erasing FLASH memory\r\nErase failed\r\n");
    far->Answer("J", "Tallycore 200\r\nDone\r\n");
    Load("RA1S 1V\r\n");
    EXPECT_THAT(Traced("wait 3000"), ElementsAre("wait 3000", "wait 3000"));
    EXPECT_THAT(Traced("wait 5000"), ElementsAre("wait 5000"));
    EXPECT_THAT(BoxesTold(), ElementsAre(Caution()));
}

// By then the memory has been erased.
TEST_F(FlashLoad, MissingRecordsAreToldOnlyAfterTheErasure)
{
    converters->clear();
    heart.options.ShowLoadMessages = false;
    Load("RA1S 1V\r\n");
    EXPECT_THAT(TraceEnd(13), ElementsAre(BootstrapLine, "<- Erasing tallyCore Flash RAM ...", "wait 500",
                                          "> EF 60000,1", "<- tallyCore Flash RAM Erased", "wait 500",
                                          "<- Sending file to the KR200 Series 3 on Com 3", "wait 500", "> J",
                                          "wait 1000", Fault(), "wait 500", "end"));
    EXPECT_THAT(trace, Not(Contains("<- Program Sent")));
    EXPECT_FALSE(Has("temp") || Has("temp.bin"));
    EXPECT_EQ(heart.link.DefaultTimeout, FirstTimeout);
}

TEST_F(FlashLoad, UnreadableRecordsAreTold)
{
    UseNumberedTexts();
    files.unreadable.insert("/app/temp.sre");
    Load("RA1S 1V\r\n");
    EXPECT_EQ(BoxesTold().back(), Told(BoxIcon::Critical, " tallyCore Harvel", "<662>\r"));
}

TEST_F(FlashLoad, RecordsThatVanishBeforeTheyAreSentAreTold)
{
    far->whenLine = [this](const std::string& line) {
        Note("> " + line);
        files.files.erase("/app/temp.sre");
    };
    Load("RA1S 1V\r\n");
    EXPECT_THAT(LinesSent(), ElementsAre(BootstrapLine, "> EF 60000,1", "> J"));
    EXPECT_THAT(BoxesTold(), ElementsAre(Caution(), Fault()));
}

TEST_F(FlashLoad, BarFollowsTheRecords)
{
    Load("RA1S 1V\r\n");
    EXPECT_EQ(window.max, 30); // two records without their line ends
    const auto first = std::find(window.values.begin(), window.values.end(), 16);
    ASSERT_NE(first, window.values.end());
    EXPECT_EQ(*(first - 1), 0);
    EXPECT_EQ(window.values.back(), 30); // the second step would fill the bar and is dropped; the end fills it
}

} // namespace harvelop::test
