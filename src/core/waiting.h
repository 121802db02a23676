// The waiting primitive on which all timing rests.
#pragma once

#include "core/program_end.h"
#include "platform/event_pump.h"

namespace harvelop
{

// Every wait serves received data, clicks, timers and window closes at once, and sleeps while there are none. So any
// wait is a point at which handlers run nested: after it, look up again what may be gone.
class Waiting
{
public:
    Waiting(EventPump& pump, const ProgramEnd& end) : m_pump(pump), m_end(end) {}

    // Waits `ms` milliseconds, across midnight too. Returns at once when the program has ended.
    void WaitMs(double ms);

    // Lets pending events run once.
    void ServeEvents();

    // Blocks until an event was served or `ms` have gone; nothing after the end.
    void ServeFor(double ms);

    double Timer() const { return m_pump.Timer(); } // seconds since midnight
    bool Ended() const { return m_end.Ended(); }

private:
    EventPump& m_pump;
    const ProgramEnd& m_end;
};

} // namespace harvelop
