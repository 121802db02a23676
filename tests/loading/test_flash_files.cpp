// The files between a chosen program and the image in an older logger: who makes them, what is told if one can't be
// made, and what is left of them.
#include "loading/flash_bench.h"

namespace harvelop::test
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

class FlashFiles : public FlashTest
{
protected:
    FlashFiles()
    {
        UseOlder();
        heart.options.ShowLoadMessages = false;
    }

    // What stands in the application directory as `program` is started.
    void WhenStarted(const std::string& program, const std::function<void()>& look)
    {
        desktop.start = [go = desktop.start, program, look](const FakeDesktop::Started& started) {
            if (started.path == FlashApp + program)
                look();
            return go(started);
        };
    }
    static std::string OfSize(size_t characters) { return std::string(characters, 'A') + "\r\n"; }
    static std::string Critical(const std::string& text) { return Told(BoxIcon::Critical, " Harvel", text); }

    const std::string cleaningFault = Critical("There was an error cleaning the file.     ");
    const std::string tooLarge =
        Critical("Series 3 tallyCores can only have a program in flash that is less then 4090 bytes in size.     \rThe "
                 "size of /home/user/pump.cmd is larger than 4090 characters.     ");
};

} // namespace

TEST_F(FlashFiles, ImgbuildFindsTheCleanedProgramAlone)
{
    bool looked = false;
    WhenStarted("imgbuild.exe", [&] {
        looked = true;
        EXPECT_EQ(files.files.at("/app/temp"), "RA1S 1V\r\n/h\r\n");
        EXPECT_FALSE(Has("cleantemp"));
    });
    Load("RA1S 1V 'the wind\r\n\r\n \\remark\r\n/h begin");
    EXPECT_TRUE(looked);
    EXPECT_EQ(heart.loading.ProgramFileName, "temp");
    EXPECT_EQ(heart.loading.ProgramFileShown, ProgramFile);
    EXPECT_EQ(heart.loading.CleanedProgramSize, 8 + 3);
    EXPECT_THAT(files.writes, Contains("/app/cleantemp"));
    EXPECT_EQ(files.files.at(ProgramFile), "RA1S 1V 'the wind\r\n\r\n \\remark\r\n/h begin");
}

TEST_F(FlashFiles, NoneIsLeftInTheEnd)
{
    Load("RA1S 1V\r\n");
    for (const char* file : {"temp", "cleantemp", "temp.bin", "temp.sre"})
        EXPECT_FALSE(Has(file)) << file;
    EXPECT_TRUE(files.files.count(ProgramFile));
}

TEST_F(FlashFiles, CleanerThatFailsLeavesTheProgramAsProgramFile)
{
    const std::string program = OfSize(32767) + "b A\r\n";
    WhenStarted("imgbuild.exe", [&] {
        EXPECT_EQ(files.files.at("/app/temp"), program);
        EXPECT_FALSE(Has("cleantemp"));
    });
    Load(program);
    EXPECT_THAT(BoxesTold(), ElementsAre(cleaningFault, tooLarge, testing::HasSubstr("successfully sent")));
    EXPECT_EQ(heart.loading.ProgramFileName, ProgramFile);
    EXPECT_EQ(heart.loading.CleanedProgramSize, 32767);
    EXPECT_EQ(desktop.started.size(), 3U);
    EXPECT_THAT(LinesSent(), Contains("> S206060000AA55"));
    EXPECT_FALSE(Has("temp"));
}

TEST_F(FlashFiles, CleanerThatFailsIsToldInTheWordsOfALanguageFile)
{
    UseNumberedTexts();
    heart.loading.CleanedProgramSize = 32767;
    Load("A\r\n");
    EXPECT_EQ(BoxesTold().at(0), Critical("<642>.     "));
    EXPECT_EQ(BoxesTold().at(1), Critical("<643>.     \rThe size of /home/user/pump.cmd <644>.     "));
    EXPECT_THAT(Traced("<- <351>"), ElementsAre("<- <351>"));
}

TEST_F(FlashFiles, ProgramThatIsGoneIsNotTakenFromAnOlderRun)
{
    files.files["/app/temp"] = "OLD\r\n";
    WhenStarted("imgbuild.exe", [&] { EXPECT_FALSE(Has("temp")); });
    LoadChosen();
    EXPECT_THAT(BoxesTold(), Contains(cleaningFault));
    EXPECT_EQ(desktop.started.size(), 3U);
}

TEST_F(FlashFiles, UnreadableProgramIsTold)
{
    files.unreadable.insert(ProgramFile);
    Load("RA1S 1V\r\n");
    EXPECT_EQ(BoxesTold().at(0), cleaningFault);
    EXPECT_FALSE(Has("temp"));
}

TEST_F(FlashFiles, FullDiskIsToldAndTheWorkGoesOn)
{
    files.full = true;
    Load("RA1S 1V\r\n");
    EXPECT_EQ(BoxesTold().at(0), cleaningFault);
    EXPECT_EQ(desktop.started.size(), 3U);
    EXPECT_EQ(LinesSent().front(), BootstrapLine);
}

TEST_F(FlashFiles, EmptyAndBinaryProgramsComeOutEmpty)
{
    for (const std::string& program : {std::string(), std::string(2000, '\0') + "\xff\xfe"}) {
        WhenStarted("imgbuild.exe", [&] { EXPECT_EQ(files.files.at("/app/temp"), ""); });
        Load(program);
        EXPECT_EQ(BoxesTold().size(), 1U); // the report alone
    }
    EXPECT_EQ(heart.loading.CleanedProgramSize, 0);
}

