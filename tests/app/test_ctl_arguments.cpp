#include "app/ctl_arguments.h"

#include <gtest/gtest.h>

namespace harvelop
{

namespace
{

std::string errorOf(const std::vector<std::string>& words)
{
    const auto parsed = ParseCtlArguments(words);
    const auto* error = std::get_if<std::string>(&parsed);
    return error ? *error : std::string();
}

CtlCommand commandOf(const std::vector<std::string>& words)
{
    const auto parsed = ParseCtlArguments(words);
    EXPECT_TRUE(std::holds_alternative<CtlCommand>(parsed)) << errorOf(words);
    return std::holds_alternative<CtlCommand>(parsed) ? std::get<CtlCommand>(parsed) : CtlCommand();
}

} // namespace

TEST(CtlArguments, FindTakesItsOptionsInAnyOrder)
{
    const auto command = commandOf({"find", "--yes", "--dir", "/tmp/x", "--port", "12", "--password=a b"});
    EXPECT_EQ(command.verb, CtlCommand::Verb::Find);
    EXPECT_EQ(command.directory, "/tmp/x");
    EXPECT_EQ(command.port, 12);
    EXPECT_TRUE(command.yes);
    EXPECT_EQ(command.password, "a b");
}

TEST(CtlArguments, DefaultsAreTheCurrentDirectoryAllPortsAndAsking)
{
    const auto command = commandOf({"find"});
    EXPECT_EQ(command.directory, ".");
    EXPECT_FALSE(command.port);
    EXPECT_FALSE(command.yes);
    EXPECT_FALSE(command.password);
    EXPECT_FALSE(commandOf({"find", "--all"}).port);
}

TEST(CtlArguments, ListShowAndPorts)
{
    EXPECT_TRUE(commandOf({"list", "--json"}).json);
    EXPECT_EQ(commandOf({"show", "50"}).number, 50);
    EXPECT_EQ(commandOf({"ports"}).verb, CtlCommand::Verb::Ports);
    EXPECT_EQ(commandOf({"--help"}).verb, CtlCommand::Verb::Help);
    EXPECT_EQ(commandOf({"find", "--version"}).verb, CtlCommand::Verb::Version);
}

TEST(CtlArguments, SetTakesFieldsInTheirOrder)
{
    const auto command = commandOf({"set", "7", "LoggerRunCommand=a=b", "--dir", "/x", "ScheduleOn.A=", "a=-1"});
    EXPECT_EQ(command.verb, CtlCommand::Verb::Set);
    EXPECT_EQ(command.number, 7);
    ASSERT_EQ(command.edits.size(), 3u);
    EXPECT_EQ(command.edits[0].field, "LoggerRunCommand");
    EXPECT_EQ(command.edits[0].value, "a=b");
    EXPECT_EQ(command.edits[1].field, "ScheduleOn.A");
    EXPECT_EQ(command.edits[1].value, "");
    EXPECT_EQ(command.edits[2].value, "-1");
}

TEST(CtlArguments, ListsTakesItsChangesInTheirOrder)
{
    using Kind = ListEdit::Kind;
    const auto command =
        commandOf({"lists", "50", "--clear", "--add", "-a", "--schedule", "X", "--remove=b", "--description", "c d"});
    EXPECT_EQ(command.verb, CtlCommand::Verb::Lists);
    EXPECT_EQ(command.number, 50);
    EXPECT_EQ(command.schedule, "X");
    const std::vector<std::pair<Kind, std::string>> wanted = {
        {Kind::Clear, ""}, {Kind::Add, "-a"}, {Kind::Remove, "b"}, {Kind::Description, "c d"}};
    ASSERT_EQ(command.listEdits.size(), wanted.size());
    for (size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(command.listEdits[i].kind, wanted[i].first);
        EXPECT_EQ(command.listEdits[i].text, wanted[i].second);
    }
    EXPECT_FALSE(commandOf({"lists", "1"}).schedule);
    EXPECT_TRUE(commandOf({"lists", "1", "--schedule", "0", "--json"}).json);
    EXPECT_TRUE(commandOf({"lists", "1", "--delete-all", "--yes"}).deleteAll);
}

TEST(CtlArguments, WrongWordsOfSetAndListsAreNamed)
{
    for (const char* verb : {"set", "lists"})
        for (const std::vector<std::string>& rest : {std::vector<std::string>{}, {"0"}, {"51"}, {"a=1"}}) {
            std::vector<std::string> words = {verb};
            words.insert(words.end(), rest.begin(), rest.end());
            EXPECT_EQ(errorOf(words), std::string(verb) + " wants a logger's number, from 1 to 50");
        }
    EXPECT_EQ(errorOf({"set", "1"}), "set wants at least one FIELD=VALUE");
    for (const char* word : {"secret", "=secret", ""})
        EXPECT_EQ(errorOf({"set", "1", "LoggerRunCommand=", word}), "set wants each change as FIELD=VALUE") << word;
    EXPECT_EQ(errorOf({"set", "1", "a=1", "--json"}), "--json does not go with set");
    EXPECT_EQ(errorOf({"lists", "1", "a@b.c"}), "there is a word too many behind lists");
    EXPECT_EQ(errorOf({"lists", "1", "--add"}), "--add wants a value");
    EXPECT_EQ(errorOf({"lists", "1", "--clear=1"}), "--clear takes no value");
    EXPECT_EQ(errorOf({"show", "1", "--clear"}), "--clear does not go with show");
    EXPECT_EQ(errorOf({"lists", "1", "--json", "--clear"}), "--json shows the lists and goes with no change of them");
    for (const std::vector<std::string>& other :
         {std::vector<std::string>{"--clear"}, {"--json"}, {"--schedule", "A"}}) {
        std::vector<std::string> words = {"lists", "1", "--delete-all"};
        words.insert(words.end(), other.begin(), other.end());
        EXPECT_EQ(errorOf(words), "--delete-all goes with --yes alone");
    }
}

TEST(CtlArguments, WrongWordsAreNamed)
{
    EXPECT_EQ(errorOf({}), "a command is missing");
    EXPECT_EQ(errorOf({"fnd"}), "there is no command fnd");
    EXPECT_EQ(errorOf({"find", "--fast"}), "there is no option --fast");
    EXPECT_EQ(errorOf({"find", "--port"}), "--port wants a value");
    for (const char* port : {"0", "17", "x", "", "1.0", "-1"})
        EXPECT_EQ(errorOf({"find", "--port", port}), "--port wants a number from 1 to 16") << port;
    EXPECT_EQ(errorOf({"find", "--all", "--port", "3"}), "--all and --port exclude each other");
    EXPECT_EQ(errorOf({"list", "--yes"}), "--yes does not go with list");
    EXPECT_EQ(errorOf({"list", "--json=1"}), "--json takes no value");
    EXPECT_EQ(errorOf({"list", "x"}), "there is a word too many behind list");
    EXPECT_EQ(errorOf({"find", "--password", "se", "cret"}), "there is a word too many behind find");
    for (const char* number : {"0", "51", "x"})
        EXPECT_EQ(errorOf({"show", number}), "show wants a logger's number, from 1 to 50") << number;
    EXPECT_EQ(errorOf({"show"}), "show wants a logger's number, from 1 to 50");
    EXPECT_EQ(errorOf({"--dir=", "list"}), "--dir wants a directory");
}

} // namespace harvelop
