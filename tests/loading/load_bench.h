// A program file that goes to a logger: what its far end answers to all that comes before the first line.
#pragma once

#include "loading/loading_bench.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

namespace harvelop::test
{

struct ProgramLoadTest : LoadingTest {
    explicit ProgramLoadTest(const std::string& model = OlderModel, int number = 1) : LoadingTest(model, number)
    {
        StoreProgram("BEGIN\r\nRA1M 1TK\r\n\r\nEND\r\n");
        heart.loading.ProgramFileName = ProgramFile;
        HasCard(false);
        far->Answer("13SV", "13SV\r\n2\r\n");
    }

    void HasCard(bool has) { far->Answer("9SV(FF0) /U/N", has ? "\r\n1\r\n" : "\r\n0\r\n"); }
    void HasData()
    {
        far->Answer("H BEGIN", "Tallycore 2E4\r\n");
        far->Answer("CLEAR CDATA", "CLEAR CDATA\r\n");
    }
    void Send() { heart.programLoading.SendProgramFile(); }

    // The lines of the file that reached the logger: all behind "13SV".
    std::vector<std::string> ProgramLines() const
    {
        const auto lines = Lines();
        const auto at = std::find(lines.begin(), lines.end(), "13SV");
        return at == lines.end() ? std::vector<std::string>() : std::vector<std::string>(at + 1, lines.end());
    }
    // When a line reached the logger, and what time it is, in whole milliseconds; a line that never did fails the test.
    long SentAt(const std::string& text) const
    {
        for (const auto& line : far->lines)
            if (line.text == text)
                return std::lround(line.ms);
        ADD_FAILURE() << "never sent: " << text;
        return 0;
    }
    long Now() const { return std::lround(pump.NowMs()); }

    void Expect(std::initializer_list<BoxAnswer> answers)
    {
        for (const BoxAnswer one : answers)
            dialogs.Expect(one);
    }
};

} // namespace harvelop::test
