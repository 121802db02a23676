#include "identify/model_descriptions.h"
#include "panel_bench.h"
#include "settings/sample_loggers.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace harvelop::test
{

namespace
{

std::string textOf(const QWidget& form, std::string_view label)
{
    return Find<QLabel>(form, std::string(label)).text().toStdString();
}

bool isEnabled(const QWidget& form, const char* button)
{
    return Find<QPushButton>(form, button).isEnabled();
}

LoggerRecord loggerOf(const std::string& model)
{
    LoggerRecord record = SerialLogger();
    record.LoggerModel = model;
    return record;
}

// Texts that tell their numbers.
void speakNumbers(PanelBench& bench)
{
    bench.heart.options.Language = "Test";
    std::string file;
    for (int number = 1; number <= 900; ++number)
        file += std::to_string(number) + ":1:9:<" + std::to_string(number) + ">\r\n";
    bench.files.files[std::string(TestProgram::Directory) + "/Test.txt"] = file;
    bench.heart.options.UseLangFile = true;
    bench.heart.language.LangActive = true;
    bench.heart.language.LoadLanguageFile();
}

} // namespace

TEST(FrmTallyCores, ASpecificationBlockIsThatOfModelAndSeries)
{
    PanelBench bench;
    bench.Store({loggerOf("KR205 Series 2")});
    frmTallyCores& form = bench.View(1);
    EXPECT_EQ(textOf(form, "lblAnalogChannels"), "Analog Channels : 30");
    EXPECT_EQ(textOf(form, "lblFirmwareMedia"), "Firmware Media = EEPROM");
    EXPECT_EQ(textOf(form, "lblBootstrapVersion"), "");
    EXPECT_FALSE(Find<QGroupBox>(form, "Frame1").isHidden());
    EXPECT_FALSE(isEnabled(form, "cmdFlash"));
    EXPECT_FALSE(isEnabled(form, "cmdFlashClear"));
    EXPECT_TRUE(isEnabled(form, "cmdCard"));
}

TEST(FrmTallyCores, AShortModelTextTakesTheSeriesThatIdentificationFound)
{
    PanelBench bench;
    bench.heart.search.IdentifiedSeries.Set(1, "3");
    bench.Store({loggerOf("KR20")});
    frmTallyCores& form = bench.View(1);
    EXPECT_EQ(textOf(form, "lblMemory"), "Int. Memory : 166500 data points");
    EXPECT_TRUE(isEnabled(form, "cmdFlash"));
    EXPECT_EQ(bench.Record(1).LoggerModel, "KR20"); // the series is not written back
}

TEST(FrmTallyCores, TheKR4FamilyHasAllLinesAndAKR400NoUSB)
{
    PanelBench bench;
    bench.Store({loggerOf("KR45"), loggerOf("KR400")});
    frmTallyCores& small = bench.View(1);
    EXPECT_EQ(textOf(small, "lblUSB"), "USB Comms : 12 MBs");
    EXPECT_EQ(textOf(small, "lblEthernet"), "Ethernet : 10BaseT 10 Mbps");
    frmTallyCores& large = bench.View(2);
    EXPECT_EQ(textOf(large, "lblUSB"), "");
    EXPECT_TRUE(Find<QLabel>(large, "lblUSB").isHidden()); // an empty line leaves no gap
    EXPECT_EQ(textOf(large, "lblSamplesPerSec"), "Sample Rate : 100 kHz max");
    EXPECT_FALSE(isEnabled(large, "cmdCard"));
    EXPECT_TRUE(isEnabled(large, "cmdFlash"));
}

TEST(FrmTallyCores, AModelWithoutSpecificationsShowsNoFrameForThem)
{
    PanelBench bench;
    bench.Store({loggerOf("Unknown")});
    EXPECT_TRUE(Find<QGroupBox>(bench.View(1), "Frame1").isHidden());
}

TEST(FrmTallyCores, MerelyViewingWritesWhatIsUnknownIntoTheRecord)
{
    PanelBench bench;
    LoggerRecord logger = SerialLogger();
    logger.LoggerSerial.clear();
    logger.LoggerVersion.clear();
    bench.Store({logger});
    frmTallyCores& form = bench.View(1);
    EXPECT_EQ(textOf(form, "lblSerialNumber"), "Serial : none");
    EXPECT_EQ(textOf(form, "lblFirmwareVersion"), "Firmware Version : Unknown");
    EXPECT_EQ(bench.Record(1).LoggerSerial, "none");
    EXPECT_EQ(bench.Record(1).LoggerVersion, "Unknown");
    EXPECT_TRUE(bench.RecordLine(1).starts_with("1,KR200 Series 2,none,"));
}

TEST(FrmTallyCores, ALanguageFileNamesTheSpecifications)
{
    PanelBench bench;
    speakNumbers(bench);
    bench.Store({loggerOf("KR21 Series 1"), loggerOf("KR40")});
    frmTallyCores& older = bench.View(1);
    EXPECT_EQ(textOf(older, "lblAnalogChannels"), "<87> : 3");
    EXPECT_EQ(textOf(older, "lblDigitalChannels"), "<887> : 9");
    EXPECT_EQ(textOf(older, "lblBootstrapVersion"), "<87>n/a");
    EXPECT_EQ(textOf(older, "lblRS232"), "<96> : 9600 baud max");
    EXPECT_EQ(textOf(older, "lblFirmwareVersion"), "<804> : 3.51");
    frmTallyCores& newer = bench.View(2);
    EXPECT_EQ(textOf(newer, "lblRS232"), "<86> : 115200 baud max");
    EXPECT_EQ(textOf(newer, "lblMemory"), "<93> : 2 MB");
    EXPECT_EQ(textOf(newer, "lblUSB"), "");
}

TEST(FrmTallyCores, WithALanguageFileAKR45ShowsNoSpecifications)
{
    PanelBench bench;
    speakNumbers(bench);
    bench.Store({loggerOf("KR45")});
    frmTallyCores& form = bench.View(1);
    for (const std::string_view label : SpecificationLabels)
        EXPECT_EQ(textOf(form, label), "") << label;
    EXPECT_EQ(textOf(form, "lblSerialNumber"), "Serial : none");
    EXPECT_EQ(textOf(form, "lblModel"), "Model : KR45");
    EXPECT_EQ(textOf(form, "lblFirmwareVersion"), "<804> : 3.51");
}

TEST(FrmTallyCores, AFoundLoggerIsDescribedWithTheSeriesOfItsOwnFind)
{
    PanelBench bench;
    LoggerRecord kept = NetworkLogger();
    kept.LoggerKept = 1;
    bench.Store({kept});
    SearchState& search = bench.heart.search;
    search.FoundCount = 1; // goes to slot 2, behind the logger that was entered by hand
    search.FoundPorts[0] = 3;
    search.IdentifiedModel.Set(1, "KR205");
    search.IdentifiedSeries.Set(1, "2");
    bench.heart.viewing.PopulateTallycoresFormsWithFoundTallyCores();
    EXPECT_EQ(textOf(*bench.Panel(2), "lblFirmwareMedia"), "Firmware Media = EEPROM");
    EXPECT_FALSE(isEnabled(*bench.Panel(2), "cmdFlash"));
}

} // namespace harvelop::test
