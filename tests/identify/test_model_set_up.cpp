#include "identify/model_set_up.h"

#include <gtest/gtest.h>
#include <string>

namespace harvelop::test
{

TEST(ModelSetUp, KeysAreFourCharactersForTheThreeShortModelsAndFiveForAllOthers)
{
    const std::pair<const char*, const char*> keys[] = {
        {"KR20", "KR20"},
        {"KR20 Series 1", "KR20"},
        {"KR20 with Display", "KR20"},
        {"KR21 Series 3", "KR21"},
        {"KR23 with a Display", "KR23"},
        {"KR200 Series 2", "KR200"},
        {"KR205 with a 2 XBMs", "KR205"},
        {"KR40", "KR40"},
        {"KR400", "KR400"},
        {"KR24 Series 1", "KR24 "},
        {"Unknown", "Unkno"},
        {"", ""},
    };
    for (const auto& [model, key] : keys)
        EXPECT_EQ(ModelKey(model), key) << model;
}

TEST(ModelSetUp, EachModelHasItsPictureAndItsFamilysSchedules)
{
    struct Row {
        const char* model;
        int picture;
        bool kr4;
    };
    const Row rows[] = {
        {"KR20 Series 1", 1, false},  {"KR21 Series 3", 9, false},  {"KR23 Series 3", 11, false},
        {"KR200 Series 2", 2, false}, {"KR205 Series 1", 3, false}, {"KR215 Series 1", 4, false},
        {"KR300 Series 1", 5, false}, {"KR305 Series 1", 6, false}, {"KR315 Series 1", 7, false},
        {"KR40", 12, true},           {"KR41", 13, true},           {"KR45", 14, true},
        {"KR400", 8, true},
    };
    for (const Row& row : rows) {
        const auto look = LookOf(row.model);
        ASSERT_TRUE(look) << row.model;
        EXPECT_EQ(look->picture, row.picture) << row.model;
        EXPECT_EQ(look->kr4, row.kr4) << row.model;
    }
}

TEST(ModelSetUp, OtherModelsHaveNoRow)
{
    for (const char* model : {"Unknown", "", "KR", "KR42", "kr200", "XR200"})
        EXPECT_FALSE(LookOf(model)) << model;
}

} // namespace harvelop::test
