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
    EXPECT_EQ(errorOf({"list", "x"}), "\"x\" is one word too many");
    for (const char* number : {"0", "51", "x"})
        EXPECT_EQ(errorOf({"show", number}), "show wants a logger's number, from 1 to 50") << number;
    EXPECT_EQ(errorOf({"show"}), "show wants a logger's number, from 1 to 50");
    EXPECT_EQ(errorOf({"--dir=", "list"}), "--dir wants a directory");
}

} // namespace harvelop
