// The lines that tallysim puts up: those of a simulation file or of a trace.
#pragma once

#include "simulator/memory_file.h"
#include "simulator/replay_device.h"
#include "simulator/simulation_file.h"
#include "simulator/simulation_loop.h"
#include "simulator/simulation_report.h"
#include "simulator/trace_reader.h"

#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace harvelop
{

class Simulation
{
public:
    // Both put all lines up; false, and the reason in `Error`, if one cannot be had. Each is called once, and not both.
    bool Start(const SimulationFile& file, Passwords passwords);
    // A host stands on the TCP port that it had, if that is free, else on any. `tell` hears where the other side
    // departs from the trace.
    bool Replay(RecordedTrace trace, ReplayDevice::Pace pace, const std::function<void(const std::string&)>& tell);

private:
    std::unique_ptr<SimulatedDevice> recorded(std::unique_ptr<SimulatedDevice> device, const std::string& name,
                                              bool secret);
    std::unique_ptr<SimulatedDevice> makeLogger(const LoggerSetup& setup, const std::string& name);
    bool openRecords(const SimulationFile& file);
    bool addLogger(const LoggerSetup& setup, const std::string& name, Passwords passwords);
    bool addModem(const ModemSetup& setup);
    bool addRecorded(RecordedLine line, ReplayDevice::Pace pace, const std::function<void(const std::string&)>& tell);
    bool add(std::unique_ptr<SimulatedLine> line);

    std::ofstream m_transcript; // both outlive the devices that write to them
    std::optional<MemoryFile> m_memory;

public:
    SimulationLoop Loop;
    std::vector<PlacedLine> Lines; // of the loggers or the trace, then of the modem
    std::string Error;
};

} // namespace harvelop