TEST_F(FlashFiles, SizeOf4090Passes)
{
    Load(OfSize(4090));
    EXPECT_EQ(heart.loading.CleanedProgramSize, 4090);
    EXPECT_THAT(BoxesTold(), Not(Contains(tooLarge)));
}

TEST_F(FlashFiles, SizeOf4091IsToldAndSentAllTheSame)
{
    Load(OfSize(4091));
    EXPECT_THAT(std::vector(trace.begin() + 2, trace.begin() + 5),
                ElementsAre(tooLarge, "<- Program not Sent", "wait 1000"));
    EXPECT_EQ(desktop.started.size(), 3U);
    EXPECT_THAT(LinesSent(),
                ElementsAre(BootstrapLine, "> EF 60000,1", "> S00600004844521B", "> S206060000AA55", "> J"));
    EXPECT_THAT(trace, Contains("<- Program Sent"));
}

TEST_F(FlashFiles, SizesOfAllLoadsAreAddedUp)
{
    Load(OfSize(2045));
    Load(OfSize(2045));
    EXPECT_THAT(BoxesTold(), Not(Contains(tooLarge)));
    Load(OfSize(1));
    EXPECT_THAT(BoxesTold(), Contains(tooLarge));
    EXPECT_EQ(heart.loading.CleanedProgramSize, 4091);
}

// The pipeline goes on after each of them.
TEST_F(FlashFiles, ConverterThatCannotBeStartedIsTold)
{
    const struct {
        const char* path;
        const char* text;
        const char* number;
    } Named[] = {
        {"/app/imgbuild.exe", "There was an error converting the file to a binary image.     ", "<645>.     "},
        {"/app/objcopy.exe", "There was an error converting the binary image file to an S Record file.     ",
         "<646>.     "},
        {"/app/recnorm.exe", "There was an error converting the S Record file into fixed format.     ", "<647>.     "},
    };
    for (const bool numbered : {false, true}) {
        if (numbered)
            UseNumberedTexts();
        const Converters all = *converters;
        for (const auto& one : Named) {
            SCOPED_TRACE(one.path);
            *converters = all;
            converters->erase(one.path);
            Load("RA1S 1V\r\n");
            EXPECT_EQ(BoxesTold().at(0), Critical(numbered ? one.number : one.text));
            for (const auto& each : Named)
                EXPECT_EQ(Traced("start " + std::string(each.path)).size(), 1U);
            EXPECT_THAT(LinesSent(), IsSupersetOf({BootstrapLine, std::string("> J")}));
        }
        *converters = all;
    }
}

TEST_F(FlashFiles, ObjcopyMayLieOnThePath)
{
    (*converters)["/usr/bin/objcopy"] = converters->at("/app/objcopy.exe");
    converters->erase("/app/objcopy.exe");
    desktop.onPath = {{"objcopy", "/usr/bin/objcopy"}};
    Load("RA1S 1V\r\n");
    EXPECT_THAT(Traced("start /usr"), ElementsAre("start /usr/bin/objcopy --change-addresses=0x60000 -I binary -O srec "
                                                  "temp.bin temp.sre in /app/"));
    EXPECT_THAT(BoxesTold(), ElementsAre(testing::HasSubstr("successfully sent")));
}

TEST_F(FlashFiles, ObjcopyOfTheApplicationDirectoryComesFirst)
{
    (*converters)["/usr/bin/objcopy"] = {"temp.sre", "wrong"};
    desktop.onPath = {{"objcopy", "/usr/bin/objcopy"}};
    Load("RA1S 1V\r\n");
    EXPECT_THAT(Traced("start /usr"), IsEmpty());
}

TEST_F(FlashFiles, OnlyObjcopyMayLieOnThePath)
{
    *converters = {{"/usr/bin/imgbuild", {"temp.bin", ""}}, {"/usr/bin/recnorm", {"temp.sre", ""}}};
    desktop.onPath = {{"imgbuild", "/usr/bin/imgbuild"}, {"recnorm", "/usr/bin/recnorm"}};
    Load("RA1S 1V\r\n");
    EXPECT_THAT(Traced("start /usr"), IsEmpty());
}

TEST_F(FlashFiles, NobodyWaitsForASlowConverter)
{
    files.files["/app/temp.sre"] = "OLD1\r\nOLD2\r\n"; // as a refusal left it
    for (auto& [path, converter] : *converters)
        converter.ms = 60000;
    Load("RA1S 1V\r\n");
    EXPECT_THAT(LinesSent(), ElementsAre(BootstrapLine, "> EF 60000,1", "> OLD1", "> OLD2", "> J"));
}

TEST_F(FlashFiles, RecordsAreThoseThatStandThereAsTheFirstGoesOut)
{
    far->Answer("EF 60000,1", ""); // its time-out gives the converter its time
    (*converters)["/app/recnorm.exe"].ms = 3000;
    Load("RA1S 1V\r\n");
    EXPECT_THAT(LinesSent(), IsSupersetOf({"> S00600004844521B", "> S206060000AA55"}));
    EXPECT_THAT(LinesSent(), Not(Contains("> S0")));
}

} // namespace harvelop::test
