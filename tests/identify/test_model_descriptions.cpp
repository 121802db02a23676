#include "identify/model_descriptions.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace harvelop::test
{

namespace
{

using testing::ElementsAreArray;
using testing::IsEmpty;

using Lines = std::vector<SpecificationLine>;

// In a description, ahead of or behind other lines.
Lines operator+(Lines first, const Lines& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

struct ModelRow {
    std::string model;
    Lines english;
    Lines language;
};

struct SeriesRow {
    std::string series;
    bool flashEnabled;
    Lines english;
    Lines language;
};

Lines channels(const char* analog, const char* digital, const char* display, const char* ethernet)
{
    return {{"lblAnalogChannels", 0, analog},
            {"lblDigitalChannels", 0, digital},
            {"lblDisplay", 0, display},
            {"lblEthernet", 0, ethernet}};
}

Lines channelTails(const char* analog, int digitalNumber, const char* digital, const char* display,
                   const char* ethernet)
{
    return {{"lblAnalogChannels", 87, analog},
            {"lblDigitalChannels", digitalNumber, digital},
            {"lblDisplay", 89, display},
            {"lblEthernet", 90, ethernet}};
}

// The lines of an older model that its name alone tells.
std::vector<ModelRow> olderModels()
{
    const Lines plain = channels("Analog Channels : 30", "Digital Channels : 8", "Display: No ", "Ethernet : No");
    const Lines shows = channels("Analog Channels : 30", "Digital Channels : 8", "Display: Yes ", "Ethernet : No");
    const Lines plainTails = channelTails(" : 30", 88, " : 8", ": No ", " : No");
    const Lines showsTails = channelTails(" : 30", 88, " : 8", ": Yes ", " : No");
    return {
        {"KR20", channels("Analog Channels : 15", "Digital Channels : 9", "Display: No ", "Ethernet : No"),
         channelTails(" : 15", 88, " : 9", " : No ", " : No")},
        {"KR21", channels("Analog Channels : 3", "Digital Channels : 9", "Display: No ", "Ethernet : No"),
         channelTails(" : 3", 887, " : 9", " : No ", " : No")},
        {"KR23", channels("Analog Channels : None", "Digital Channels : 8", "Display: No ", "Ethernet : No"),
         channelTails(" : None", 88, " : 8", ": No ", " : No")},
        {"KR200", plain, plainTails},
        {"KR205", plain, plainTails},
        {"KR215", plain, plainTails},
        {"KR300", shows, showsTails},
        {"KR305", shows, showsTails},
        {"KR315", shows, showsTails},
    };
}

// The lines that the series of an older model tells.
std::vector<SeriesRow> allSeries()
{
    const auto early = [](const char* bootstrap) {
        return Lines{{"lblBootstrapVersion", 0, bootstrap},
                     {"lblFirmwareMedia", 0, "Firmware Media = EEPROM"},
                     {"lblFTP", 0, "FTP Server : No"},
                     {"lblMemory", 0, "Int. Memory : 13650 data points"},
                     {"lblMemoryCard", 0, "Memory Card : SRAM 2 MB max"},
                     {"lblProcessor", 0, "CPU : Z180 20MHz"},
                     {"lblRS232", 0, "RS232 : 9600 baud max"},
                     {"lblSamplesPerSec", 0, "Sample Rate : 75 Hz max"}};
    };
    const auto earlyTails = [](const char* bootstrap) {
        return Lines{{"lblBootstrapVersion", 87, bootstrap},
                     {"lblFirmwareMedia", 91, " = EEPROM"},
                     {"lblFTP", 92, " : No"},
                     {"lblMemory", 93, " : 13650 data points"},
                     {"lblMemoryCard", 94, " : SRAM 2 MB max"},
                     {"lblProcessor", 95, " : Z180 20MHz"},
                     {"lblRS232", 96, " : 9600 baud max"},
                     {"lblSamplesPerSec", 97, " : 75 Hz max"}};
    };
    return {{"1", false, early("n/a"), earlyTails("n/a")},
            {"2", false, early(""), earlyTails("")},
            {"3",
             true,
             {{"lblBootstrapVersion", 0, ""},
              {"lblFirmwareMedia", 0, "Firmware Media = Flash"},
              {"lblFTP", 0, "FTP Server : No"},
              {"lblMemory", 0, "Int. Memory : 166500 data points"},
              {"lblMemoryCard", 0, "Memory Card : SRAM 4 MB max"},
              {"lblProcessor", 0, "CPU : Z180 20MHz"},
              {"lblRS232", 0, "RS232 : 9600 baud max"},
              {"lblSamplesPerSec", 0, "Sample Rate : 75 Hz max"}},
             {{"lblBootstrapVersion", 87, ""},
              {"lblFirmwareMedia", 91, " = Flash"},
              {"lblFTP", 92, " : No"},
              {"lblMemory", 93, " : 166500 data points"},
              {"lblMemoryCard", 94, " : SRAM 4 MB max"},
              {"lblProcessor", 95, " : Z180 20MHz"},
              {"lblRS232", 96, " : 9600 baud max"},
              {"lblSamplesPerSec", 97, " : 75 Hz max"}}}};
}

std::vector<ModelRow> kr4Models()
{
    const Lines small = {{"lblBootstrapVersion", 0, ""},
                         {"lblFirmwareMedia", 0, "Firmware Media = Flash"},
                         {"lblFTP", 0, "FTP Server : Yes"},
                         {"lblMemory", 0, "Int. Memory : 64 MB FLASH"},
                         {"lblMemoryCard", 0, "Ext. Memory : USB FLASH"},
                         {"lblProcessor", 0, "CPU : MPC850 50MHz"},
                         {"lblRS232", 0, "RS232 : 115200 baud max"},
                         {"lblSamplesPerSec", 0, "Sample Rate : 290 Hz max"},
                         {"lblUSB", 0, "USB Comms : 12 MBs"}};
    const Lines large = {{"lblBootstrapVersion", 0, ""},
                         {"lblFirmwareMedia", 0, "Firmware Media = Flash"},
                         {"lblFTP", 0, "FTP Server : Yes"},
                         {"lblMemory", 0, "Int. Memory : 2 MB RAM"},
                         {"lblMemoryCard", 0, "Ext. Memory: PCMCIA FLASH"},
                         {"lblProcessor", 0, "CPU : MPC850 50MHz"},
                         {"lblRS232", 0, "RS232 : 115200 baud max"},
                         {"lblSamplesPerSec", 0, "Sample Rate : 100 kHz max"}};
    const auto tails = [](const char* rate) {
        return Lines{{"lblBootstrapVersion", 87, ""},
                     {"lblFirmwareMedia", 91, " = Flash"},
                     {"lblFTP", 92, " : Yes"},
                     {"lblMemory", 93, " : 2 MB"},
                     {"lblMemoryCard", 94, " : FLASH"},
                     {"lblProcessor", 95, " : MPC850 50MHz"},
                     {"lblRS232", 86, " : 115200 baud max"},
                     {"lblSamplesPerSec", 97, rate}};
    };
    const char* ethernet = "Ethernet : 10BaseT 10 Mbps";
    return {
        {"KR40", channels("Analog Channels : 12", "Digital Channels : 8", "Display: Yes ", ethernet) + small,
         channelTails(" : 12", 88, " : 8", ": Yes ", " : 10BaseT 10 Mbps") + tails(" : 290 Hz max")},
        {"KR41", channels("Analog Channels : 4", "Digital Channels : 4", "Display: No ", ethernet) + small, {}},
        {"KR45", channels("Analog Channels : 16", "Digital Channels : 8", "Display: Yes ", ethernet) + small, {}},
        {"KR400", channels("Analog Channels : 36", "Digital Channels : 16", "Display: No ", ethernet) + large,
         channelTails(" : 36", 88, " : 16", ": No ", " : 10BaseT 10 Mbps") + tails(" : 100 kHz max")},
    };
}

std::string captionOf(const ModelDescription& description, const char* label)
{
    const auto found = std::find_if(description.lines.begin(), description.lines.end(),
                                    [label](const SpecificationLine& line) { return line.label == label; });
    return found == description.lines.end() ? "(no line)" : found->text;
}

} // namespace

// For readable failures.
void PrintTo(const SpecificationLine& line, std::ostream* out)
{
    *out << line.label << " " << line.number << " \"" << line.text << "\"";
}

TEST(ModelDescriptions, OlderModelsHaveTheirOwnLinesAndThoseOfTheirSeries)
{
    for (const ModelRow& row : olderModels()) {
        for (const SeriesRow& series : allSeries()) {
            const ModelDescription english = DescribeModel(row.model, series.series, false);
            EXPECT_THAT(english.lines, ElementsAreArray(row.english + series.english)) << row.model << series.series;
            EXPECT_EQ(english.flashEnabled, series.flashEnabled) << row.model << series.series;

            const ModelDescription language = DescribeModel(row.model, series.series, true);
            EXPECT_THAT(language.lines, ElementsAreArray(row.language + series.language)) << row.model << series.series;
            EXPECT_EQ(language.flashEnabled, series.flashEnabled) << row.model << series.series;
        }
    }
}

TEST(ModelDescriptions, ModelsOfTheKR4FamilyHaveAllLinesWhateverTheSeries)
{
    for (const ModelRow& row : kr4Models()) {
        for (const char* series : {"", "1", "3"}) {
            const ModelDescription english = DescribeModel(row.model, series, false);
            EXPECT_THAT(english.lines, ElementsAreArray(row.english)) << row.model;
            EXPECT_EQ(english.flashEnabled, std::nullopt) << row.model;

            const ModelDescription language = DescribeModel(row.model, series, true);
            EXPECT_THAT(language.lines, ElementsAreArray(row.language)) << row.model;
            EXPECT_EQ(language.flashEnabled, std::nullopt) << row.model;
        }
    }
}

TEST(ModelDescriptions, ASeriesInTheModelTextCountsAndWhatWasIdentifiedDoesNot)
{
    for (const ModelRow& row : olderModels()) {
        for (const SeriesRow& series : allSeries()) {
            const std::string model = row.model + " Series " + series.series;
            for (const char* identified : {"", "1", "3"}) {
                EXPECT_THAT(DescribeModel(model, identified, false).lines,
                            ElementsAreArray(row.english + series.english))
                    << model;
                EXPECT_THAT(DescribeModel(model, identified, true).lines,
                            ElementsAreArray(row.language + series.language))
                    << model;
                EXPECT_EQ(DescribeModel(model, identified, false).flashEnabled, series.flashEnabled) << model;
            }
        }
    }
}

TEST(ModelDescriptions, AKR205OfSeries2HasNoBootstrapVersionAndNoFlash)
{
    const ModelDescription description = DescribeModel("KR205", "2", false);
    EXPECT_EQ(captionOf(description, "lblAnalogChannels"), "Analog Channels : 30");
    EXPECT_EQ(captionOf(description, "lblFirmwareMedia"), "Firmware Media = EEPROM");
    EXPECT_EQ(captionOf(description, "lblBootstrapVersion"), "");
    EXPECT_EQ(description.flashEnabled, false);
}

TEST(ModelDescriptions, AKR20WithATrailingBlankTakesTheSeriesThatWasIdentified)
{
    const ModelDescription description = DescribeModel("KR20 ", "3", false);
    EXPECT_EQ(captionOf(description, "lblAnalogChannels"), "Analog Channels : 15");
    EXPECT_EQ(captionOf(description, "lblMemory"), "Int. Memory : 166500 data points");
    EXPECT_EQ(description.flashEnabled, true);
}

TEST(ModelDescriptions, LongTextsWithoutASeriesHaveTheLinesOfTheirModelOnly)
{
    const Lines kr20 = channels("Analog Channels : 15", "Digital Channels : 9", "Display: No ", "Ethernet : No");
    const Lines kr205 = channels("Analog Channels : 30", "Digital Channels : 8", "Display: No ", "Ethernet : No");
    const std::pair<const char*, Lines> rows[] = {
        {"KR20 with Display", kr20},        {"KR20 with a Display", kr20}, {"KR205 with a 2 XBMs", kr205},
        {"KR205 Series 21", kr205},         {"KR205 series 2", kr205},     {"KR20 12", kr20},
        {"KR205 Series 2 modified", kr205},
    };
    for (const auto& [model, lines] : rows) {
        EXPECT_THAT(DescribeModel(model, "1", false).lines, ElementsAreArray(lines)) << model;
        EXPECT_EQ(DescribeModel(model, "1", false).flashEnabled, std::nullopt) << model;
    }
}

TEST(ModelDescriptions, WithoutAnIdentifiedSeriesOnlyTheModelIsDescribed)
{
    for (const char* series : {"", "4"}) {
        const ModelDescription description = DescribeModel("KR300", series, false);
        EXPECT_THAT(description.lines, ElementsAreArray(channels("Analog Channels : 30", "Digital Channels : 8",
                                                                 "Display: Yes ", "Ethernet : No")));
        EXPECT_EQ(description.flashEnabled, std::nullopt);
    }
}

TEST(ModelDescriptions, OtherModelsHaveNoLines)
{
    for (const char* model : {"Unknown", "KR40 plus", "KR4", "KR400 Rev", "KR42", "XKR40", "kr200 x"})
        for (const bool langActive : {false, true})
            EXPECT_THAT(DescribeModel(model, "1", langActive).lines, IsEmpty()) << model;
}

TEST(ModelDescriptions, AShortTextOfNoModelStillHasTheLinesOfTheSeries)
{
    for (const char* model : {"", "KR22", "XR205"})
        for (const SeriesRow& series : allSeries())
            EXPECT_THAT(DescribeModel(model, series.series, false).lines, ElementsAreArray(series.english)) << model;
}

TEST(ModelDescriptions, EveryLineHasItsLabelOnce)
{
    for (const char* model : {"KR20", "KR400", "KR45"}) {
        std::vector<std::string_view> labels;
        for (const SpecificationLine& line : DescribeModel(model, "1", false).lines) {
            EXPECT_THAT(SpecificationLabels, testing::Contains(line.label));
            labels.push_back(line.label);
        }
        EXPECT_THAT(labels, testing::SizeIs(model == std::string("KR45") ? 13 : 12));
        std::sort(labels.begin(), labels.end());
        EXPECT_EQ(std::adjacent_find(labels.begin(), labels.end()), labels.end()) << model;
    }
}

} // namespace harvelop::test
