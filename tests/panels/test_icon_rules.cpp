#include "identify/panel_steps.h"
#include "panels/icon_rules.h"
#include "settings/sample_loggers.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

LoggerRecord Described(LoggerRecord record, const std::string& description)
{
    record.LoggerDescription = description;
    return record;
}

IconChoice Chosen(const std::string& kind, const std::string& command = {}, const std::string& mark = {},
                  const std::string& name = {})
{
    return {kind, command, mark, name, false};
}

} // namespace

TEST(IconRules, DefaultNameIsTheDescriptionOrElseThatOfTheLink)
{
    const std::pair<LoggerRecord, std::string> cases[] = {
        {Described(SerialLogger(), ""), "KR200 Series 2 on Com 1"},
        {Described(ModemLogger(), ""), "KR305 Series 3 via Modem on Com 3"},
        {Described(NetworkLogger(), ""), "KR40 at 10_0_0_5-3000"},
        {Described(SerialLogger(), "Mill_7"), "Mill_7"},
        {Described(SerialLogger(), "Mill 1.5: north"), "Mill 1.5: north"},
        {Described(ModemLogger(), "a.b:c"), "a.b:c"},
        {Described(NetworkLogger(), "Mill 1.5: north"), "Mill 1_5- north"}, // also of a description: meant
        {Described(NetworkLogger(), "::."), "--_"},
        {Described(SerialLogger(), " "), " "},
        {Described(SerialLogger(), "M\xc3\xbchle"), "M\xc3\xbchle"},
    };
    for (const auto& [record, name] : cases)
        EXPECT_EQ(DefaultIconName(record), name);
}

TEST(IconRules, NothingIsMadeWithoutOkOrAKind)
{
    IconChoice closed = Chosen("Data");
    closed.IconCancelled = true;
    EXPECT_FALSE(IconShortcut(closed, SerialLogger(), "Mill", "/opt/"));
    EXPECT_FALSE(IconShortcut(Chosen(""), SerialLogger(), "Mill", "/opt/"));
    EXPECT_FALSE(IconShortcut(Chosen("", "G", "%", "name"), SerialLogger(), "Mill", "/opt/"));
    EXPECT_FALSE(IconShortcut({}, SerialLogger(), "Mill", "/opt/"));
}

TEST(IconRules, ShortcutIsWhatWasChosen)
{
    struct Case {
        IconChoice choice;
        std::string name;
        std::vector<std::string> arguments;
    };
    const Case cases[] = {
        {Chosen("Data"), "Mill", {"::2"}},
        {Chosen("Data", "", "", "My icon"), "My icon", {"::2"}},
        {Chosen("Data", "G", "%"), "Mill", {"::2"}}, // what was typed before it was chosen counts for nothing
        {Chosen("Command", "G"), "Send G to Mill", {"::2", "%G"}},
        {Chosen("Command", "G", "%"), "Send G to Mill", {"::2", "%G%"}},
        {Chosen("Command", "G", "", "Start"), "Start", {"::2", "%G"}},
        {Chosen("Command", "G", "", " "), " ", {"::2", "%G"}},
        {Chosen("Command", " /a  \"b\" 'c' \\", "%"), "Send  /a  \"b\" 'c' \\ to Mill", {"::2", "% /a  \"b\" 'c' \\%"}},
        {Chosen("Command", "50%"), "Send 50% to Mill", {"::2", "%50%"}},
        {Chosen("Command", "%", "%"), "Send % to Mill", {"::2", "%%%"}},
    };
    for (const Case& wanted : cases) {
        const auto made = IconShortcut(wanted.choice, SerialLogger(), "Mill", "/opt/my loggers/");
        ASSERT_TRUE(made) << wanted.name;
        EXPECT_EQ(made->name, wanted.name);
        EXPECT_EQ(made->program, "/opt/my loggers/harvel.exe");
        EXPECT_EQ(made->arguments, wanted.arguments) << wanted.name;
        EXPECT_EQ(made->workingDirectory, "/opt/my loggers/");
    }
}

TEST(IconRules, KeyIsThatOfTheRecordWhateverItsNumber)
{
    LoggerRecord record = NetworkLogger();
    record.LoggerIconKey = "::4711";
    EXPECT_EQ(IconShortcut(Chosen("Data"), record, "x", "/")->arguments, (std::vector<std::string>{"::4711"}));
}

} // namespace harvelop::test
