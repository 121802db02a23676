// Program files of every kind, good and bad.
#include "loading/load_bench.h"
#include "loading/program_load.h"

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;
using testing::StartsWith;

constexpr BoxAnswer Yes = BoxAnswer::Yes;
constexpr BoxAnswer Ok = BoxAnswer::Ok;

struct ProgramFiles : ProgramLoadTest {
    ProgramFiles() { Connect(); }

    void ExpectFault(const std::string& description)
    {
        Expect({Yes, Ok, Ok});
        Send();
        EXPECT_THAT(std::vector<Box>(Boxes().end() - 2, Boxes().end()),
                    ElementsAre(Box{description + " : /home/user/pump.cmd", ""},
                                Box{"There was an error opening the File.     ", "", BoxIcon::Critical}));
        EXPECT_EQ(Lines().back(), "13SV");
        EXPECT_FALSE(messages.Visible());
        EXPECT_FALSE(heart.end.Ended());
    }
    void ExpectSent()
    {
        Expect({Yes, Ok});
        Send();
        EXPECT_THAT(Boxes().back().text, StartsWith("Program sent successfully to the "));
    }
};

TEST_F(ProgramFiles, AMissingFileIsToldInTwoBoxes)
{
    files.files.erase(ProgramFile);
    ExpectFault("File not found");
}

TEST_F(ProgramFiles, AFileThatCannotBeReadIsToldInTwoBoxes)
{
    files.unreadable.insert(ProgramFile);
    ExpectFault("Path/File access error");
}

TEST_F(ProgramFiles, AFaultIsToldInTheLanguageOfItsFile)
{
    UseNumberedTexts();
    files.files.erase(ProgramFile);
    Expect({Yes, Ok, Ok});
    Send();
    EXPECT_EQ(Boxes().back(), (Box{"<599>.     ", "", BoxIcon::Critical}));
}

TEST_F(ProgramFiles, AFileOfMoreThan32767CharactersIsToldAsAlreadyOpen)
{
    StoreProgram(std::string(16384, 'x') + "\r\n" + std::string(16384, 'x') + "\r\n");
    ExpectFault("File already open");
    EXPECT_EQ(messages.max, 0);
}

TEST_F(ProgramFiles, OneEnormousLineIsTooMuchToo)
{
    StoreProgram(std::string(10'000'000, 'x'));
    ExpectFault("File already open");
}

TEST_F(ProgramFiles, AFileOf32767CharactersIsSent)
{
    StoreProgram(std::string(32767, 'x') + "\r\n\r\n\r\n"); // line ends do not count
    ExpectSent();
    EXPECT_THAT(ProgramLines(), ElementsAre(SizeIs(32767), "", ""));
    EXPECT_EQ(messages.max, 32767);
}

TEST_F(ProgramFiles, AnEmptyFileSendsNoLine)
{
    StoreProgram("");
    ExpectSent();
    EXPECT_THAT(ProgramLines(), IsEmpty());
}

TEST_F(ProgramFiles, ABinaryFileIsSentByteForByte)
{
    const std::string bytes("\x7f\x45\x4c\x46\0\0\x01\xff\xfe\x1a\x80", 11);
    StoreProgram(bytes + "\r\n" + std::string(3, '\0'));
    ExpectSent();
    EXPECT_THAT(ProgramLines(), ElementsAre(bytes, std::string(3, '\0')));
}

TEST_F(ProgramFiles, AnyLineEndEndsALineAndTheLastNeedsNone)
{
    StoreProgram("one\ntwo\rthree\r\n\nfour");
    ExpectSent();
    EXPECT_THAT(ProgramLines(), ElementsAre("one", "two", "three", "", "four"));
}

TEST_F(ProgramFiles, BlanksAndLettersOfAnyLanguageAreSentAsTheyStand)
{
    StoreProgram("  1CV(\"M\xc3\xbcnchen\")  \r\n\t'rem \xe9\r\n");
    ExpectSent();
    EXPECT_THAT(ProgramLines(), ElementsAre("  1CV(\"M\xc3\xbcnchen\")  ", "\t'rem \xe9"));
}

TEST_F(ProgramFiles, AFileThatIsRemovedWhileItIsSentIsSentToItsEnd)
{
    far->whenLine = [this](const std::string& line) {
        if (line == "BEGIN")
            files.files.erase(ProgramFile);
    };
    ExpectSent();
    EXPECT_THAT(ProgramLines(), ElementsAre("BEGIN", "RA1M 1TK", "", "END"));
}

TEST_F(ProgramFiles, AFileThatIsWrittenWhileItIsSentIsSentAsItWas)
{
    far->whenLine = [this](const std::string& line) {
        if (line == "BEGIN")
            StoreProgram("BEGIN\r\nCPROG\r\n");
    };
    ExpectSent();
    EXPECT_THAT(ProgramLines(), ElementsAre("BEGIN", "RA1M 1TK", "", "END"));
}

TEST_F(ProgramFiles, AFileThatIsRemovedBeforeItIsReadIsToldAsMissing)
{
    far->whenLine = [this](const std::string& line) {
        if (line == "13SV")
            files.files.erase(ProgramFile);
    };
    ExpectFault("File not found");
}

TEST_F(ProgramFiles, DoubleQuotesAroundTheNameAreDropped)
{
    heart.loading.ProgramFileName = std::string("\"") + ProgramFile + "\"";
    ExpectSent();
    EXPECT_EQ(heart.loading.ProgramFileName, ProgramFile);
    EXPECT_THAT(Boxes().front().text, testing::HasSubstr("\r\r\"/home/user/pump.cmd\"\r\r")); // only then
    EXPECT_THAT(ProgramLines(), ElementsAre("BEGIN", "RA1M 1TK", "", "END"));
}

TEST_F(ProgramFiles, NothingIsWritten)
{
    ExpectSent();
    EXPECT_THAT(files.writes, IsEmpty());
    EXPECT_THAT(files.removed, IsEmpty());
}

TEST(ProgramFileBytes, CountsLinesWithoutTheirEnds)
{
    EXPECT_THAT(ProgramFileBytes(""), Optional(0));
    EXPECT_THAT(ProgramFileBytes("\r\n\r\n"), Optional(0));
    EXPECT_THAT(ProgramFileBytes("one\r\ntwo\nthree\rx"), Optional(12));
    EXPECT_THAT(ProgramFileBytes(std::string(32767, 'x')), Optional(32767));
    EXPECT_EQ(ProgramFileBytes(std::string(32768, 'x')), std::nullopt);
    EXPECT_EQ(ProgramFileBytes(std::string(32767, 'x') + "\r\ny"), std::nullopt);
}

} // namespace
} // namespace harvelop::test
