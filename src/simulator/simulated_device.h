// What stands at the far end of a simulated line: a plain state machine with no input or output of its own.
#pragma once

#include <limits>
#include <string>
#include <string_view>

namespace harvelop
{

// Times are milliseconds on any clock that only rises; the caller brings it along.
class SimulatedDevice
{
public:
    static constexpr double Never = std::numeric_limits<double>::infinity();

    virtual ~SimulatedDevice() = default;

    // Characters arrive from the line at `nowMs`.
    virtual void Receive(double nowMs, std::string_view bytes) = 0;

    // Takes what the device has sent by `nowMs`; may be empty.
    virtual std::string Transmit(double nowMs) = 0;

    // When it will next have something to send; Never if only input can make it.
    virtual double NextDueMs() const = 0;

    // Somebody has opened the line, or closed it.
    virtual void Opened(double /*nowMs*/) {}
    virtual void Closed() {}

    // False once the device has dropped the line, as if its cable had been pulled out.
    virtual bool OnLine() const { return true; }

    // Whether it has only hung up then, and is on line again as soon as somebody opens the line.
    virtual bool TakesNextCaller() const { return false; }
};

} // namespace harvelop
