// The language files that come with the program.
#include "core/text_lines.h"
#include "settings/language_check.h"
#include "settings/language_lines.h"
#include "settings/language_template.h"
#include "settings/message_texts.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>

namespace harvelop::test
{
namespace
{

std::string fileOf(const std::string& language)
{
    std::ifstream file(std::string(LANGUAGES_DIRECTORY) + "/" + language + ".txt", std::ios::binary);
    EXPECT_TRUE(file) << language;
    return {std::istreambuf_iterator<char>(file), {}};
}

constexpr const char* Shipped[] = {"English", "German", "French", "Spanish"};

TEST(LanguageFiles, AreTheFourAndNoOther)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(LANGUAGES_DIRECTORY))
        names.push_back(entry.path().filename().string());
    EXPECT_THAT(names, testing::UnorderedElementsAre("English.txt", "German.txt", "French.txt", "Spanish.txt"));
}

TEST(LanguageFiles, EnglishIsTheTemplate)
{
    EXPECT_EQ(fileOf("English"), LanguageTemplate()) << "harvelctl language-template > languages/English.txt";
}

TEST(LanguageFiles, EachPassesTheCheck)
{
    for (const char* language : Shipped)
        for (const LanguageFinding& finding : CheckLanguage(fileOf(language)))
            ADD_FAILURE() << language << ".txt:" << finding.line << ": " << finding.text;
}

TEST(LanguageFiles, TranslationsDifferFromTheEnglishButForNamesAndSigns)
{
    const std::string english = fileOf("English");
    const LanguageEntries original = EntriesOf(english);
    for (const char* language : {"German", "French", "Spanish"}) {
        const std::string text = fileOf(language);
        const LanguageEntries entries = EntriesOf(text);
        const auto same = std::ranges::count_if(TextNumbers(), [&](int number) {
            const auto index = static_cast<size_t>(number - 1);
            return entries[index].text == original[index].text;
        });
        EXPECT_LT(same, 35) << language;
    }
}

} // namespace
} // namespace harvelop::test
