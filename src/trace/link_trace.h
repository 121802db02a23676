// What the traced port and sockets of one program share: the file, the clock, and the passwords that are known.
#pragma once

#include "platform/event_pump.h"
#include "trace/trace_file.h"
#include "trace/trace_mask.h"

#include <functional>
#include <string>
#include <string_view>

namespace harvelop
{

class LinkTrace
{
public:
    LinkTrace(const EventPump& clock, TraceFile& file) : m_clock(clock), m_file(file) {}
    LinkTrace(const LinkTrace&) = delete;
    LinkTrace& operator=(const LinkTrace&) = delete;

    TraceSecrets Secrets;
    // Asked before anything of a link is looked at: teaches `Secrets` the passwords that the program holds at present.
    std::function<void()> Gather;

    double Now() const { return m_clock.Timer(); }
    void Write(const TraceEntry& entry) { m_file.Write(m_format.Line(entry)); }

private:
    const EventPump& m_clock;
    TraceFile& m_file;
    TraceFormat m_format;
};

// One link after another over the same port, or one socket: what happens to it, as it happens.
class TracedLink
{
public:
    explicit TracedLink(LinkTrace& trace);
    ~TracedLink() { m_mask.Flush(); }
    TracedLink(const TracedLink&) = delete;
    TracedLink& operator=(const TracedLink&) = delete;

    void Begin(const std::string& name, PasswordWatch::Line line); // "com3"; what is noted from now on is of this link
    void Note(const std::string& kind, const std::string& text = {});
    void Pass(const std::string& kind, std::string_view characters); // "out", "in" or "drop"; none are passed over
    void End(const std::string& kind,
             const std::string& text = {}); // as Note, and nothing more comes of what has passed

private:
    LinkTrace& m_trace;
    TraceMask m_mask;
    std::string m_name;
};

} // namespace harvelop
