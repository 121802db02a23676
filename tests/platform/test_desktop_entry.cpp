#include "platform/qt/desktop_entry.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace harvelop::test
{

namespace
{

// Reads the value of a key as the format says that a desktop does.
std::string ValueOf(const std::string& text, const std::string& key)
{
    const std::string front = "\n" + key + "=";
    const size_t start = text.find(front) + front.size();
    const std::string raw = text.substr(start, text.find('\n', start) - start);
    const std::map<char, char> escapes = {{'s', ' '}, {'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'\\', '\\'}};
    std::string value;
    for (size_t at = 0; at < raw.size(); ++at)
        value += raw[at] == '\\' ? escapes.at(raw[++at]) : raw[at];
    return value;
}

// Takes a command line apart as the format says that a desktop does.
std::vector<std::string> ArgumentsOf(const std::string& command)
{
    std::vector<std::string> arguments(1);
    bool quoted = false;
    for (size_t at = 0; at < command.size(); ++at) {
        const char c = command[at];
        if (c == '"')
            quoted = !quoted;
        else if (c == ' ' && !quoted)
            arguments.emplace_back();
        else if (c == '%' && command.at(at + 1) == '%')
            arguments.back() += command[at++];
        else if (c == '\\' && quoted)
            arguments.back() += command.at(++at);
        else
            arguments.back() += c;
    }
    return arguments;
}

const std::vector<std::string> Tricky = {
    "",        "plain",     "::7",    "::7 %PROFILE%",   "%",         "100%%",
    "a b",     "\"q\"",     "it's",   "back\\slash",     "\\\\\\",    "$HOME",
    "`date`",  "<>|&;",     "*?#()~", "line\nbreak\r\n", "tab\there", "gr\xc3\xbc\xc3\x9f",
    "--opt=1", " leading ", "\\n",    "\\\"$`"};

} // namespace

TEST(DesktopEntry, PlainArgumentIsNotQuoted)
{
    EXPECT_EQ(QuoteExecArgument("::12"), "::12");
    EXPECT_EQ(QuoteExecArgument("/opt/harvel"), "/opt/harvel");
}

TEST(DesktopEntry, ArgumentsAreQuotedByTheFormatsRules)
{
    EXPECT_EQ(QuoteExecArgument(""), R"("")");
    EXPECT_EQ(QuoteExecArgument("a b"), R"("a b")");
    EXPECT_EQ(QuoteExecArgument("100%"), "100%%");
    EXPECT_EQ(QuoteExecArgument("::7 %x%"), R"("::7 %%x%%")");
    EXPECT_EQ(QuoteExecArgument(R"(a\b)"), R"("a\\b")");
    EXPECT_EQ(QuoteExecArgument(R"(say "hi")"), R"("say \"hi\"")");
    EXPECT_EQ(QuoteExecArgument("$HOME `x`"), R"("\$HOME \`x\`")");
    for (const char reserved : std::string("\"'\\><~|&;$*?#()` \t\n"))
        EXPECT_EQ(QuoteExecArgument(std::string(1, reserved)).front(), '"') << reserved;
}

TEST(DesktopEntry, WholeFileStandsAsTheFormatWantsIt)
{
    const auto text =
        DesktopEntryText({"Send \\ to KR400", "/opt/my loggers/harvel", {"::3", "a\\b"}, "/opt/my loggers"});
    EXPECT_EQ(text, "[Desktop Entry]\n"
                    "Type=Application\n"
                    "Name=Send \\\\ to KR400\n"
                    "Exec=\"/opt/my loggers/harvel\" ::3 \"a\\\\\\\\b\"\n"
                    "Path=/opt/my loggers\n"
                    "Terminal=false\n");
}

TEST(DesktopEntry, EveryArgumentComesBackByteForByte)
{
    const auto text = DesktopEntryText({"name", "/opt/harvel", Tricky, "/opt"});
    ASSERT_TRUE(text);
    std::vector<std::string> expected = {"/opt/harvel"};
    expected.insert(expected.end(), Tricky.begin(), Tricky.end());
    EXPECT_EQ(ArgumentsOf(ValueOf(*text, "Exec")), expected);
}

TEST(DesktopEntry, ProgramWithAPercentSignIsStartedThroughEnv)
{
    const auto text = DesktopEntryText({"name", "/opt/100%/harvel", {"::1"}, "/opt/100%"});
    const std::vector<std::string> expected = {"/usr/bin/env", "/opt/100%/harvel", "::1"};
    EXPECT_EQ(ArgumentsOf(ValueOf(*text, "Exec")), expected);
    EXPECT_EQ(ValueOf(*text, "Path"), "/opt/100%");
}

TEST(DesktopEntry, BlankAtTheFrontOfANameIsKept)
{
    EXPECT_EQ(ValueOf(*DesktopEntryText({"  My logger", "/x", {}, ""}), "Name"), "  My logger");
    EXPECT_EQ(ValueOf(*DesktopEntryText({"two\nlines", "/x", {}, ""}), "Name"), "two lines");
}

TEST(DesktopEntry, NameThatCannotBeShownIsShownAsFarAsItCan)
{
    EXPECT_EQ(ValueOf(*DesktopEntryText({"M\xfchle", "/x", {}, ""}), "Name"), "M\xef\xbf\xbdhle");
    EXPECT_EQ(ValueOf(*DesktopEntryText({std::string("a\0b", 3), "/x", {}, ""}), "Name"), "a b");
}

TEST(DesktopEntry, ShortcutIsKnownByItsWholeName)
{
    const std::vector<std::string> names = {"a/b", "a_b", "a", "b", " a", "a\\", "Exec=a", "M\xfchle"};
    for (const std::string& name : names) {
        const std::string text = *DesktopEntryText({name, "/x", {"Name=a"}, ""});
        for (const std::string& other : names)
            EXPECT_EQ(HasName(text, other), name == other) << name << " " << other;
    }
    EXPECT_FALSE(HasName("", ""));
}

TEST(DesktopEntry, WhatTheFormatCannotHoldIsRefused)
{
    EXPECT_FALSE(DesktopEntryText({"name", "/x", {std::string("a\0b", 3)}, ""}));
    EXPECT_FALSE(DesktopEntryText({"name", "/x", {"a\x01"}, ""}));
    EXPECT_FALSE(DesktopEntryText({"name", "/x", {"latin\xfc"}, ""}));
    EXPECT_FALSE(DesktopEntryText({"name", "/latin\xfc", {}, ""}));
    EXPECT_FALSE(DesktopEntryText({"name", "/x", {}, "/latin\xfc"}));
}

TEST(DesktopEntry, FileNameHoldsWhatAFileNameCan)
{
    EXPECT_EQ(DesktopFileName("KR400 on Com 3"), "KR400 on Com 3.desktop");
    EXPECT_EQ(DesktopFileName("Send a/b\nto x"), "Send a_b_to x.desktop");
    EXPECT_EQ(DesktopFileName("../../etc"), "_.._.._etc.desktop");
    EXPECT_EQ(DesktopFileName(""), "_.desktop");
    EXPECT_EQ(DesktopFileName(std::string("a\0b", 3)), "a_b.desktop");
    EXPECT_EQ(DesktopFileName("M\xfchle"), "M\xef\xbf\xbdhle.desktop");
    EXPECT_EQ(DesktopFileName("a/b", 2), "a_b_2.desktop");
    std::string longName = "x";
    while (longName.size() < 300)
        longName += "\xc3\xbc";
    const std::string name = DesktopFileName(longName);
    EXPECT_LE(name.size(), 240U);
    EXPECT_TRUE(name.ends_with("\xc3\xbc.desktop"));
    EXPECT_LE(DesktopFileName(longName, 99).size(), 243U);
    EXPECT_TRUE(DesktopFileName(longName, 99).ends_with("\xc3\xbc_99.desktop"));
    EXPECT_LE(DesktopFileName(std::string(300, '\xfc')).size(), 240U);
}

TEST(DesktopEntry, IsValidByTheDesktopsOwnCheck)
{
    const QString check = QStandardPaths::findExecutable("desktop-file-validate");
    if (check.isEmpty())
        GTEST_SKIP() << "desktop-file-validate is not installed";
    const QTemporaryDir folder;
    const std::vector<Shortcut> shortcuts = {{"KR400 on Com 3", "/opt/harvel", {"::3"}, "/opt"},
                                             {" a & b; \\ \"c\"", "/opt/my 100%/harvel", Tricky, "/opt/my 100%"},
                                             {"gr\xc3\xbc\xc3\x9f", "/opt/a=b/harvel", {}, ""}};
    for (const Shortcut& shortcut : shortcuts) {
        const QString path = folder.path() + "/x.desktop";
        std::ofstream(path.toStdString()) << *DesktopEntryText(shortcut);
        QProcess validation;
        validation.setProcessChannelMode(QProcess::MergedChannels);
        validation.start(check, {path});
        ASSERT_TRUE(validation.waitForFinished());
        EXPECT_EQ(validation.exitCode(), 0) << validation.readAll().toStdString();
    }
}

} // namespace harvelop::test
