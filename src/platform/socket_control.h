// TCP sockets, as the program uses them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace harvelop
{

// A member of `Winsock1`: connects once, and is never used for a second link. Events are raised from the event pump
// only, never from within a call; after Close none is raised any more.
class SocketControl
{
public:
    enum class Condition { Closed, Connecting, Connected };

    virtual ~SocketControl() = default;

    virtual void Connect(const std::string& host, int port) = 0; // returns at once; what comes of it is an event
    virtual void Close() = 0;                                    // what was sent leaves first, as far as it can at once
    virtual Condition State() const = 0;
    virtual void SendData(std::string_view bytes) = 0; // queued; nothing happens without a connection
    virtual std::string GetData() = 0; // takes all that has arrived; also what a peer sent before it closed

    std::function<void()> OnConnect;
    std::function<void()> OnDataArrival;
    std::function<void()> OnClose; // the peer has closed or reset the connection
    std::function<void(int number, const std::string& description)> OnError; // unknown host, refused, unreachable
};

class SocketMaker
{
public:
    virtual ~SocketMaker() = default;
    virtual std::unique_ptr<SocketControl> MakeSocket() = 0;
};

} // namespace harvelop
