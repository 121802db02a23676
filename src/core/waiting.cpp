#include "core/waiting.h"

namespace harvelop
{

namespace
{
constexpr double SecondsOfDay = 86400.0;
constexpr double MsOfSecond = 1000.0;
} // namespace

void Waiting::WaitMs(double ms)
{
    double start = Timer();
    ServeEvents();
    const double length = ms / MsOfSecond;
    while (!m_end.Ended()) {
        double now = Timer();
        if (now < start)
            start -= SecondsOfDay;
        const double left = length - (now - start);
        if (left <= 0)
            break;
        m_pump.ServeFor(left * MsOfSecond);
    }
    ServeEvents();
}

void Waiting::ServeEvents()
{
    if (!m_end.Ended())
        m_pump.ServePending();
}

void Waiting::ServeFor(double ms)
{
    if (!m_end.Ended())
        m_pump.ServeFor(ms);
}

} // namespace harvelop
