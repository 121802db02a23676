// A program on its way into the flash memory of a logger of the KR4 family, as text.
#include "loading/flash_bench.h"

namespace harvelop::test
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class FlashLoadKR4 : public FlashTest
{
protected:
    FlashLoadKR4()
    {
        UseKR4();
        heart.options.ShowLoadMessages = false;
    }

    static std::string Caution()
    {
        return Told(BoxIcon::Exclamation, " Harvel",
                    "WARNING : You are about to send a new program to Flash RAM in the KR40 on Com 3. This action will "
                    "delete any programs currently stored in Flash.\r\rYou have selected the following file : "
                    "\r\r/home/user/pump.cmd\r\rClick Yes to send the program to the tallyCore and delete all programs "
                    "stored in Flash, or click No to exit.");
    }

    const std::string program = "BEGIN\"WIND\"\r\nRA1S 1V 'the wind\r\nEND\r\n";
    const std::string sent =
        Told(BoxIcon::Information, " Harvel", "Program successfully sent to Flash in the KR40 on Com 3.     ");
    const std::string reset = Told(BoxIcon::Question, " Harvel",
                                   "Do you want to reset the tallyCore and start running the new program now ?     ");
    const std::string started =
        Told(BoxIcon::Information, " tallyCore Harvel", "tallyCore reset and Flash program started.     ");
};

} // namespace

TEST_F(FlashLoadKR4, GoesStepByStep)
{
    heart.options.ShowLoadMessages = true;
    Load(program);
    EXPECT_THAT(trace,
                ElementsAre("<- Found a KR40 on Com 3", "wait 1000", Caution(), "<- Sending file to the KR40 on Com 3",
                            "wait 500", "> BEGIN\"WIND\"", "> RA1S 1V 'the wind", "> END", "> H", "wait 1000",
                            "> RUNJOBONRESET\"WIND\"", "> FLASHONRESET", "<- File sent to to the KR40 on Com 3",
                            "wait 500", "<- Program Sent", sent, reset, "<- Resetting tallyCore ...", "wait 500",
                            "<- tallyCore Reset", "> SINGLEPUSH", "wait 500", started, "wait 500", "end"));
    EXPECT_EQ(heart.link.DefaultTimeout, 10000);
    EXPECT_FALSE(heart.loading.FlashLoadMode);
}

// One report is English in every language.
TEST_F(FlashLoadKR4, TellsItsStepsInTheWordsOfALanguageFile)
{
    UseNumberedTexts();
    heart.options.ShowLoadMessages = true;
    Load(program);
    EXPECT_THAT(Traced("<- "), ElementsAre("<- <325> KR40 on Com 3", "<- <361> KR40 on Com 3", "<- <362> KR40 on Com 3",
                                           "<- <363>", "<- <364> ...", "<- <365>"));
    EXPECT_THAT(BoxesTold(),
                ElementsAre(Told(BoxIcon::Exclamation, " Harvel",
                                 "<654> KR40 on Com 3. <655>.\r\r<656> : \r\r/home/user/pump.cmd\r\r<657>."),
                            sent, Told(BoxIcon::Question, " Harvel", "<660> ?     "),
                            Told(BoxIcon::Information, " tallyCore Harvel", "<661>.     ")));
}

TEST_F(FlashLoadKR4, RefusalIsToldBehindTheHiddenWindow)
{
    heart.options.ShowLoadMessages = true;
    reply = BoxAnswer::No;
    Load(program);
    EXPECT_THAT(trace, ElementsAre("<- Found a KR40 on Com 3", "wait 1000", Caution(), "<- Program not Sent to Flash",
                                   "wait 1000", "end"));
    EXPECT_FALSE(window.Visible());
    EXPECT_EQ(heart.link.DefaultTimeout, FirstTimeout);
}

TEST_F(FlashLoadKR4, RefusalIsToldInTheWordsOfALanguageFile)
{
    UseNumberedTexts();
    heart.options.ShowLoadMessages = true;
    reply = BoxAnswer::No;
    Load(program);
    EXPECT_THAT(trace, Contains("<- <360>"));
}

TEST_F(FlashLoadKR4, NoFileIsMadeOrTouched)
{
    for (const char* file : {"temp", "cleantemp", "temp.bin", "temp.sre"})
        files.files[std::string(FlashApp) + file] = "mine";
    Load(program);
    EXPECT_THAT(files.writes, IsEmpty());
    EXPECT_THAT(files.removed, IsEmpty());
    EXPECT_THAT(desktop.started, IsEmpty());
    EXPECT_EQ(heart.loading.ProgramFileName, ProgramFile);
    EXPECT_EQ(heart.loading.CleanedProgramSize, 0);
}

TEST_F(FlashLoadKR4, OnlyVersionsBelowFiveAreToldToTakeItIntoFlash)
{
    for (const char* version : {"4.02", "4", "0", "10", "", "V5"}) {
        UseKR4(version);
        Load(program);
        EXPECT_THAT(LinesSent(), Contains("> FLASHONRESET")) << version;
        EXPECT_THAT(BoxesTold(), Contains(sent)) << version;
    }
    for (const char* version : {"5", "5.00", "9"}) {
        UseKR4(version);
        Load(program);
        EXPECT_THAT(LinesSent(), Not(Contains("> FLASHONRESET"))) << version;
        EXPECT_THAT(BoxesTold(), Contains(sent)) << version;
    }
}

