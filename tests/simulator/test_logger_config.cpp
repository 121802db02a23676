#include "simulator/logger_config.h"
#include "simulator/report_texts.h"

#include <gtest/gtest.h>
#include <set>

namespace harvelop
{

TEST(FailureModes, StandInTheOrderOfTheirEnumeration)
{
    const auto modes = FailureModes();
    ASSERT_EQ(modes.size(), static_cast<std::size_t>(Failure::GarblesRecord) + 1);
    for (std::size_t i = 0; i < modes.size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(modes[i].failure), i) << modes[i].name;
        EXPECT_FALSE(modes[i].effect.empty()) << modes[i].name;
    }
}

TEST(FailureModes, AreFoundByTheirExactName)
{
    EXPECT_EQ(FailureByName("SlowBytes"), Failure::SlowBytes);
    EXPECT_EQ(FailureByName("slowbytes"), std::nullopt);
    EXPECT_EQ(FailureByName(""), std::nullopt);
}

TEST(KnownModels, HoldEverySeriesOfEveryModelOnce)
{
    std::set<std::pair<std::string_view, std::string_view>> names;
    std::set<std::string_view> signatures;
    for (const ModelRow& row : KnownModels()) {
        EXPECT_TRUE(names.emplace(row.model, row.series).second) << row.model << row.series;
        EXPECT_NE(row.IsKR4(), signatures.insert(row.signature).second && !row.signature.empty()) << row.model;
    }
    EXPECT_EQ(names.size(), 64 + 4);
}

TEST(KnownModels, LastDigitOfASignatureTellsTheSeries)
{
    const std::string digits = " 457";
    for (const ModelRow& row : KnownModels())
        if (!row.IsKR4()) {
            EXPECT_EQ(row.signature.back(), digits[static_cast<std::size_t>(row.series[0] - '0')]) << row.signature;
        }
}

TEST(KnownModels, KeepTheirIrregularRows)
{
    EXPECT_EQ(FindModel("KR20 with Display", "2")->signature, ":514,5");
    EXPECT_EQ(FindModel("KR20 with a Display", "2"), std::nullopt);
    EXPECT_EQ(FindModel("KR205 with a 2 XBMs", "1")->signature, ":5366,4");
    EXPECT_EQ(FindModel("KR205 with 2 XBMs", "1"), std::nullopt);
    EXPECT_EQ(FindModel("KR200 with a XBM", "2")->signature, ":5266,5");
    EXPECT_EQ(FindModel("KR200 with 2 XBMs", "2")->signature, ":526,5");
    EXPECT_EQ(FindModel("KR315 with 2 XBMs", "1")->signature, ":5534664");
    EXPECT_EQ(FindModel("KR21", "1"), std::nullopt);
}

TEST(KnownModels, WithoutASeriesTheFirstIsTaken)
{
    EXPECT_EQ(FindModel("KR200", "")->series, "1");
    EXPECT_EQ(FindModel("KR23", "")->series, "3");
    EXPECT_EQ(FindModel("KR45", "")->name, "tallyCore 45");
    EXPECT_EQ(FindModel("KR40", "1"), std::nullopt);
    EXPECT_EQ(FindModel("KR999", ""), std::nullopt);
}

} // namespace harvelop
