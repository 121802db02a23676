#include "settings/language_check.h"
#include "settings/language_template.h"
#include "settings/message_texts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

std::string replaced(std::string text, const std::string& what, const std::string& with)
{
    const size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return at == std::string::npos ? text : text.replace(at, what.size(), with);
}

// What is said of a complete file with one line exchanged for another, its place aside.
std::vector<std::string> saidOf(const std::string& line, const std::string& instead)
{
    std::vector<std::string> texts;
    for (const LanguageFinding& finding :
         CheckLanguage(replaced(LanguageTemplate(), "\n" + line + "\n", "\n" + instead + "\n")))
        texts.push_back(finding.text);
    return texts;
}

// What is said of a complete file with a line behind it.
std::vector<std::string> saidOfLast(const std::string& line)
{
    std::vector<std::string> texts;
    for (const LanguageFinding& finding : CheckLanguage(LanguageTemplate() + line))
        texts.push_back(finding.text);
    return texts;
}

int lineOf(const std::string& text, const std::string& part)
{
    return 1 + static_cast<int>(
                   std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(text.find(part)), '\n'));
}

TEST(LanguageCheck, TemplateIsClean)
{
    EXPECT_THAT(CheckLanguage(LanguageTemplate()), IsEmpty());
}

TEST(LanguageCheck, LineEndsOfEverySystemAndAByteOrderMarkAreClean)
{
    std::string text = LanguageTemplate();
    for (size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2))
        text.insert(at, "\r");
    EXPECT_THAT(CheckLanguage("\xEF\xBB\xBF" + text), IsEmpty());
}

TEST(LanguageCheck, FindingsCarryTheLineAndMissingOnesComeLastWithout)
{
    std::string text = replaced(LanguageTemplate(), "176:1:9:F&ind\n", "");
    text = replaced(text, "8:1:9:&Test\n", "8:1::&Test\n");
    const auto findings = CheckLanguage(text);
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_EQ(findings[0].line, lineOf(text, "8:1::&Test"));
    EXPECT_EQ(findings[0].text, "the size is missing");
    EXPECT_EQ(findings[1].line, 0);
    EXPECT_EQ(findings[1].text, "number 176 is missing: \"F&ind\"");
}

TEST(LanguageCheck, EmptyFileLacksEverything)
{
    const auto findings = CheckLanguage("");
    ASSERT_GT(findings.size(), 350u);
    EXPECT_EQ(findings.front().text, "number 1 is missing: \"&Model\"");
}

TEST(LanguageCheck, RepeatedNumberNamesItsFirstLine)
{
    const std::string text = LanguageTemplate();
    EXPECT_THAT(saidOfLast("176:1:9:&Search\n"),
                ElementsAre("number 176 is here again, first in line " + std::to_string(lineOf(text, "176:1:9:")) +
                            ": its text and size go on where that ends"));
}

TEST(LanguageCheck, NumbersThatNobodyUsesAreTold)
{
    EXPECT_THAT(saidOfLast("209:1:9:Hide\n"), ElementsAre("the program uses no number 209"));
    for (const char* number : {"1001", "0", "-4", "1.5", "x"})
        EXPECT_THAT(saidOfLast(std::string(number) + ":1:9:text\n"),
                    ElementsAre("passed over: \"" + std::string(number) + "\" is no whole number from 1 to 1000"));
}

TEST(LanguageCheck, LinesThatTheReaderPassesOverAreTold)
{
    EXPECT_THAT(saidOf("8:1:9:&Test", "8:1:9:&Test # 1"),
                ElementsAre("passed over: the number sign makes a comment of the whole line",
                            "number 8 is missing: \"&Test\""));
    EXPECT_THAT(saidOfLast("Svenska\n"), ElementsAre("passed over: neither a font, a text nor a comment"));
    EXPECT_THAT(saidOfLast("1:::\n"), ElementsAre("passed over: shorter than 5 characters"));
    EXPECT_THAT(saidOfLast("22:1:two\n"), ElementsAre("passed over: a text needs three colons, number:font:size:text"));
    EXPECT_THAT(saidOfLast("\n  \n\t\n# a comment\n  # another: one\n"), IsEmpty());
}

TEST(LanguageCheck, FontsHaveToBeNamed)
{
    EXPECT_THAT(saidOf("8:1:9:&Test", "8::9:&Test"), ElementsAre("the font is missing"));
    EXPECT_THAT(saidOf("8:1:9:&Test", "8:6:9:&Test"), ElementsAre("font \"6\" is none of 1 to 5"));
    EXPECT_THAT(saidOf("8:1:9:&Test", "8:2:9:&Test"), ElementsAre("no line names Font2"));
    EXPECT_THAT(saidOf("8:1:9:&Test", "Font2=Serif\n8:2:9:&Test"), IsEmpty());
}

TEST(LanguageCheck, FontLinesAreReadFromTheSeventhColumn)
{
    EXPECT_THAT(saidOfLast("  Font2=Arial\n"),
                ElementsAre("Font2= stands behind the first column: its name would be read as \"2=Arial\""));
    EXPECT_THAT(saidOfLast("Font2=\n"), ElementsAre("the font has no name"));
    EXPECT_THAT(saidOfLast("Font2=" + std::string(31, 'x') + "\n"),
                ElementsAre("the name is cut after 30 bytes: \"" + std::string(30, 'x') + "\""));
    const int first = lineOf(LanguageTemplate(), "Font1=");
    EXPECT_THAT(saidOfLast("Font1=Serif\n"),
                ElementsAre("Font1 is named again, first in line " + std::to_string(first) + ": this name holds"));
}