TEST_F(FlashLoadKR4, OnlyTheLastAnswerDecides)
{
    far->Answer("RUNJOBONRESET\"WIND\"", "");
    Load(program);
    EXPECT_THAT(BoxesTold(), ElementsAre(sent, reset, started));
    UseKR4("5");
    Load(program);
    EXPECT_THAT(BoxesTold(), ElementsAre(reset, started));
    EXPECT_THAT(trace, Not(Contains(HasSubstr("Program Sent"))));
}

TEST_F(FlashLoadKR4, ResetIsOfferedAlsoAfterAFailure)
{
    far->silent = true;
    reply = BoxAnswer::No;
    Load(program);
    EXPECT_THAT(TraceEnd(7), ElementsAre("> RUNJOBONRESET\"WIND\"", "wait 3000", "> FLASHONRESET", "wait 3000", reset,
                                         "wait 500", "end"));
    EXPECT_EQ(heart.link.DefaultTimeout, FirstTimeout);
    EXPECT_EQ(heart.link.ResponseText, "7");
}

TEST_F(FlashLoadKR4, JobIsThatOfTheFirstLineThatBeginsOne)
{
    const std::pair<const char*, const char*> Programs[] = {
        {"RA1S\r\nBEGIN\"ONE\"\r\nBEGIN\"TWO\"\r\n", "> RUNJOBONRESET\"ONE\""},
        {"BEGIN\"\"\r\nBEGIN\"TWO\"\r\n", "> RUNJOBONRESET\"\""},
        {"BEGIN \"ONE\"\r\nbegin\"TWO\"\r\n", "> RUNJOBONRESET\"\""},
        {"RA1S 1V\r\n", "> RUNJOBONRESET\"\""},
        {"", "> RUNJOBONRESET\"\""},
        {"\"A\" BEGIN\"B\" \"C\"\r\n", "> RUNJOBONRESET\"ABC\""},
    };
    for (const auto& [text, line] : Programs) {
        Load(text);
        EXPECT_THAT(Traced("> RUNJOB"), ElementsAre(line)) << text;
    }
}

TEST_F(FlashLoadKR4, ThreeBlankLinesAreSent)
{
    Load("A\r\n\r\nB\r\n\r\n\r\nC\r\n");
    const auto lines = LinesSent();
    EXPECT_THAT(std::vector(lines.begin(), lines.begin() + 7),
                ElementsAre("> A", "> ", "> B", "> ", "> ", "> C", "> H"));
}

TEST_F(FlashLoadKR4, FourthBlankLineEndsTheProgram)
{
    for (int load = 0; load < 2; ++load) { // each program has its own three
        Load("A\r\n\r\nB\r\n\r\n\r\nC\r\n\r\nD\r\n");
        EXPECT_THAT(LinesSent(), Contains("> C"));
        EXPECT_THAT(LinesSent(), Not(Contains("> D")));
        EXPECT_EQ(LinesSent().at(6), "> H");
    }
}

TEST_F(FlashLoadKR4, LineOfBlanksIsNotABlankLine)
{
    Load(" \r\n \r\n \r\n \r\n \r\nA\r\n");
    EXPECT_THAT(LinesSent(), Contains("> A"));
}

TEST_F(FlashLoadKR4, ProgramThatIsGoneIsTold)
{
    LoadChosen();
    EXPECT_THAT(trace, ElementsAre("<- Found a KR40 on Com 3", "wait 1000", "<- Sending file to the KR40 on Com 3",
                                   "wait 500", "> J", "wait 1000",
                                   Told(BoxIcon::Critical, " tallyCore Harvel",
                                        "There was an error sending the file to the tallyCore.     \r"),
                                   "wait 500", "end"));
}

TEST_F(FlashLoadKR4, UnreadableProgramIsToldInTheWordsOfALanguageFile)
{
    UseNumberedTexts();
    files.unreadable.insert(ProgramFile);
    Load(program);
    EXPECT_THAT(BoxesTold(), ElementsAre(Told(BoxIcon::Critical, " tallyCore Harvel", "<662>\r")));
}

TEST_F(FlashLoadKR4, EnormousLineIsSentWhole)
{
    const std::string line(300000, 'A');
    Load(line + "\r\nB");
    EXPECT_EQ(LinesSent().at(0), "> " + line);
    EXPECT_EQ(LinesSent().at(1), "> B");
    EXPECT_EQ(window.max, 0); // more than the bar can count
}

TEST_F(FlashLoadKR4, BarFollowsTheLines)
{
    Load("ABCD\r\nEF\r\nGHI\r\n");
    EXPECT_EQ(window.max, 9);
    EXPECT_THAT(std::vector(window.values.end() - 5, window.values.end()), ElementsAre(0, 0, 4, 6, 9));
}

} // namespace harvelop::test
