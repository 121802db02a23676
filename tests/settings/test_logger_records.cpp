#include "core/text_lines.h"
#include "settings/golden_file.h"
#include "settings/logger_records.h"
#include "settings/sample_loggers.h"
#include "support/memory_files.h"

namespace harvelop::test
{
namespace
{

// A panel that only holds values.
struct ValuesPanel : LoggerPanel {
    void Load() override {}
    PanelValues Values() const override { return values; }
    void SetUp(const PanelSetUp&) override {}
    void SetCaption(const std::string&) override {}
    void Place(int) override {}
    void SetVisible(bool) override {}
    bool IsVisible() const override { return false; }
    void DescribeModel(const std::string&) override {}
    void SetControlEnabled(std::string_view, bool) override {}
    void SetPanelEnabled(bool) override {}
    void SetDelivery(std::optional<bool>, std::optional<bool>) override {}
    void Unload() override {}
    void Replaced() override {}

    PanelValues values;
};

struct LoggerRecordsTest : testing::Test {
    LoggerRecordsTest()
    {
        state.AppPath = "/app/";
        panels.Make = [this](int) { return &panel; };
    }

    std::string& foundIni() { return files.files["/app/found.ini"]; }
    std::string& slot(int number) { return tables.FoundLoggerStrings[static_cast<size_t>(number - 1)]; }
    LoggerRecord& record(int number) { return *tables.Record(number); }

    // A file of so many records, each a serial logger that is told by its serial number.
    void fileOf(int loggers)
    {
        for (int n = 1; n <= loggers; ++n) {
            LoggerRecord one = SerialLogger();
            one.LoggerSerial = "s" + std::to_string(n);
            foundIni() += std::to_string(n) + "tallyCoreSettings=" + RecordText(one) + "\r\n";
        }
    }

