// Sockets in virtual time, with simulated devices behind host names.
#pragma once

#include "platform/socket_control.h"
#include "simulator/simulated_device.h"
#include "support/virtual_pump.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace harvelop::test
{

class FakeSocket;

// Places that nothing was said about refuse. What was sent and done is written down in order.
class FakeSockets : public SocketMaker
{
public:
    explicit FakeSockets(VirtualPump& pump) : m_pump(pump) {}
    ~FakeSockets() override { *m_alive = false; }

    struct Place {
        std::shared_ptr<SimulatedDevice> device{}; // none: accepts and is silent
        bool answers = true;                       // false: neither accepts nor refuses
        bool atOnce = false;                       // the connection stands before its event comes
    };

    void Plug(const std::string& host, int port, std::shared_ptr<SimulatedDevice> device)
    {
        places[host + ":" + std::to_string(port)] = {std::move(device), true};
    }
    std::unique_ptr<SocketControl> MakeSocket() override;

    std::map<std::string, Place> places; // "host:port"
    std::vector<std::string> steps;      // "1 connect host:port", "1 send text", "1 close"
    std::vector<FakeSocket*> made;       // a socket that is gone is nullptr

private:
    friend class FakeSocket;
    VirtualPump& m_pump;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

class FakeSocket : public SocketControl
{
public:
    FakeSocket(FakeSockets& sockets, size_t number) : m_sockets(sockets), m_number(number) {}
    ~FakeSocket() override
    {
        *m_alive = false;
        if (*m_socketsAlive)
            m_sockets.made[m_number - 1] = nullptr;
    }

    void Connect(const std::string& host, int port) override
    {
        const std::string place = host + ":" + std::to_string(port);
        note("connect " + place);
        m_state = Condition::Connecting;
        const auto found = m_sockets.places.find(place);
        if (found != m_sockets.places.end() && !found->second.answers)
            return;
        const bool there = found != m_sockets.places.end();
        m_device = there ? found->second.device : nullptr;
        if (there && found->second.atOnce)
            m_state = Condition::Connected;
        later(1, [this, there] {
            m_state = there ? Condition::Connected : Condition::Closed;
            if (m_device)
                m_device->Opened(m_sockets.m_pump.NowMs());
            later(0, [this] { serve(); }); // a server speaks first
            if (there && OnConnect)
                OnConnect();
            else if (!there && OnError)
                OnError(10061, "Connection refused");
        });
    }
    void Close() override
    {
        if (m_state != Condition::Closed)
            note("close");
        m_state = Condition::Closed;
        m_closed = true;
    }
    Condition State() const override { return m_state; }
    void SendData(std::string_view bytes) override
    {
        if (m_state != Condition::Connected)
            return;
        note("send " + std::string(bytes));
        later(0, [this, text = std::string(bytes)] {
            if (m_device)
                m_device->Receive(m_sockets.m_pump.NowMs(), text);
            serve();
        });
    }
    std::string GetData() override { return std::exchange(m_in, {}); }

    // What the far end does.
    void Arrive(const std::string& text)
    {
        later(0, [this, text] { take(text); });
    }
    void Fails(int number, const std::string& description)
    {
        later(0, [this, number, description] {
            m_state = Condition::Closed;
            if (OnError)
                OnError(number, description);
        });
    }
    void PeerCloses()
    {
        later(0, [this] {
            m_state = Condition::Closed;
            if (OnClose)
                OnClose();
        });
    }

private:
    void note(const std::string& step) { m_sockets.steps.push_back(std::to_string(m_number) + " " + step); }
    void later(double ms, std::function<void()> work)
    {
        m_sockets.m_pump.After(ms, [this, alive = m_alive, work = std::move(work)] {
            if (*alive && !m_closed)
                work();
        });
    }
    void take(const std::string& text)
    {
        m_in += text;
        if (!text.empty() && OnDataArrival)
            OnDataArrival();
    }
    void serve()
    {
        if (!m_device || m_state != Condition::Connected)
            return;
        take(m_device->Transmit(m_sockets.m_pump.NowMs()));
        if (!m_device->OnLine()) {
            PeerCloses();
            return;
        }
        const double due = m_device->NextDueMs();
        if (due != SimulatedDevice::Never)
            later(std::max(0.0, due - m_sockets.m_pump.NowMs()), [this] { serve(); });
    }

    FakeSockets& m_sockets;
    size_t m_number;
    Condition m_state = Condition::Closed;
    bool m_closed = false;
    std::shared_ptr<SimulatedDevice> m_device;
    std::string m_in;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
    std::shared_ptr<bool> m_socketsAlive = m_sockets.m_alive;
};

inline std::unique_ptr<SocketControl> FakeSockets::MakeSocket()
{
    auto socket = std::make_unique<FakeSocket>(*this, made.size() + 1);
    made.push_back(socket.get());
    return socket;
}

} // namespace harvelop::test
