// The sockets of a program whose links are traced.
#pragma once

#include "platform/socket_control.h"
#include "trace/link_trace.h"

namespace harvelop
{

// Each socket passes everything on to one of `sockets`, which must outlive it, and writes down what the program sees of
// it.
class TracedSockets : public SocketMaker
{
public:
    TracedSockets(SocketMaker& sockets, LinkTrace& trace) : m_sockets(sockets), m_trace(trace) {}
    std::unique_ptr<SocketControl> MakeSocket() override;

private:
    SocketMaker& m_sockets;
    LinkTrace& m_trace;
    int m_made = 0;
};

} // namespace harvelop
