// The program as a process of its own, in a folder of its own.
#pragma once

#include "simulator/line_client.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <utility>
#include <vector>

namespace harvelop::test
{

inline const std::string Marks = "<<\r\n";

class Tallysim : public testing::Test
{
protected:
    void SetUp() override { std::filesystem::create_directory(folder); }
    void TearDown() override
    {
        if (process > 0)
            End(SIGKILL);
        std::filesystem::remove_all(folder);
    }

    // Starts the program, which is to ignore the signals `ignored`; its output is in `output`, its complaints in the
    // file `errors`.
    void Start(const std::vector<std::string>& arguments)
    {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        process = fork();
        if (process == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGCHLD})
                std::signal(number, ignored.contains(number) ? SIG_IGN : SIG_DFL);
            dup2(ends[1], STDOUT_FILENO);
            dup2(open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
            ::close(ends[0]);
            ::close(ends[1]);
            std::vector<char*> argv{const_cast<char*>(TALLYSIM)};
            for (const std::string& argument : arguments)
                argv.push_back(const_cast<char*>(argument.c_str()));
            argv.push_back(nullptr);
            execv(TALLYSIM, argv.data());
            _exit(127);
        }
        ::close(ends[1]);
        output = LineHandle(ends[0]);
    }

    // Ends it with a signal, or without one waits for its own end. Gives the exit code, or minus the signal it died of.
    int End(int signal = 0)
    {
        if (signal != 0)
            kill(process, signal);
        int status = 0;
        waitpid(std::exchange(process, -1), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    std::string File(const std::string& text, const std::string& name = "loggers.json")
    {
        const std::filesystem::path path = folder / name;
        std::ofstream(path) << text;
        return path;
    }

    // Simulates those loggers and gives what was told before "ready", the assignments by name.
    std::map<std::string, std::string> Simulate(const std::string& json)
    {
        Start({"--env", File(json)});
        told = ReadUntil(output.Get(), "ready\n");
        std::map<std::string, std::string> places;
        std::istringstream lines(told);
        for (std::string line; std::getline(lines, line);)
            if (const auto equals = line.find('='); equals != std::string::npos)
                places[line.substr(0, equals)] = line.substr(equals + 1);
        return places;
    }

    std::string Errors() const
    {
        std::ifstream file(errors);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static std::string Ask(const LineHandle& line, const std::string& text, const std::string& ending)
    {
        EXPECT_TRUE(Send(line, text));
        return ReadUntil(line.Get(), ending);
    }

    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) / ("tallysim_" + std::to_string(getpid()));
    const std::filesystem::path errors = folder / "errors";
    std::set<int> ignored;
    pid_t process = -1;
    LineHandle output;
    std::string told;
};

} // namespace harvelop::test
