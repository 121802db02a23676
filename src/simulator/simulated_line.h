// A real line of this machine with a simulated device at its far end.
#pragma once

#include <poll.h>
#include <string>
#include <vector>

namespace harvelop
{

// Waits for nothing by itself: a SimulationLoop waits for all lines at once and lets each serve what concerns it.
class SimulatedLine
{
public:
    // What nobody takes off a line is kept up to here; what comes after that is lost, as in a real line's buffer.
    static constexpr std::size_t MostUnsent = 65536;

    virtual ~SimulatedLine() = default;

    // Where it can be reached: a device path, or address:port.
    virtual std::string Place() const = 0;

    // What it waits for; none once the device has dropped the line.
    virtual std::vector<pollfd> Waits() const = 0;

    // When the device will have something to send by itself; SimulatedDevice::Never if only input can make it.
    virtual double NextDueMs() const = 0;

    // Takes what has come and sends what is due. Never blocks.
    virtual void Serve(double nowMs) = 0;
};

} // namespace harvelop
