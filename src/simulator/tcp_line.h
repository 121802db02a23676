// A simulated device on a TCP port of the loopback, as a logger behind its own network port is reached.
#pragma once

#include "simulator/file_handle.h"
#include "simulator/simulated_device.h"
#include "simulator/simulated_line.h"

#include <memory>
#include <string>

namespace harvelop
{

// One client at a time: another one is turned away at once. Clients may come and go any number of times. When the
// device drops the line, its client is cut off, and no other is let in if the device does not take the next caller.
class TcpLine : public SimulatedLine
{
public:
    // `port` 0 takes any free one. None and the reason in `error` if the port cannot be had.
    static std::unique_ptr<TcpLine> Open(std::unique_ptr<SimulatedDevice> device, int port, std::string& error);

    std::string Place() const override { return m_place; }
    std::vector<pollfd> Waits() const override;
    double NextDueMs() const override;
    void Serve(double nowMs) override;

private:
    explicit TcpLine(std::unique_ptr<SimulatedDevice> device) : m_device(std::move(device)) {}

    bool listenOn(int port);
    void admitClient(double nowMs);
    void readInput(double nowMs);
    void writeOutput(double nowMs);
    void dropClient();

    std::unique_ptr<SimulatedDevice> m_device;
    std::string m_place;
    LineHandle m_listener;
    LineHandle m_client;
    std::string m_unsent;
};

} // namespace harvelop
