// Commands of `harvelctl` with a trace, on fakes and in virtual time.
#pragma once

#include "app/ctl_bench.h"
#include "app/tracing.h"
#include "simulator/replay_device.h"
#include "simulator/simulated_logger.h"
#include "simulator/trace_reader.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace harvelop::test
{

struct TracedCtl : StoredCtl {
    explicit TracedCtl(const std::vector<LoggerRecord>& loggers = {}) : StoredCtl(loggers)
    {
        std::filesystem::remove(path);
    }
    ~TracedCtl() { std::filesystem::remove(path); }

    // As Run, with a trace behind that of former runs; a password is answered by --password, or with `typed`.
    int RunTraced(const std::vector<std::string>& words)
    {
        out.str("");
        said.str("");
        const auto parsed = ParseCtlArguments(words);
        const auto* command = std::get_if<CtlCommand>(&parsed);
        if (!command)
            return CtlUsageError;
        Console console(said, false, false);
        ConsoleDialogs boxes(console, true, command->password ? command->password : typed);
        Tracing tracing(path, "test", {pump, serial, sockets, boxes, files, settings, desktop},
                        [this](const std::string& text) { complaints.push_back(text); });
        Program program(tracing.Inside());
        tracing.Watch(program);
        return RunCtlCommand(program, console, *command, Directory, out, &input);
    }

    std::string Trace() const
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // Stands what a trace tells in the place of what was there.
    void Plug(RecordedTrace trace, ReplayDevice::Pace pace)
    {
        EXPECT_THAT(trace.errors, testing::IsEmpty());
        for (RecordedLine& line : trace.lines) {
            const bool isTcp = line.com == 0;
            const auto openings = isTcp ? ReplayDevice::Openings::Exact : ReplayDevice::Openings::Vague;
            auto device = std::make_shared<ReplayDevice>(line, openings, pace);
            device->Tell = [this](const std::string& text) { departures.push_back(text); };
            if (isTcp)
                sockets.Plug(line.host.substr(0, line.host.rfind(':')), line.tcpPort, device);
            else
                serial.Plug(line.com, device, std::to_string(line.baud));
        }
    }

    const std::string path = testing::TempDir() + "traced_" + std::to_string(getpid());
    std::optional<std::string> typed;
    std::vector<std::string> complaints;
    std::vector<std::string> departures;
};

inline std::shared_ptr<SimulatedLogger> Simulated(const std::string& model, const std::string& series = "",
                                                  const std::string& password = "", bool echo = false)
{
    LoggerConfig config;
    config.model = model;
    config.series = series;
    config.password = password;
    config.echo = echo;
    return std::make_shared<SimulatedLogger>(config);
}

} // namespace harvelop::test
