#include "identify/model_table.h"
#include "simulator/report_texts.h"

#include <gtest/gtest.h>
#include <string>

namespace harvelop::test
{

TEST(ModelTable, EverySignatureTellsItsModelAndSeries)
{
    int signatures = 0;
    for (const ModelRow& row : KnownModels()) {
        if (row.IsKR4())
            continue;
        ++signatures;
        const auto found = ModelBySignature("Pass" + std::string(row.signature) + ",R0,7.18E");
        ASSERT_TRUE(found) << row.signature;
        EXPECT_EQ(found->model, row.model) << row.signature;
        EXPECT_EQ(found->series, row.series) << row.signature;
        EXPECT_FALSE(ModelByName(row.signature));
    }
    EXPECT_EQ(signatures, 64);
}

TEST(ModelTable, TheIrregularRowsStandAsTheyAre)
{
    const auto told = [](std::string_view signature) {
        const auto found = ModelBySignature(signature);
        return found ? std::string(found->model) + " / " + std::string(found->series) : "none";
    };
    EXPECT_EQ(told(":514,5"), "KR20 with Display / 2");
    EXPECT_EQ(told(":514,4"), "KR20 with a Display / 1");
    EXPECT_EQ(told(":514,7"), "KR20 with a Display / 3");
    EXPECT_EQ(told(":5366,4"), "KR205 with a 2 XBMs / 1");
    EXPECT_EQ(told(":5366,5"), "KR205 with 2 XBMs / 2");
    EXPECT_EQ(told(":526,4"), "KR200 with a XBM / 1");
    EXPECT_EQ(told(":5266,4"), "KR200 with 2 XBMs / 1");
    EXPECT_EQ(told(":5266,5"), "KR200 with a XBM / 2");
    EXPECT_EQ(told(":526,5"), "KR200 with 2 XBMs / 2");
    EXPECT_EQ(told(":526,7"), "KR200 with a XBM / 3");
    EXPECT_EQ(told(":5534664"), "KR315 with 2 XBMs / 1");
    EXPECT_EQ(told(":553466,4"), "none");
    EXPECT_EQ(told(":553466,5"), "KR315 with 2 XBMs / 2");
    EXPECT_EQ(told(":57,4"), "none");
    EXPECT_EQ(told(":59,5"), "none");
}

TEST(ModelTable, TheFirstSignatureInTheOrderOfTheTableWins)
{
    EXPECT_EQ(ModelBySignature(":52,7 :51,5 :5534,4")->model, "KR315");
    EXPECT_EQ(ModelBySignature(":52,7 :51,5")->model, "KR20");
    EXPECT_EQ(ModelBySignature(":53,4 :52,4")->model, "KR200");
}

TEST(ModelTable, NoSignatureIsNoModel)
{
    for (const char* report : {"", "T,", ":52", "52,4", ":99,9,R0,0.00E"})
        EXPECT_FALSE(ModelBySignature(report)) << report;
}

TEST(ModelTable, NamesAreFoundInAnyCase)
{
    EXPECT_EQ(ModelByName("Pass TALLYCORE 41 version")->model, "KR41");
    EXPECT_EQ(ModelByName("xx tallycore 45 ")->model, "KR45");
    EXPECT_FALSE(ModelByName("tallyCore 42 Version 1"));
    EXPECT_FALSE(ModelByName("tallyCore 40"));
    EXPECT_FALSE(ModelByName(""));
}

TEST(ModelTable, AKR400IsNotTakenForAKR40)
{
    const auto found = ModelByName("tallyCore 400 Version 5.06");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->model, "KR400");
    EXPECT_EQ(found->versionPrompt, "tallyCore 400 Version ");
    EXPECT_EQ(found->serialPosition, 22);
}

TEST(ModelTable, TheNamedModelsTellWhereTheirSerialStands)
{
    for (const char* number : {"40", "41", "45"}) {
        const auto found = ModelByName("tallyCore " + std::string(number) + " Version 1");
        ASSERT_TRUE(found) << number;
        EXPECT_EQ(found->model, "KR" + std::string(number));
        EXPECT_EQ(found->versionPrompt, "tallyCore " + std::string(number) + " Version ");
        EXPECT_EQ(found->serialPosition, 27);
    }
}

} // namespace harvelop::test
