#include "app/ctl_output.h"
#include "ctl_bench.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace harvelop::test
{

namespace
{

// Logger 1 is of the older family with the key "::2", logger 3 of the KR4 family with "::4".
constexpr const char* OlderFile = "emaillist2.ini";
constexpr const char* KR4File = "emaillist4.ini";

std::string address(size_t number, size_t length = 0)
{
    std::string text = std::to_string(number) + "@b.c";
    return text.size() < length ? std::string(length - text.size(), 'x') + text : text;
}

} // namespace

TEST(CtlLists, ShowsDescriptionsAndAddressesBySchedule)
{
    StoredCtl t;
    t.File(KR4File) = "X:x@b.c\r\n0;Head: office\r\nnonsense\r\n0:a@b.c\r\nK;Only words\r\n0:d@e.f\r\n";
    EXPECT_EQ(t.Run({"lists", "3"}), CtlDone);
    EXPECT_EQ(t.out.str(),
              "All Schedules: Head: office\n  a@b.c\n  d@e.f\nSchedule K: Only words\nSchedule X\n  x@b.c\n");
    EXPECT_EQ(t.Run({"lists", "3", "--schedule", "X"}), CtlDone);
    EXPECT_EQ(t.out.str(), "Schedule X\n  x@b.c\n");
    EXPECT_TRUE(t.files.writes.empty());

    EXPECT_EQ(t.Run({"lists", "3", "--json"}), CtlDone);
    const auto all = nlohmann::json::parse(t.out.str());
    ASSERT_EQ(all.size(), 13u);
    EXPECT_EQ(all[0],
              nlohmann::json({{"schedule", "0"}, {"description", "Head: office"}, {"addresses", {"a@b.c", "d@e.f"}}}));
    EXPECT_EQ(all[1]["addresses"], nlohmann::json::array());
    EXPECT_EQ(all[12]["schedule"], "X");
}

TEST(CtlLists, AListThatIsNotThereShowsNothingAndIsNotMade)
{
    StoredCtl t;
    EXPECT_EQ(t.Run({"lists", "1"}), CtlDone);
    EXPECT_EQ(t.out.str(), "");
    EXPECT_EQ(t.Run({"lists", "1", "--json"}), CtlDone);
    EXPECT_EQ(nlohmann::json::parse(t.out.str()).size(), 6u);
    EXPECT_TRUE(t.files.writes.empty());
}

TEST(CtlLists, ControlCharactersDoNotReachTheTerminal)
{
    StoredCtl t;
    t.File(OlderFile) = "0;\x1b[2J\r\n0:\x07@b.c\r\n";
    EXPECT_EQ(t.Run({"lists", "1"}), CtlDone);
    EXPECT_EQ(t.out.str(), "All Schedules: ?[2J\n  ?@b.c\n");
    EXPECT_EQ(t.Refusal({"lists", "1", "--remove", "\xC2\x9B\x1b[2J\xC3\x9B\x7F\xC2"}),
              "??[2J\xC3\x9B?\xC2 is not in the list.\n");
    EXPECT_EQ(t.Refusal({"lists", "1", "--schedule", "\x07"}), "A KR200 has no schedule ?.\n");
    EXPECT_EQ(t.Refusal({"set", "1", "Nonsense\r\n=1"}), "Nonsense?? is no field of a logger.\n");
}

TEST(CtlLists, ChangesAreStoredInTheirOrder)
{
    StoredCtl t;
    EXPECT_EQ(t.Run({"lists", "1", "--add", "a@b.c", "--add=d@e.f", "--description", "Head; office, all"}), CtlDone);
    EXPECT_EQ(t.out.str() + t.said.str(), "");
    EXPECT_EQ(t.Run({"lists", "1", "--schedule", "X", "--add", "x@y.z"}), CtlDone);
    EXPECT_EQ(t.File(OlderFile), "0;Head; office, all\r\n0:a@b.c\r\n0:d@e.f\r\nX:x@y.z\r\n");
    EXPECT_EQ(t.Run({"lists", "1", "--remove", "a@b.c", "--add", "g@h.i", "--add", "a@b.c"}), CtlDone);
    EXPECT_EQ(t.File(OlderFile), "0;Head; office, all\r\n0:d@e.f\r\n0:g@h.i\r\n0:a@b.c\r\nX:x@y.z\r\n");
    EXPECT_EQ(t.Run({"lists", "1", "--clear", "--add", "new@b.c", "--description", ""}), CtlDone);
    EXPECT_EQ(t.File(OlderFile), "0:new@b.c\r\nX:x@y.z\r\n");
    EXPECT_EQ(t.files.files.count(TestProgram::OptionsIni), 0u);
}

TEST(CtlLists, ALoggerHasTheSchedulesOfItsFamily)
{
    StoredCtl t;
    EXPECT_EQ(t.Run({"lists", "3", "--schedule", "K", "--add", "a@b.c"}), CtlDone);
    EXPECT_EQ(t.File(KR4File), "K:a@b.c\r\n");
    EXPECT_EQ(t.Refusal({"lists", "1", "--schedule", "K", "--add", "a@b.c"}), "A KR200 has no schedule K.\n");
    for (const char* key : {"", "a", "AB", "E"})
        EXPECT_EQ(t.Refusal({"lists", "1", "--schedule", key}), "A KR200 has no schedule " + std::string(key) + ".\n");
}

TEST(CtlLists, AnAddressOfForbiddenCharactersIsRefused)
{
    StoredCtl t;
    for (const char* bad : {"a b@c.d", "a,b@c.d", "a-b@c.d", "\xC3\xBC@c.d", "a@b\r\nX:c@d", "a@b\n"})
        EXPECT_EQ(t.Refusal({"lists", "1", "--add", "good@b.c", "--add", bad}),
                  Printable(bad) + ": an address can hold only the letters A to Z, digits and . @ _\n");
    EXPECT_EQ(t.Refusal({"lists", "1", "--add", ""}), "An address can't be empty.\n");
    EXPECT_EQ(t.Refusal({"lists", "1", "--description", "a\r\n0:b@c.d"}), "A description can't hold a line end.\n");
}

TEST(CtlLists, AnAddressIsThereOnceAndOnlyWhatIsThereCanBeRemoved)
{
    StoredCtl t;
    t.File(OlderFile) = "0:a@b.c\r\nA:a@b.c\r\n";
    EXPECT_EQ(t.Refusal({"lists", "1", "--add", "a@b.c"}), "a@b.c is in the list already.\n");
    EXPECT_EQ(t.Refusal({"lists", "1", "--remove", "x@b.c"}), "x@b.c is not in the list.\n");
    EXPECT_EQ(t.Refusal({"lists", "1", "--remove", ""}), " is not in the list.\n");
    EXPECT_EQ(t.Refusal({"lists", "1", "--schedule", "B", "--remove", "a@b.c"}), "a@b.c is not in the list.\n");
}

TEST(CtlLists, ATwentiethAddressIsRefused)
{
    StoredCtl t;
    std::vector<std::string> words = {"lists", "1"};
    std::string stored;
    for (size_t i = 1; i < MaxListEntries; ++i) {
        words.insert(words.end(), {"--add", address(i)});
        stored += "0:" + address(i) + "\r\n";
    }
    EXPECT_EQ(t.Run(words), CtlDone);
    EXPECT_EQ(t.File(OlderFile), stored);
    EXPECT_EQ(t.Refusal({"lists", "1", "--add", "one@too.many"}),
              "one@too.many has no room: a list holds 19 addresses.\n");
    EXPECT_EQ(t.Run({"lists", "1", "--remove", address(7), "--add", "one@too.many"}), CtlDone);
}

TEST(CtlLists, ATextOfMoreThan5000CharactersIsRefused)
{
    constexpr size_t Text = 5000;
    constexpr size_t Long = 998; // with its line end a fifth of the text
    StoredCtl t;
    EXPECT_EQ(t.Run({"lists", "1", "--add", address(1, Long), "--add", address(2, Long), "--add", address(3, Long),
                     "--add", address(4, Long)}),
              CtlDone);
    const std::string tooLong = address(5, Text / 5 + 1);
    EXPECT_EQ(t.Refusal({"lists", "1", "--add", tooLong}), tooLong + " has no room: a list holds 5000 characters.\n");
    EXPECT_EQ(t.Run({"lists", "1", "--add", address(5, Text / 5)}), CtlDone); // the last line end is none of it
    EXPECT_TRUE(t.File(OlderFile).ends_with("\r\n0:" + address(5, Text / 5) + "\r\n"));
    EXPECT_EQ(t.Refusal({"lists", "1", "--add", "a"}), "a has no room: a list holds 5000 characters.\n");
}

TEST(CtlLists, DeletingAllAsksWhatTheWindowAsks)
{
    StoredCtl t;
    t.File(OlderFile) = "0;x\r\nA:a@b.c\r\n";
    t.dialogs.Expect(BoxAnswer::No);
    EXPECT_EQ(t.Refusal({"lists", "1", "--delete-all"}), "");
    const Box& asked = t.dialogs.shown.at(0);
    EXPECT_EQ(asked.text, "Are you sure you want to remove all email addresses and descriptions for all schedules for "
                          "this tallyCore ?     ");
    EXPECT_EQ(asked.title, " tallyCore Harvel");
    EXPECT_EQ(asked.buttons, BoxButtons::YesNo);
    t.dialogs.Expect(BoxAnswer::Yes);
    EXPECT_EQ(t.Run({"lists", "1", "--delete-all"}), CtlDone);
    EXPECT_EQ(t.File(OlderFile), "");
}

TEST(CtlLists, AFileThatCannotBeReadOrWrittenIsToldAndLeftAlone)
{
    StoredCtl t;
    t.File(OlderFile) = "0:a@b.c\r\n";
    t.files.full = true;
    EXPECT_EQ(t.Refusal({"lists", "1", "--add", "d@e.f"}),
              "The file /home/user/loggers/emaillist2.ini can't be written.\n");
    t.files.full = false;
    t.files.unreadable.insert("/home/user/loggers/emaillist2.ini");
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"lists", "1"}, {"lists", "1", "--clear"}, {"lists", "1", "--delete-all"}})
        EXPECT_EQ(t.Refusal(words), "The file /home/user/loggers/emaillist2.ini can't be read.\n");
}

TEST(CtlLists, ALoggerWithoutAKeyHasThePlainFile)
{
    LoggerRecord keyless = SerialLogger();
    keyless.LoggerIconKey.clear();
    StoredCtl t({keyless});
    EXPECT_EQ(t.Run({"lists", "1", "--add", "a@b.c"}), CtlDone);
    EXPECT_EQ(t.File("emaillist.ini"), "0:a@b.c\r\n");
}

TEST(CtlLists, ALoggerOfAnUnknownModelCanOnlyBeLookedAt)
{
    LoggerRecord unknown = SerialLogger();
    unknown.LoggerModel = "Unknown";
    StoredCtl t({unknown});
    t.File(OlderFile) = "0:a@b.c\r\n";
    EXPECT_EQ(t.Run({"lists", "1"}), CtlDone);
    EXPECT_EQ(t.out.str(), "All Schedules\n  a@b.c\n");
    EXPECT_EQ(t.Refusal({"lists", "1", "--clear"}), "The lists can't be changed: the logger's model is unknown.\n");
}

TEST(CtlLists, ThereIsNoListWithoutALogger)
{
    StoredCtl t;
    EXPECT_EQ(t.Refusal({"lists", "4"}), "There is no logger 4.\n");
}

} // namespace harvelop::test
