#include "ctl_bench.h"
#include "simulator/simulated_logger.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace harvelop::test
{

namespace
{

using nlohmann::json;

// A logger that answers where the first stored one stands.
struct AnsweringCtl : StoredCtl {
    AnsweringCtl()
    {
        LoggerConfig config;
        config.model = "KR200";
        config.series = "2";
        serial.Plug(1, std::make_shared<SimulatedLogger>(config), "9600");
    }
    json Json(const std::vector<std::string>& words, int code)
    {
        EXPECT_EQ(Run(words), code) << said.str();
        return json::parse(out.str(), nullptr, false);
    }
};

json error(const std::string& text)
{
    return {{"kind", "error"}, {"text", text}};
}

} // namespace

TEST(CtlJson, WhatIsDoneTellsWhatCameOfIt)
{
    AnsweringCtl t;
    const json added = t.Json({"add", "--model", "KR40", "--tcp", "h:1", "--json"}, CtlDone);
    EXPECT_EQ(added, json({{"done", true}, {"messages", json::array()}, {"number", 4}}));
    const json set = t.Json({"set", "1", "LoggerDescription=Weir", "ScheduleHTML.X=1", "--json"}, CtlDone);
    EXPECT_EQ(set["changed"]["LoggerDescription"], "Weir");
    EXPECT_EQ(set["changed"]["ScheduleHTML.X"], "1");
    EXPECT_EQ(set["changed"]["ScheduleUlast.X"], "1"); // which HTML takes along
    const json lists = t.Json({"lists", "1", "--add", "a@b.c", "--schedule", "A", "--json"}, CtlDone);
    EXPECT_EQ(lists["lists"], json::array({{{"schedule", "A"}, {"description", ""}, {"addresses", {"a@b.c"}}}}));
    t.dialogs.Expect(BoxAnswer::Ok);
    const json found = t.Json({"test", "1", "--json"}, CtlDone);
    EXPECT_EQ(found["done"], true);
    EXPECT_EQ(found["messages"].at(0)["kind"], "information");
    EXPECT_EQ(found["found"]["series"], "2");
    EXPECT_EQ(t.Json({"connect", "1", "--json"}, CtlDone)["done"], true);
    const json sent = t.Json({"send", "1", "TEST0", "--json"}, CtlDone);
    EXPECT_TRUE(sent["answer"].is_array());
    EXPECT_FALSE(sent["answer"].empty());
}

TEST(CtlJson, AnAnswerWithoutALineAndALoggerWithoutAJobAreEmptyArrays)
{
    AnsweringCtl t;
    EXPECT_EQ(t.Json({"send", "1", "", "--json"}, CtlDone),
              json({{"done", true}, {"messages", json::array()}, {"answer", json::array()}}));
    EXPECT_FALSE(t.Json({"send", "9", "x", "--json"}, CtlFailed).contains("answer"));
}

TEST(CtlJson, FindGivesTheLoggersAsListDoes)
{
    AnsweringCtl t;
    t.dialogs.Expect(BoxAnswer::Ok); // the stored ones are replaced
    const json found = t.Json({"find", "--port", "1", "--json"}, CtlDone);
    EXPECT_EQ(found["done"], true);
    EXPECT_EQ(found["loggers"], t.Json({"list", "--json"}, CtlDone));
}

TEST(CtlJson, WhatIsRefusedOrCannotBeShownIsAnObjectWithItsReason)
{
    AnsweringCtl t;
    EXPECT_EQ(
        t.Json({"set", "1", "LoggerSerial=1", "--json"}, CtlFailed),
        json({{"done", false}, {"messages", {error("LoggerSerial can't be changed: it comes from the logger.")}}}));
    EXPECT_EQ(t.Json({"show", "9", "--json"}, CtlFailed),
              json({{"done", false}, {"messages", {error("There is no logger 9.")}}}));
    EXPECT_EQ(t.Json({"send", "9", "x", "--json"}, CtlFailed)["done"], false);
    EXPECT_EQ(t.said.str(), "There is no logger 9.\n");
}

TEST(CtlJson, BoxesAreMessagesWithTheirKindAndAnswer)
{
    AnsweringCtl t;
    t.dialogs.Expect(BoxAnswer::No);
    EXPECT_EQ(t.Json({"delete", "1", "--json"}, CtlFailed),
              json({{"done", false},
                    {"messages",
                     {{{"kind", "question"},
                       {"text", "Are you sure you want to delete this tallyCore ?"},
                       {"answer", "no"}}}}}));
    t.desktop.starts = false;
    t.dialogs.Expect(BoxAnswer::Ok);
    const json unload = t.Json({"unload", "1", "--json"}, CtlFailed);
    EXPECT_EQ(unload["messages"].at(0)["kind"], "error");
}

TEST(CtlJson, TheTerminalPrintsALineForEachLineAndThenTheResult)
{
    AnsweringCtl t;
    t.input.lines = {"TEST0"};
    EXPECT_EQ(t.Run({"terminal", "1", "--json"}), CtlDone);
    std::istringstream lines(t.out.str());
    std::vector<json> all;
    for (std::string line; std::getline(lines, line);)
        all.push_back(json::parse(line));
    ASSERT_GE(all.size(), 2u);
    EXPECT_EQ(all.back(), json({{"done", true}, {"messages", json::array()}}));
    all.pop_back();
    for (const json& line : all)
        EXPECT_TRUE(line["received"].is_string());
}

TEST(CtlJson, PortsAreNumbersAndDevices)
{
    AnsweringCtl t;
    const json ports = t.Json({"ports", "--json"}, CtlDone);
    ASSERT_EQ(ports.size(), 1u);
    EXPECT_EQ(ports[0]["port"], 1);
    EXPECT_TRUE(ports[0]["device"].is_string());
}

} // namespace harvelop::test
