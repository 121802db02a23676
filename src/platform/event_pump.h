// Time and events: all that waiting rests on.
#pragma once

namespace harvelop
{

class EventPump
{
public:
    virtual ~EventPump() = default;

    // Seconds since midnight, 0 to 86400, with a resolution far below a millisecond. Steady but for the fall of 86400
    // at midnight: setting the machine's clock does not move it.
    virtual double Timer() const = 0;

    // Serves everything that is pending: received text, clicks, timers, window closes. Never blocks.
    virtual void ServePending() = 0;

    // Blocks until some event was served or `ms` milliseconds have gone. May return early; callers look again.
    virtual void ServeFor(double ms) = 0;
};

} // namespace harvelop
