#include "simulator/simulation.h"

#include "simulator/pty_line.h"
#include "simulator/recorded_device.h"
#include "simulator/simulated_logger.h"
#include "simulator/simulated_modem.h"
#include "simulator/tcp_line.h"

#include <algorithm>
#include <utility>

namespace harvelop
{

bool Simulation::Start(const SimulationFile& file, Passwords passwords)
{
    if (!openRecords(file))
        return false;
    for (std::size_t i = 0; i < file.loggers.size(); ++i)
        if (!addLogger(file.loggers[i], "logger " + std::to_string(i + 1), passwords))
            return false;
    return !file.modem || addModem(*file.modem);
}

// What is written down beside the simulation.
bool Simulation::openRecords(const SimulationFile& file)
{
    if (!file.transcript.empty()) {
        m_transcript.open(file.transcript, std::ios::app);
        if (!m_transcript)
            Error = "cannot write " + file.transcript;
    }
    if (!file.memory.empty()) {
        m_memory.emplace(file.memory);
        if (!m_memory->Write())
            Error = "cannot write " + file.memory;
    }
    return Error.empty();
}

// Passwords are not written down.
std::unique_ptr<SimulatedDevice> Simulation::recorded(std::unique_ptr<SimulatedDevice> device, const std::string& name,
                                                      bool secret)
{
    if (secret || !m_transcript.is_open())
        return device;
    return std::make_unique<RecordedDevice>(std::move(device), name, m_transcript);
}

std::unique_ptr<SimulatedDevice> Simulation::makeLogger(const LoggerSetup& setup, const std::string& name)
{
    const bool secret = !setup.logger.password.empty();
    auto logger = std::make_unique<SimulatedLogger>(setup.logger);
    if (m_memory)
        return recorded(std::make_unique<WatchedLogger>(std::move(logger), name, *m_memory), name, secret);
    return recorded(std::move(logger), name, secret);
}

bool Simulation::addLogger(const LoggerSetup& setup, const std::string& name, Passwords passwords)
{
    auto logger = makeLogger(setup, name);
    const auto baud = static_cast<unsigned>(setup.logger.baud);
    const bool added = setup.IsTcp() ? add(TcpLine::Open(std::move(logger), setup.tcpPort, Error))
                                     : add(PtyLine::Open(std::move(logger), baud, setup.link, Error));
    if (added)
        Lines.push_back(DescribeLogger(setup, Loop.Lines().back()->Place(), passwords));
    return added;
}

bool Simulation::addModem(const ModemSetup& setup)
{
    PhoneBook book;
    bool secret = false; // what passes the modem
    for (const auto& [number, logger] : setup.phoneBook) {
        book[number] = makeLogger(logger, "number " + number);
        secret = secret || !logger.logger.password.empty();
    }
    auto modem = recorded(std::make_unique<SimulatedModem>(setup.modem, std::move(book)), "modem", secret);
    if (!add(PtyLine::Open(std::move(modem), static_cast<unsigned>(setup.modem.baud), setup.link, Error)))
        return false;
    Lines.push_back(DescribeModem(setup, Loop.Lines().back()->Place()));
    return true;
}

bool Simulation::Replay(RecordedTrace trace, ReplayDevice::Pace pace,
                        const std::function<void(const std::string&)>& tell)
{
    return std::ranges::all_of(trace.lines,
                               [&](RecordedLine& line) { return addRecorded(std::move(line), pace, tell); });
}

bool Simulation::addRecorded(RecordedLine line, ReplayDevice::Pace pace,
                             const std::function<void(const std::string&)>& tell)
{
    const bool isTcp = line.com == 0;
    const std::string name = isTcp ? line.host : "com" + std::to_string(line.com);
    const auto makeDevice = [&] {
        const auto openings = isTcp ? ReplayDevice::Openings::Exact : ReplayDevice::Openings::Vague;
        auto device = std::make_unique<ReplayDevice>(line, openings, pace);
        device->Tell = [tell, name](const std::string& text) { tell(name + ": " + text); };
        return device;
    };
    std::unique_ptr<SimulatedLine> opened;
    if (!isTcp)
        opened = PtyLine::Open(makeDevice(), line.baud, {}, Error);
    else if (!(opened = TcpLine::Open(makeDevice(), line.tcpPort, Error)))
        opened = TcpLine::Open(makeDevice(), 0, Error);
    if (!add(std::move(opened)))
        return false;
    Lines.push_back(DescribeRecorded(line, Loop.Lines().back()->Place()));
    return true;
}

// A line that could be had makes what was wrong before it no matter.
bool Simulation::add(std::unique_ptr<SimulatedLine> line)
{
    if (!line)
        return false;
    Error.clear();
    Loop.Add(std::move(line));
    return true;
}

} // namespace harvelop
