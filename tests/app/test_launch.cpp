#include "app/launch.h"

#include <gtest/gtest.h>

namespace harvelop
{

using Path = Launch::Path;

TEST(Launch, DoubleQuotesAreDropped)
{
    EXPECT_EQ(LaunchCommandOf("\"::7\" \"%G\""), "::7 %G");
}

TEST(Launch, ACommandLineWithoutColonsIsEmptied)
{
    EXPECT_EQ(LaunchCommandOf("C:\\data\\x.dxc"), "");
    EXPECT_EQ(ParseLaunch(LaunchCommandOf("C:\\data\\x.dxc")).path, Path::Normal);
    EXPECT_EQ(ParseLaunch(LaunchCommandOf("")).path, Path::Normal);
}

TEST(Launch, AKeyAloneShowsThePanel)
{
    const Launch launch = ParseLaunch("::12");
    EXPECT_EQ(launch.path, Path::ShowPanel);
    EXPECT_EQ(launch.key, "12");
}

TEST(Launch, APathLoadsAProgram)
{
    for (const char* command : {"::12 C:\\data\\x.dxc", "::12 /home/user/x.dxc"}) {
        const Launch launch = ParseLaunch(command);
        EXPECT_EQ(launch.path, Path::LoadProgram) << command;
        EXPECT_EQ(launch.key, "12");
    }
}

TEST(Launch, APercentSignSendsTheTextBehindIt)
{
    const Launch launch = ParseLaunch("::3 %G A B");
    EXPECT_EQ(launch.path, Path::SendText);
    EXPECT_EQ(launch.key, "3");
    EXPECT_EQ(launch.text, "G A B");
    EXPECT_TRUE(launch.tellsSent);
    EXPECT_FALSE(launch.inTerminal);
}

TEST(Launch, ATextThatEndsInAPercentSignOpensTheTerminal)
{
    const Launch launch = ParseLaunch("::7 %PROFILE%");
    EXPECT_EQ(launch.path, Path::SendText);
    EXPECT_TRUE(launch.inTerminal);
    EXPECT_EQ(launch.text, "PROFILE");
}

TEST(Launch, APercentSignAloneSendsNothing)
{
    const Launch launch = ParseLaunch("::7 %");
    EXPECT_EQ(launch.path, Path::SendText);
    EXPECT_TRUE(launch.inTerminal);
    EXPECT_EQ(launch.text, "");
    EXPECT_FALSE(launch.tellsSent);
}

TEST(Launch, TwoPercentSignsSendNothingEitherButTellIt)
{
    const Launch launch = ParseLaunch("::7 %%");
    EXPECT_EQ(launch.path, Path::SendText);
    EXPECT_TRUE(launch.inTerminal);
    EXPECT_EQ(launch.text, "");
    EXPECT_TRUE(launch.tellsSent);
}

TEST(Launch, OnlyTheFirstPercentSignAndOneAtTheEndAreLeftOut)
{
    EXPECT_EQ(ParseLaunch("::7 %A%B%").text, "A%B");
    EXPECT_EQ(ParseLaunch("::7 %%%").text, "%");
}

TEST(Launch, APercentSignWinsOverAPath)
{
    EXPECT_EQ(ParseLaunch("::7 %C:\\x").path, Path::SendText);
    EXPECT_EQ(ParseLaunch("::7 %C:\\x").text, "C:\\x");
}

TEST(Launch, ShortCommandsHaveAnEmptyKey)
{
    EXPECT_EQ(ParseLaunch("::").path, Path::ShowPanel);
    EXPECT_EQ(ParseLaunch("::").key, "");
    EXPECT_EQ(ParseLaunch("%::").key, ":");
}

} // namespace harvelop
