#include "core/text_lines.h"
#include "settings/delivery_lists.h"
#include "settings/golden_file.h"
#include "support/memory_files.h"

#include <algorithm>

namespace harvelop::test
{
namespace
{

constexpr size_t X = 12;     // the index of schedule X in the KR4 family
constexpr size_t OlderX = 5; // and in the older one

struct DeliveryListsTest : testing::Test {
    static constexpr const char* Path = "/app/emaillist7.ini";

    DeliveryListsTest()
    {
        state.AppPath = "/app/";
        choose(1, "KR40", "::7");
    }
    void choose(int number, const std::string& model, const std::string& iconKey)
    {
        loggers.Record(number)->LoggerModel = model;
        loggers.Record(number)->LoggerIconKey = iconKey;
        state.CurrentLogger = state.ChosenLogger = static_cast<std::int16_t>(number);
    }
    void read(const std::string& text)
    {
        files.files[Path] = text;
        EXPECT_TRUE(lists.ReadDeliveryList("7"));
    }
    std::string written()
    {
        EXPECT_TRUE(lists.WriteDeliveryList());
        return files.files[Path];
    }
    std::string& description(size_t schedule) { return tables.ListDescriptions.at(schedule); }
    AddressList& list(size_t schedule, int number = 1) { return tables.Lists(number)->at(schedule); }
    bool allEmpty()
    {
        bool empty = std::all_of(tables.ListDescriptions.begin(), tables.ListDescriptions.end(),
                                 [](auto& d) { return d.empty(); });
        for (const LoggerLists& logger : tables.DeliveryLists)
            for (const AddressList& addresses : logger)
                empty = empty && std::all_of(addresses.begin(), addresses.end(), [](auto& a) { return a.empty(); });
        return empty;
    }

