#include "trace/trace_secrets.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace harvelop
{

namespace
{

// What is left of `text` in the trace when it comes in pieces of that size; the hidden part of a line is one star.
std::string Filtered(const TraceSecrets& secrets, const std::string& text, size_t piece = 1)
{
    SecretFilter filter(secrets);
    std::string verdicts;
    for (size_t at = 0; at < text.size(); at += piece)
        verdicts += filter.Take(std::string_view(text).substr(at, piece));
    verdicts += filter.GiveUp();
    EXPECT_EQ(verdicts.size(), text.size());
    std::string shown;
    for (size_t i = 0; i < std::min(text.size(), verdicts.size()); ++i)
        if (verdicts[i] == SecretFilter::Shown)
            shown += text[i];
        else if (!shown.ends_with('*'))
            shown += '*';
    return shown;
}

TraceSecrets Knowing(std::initializer_list<const char*> secrets)
{
    TraceSecrets known;
    for (const char* secret : secrets)
        known.Learn(secret);
    return known;
}

TEST(SecretFilter, HidesASecretAndTheRestOfItsLineInPiecesOfAnySize)
{
    const TraceSecrets secrets = Knowing({"GREENHOUSE"});
    for (size_t piece = 1; piece < 40; ++piece)
        EXPECT_EQ(Filtered(secrets, "Q /H/r\r\nxGREENHOUSE7 and more\r\nGREEN GRASS\r\n", piece),
                  "Q /H/r\r\nx*\r\nGREEN GRASS\r\n");
}

TEST(SecretFilter, FindsASecretThatBeginsInsideItsOwnBeginning)
{
    EXPECT_EQ(Filtered(Knowing({"ababac"}), "abababac\r"), "ab*\r");
}

TEST(SecretFilter, CaseAndControlCharactersDoNotMatter)
{
    const TraceSecrets secrets = Knowing({"Se cret"});
    EXPECT_EQ(Filtered(secrets, std::string("\0s\0E\0 \0c\x13\x11r\0e\0T\r", 16)), std::string("\0*\r", 3));
}

TEST(SecretFilter, AShortSecretCountsOnlyAsTheLastWordOfALine)
{
    const TraceSecrets secrets = Knowing({"abc"});
    EXPECT_EQ(Filtered(secrets, "abc\r"), "*\r");
    EXPECT_EQ(Filtered(secrets, "PASS abc\r\n"), "PASS *\r\n");
    EXPECT_EQ(Filtered(secrets, ">abc\r\n"), ">*\r\n");
    EXPECT_EQ(Filtered(secrets, "abcd xabc abc.\r"), "abcd xabc abc.\r");
}

TEST(SecretFilter, ABeginningOfASecretCountsAsTheLastWordOfALine)
{
    const TraceSecrets secrets = Knowing({"Se cret1"});
    for (size_t piece = 1; piece < 20; ++piece) {
        EXPECT_EQ(Filtered(secrets, "se cret\r\n>Se c\r\n", piece), "*\r\n>*\r\n");
        EXPECT_EQ(Filtered(secrets, "se \rxse cret\rse cret x\r", piece), "se \rxse cret\rse cret x\r");
    }
}

TEST(SecretFilter, WhatMayBeTheBeginningOfASecretIsHeldBack)
{
    const TraceSecrets secrets = Knowing({"GREENHOUSE"});
    SecretFilter filter(secrets);
    EXPECT_EQ(filter.Take("T,GREEN"), "..");
    EXPECT_EQ(filter.Take(" GRASS"), "...........");
    EXPECT_EQ(filter.Take("GREEN"), "");
    EXPECT_EQ(filter.GiveUp(), "*****");
    EXPECT_EQ(filter.Take("HOUSE\rx"), "*****..");
}

TEST(SecretFilter, AnEndlessBeginningIsHiddenRatherThanKept)
{
    const TraceSecrets secrets = Knowing({"GREENHOUSE"});
    SecretFilter filter(secrets);
    const std::string verdicts = filter.Take("G" + std::string(100000, '\0'));
    EXPECT_EQ(verdicts, std::string(100001, SecretFilter::Hidden));
}

TEST(SecretFilter, NoSplitOfAStreamShowsASecret)
{
    std::mt19937 random(20260101);
    const auto below = [&](size_t most) { return std::uniform_int_distribution<size_t>(0, most - 1)(random); };
    const auto word = [&](size_t shortest) {
        std::string text;
        const size_t length = shortest + below(5);
        for (size_t i = 0; i < length; ++i)
            text += "abA "[below(i == 0 ? 3 : 4)];
        return text;
    };
    for (int round = 0; round < 3000; ++round) {
        const std::string secret = word(4);
        TraceSecrets secrets;
        secrets.Learn(secret);
        std::string stream;
        for (int i = 0; i < 30; ++i)
            stream += below(4) == 0 ? secret : below(4) == 0 ? "\r\n" : word(1);
        SecretFilter filter(secrets);
        std::string shown;
        std::string undecided;
        for (size_t at = 0; at < stream.size();) {
            const size_t size = 1 + below(9);
            undecided += stream.substr(at, size);
            const std::string verdicts = filter.Take(std::string_view(stream).substr(at, size));
            for (const char verdict : verdicts) {
                shown += verdict == SecretFilter::Shown ? undecided.front() : '*';
                undecided.erase(0, 1);
            }
            at += size;
        }
        const auto lower = [](std::string text) {
            for (char& c : text)
                c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            return text;
        };
        ASSERT_EQ(lower(shown).find(lower(secret)), std::string::npos) << secret << "\n" << stream << "\n" << shown;
        ASSERT_LE(undecided.size(), secret.size());
        if (lower(stream).find(lower(secret).substr(0, 4)) == std::string::npos) {
            ASSERT_EQ(shown.find('*'), std::string::npos) << secret << "\n" << stream;
        }
    }
}

} // namespace

} // namespace harvelop