TEST(LanguageCheck, SizesAreWholePointsThatCanBeRead)
{
    EXPECT_THAT(saidOf("8:1:9:&Test", "8:1:1a2:&Test"),
                ElementsAre("size \"1a2\" holds more than digits: they are dropped"));
    for (const char* size : {"4", "37", "327679", "99999999999999999999"})
        EXPECT_THAT(saidOf("8:1:9:&Test", "8:1:" + std::string(size) + ":&Test"),
                    ElementsAre("size " + std::string(size) + " is not from 5 to 36 points"));
    for (const char* size : {"0", "5", "36"})
        EXPECT_THAT(saidOf("8:1:9:&Test", "8:1:" + std::string(size) + ":&Test"), IsEmpty()) << size;
}

TEST(LanguageCheck, BlanksOfJoinedTextsAreWanted)
{
    EXPECT_THAT(saidOf("306:1:9: Series\u00A0", "306:1:9:Serie"),
                ElementsAre("a blank is wanted before the text: other words stand right before it",
                            "a no-break space (U+00A0) is wanted behind the text: other words follow at once"));
    EXPECT_THAT(saidOf("306:1:9: Series\u00A0", "306:1:9: Serie "),
                ElementsAre("blanks at the end are dropped; a no-break space (U+00A0) would stay",
                            "a no-break space (U+00A0) is wanted behind the text: other words follow at once"));
    EXPECT_THAT(saidOf("306:1:9: Series\u00A0", "306:1:9:\u00A0Serie\u00A0"), IsEmpty());
}

TEST(LanguageCheck, KeysAreWantedWhereTheEnglishHasThem)
{
    EXPECT_THAT(saidOf("8:1:9:&Test", "8:1:9:Prüfen"),
                ElementsAre("no letter has a & before it: the control gets no key"));
    EXPECT_THAT(saidOf("8:1:9:&Test", "8:1:9:&Prü&fen"), ElementsAre("more than one letter has a & before it"));
    EXPECT_THAT(saidOf("8:1:9:&Test", "8:1:9:Prüfen&"),
                ElementsAre("a & stands before no letter", "no letter has a & before it: the control gets no key"));
    EXPECT_THAT(saidOf("8:1:9:&Test", "8:1:9:&Prüfen && mehr"), IsEmpty());
    EXPECT_THAT(saidOf("4:1:9:Connection", "4:1:9:&Verbindung"), ElementsAre("a & stands in a text that has no key"));
}

TEST(LanguageCheck, EmptyTextsAreTold)
{
    EXPECT_THAT(saidOf("8:1:9:&Test", "8:1:9:"), ElementsAre("the text is empty; in English it is \"&Test\""));
    EXPECT_THAT(saidOf("1000:1:9:", "1000:1:9:Über "),
                ElementsAre("blanks at the end are dropped; a no-break space (U+00A0) would stay"));
}

TEST(LanguageCheck, TabsAndForeignBytesAreTold)
{
    EXPECT_THAT(saidOf("8:1:9:&Test", "8:1:9:&Pr\tobe"), ElementsAre("tabs are dropped"));
    EXPECT_THAT(saidOf("8:1:9:&Test", "8:1:9:&Pr\xFC"
                                      "fen"),
                ElementsAre("no UTF-8 from byte 10 on"));
    for (const char* bad : {"\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82", "\x80", "\xFF"})
        EXPECT_THAT(saidOfLast("# " + std::string(bad)), ElementsAre("no UTF-8 from byte 3 on"));
    EXPECT_THAT(saidOfLast("# \u00FC \u20AC \U0001F600"), IsEmpty());
}

TEST(LanguageCheck, LoneCarriageReturnsAreTold)
{
    EXPECT_THAT(saidOfLast("# one\r# two\r\n# three\n"), ElementsAre("the line ends in a lone carriage return"));
}

TEST(LanguageCheck, EndOfTheReadingIsTold)
{
    std::string text = LanguageTemplate();
    for (size_t i = 0; i < 1000; ++i)
        text += "209:1:9:x\n";
    const auto findings = CheckLanguage(text);
    ASSERT_FALSE(findings.empty());
    const auto before = static_cast<int>(std::count(text.begin(), text.end(), '\n') - 1000);
    const auto texts = static_cast<int>(TextNumbers().size());
    EXPECT_EQ(findings.back().line, before + 1000 - texts + 1);
    EXPECT_EQ(findings.back().text, "nothing is read from here on: 1000 lines of texts are the most");
}

TEST(LanguageCheck, RubbishIsToldOfOnlySoFar)
{
    std::string rubbish;
    for (size_t i = 0; i < 10 * MostFindings; ++i)
        rubbish += "rubbish\n";
    const auto findings = CheckLanguage(rubbish);
    ASSERT_EQ(findings.size(), MostFindings + 1);
    EXPECT_EQ(findings[MostFindings - 1].text, "passed over: neither a font, a text nor a comment");
    EXPECT_EQ(findings.back().line, static_cast<int>(MostFindings) + 1);
    EXPECT_EQ(findings.back().text, StoppedHere);
}

} // namespace
} // namespace harvelop::test