    ProgramState state;
    LoggerTables loggers;
    MemoryFiles files;
    DeliveryTables tables;
    DeliveryLists lists{tables, state, loggers, files};
};

std::string addressLines(char key, int from, int to)
{
    std::string text;
    for (int i = from; i <= to; ++i)
        text += std::string(1, key) + ":a" + std::to_string(i) + "\r\n";
    return text;
}

TEST(ScheduleKeys, FollowTheFamily)
{
    EXPECT_EQ(ScheduleKeysOf("KR45"), "0ABCDEFGHIJKX");
    EXPECT_EQ(ScheduleKeysOf("KR200 Series 2"), "0ABCDX");
    EXPECT_EQ(ScheduleKeysOf(""), "0ABCDX");
}

TEST(ListNumbers, AreUpToFiveCharactersBehindTheColons)
{
    const std::pair<const char*, const char*> rows[] = {
        {"::2", "2"}, {"::12345", "12345"}, {"::1234567", "12345"}, {"::", ""}, {":", ""}, {"", ""}};
    for (const auto& [key, number] : rows)
        EXPECT_EQ(ListNumber(key), number) << key;
}

TEST_F(DeliveryListsTest, KR4FileIsReadAndWrittenByteForByte)
{
    const std::string golden = GoldenFile("emaillist_kr4.ini");
    read(golden);
    EXPECT_EQ(description(0), "Everyone");
    EXPECT_EQ(description(11), "Kept by letter K");
    EXPECT_EQ(description(X), "Alarms");
    EXPECT_EQ(list(0)[1], "bob_2@mail.example.com");
    EXPECT_EQ(list(11)[0], "dora@example.com");
    EXPECT_EQ(list(X)[1], "ann@example.com");
    EXPECT_EQ(written(), golden);
    EXPECT_EQ(tables.ScheduleKeys, "0ABCDEFGHIJKX");
}

TEST_F(DeliveryListsTest, OlderFileIsReadAndWrittenByteForByte)
{
    choose(1, "KR315 Series 3", "::7");
    const std::string golden = GoldenFile("emaillist_older.ini");
    read(golden);
    EXPECT_EQ(description(4), "Daily");
    EXPECT_EQ(description(OlderX), "Alarms");
    EXPECT_EQ(list(OlderX)[1], "ann@example.com");
    EXPECT_EQ(written(), golden);
    EXPECT_EQ(tables.ScheduleKeys, "0ABCDX");
}

TEST_F(DeliveryListsTest, EveryScheduleKeyHasItsPlace)
{
    const std::string keys = "0ABCDEFGHIJKX";
    std::string descriptions;
    std::string addresses;
    for (const char key : keys) {
        descriptions += std::string(1, key) + ";about " + key + "\r\n";
        addresses += std::string(1, key) + ":to@" + key + "\r\n";
    }
    read(addresses + descriptions); // the order of lines does not matter
    for (size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(description(i), std::string("about ") + keys[i]);
        EXPECT_EQ(list(i)[0], std::string("to@") + keys[i]);
    }
    EXPECT_EQ(written(), descriptions + addresses);
}

TEST_F(DeliveryListsTest, MissingFileIsCreatedEmpty)
{
    EXPECT_TRUE(lists.ReadDeliveryList("7"));
    EXPECT_EQ(files.files.at(Path), "");
    EXPECT_TRUE(allEmpty());
}

TEST_F(DeliveryListsTest, MissingFileThatCanNotBeCreatedIsAnEmptyList)
{
    files.full = true;
    EXPECT_TRUE(lists.ReadDeliveryList("7"));
    EXPECT_TRUE(allEmpty());
}

TEST_F(DeliveryListsTest, LoggerWithoutKeyHasThePlainName)
{
    choose(1, "KR40", "");
    EXPECT_TRUE(lists.ReadDeliveryList(ListNumber("")));
    EXPECT_EQ(files.files.count("/app/emaillist.ini"), 1u);
    list(0)[0] = "a@b";
    EXPECT_TRUE(lists.WriteDeliveryList());
    EXPECT_EQ(files.files.at("/app/emaillist.ini"), "0:a@b\r\n");
}

TEST_F(DeliveryListsTest, ReadingEmptiesTheListsOfAllLoggers)
{
    for (int number = 1; number <= MaxLoggers; ++number)
        for (AddressList& addresses : *tables.Lists(number))
            addresses.fill("old");
    tables.ListDescriptions.fill("old");
    read("");
    EXPECT_TRUE(allEmpty());
}

TEST_F(DeliveryListsTest, FileFollowsTheNumberAndSlotTheCurrentLogger)
{
    choose(50, "KR40", "::9");
    read("A:a@b\r\n");
    EXPECT_EQ(list(1, 50)[0], "a@b");
    EXPECT_EQ(list(1, 1)[0], "");
    EXPECT_TRUE(lists.WriteDeliveryList());
    EXPECT_EQ(files.files.at("/app/emaillist9.ini"), "A:a@b\r\n");
}

TEST_F(DeliveryListsTest, ChosenLoggerNamesTheFileAndCurrentLoggerTheKeys)
{
    choose(2, "KR200", "::8");
    state.CurrentLogger = 1;
    read("K:a@b\r\n");
    EXPECT_TRUE(lists.WriteDeliveryList());
    EXPECT_EQ(files.files.at("/app/emaillist8.ini"), "K:a@b\r\n");
}

TEST_F(DeliveryListsTest, LoggerOutOfRangeHasDescriptionsButNoAddresses)
{
    state.CurrentLogger = 0;
    read("A;about\r\nA:a@b\r\nE;lost\r\nX;alarms\r\n");
    EXPECT_EQ(description(1), "about");
    EXPECT_EQ(description(OlderX), "alarms"); // it counts as of the older family
    EXPECT_EQ(written(), "A;about\r\nX;alarms\r\n");
    EXPECT_EQ(tables.ScheduleKeys, "0ABCDX");
}

TEST_F(DeliveryListsTest, NothingIsWrittenForAChosenLoggerOutOfRange)
{
    read("A;about\r\n");
    for (const std::int16_t number : {0, 51, -1}) {
        state.ChosenLogger = number;
        EXPECT_FALSE(lists.WriteDeliveryList());
    }
    EXPECT_TRUE(files.writes.empty());
}

TEST_F(DeliveryListsTest, ColonInADescriptionStays)
{
    read("A;to: all; even B:c\r\n");
    EXPECT_EQ(description(1), "to: all; even B:c");
    EXPECT_EQ(written(), "A;to: all; even B:c\r\n");
}

TEST_F(DeliveryListsTest, LastDescriptionOfAScheduleCounts)
{
    read("A;first\r\nA;second\r\n");
    EXPECT_EQ(description(1), "second");
}

TEST_F(DeliveryListsTest, TwentiethAddressIsReadButNotWrittenAndTheNextIsLost)
{
    read(addressLines('B', 1, 21) + "C:other\r\n");
    EXPECT_EQ(list(2)[19], "a20");
    EXPECT_EQ(list(3)[0], "other"); // each schedule counts for itself
    EXPECT_EQ(written(), addressLines('B', 1, 19) + "C:other\r\n");
}

TEST_F(DeliveryListsTest, EmptyAddressTakesAPositionAndIsNotWritten)
{
    read("A:\r\nA:a@b\r\n");
    EXPECT_EQ(list(1)[0], "");
    EXPECT_EQ(list(1)[1], "a@b");
    EXPECT_EQ(written(), "A:a@b\r\n");
}

TEST_F(DeliveryListsTest, LinesOfSchedulesThatTheOlderFamilyLacksAreLostAtTheNextSave)
{
    choose(1, "KR200 Series 1", "::7");
    read("E;lost\r\nX;alarms\r\nE;lost\r\nE:lost\r\nX:a@b\r\nE:lost\r\nK:lost\r\nK;lost\r\nF:lost\r\n");
    EXPECT_EQ(description(OlderX), "alarms");
    EXPECT_EQ(list(OlderX)[0], "a@b");
    EXPECT_EQ(list(OlderX)[1], "");
    EXPECT_EQ(written(), "X;alarms\r\nX:a@b\r\n");
}

TEST_F(DeliveryListsTest, OtherLinesAreIgnored)
{
    using namespace std::string_literals;
    read(";\r\n:\r\nA\r\n\r\nA-x\r\na:small\r\nL:x\r\n1:x\r\n;:x\r\n::x\r\n A:x\r\n\0:x\r\n\xFF:x\r\n"s);
    EXPECT_TRUE(allEmpty());
}

TEST_F(DeliveryListsTest, AnyLineEndWillDoAndTheLastMayLackIt)
{
    read("A:a\nA:b\rA:c\r\nA:d");
    EXPECT_EQ(written(), "A:a\r\nA:b\r\nA:c\r\nA:d\r\n");
}

TEST_F(DeliveryListsTest, BytesPassThrough)
{
    using namespace std::string_literals;
    const std::string text = "A;Gr\xC3\xBC\xC3\x9F"
                             "e\r\nB;\xFF\xFE\0z\r\nA:not allowed here-but kept\r\nA:\0\x01\r\n"s;
    read(text);
    EXPECT_EQ(written(), text);
}

TEST_F(DeliveryListsTest, BinaryAndVeryLongLinesAreNoHarm)
{
    std::string junk;
    for (unsigned i = 0; i < 64 * 1024; ++i)
        junk.push_back(static_cast<char>(i * 2654435761U >> 24));
    const std::string longest = "A:" + std::string(1 << 20, 'a');
    read(junk + "\r\n" + longest + "\r\n");
    EXPECT_TRUE(Holds(written(), longest));
}

TEST_F(DeliveryListsTest, LineEndInAValueBeginsNoOtherLine)
{
    read("");
    description(1) = "one\r\nB;two";
    list(1)[0] = "a\nB:b";
    EXPECT_EQ(written(), "A;one  B;two\r\nA:a B:b\r\n");
}

TEST_F(DeliveryListsTest, EmptyListsAreAnEmptyFile)
{
    read("A;x\r\nA:y\r\n");
    tables.Clear();
    EXPECT_EQ(written(), "");
}

TEST_F(DeliveryListsTest, FileThatCanNotBeReadIsNeitherEmptiedNorOverwritten)
{
    files.files[Path] = "A:a@b\r\n";
    files.unreadable.insert(Path);
    EXPECT_FALSE(lists.ReadDeliveryList("7"));
    EXPECT_TRUE(allEmpty());
    list(0)[0] = "typed";
    EXPECT_FALSE(lists.WriteDeliveryList());
    files.unreadable.clear(); // nobody has seen it yet
    EXPECT_FALSE(lists.WriteDeliveryList());
    EXPECT_EQ(files.files[Path], "A:a@b\r\n");
    EXPECT_TRUE(files.writes.empty());

    EXPECT_TRUE(lists.ReadDeliveryList("7"));
    EXPECT_EQ(list(1)[0], "a@b");
    EXPECT_EQ(list(0)[0], "");
    EXPECT_EQ(written(), "A:a@b\r\n");
}

TEST_F(DeliveryListsTest, WhatCouldNotBeSavedIsReadAgain)
{
    read("A:a@b\r\n");
    files.full = true;
    list(1)[0] = "new@b";
    EXPECT_FALSE(lists.WriteDeliveryList());
    EXPECT_EQ(files.files[Path], "A:a@b\r\n");
    files.files["/app/emaillist8.ini"] = "A:other\r\n";
    EXPECT_TRUE(lists.ReadDeliveryList("8")); // another logger's
    EXPECT_EQ(list(1)[0], "other");

    EXPECT_TRUE(lists.ReadDeliveryList("7"));
    EXPECT_EQ(list(1)[0], "new@b");
    files.full = false;
    EXPECT_EQ(written(), "A:new@b\r\n");
    read("A:from outside\r\n"); // once saved, the file counts
    EXPECT_EQ(list(1)[0], "from outside");
}

TEST_F(DeliveryListsTest, FileThatCanNoLongerBeReadIsNotOverwritten)
{
    read("A:a@b\r\n");
    files.unreadable.insert(Path);
    list(1)[0] = "new@b";
    EXPECT_FALSE(lists.WriteDeliveryList());
    EXPECT_TRUE(files.writes.empty());
}

} // namespace
} // namespace harvelop::test
