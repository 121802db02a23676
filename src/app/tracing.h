// Traces the links of a program, if that is asked for.
#pragma once

#include "app/program.h"
#include "trace/traced_dialogs.h"
#include "trace/traced_serial.h"
#include "trace/traced_sockets.h"

#include <functional>
#include <optional>
#include <string>

namespace harvelop
{

// The trace that an environment asks for: HARVELOP_TRACE, or empty.
std::string TraceOfEnvironment();

// Must outlive the program that it is handed to. Without a trace it stands between nothing and nothing.
class Tracing
{
public:
    // `path` is the file of the trace, empty: none. `program` names it in there. `complain` is told, once, that the
    // file cannot be written; the program works on without it.
    Tracing(const std::string& path, const std::string& program, const Platform& outside,
            std::function<void(const std::string&)> complain);

    // What the program is to be built on.
    Platform Inside();

    // From now on no password that `program` holds is written.
    void Watch(const Program& program);

private:
    struct Parts {
        Parts(const Platform& outside, std::function<void(const std::string&)> complain);
        TraceFile file;
        LinkTrace trace;
        TracedSerial serial;
        TracedSockets sockets;
        TracedDialogs dialogs;
    };

    Platform m_outside;
    std::optional<Parts> m_parts;
};

} // namespace harvelop
