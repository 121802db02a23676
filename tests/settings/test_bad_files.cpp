// What a broken disk, another program or a curious user may leave in the data files.
#include "settings/language_tables.h"
#include "settings/logger_records.h"
#include "settings/options_store.h"
#include "support/memory_files.h"
#include "support/scripted_dialogs.h"

#include <sys/resource.h>

namespace harvelop::test
{
namespace
{

constexpr size_t Megabyte = 1 << 20;

std::string binaryJunk()
{
    std::string junk;
    for (unsigned i = 0; i < 64 * 1024; ++i)
        junk.push_back(static_cast<char>(i * 2654435761U >> 24));
    return junk;
}

struct BadFilesTest : testing::Test {
    BadFilesTest()
    {
        state.AppPath = "/";
        options.Language = "English";
        language.LangActive = true;
    }

    void readAll(const std::string& text)
    {
        for (const char* path : {"/options.ini", "/found.ini", "/English.txt"})
            files.files[path] = text;
        store.ReadAllOptions();
        store.LoadTerminalGeometry();
        options.Language = "English";
        records.LoadFoundLoggers();
        records.FindLoggerByKey("1");
        language.LoadLanguageFile();
    }

    Options options;
    ProgramState state;
    MemoryFiles files;
    OptionsStore store{options, state, files};
    LoggerTables tables;
    LoggerPanels panels;
    LoggerRecords records{tables, state, panels, files};
    ScriptedDialogs dialogs;
    ProgramEnd end;
    LanguageTables language{options, state, files, dialogs, end};
};

TEST_F(BadFilesTest, EmptyFilesHoldNothing)
{
    readAll("");
    EXPECT_EQ(options.ModemTimeout, "45");
    EXPECT_FALSE(tables.HaveFoundLoggers);
    EXPECT_EQ(language.LangText(1), "");
    EXPECT_FALSE(end.Ended());
}

TEST_F(BadFilesTest, BinaryFilesHoldNothing)
{
    readAll(binaryJunk());
    EXPECT_FALSE(tables.HaveFoundLoggers);
    EXPECT_EQ(options.SiteID, "");
    EXPECT_EQ(options.LastUtallyCore, 0);
    EXPECT_FALSE(end.Ended());
}

TEST_F(BadFilesTest, NulsPassThrough)
{
    using namespace std::string_literals;
    readAll("SiteID=a\0b\r\n1tallyCoreSettings=2,KR\0,n,\r\n4:1:9:a\0b\r\n"s);
    EXPECT_EQ(options.SiteID, "a\0b"s);
    EXPECT_EQ(tables.Record(1)->LoggerModel, "KR\0"s);
    EXPECT_EQ(language.LangText(4), "a\0b"s);
    store.SaveOptions();
    options.SiteID.clear();
    store.ReadAllOptions();
    EXPECT_EQ(options.SiteID, "a\0b"s);
}

TEST_F(BadFilesTest, LongLinesPassThrough)
{
    const std::string longText(Megabyte, 'x');
    readAll("SiteID=" + longText + "\r\n1tallyCoreSettings=1,KR40," + longText + ",\r\n9:1:9:" + longText + "\r\n");
    EXPECT_EQ(options.SiteID, longText);
    EXPECT_EQ(tables.Record(1)->LoggerSerial, longText);
    EXPECT_EQ(language.LangText(9), longText);
}

TEST_F(BadFilesTest, LongLinesOfNearMissesEnd)
{
    for (const char* part : {"=", ",", ":", "Font1", "tallyCoreSettings", "1:1:9:", "FTPServernam", "\r", "\t"}) {
        std::string text;
        while (text.size() < Megabyte / 8)
            text += part;
        readAll(text);
        EXPECT_FALSE(end.Ended());
    }
}

TEST_F(BadFilesTest, RecordsOfThreeAndOfFiveHundredFieldsAreTakenAsFarAsTheyGo)
{
    readAll("1tallyCoreSettings=1,KR40,s,\r\n2tallyCoreSettings=2,KR41," + std::string(498, ',') + "\r\n");
    EXPECT_EQ(tables.Record(1)->LoggerSerial, "s");
    EXPECT_EQ(tables.Record(1)->ScheduleOn[0], "0");
    EXPECT_EQ(tables.Record(2)->LoggerModel, "KR41");
    EXPECT_EQ(tables.Record(2)->ScheduleOn[0], "");
}

TEST_F(BadFilesTest, LanguageFileOfAMillionLinesIsReadToItsThousandth)
{
    std::string text;
    for (int n = 1; n <= 1000000; ++n)
        text.append(std::to_string(n)).append(":1:9:text ").append(std::to_string(n)).append("\n");
    files.files["/English.txt"] = text;
    language.LoadLanguageFile();
    EXPECT_EQ(language.LangText(1000), "text 1000");
}

TEST_F(BadFilesTest, LanguageFileOfBlankLinesTakesNoRoomForEachOfThem)
{
    constexpr long MostKilobytes = 64 * 1024;
    const auto usedKilobytes = [] {
        rusage usage = {};
        EXPECT_EQ(getrusage(RUSAGE_SELF, &usage), 0);
        return usage.ru_maxrss;
    };
    files.files["/English.txt"] = std::string(2 * Megabyte, '\n') + "Font1=Late\n503:1:9:the last line\n";
    const long before = usedKilobytes();
    language.LoadLanguageFile();
    EXPECT_EQ(language.LangText(503), "the last line");
    EXPECT_EQ(language.LangFontName(503), "Late");
    EXPECT_LT(usedKilobytes() - before, MostKilobytes);
}

TEST_F(BadFilesTest, LanguageFileWithALineOf51MegabytesIsRead)
{
    std::string text =
        "1:1:9:" + std::string(51 * Megabyte, '5') + "\r\n2:1:" + std::string(Megabyte, '5') + ":two\r\n";
    files.files["/English.txt"] = std::move(text);
    language.LoadLanguageFile();
    EXPECT_EQ(language.LangText(1)->size(), 51 * Megabyte);
    EXPECT_EQ(language.LangText(2), "two");
    EXPECT_EQ(language.LangFontSize(2), 5555);
}

TEST_F(BadFilesTest, RepeatedNumberInAllThousandLinesGrowsWithTheFile)
{
    std::string text;
    for (int n = 1; n <= 1000; ++n)
        text.append("1:1:9:").append(10000, 'x').append("\n");
    files.files["/English.txt"] = text;
    language.LoadLanguageFile();
    EXPECT_EQ(language.LangText(1)->size(), 10000u * 1000u);
}

} // namespace
} // namespace harvelop::test
