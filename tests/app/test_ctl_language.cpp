#include "ctl_bench.h"
#include "settings/language_template.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace harvelop::test
{

namespace
{

struct LanguageCtl : StoredCtl {
    int Check(const std::string& text, const std::vector<std::string>& options = {})
    {
        files.files["/tmp/Svenska.txt"] = text;
        std::vector<std::string> words = {"language-check", "/tmp/Svenska.txt"};
        words.insert(words.end(), options.begin(), options.end());
        return Run(words);
    }
    // A complete file but for text 8, which it has twice, and 1000, its last one.
    static std::string Faulty()
    {
        std::string text = LanguageTemplate();
        text.erase(text.rfind("1000:"));
        return "8:1:9:&Test\n" + text;
    }
};

} // namespace

TEST(CtlLanguage, TheTemplateIsWrittenWholeAndPassesTheCheck)
{
    LanguageCtl t;
    EXPECT_EQ(t.Run({"language-template"}), CtlDone);
    EXPECT_EQ(t.out.str(), LanguageTemplate());
    EXPECT_EQ(t.said.str(), "");
    EXPECT_EQ(t.Check(t.out.str()), CtlDone);
    EXPECT_EQ(t.out.str(), "");
    EXPECT_EQ(t.said.str(), "");
    EXPECT_TRUE(t.files.writes.empty());
}

TEST(CtlLanguage, FindingsAreLinesThatEditorsJumpTo)
{
    LanguageCtl t;
    const std::string file = LanguageCtl::Faulty();
    const auto second = 1 + std::count(file.begin(), file.begin() + static_cast<long>(file.find("\n8:")) + 1, '\n');
    EXPECT_EQ(t.Check(file), CtlFailed);
    EXPECT_EQ(t.out.str(), "/tmp/Svenska.txt:" + std::to_string(second) +
                               ": number 8 is here again, first in line 1: its text and size go on where that ends\n"
                               "/tmp/Svenska.txt: number 1000 is missing: \"\"\n");
}

TEST(CtlLanguage, FindingsForProgramsAreRowsWithFileAndLine)
{
    LanguageCtl t;
    EXPECT_EQ(t.Check(LanguageCtl::Faulty(), {"--json"}), CtlFailed);
    const auto rows = nlohmann::json::parse(t.out.str());
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1],
              nlohmann::json({{"file", "/tmp/Svenska.txt"}, {"line", 0}, {"text", "number 1000 is missing: \"\""}}));
    EXPECT_EQ(t.Check(LanguageTemplate(), {"--json"}), CtlDone);
    EXPECT_EQ(nlohmann::json::parse(t.out.str()), nlohmann::json::array());
}

TEST(CtlLanguage, WhatTheFileHoldsDoesNotReachTheTerminalAsControl)
{
    LanguageCtl t;
    EXPECT_EQ(t.Check("\x1B[31m:1:9:x\n"), CtlFailed);
    EXPECT_TRUE(t.out.str().starts_with("/tmp/Svenska.txt:1: passed over: \"?[31m\" is no whole number"))
        << t.out.str();
}

TEST(CtlLanguage, FileThatIsNotThereOrCantBeReadIsToldApart)
{
    LanguageCtl t;
    EXPECT_EQ(t.Refusal({"language-check", "/tmp/Svenska.txt"}), "There is no file /tmp/Svenska.txt.\n");
    t.files.unreadable.insert("/tmp/Svenska.txt");
    t.files.files["/tmp/Svenska.txt"] = "";
    EXPECT_EQ(t.Refusal({"language-check", "/tmp/Svenska.txt"}), "The file /tmp/Svenska.txt can't be read.\n");
}

} // namespace harvelop::test