    LoggerTables tables;
    ProgramState state;
    ValuesPanel panel;
    LoggerPanels panels;
    MemoryFiles files;
    LoggerRecords records{tables, state, panels, files};
};

TEST_F(LoggerRecordsTest, FileIsByteForByteTheContract)
{
    record(1) = SerialLogger();
    record(3) = ModemLogger();
    record(50) = NetworkLogger();
    for (const int number : {1, 3, 50})
        records.BuildLoggerSettings(number);
    EXPECT_EQ(foundIni(), GoldenFile("found.ini"));
}

TEST_F(LoggerRecordsTest, ContractFileIsReadBack)
{
    foundIni() = GoldenFile("found.ini");
    records.LoadFoundLoggers();
    EXPECT_TRUE(tables.HaveFoundLoggers);
    EXPECT_EQ(tables.Count(), 3);
    EXPECT_EQ(RecordText(record(1)), RecordText(SerialLogger()));
    EXPECT_EQ(RecordText(record(2)), RecordText(ModemLogger()));
    EXPECT_EQ(RecordText(record(3)), RecordText(NetworkLogger()));
    EXPECT_EQ(record(2).LoggerLinkType, "Dialup");
    EXPECT_EQ(record(3).LoggerHost, "10.0.0.5");
    EXPECT_EQ(record(3).LoggerTcpPort, "3000");
    records.SaveFoundLoggers();
    EXPECT_EQ(foundIni(), GoldenFile("found.ini"));
}

TEST_F(LoggerRecordsTest, LineEndsOfAnyKindAreReadAndWrittenBackAsTheContract)
{
    for (const char* lineEnd : {"\n", "\r"}) {
        const std::string contract = GoldenFile("found.ini");
        foundIni().clear();
        LineReader lines(contract);
        for (std::string_view line; lines.Next(line);)
            foundIni().append(line).append(lineEnd);
        ASSERT_NE(foundIni(), contract);
        records.LoadFoundLoggers();
        EXPECT_EQ(tables.Count(), 3);
        EXPECT_EQ(RecordText(record(1)), RecordText(SerialLogger()));
        EXPECT_EQ(RecordText(record(2)), RecordText(ModemLogger()));
        EXPECT_EQ(RecordText(record(3)), RecordText(NetworkLogger()));
        records.SaveFoundLoggers();
        EXPECT_EQ(foundIni(), contract);
    }
}

TEST_F(LoggerRecordsTest, SaveNumbersWithoutGaps)
{
    slot(2) = "a,";
    slot(7) = "b,";
    records.SaveFoundLoggers();
    EXPECT_EQ(foundIni(), "1tallyCoreSettings=a,\r\n2tallyCoreSettings=b,\r\n");
}

TEST_F(LoggerRecordsTest, ReloadClosesTheGapsOfADeletion)
{
    fileOf(3);
    records.LoadFoundLoggers();
    slot(2).clear();
    records.SaveFoundLoggers();
    records.LoadFoundLoggers();
    EXPECT_EQ(tables.Count(), 2);
    EXPECT_EQ(record(2).LoggerSerial, "s3");
    EXPECT_FALSE(tables.Holds(3));
}

TEST_F(LoggerRecordsTest, NoRecordsAreAnEmptyFile)
{
    records.SaveFoundLoggers();
    EXPECT_EQ(foundIni(), "");
    records.LoadFoundLoggers();
    EXPECT_FALSE(tables.HaveFoundLoggers);
}

TEST_F(LoggerRecordsTest, MissingFileMeansNoRecords)
{
    slot(1) = "former";
    tables.HaveFoundLoggers = true;
    records.LoadFoundLoggers();
    EXPECT_FALSE(tables.HaveFoundLoggers);
    EXPECT_EQ(tables.Count(), 0);
    EXPECT_TRUE(files.writes.empty());
}

TEST_F(LoggerRecordsTest, LinesWithoutTheKeyUseNoSlot)
{
    foundIni() = "comment\r\n\r\n1TALLYCORESETTINGS=1,KR40,\r\n=,\r\n2tallyCoreSettings=2,KR41,";
    records.LoadFoundLoggers();
    EXPECT_EQ(tables.Count(), 2);
    EXPECT_EQ(record(1).LoggerModel, "KR40") << "the key counts in any case";
    EXPECT_EQ(record(2).LoggerModel, "KR41");
}

TEST_F(LoggerRecordsTest, EqualsSignAmongTheFirst22CharactersCutsTheRecord)
{
    foundIni() = "1tallyCoreSettings==,KR40,1,\r\n"
                 "2tallyCoreSettings=ab=cd,KR41,2,\r\n"
                 "3tallyCoreSettings=abc=d,KR45,3,\r\n";
    records.LoadFoundLoggers();
    EXPECT_EQ(slot(1), ",KR40,1,");
    EXPECT_EQ(slot(2), "cd,KR41,2,") << "the 22nd character";
    EXPECT_EQ(slot(3), "abc=d,KR45,3,") << "the 23rd character";
}

TEST_F(LoggerRecordsTest, KeyFarInALineUsesASlotWithoutARecord)
{
    foundIni() = std::string(30, ' ') + "1tallyCoreSettings=1,KR40,\r\n2tallyCoreSettings=2,KR41,\r\n";
    records.LoadFoundLoggers();
    EXPECT_TRUE(tables.HaveFoundLoggers);
    EXPECT_FALSE(tables.Holds(1));
    EXPECT_EQ(record(2).LoggerModel, "KR41");
}

TEST_F(LoggerRecordsTest, FiftiethRecordIsStoredAndSplit)
{
    fileOf(50);
    records.LoadFoundLoggers();
    EXPECT_EQ(tables.Count(), 50);
    EXPECT_EQ(record(50).LoggerSerial, "s50");
}

TEST_F(LoggerRecordsTest, LineTooManyLeavesAllRecordsUnsplit)
{
    fileOf(51);
    records.LoadFoundLoggers();
    EXPECT_TRUE(tables.HaveFoundLoggers);
    EXPECT_EQ(tables.Count(), 50);
    for (int n = 1; n <= 50; ++n)
        EXPECT_EQ(record(n).LoggerSerial, "") << n;
}

TEST_F(LoggerRecordsTest, FileWithALineTooManyIsLeftAlone)
{
    fileOf(51);
    const std::string before = foundIni();
    records.LoadFoundLoggers();
    slot(2).clear();
    records.BuildLoggerSettings(1); // of the unsplit record, as a panel that opens builds it
    EXPECT_EQ(foundIni(), before);
    EXPECT_FALSE(records.Saved());

    records.LoadFoundLoggers();
    EXPECT_EQ(tables.Count(), 50) << "what was not saved does not stand in for the file";
    EXPECT_EQ(record(2).LoggerSerial, "");
    records.SaveFoundLoggers();
    EXPECT_EQ(foundIni(), before);
    EXPECT_TRUE(files.writes.empty());
}

TEST_F(LoggerRecordsTest, FileIsSavedAgainOnceItIsTakenInWhole)
{
    fileOf(51);
    records.LoadFoundLoggers();
    records.SaveFoundLoggers();
    foundIni().clear();
    fileOf(2);
    records.LoadFoundLoggers();
    EXPECT_EQ(record(2).LoggerSerial, "s2");
    slot(1).clear();
    records.SaveFoundLoggers();
    EXPECT_TRUE(records.Saved());
    EXPECT_EQ(foundIni(), "1tallyCoreSettings=" + slot(2) + "\r\n");
}

TEST_F(LoggerRecordsTest, FileThatIsGivenUpIsReplaced)
{
    fileOf(51);
    records.LoadFoundLoggers();
    tables.FoundLoggerStrings.fill("");
    slot(1) = "a,";
    records.GiveUpFile();
    records.SaveFoundLoggers();
    EXPECT_TRUE(records.Saved());
    EXPECT_EQ(foundIni(), "1tallyCoreSettings=a,\r\n");
}

TEST_F(LoggerRecordsTest, RecordIsBuiltFromThePanelAndTheTables)
{
    record(1) = SerialLogger();
    record(1).ScheduleOn.fill("0");
    panels.Create(1);
    panel.values.on[1] = true;
    panel.values.html[4] = true;
    panel.values.records[4] = "77";
    panel.values.description = "Pumphouse";
    panel.values.viaFTP = true;
    records.BuildLoggerSettings(1);
    EXPECT_EQ(record(1).ScheduleOn[1], "1");
    EXPECT_EQ(record(1).LoggerDescription, "Pumphouse");
    EXPECT_EQ(slot(1), RecordText(record(1)));
    EXPECT_EQ(foundIni(), "1tallyCoreSettings=" + slot(1) + "\r\n");
    records.LoadFoundLoggers();
    EXPECT_EQ(record(1).ScheduleHTML[4], "1");
    EXPECT_EQ(record(1).ScheduleRecords[4], "77");
    EXPECT_EQ(record(1).LoggerViaFTP, 1);
}

TEST_F(LoggerRecordsTest, RecordIsBuiltWithoutAPanel)
{
    record(2) = ModemLogger();
    records.BuildLoggerSettings(2);
    EXPECT_EQ(slot(2), RecordText(ModemLogger()));
}

TEST_F(LoggerRecordsTest, OlderLoggerKeepsTheEntriesBeyondItsFive)
{
    record(1) = NetworkLogger();
    record(1).ScheduleOn[7] = "1";
    record(1).LoggerModel = "KR200 Series 1";
    panels.Create(1);
    records.BuildLoggerSettings(1);
    EXPECT_EQ(record(1).ScheduleOn[4], "0");
    EXPECT_EQ(record(1).ScheduleOn[7], "1");
    EXPECT_EQ(record(1).ScheduleRecords[11], "2500");
}

TEST_F(LoggerRecordsTest, BuildingDoesNotSaveWhileALoggerIsBeingDeleted)
{
    state.DeletingLogger = true;
    record(1) = SerialLogger();
    records.BuildLoggerSettings(1);
    EXPECT_NE(slot(1), "");
    EXPECT_TRUE(files.writes.empty());
}

TEST_F(LoggerRecordsTest, BuildingAnAddedLoggerSelectsTheLastLine)
{
    state.AddingLogger = true;
    state.cbxUnload_TallyCores.Add("first");
    state.cbxUnload_TallyCores.Add("last");
    state.cbxUnload_TallyCores.Select(0);
    records.BuildLoggerSettings(1);
    EXPECT_EQ(state.cbxUnload_TallyCores.Selected(), 1);
    EXPECT_FALSE(state.AddingLogger);

    state.cbxUnload_TallyCores.Select(0);
    records.BuildLoggerSettings(1);
    EXPECT_EQ(state.cbxUnload_TallyCores.Selected(), 0);
}

TEST_F(LoggerRecordsTest, BuildingAnAddedLoggerWithAnEmptyListSelectsNothing)
{
    state.AddingLogger = true;
    records.BuildLoggerSettings(1);
    EXPECT_EQ(state.cbxUnload_TallyCores.Selected(), -1);
    EXPECT_FALSE(state.AddingLogger);
}

TEST_F(LoggerRecordsTest, NumbersThatAreNoLoggerAreSkipped)
{
    slot(1) = "1,KR40,";
    for (const int number : {0, -1, 51}) {
        EXPECT_EQ(tables.Record(number), nullptr);
        EXPECT_FALSE(tables.Holds(number));
        records.ParseLoggerSettings(number);
        records.BuildLoggerSettings(number);
    }
    EXPECT_EQ(tables.Count(), 1);
    EXPECT_EQ(foundIni(), "1tallyCoreSettings=1,KR40,\r\n");
}

TEST_F(LoggerRecordsTest, FullDiskKeepsTheFileAndTheTables)
{
    fileOf(1);
    const std::string before = foundIni();
    records.LoadFoundLoggers();
    record(1).LoggerSerial = "new";
    files.full = true;
    records.BuildLoggerSettings(1);
    EXPECT_EQ(foundIni(), before);
    EXPECT_EQ(record(1).LoggerSerial, "new");
    EXPECT_EQ(slot(1), RecordText(record(1)));
}

TEST_F(LoggerRecordsTest, UnreadableFileIsNotReplaced)
{
    fileOf(1);
    const std::string before = foundIni();
    files.unreadable.insert("/app/found.ini");
    records.LoadFoundLoggers();
    EXPECT_FALSE(tables.HaveFoundLoggers);
    records.SaveFoundLoggers();
    EXPECT_EQ(foundIni(), before);
}

TEST_F(LoggerRecordsTest, KeyIsLookedUpInTheFileAsItStands)
{
    foundIni() = "3tallyCoreSettings=1,KR40,,::12,\r\n12tallyCoreSettings=1,KR41,,::1,\r\n";
    EXPECT_EQ(records.FindLoggerByKey("12"), 3);
    EXPECT_EQ(records.FindLoggerByKey("1"), 3) << "a plain search: the longer key stands first";
    EXPECT_EQ(records.FindLoggerByKey("1,"), 12);
    EXPECT_EQ(records.FindLoggerByKey("7"), std::nullopt);
    EXPECT_EQ(tables.Count(), 0) << "nothing is loaded";
}

TEST_F(LoggerRecordsTest, KeyIsNotFoundWithoutAFile)
{
    EXPECT_EQ(records.FindLoggerByKey("1"), std::nullopt);
}

TEST_F(LoggerRecordsTest, FirstLineWithTheKeyDecidesEvenIfItIsNoRecord)
{
    foundIni() = "about ::5\r\n1tallyCoreSettings=::5,\r\n";
    EXPECT_EQ(records.FindLoggerByKey("5"), std::nullopt);
    foundIni() = "xtallyCoreSettings=::5,\r\n1tallyCoreSettings=::5,\r\n";
    EXPECT_EQ(records.FindLoggerByKey("5"), std::nullopt);
}

TEST_F(LoggerRecordsTest, LineNumberIsAtMostFourCharactersAndALogger)
{
    foundIni() = "   7tallyCoreSettings=::1,\r\n00012tallyCoreSettings=::2,\r\n51tallyCoreSettings=::3,\r\n"
                 "0tallyCoreSettings=::4,\r\n";
    EXPECT_EQ(records.FindLoggerByKey("1"), 7);
    EXPECT_EQ(records.FindLoggerByKey("2"), 1);
    EXPECT_EQ(records.FindLoggerByKey("3"), std::nullopt);
    EXPECT_EQ(records.FindLoggerByKey("4"), std::nullopt);
}

} // namespace
} // namespace harvelop::test
