// A serial control in virtual time, with simulated devices plugged straight into its ports.
#pragma once

#include "platform/serial_control.h"
#include "simulator/simulated_device.h"
#include "support/virtual_pump.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace harvelop::test
{

// Ports that nothing was said about are absent. A device gets and gives characters only at its own speed.
class FakeSerial : public SerialControl
{
public:
    struct Port {
        int openError = PortOk;
        std::string speed;                         // "9600"; empty: any
        std::shared_ptr<SimulatedDevice> device{}; // none: a silent port
    };
    // One thing that happened on the wire or to the port, in order.
    struct Event {
        enum class Kind { Opened, Closed, Sent, Settings } kind;
        double ms; // when
        int port;
        std::string text; // what was sent, or the settings
    };

    explicit FakeSerial(VirtualPump& pump) : m_pump(pump) {}

    void Plug(int port, std::shared_ptr<SimulatedDevice> device, const std::string& speed)
    {
        ports[port] = {PortOk, speed, std::move(device)};
    }
    // Characters that arrive on the open port after `ms`.
    void Arrive(const std::string& text, double ms = 0)
    {
        m_pump.After(ms, [this, text] { arrive(text); });
    }
    // All that was sent, joined.
    std::string Sent() const
    {
        std::string all;
        for (const auto& event : events)
            if (event.kind == Event::Kind::Sent)
                all += event.text;
        return all;
    }

    void CommPort(int port) override { m_port = port; }
    int CommPort() const override { return m_port; }
    int Open() override
    {
        Close();
        const auto found = ports.find(m_port);
        if (found == ports.end())
            return PortAbsent;
        if (found->second.openError != PortOk)
            return found->second.openError;
        m_open = true;
        note(Event::Kind::Opened, m_settings);
        return PortOk;
    }
    void Close() override
    {
        flush();
        if (m_open)
            note(Event::Kind::Closed, "");
        m_open = false;
        m_in.clear();
    }
    bool PortOpen() const override { return m_open; }
    std::string Holder() const override { return holder; }
    std::string DeviceName(int port) const override { return "/dev/ttyS" + std::to_string(port - 1); }
    void Settings(const std::string& settings) override
    {
        m_settings = settings;
        note(Event::Kind::Settings, settings);
    }
    std::string Settings() const override { return m_settings; }
    void Handshaking(int kind) override { handshaking = kind; }
    void RTSEnable(bool on) override { rts = on; }
    void InBufferSize(int characters) override { inBufferSize = characters; }
    int InBufferCount() const override { return static_cast<int>(m_in.size()); }
    void ClearInBuffer() override { m_in.clear(); }
    void ClearOutBuffer() override { m_out.clear(); }
    void RThreshold(int count) override { threshold = count; }
    std::string Input() override { return std::exchange(m_in, {}); }
    void Output(std::string_view bytes) override
    {
        if (!m_open)
            return;
        m_out += bytes;
        m_pump.After(0, [this] { flush(); });
    }

    std::map<int, Port> ports;
    std::vector<Event> events;
    std::string holder;
    int handshaking = 0;
    int threshold = 0;
    int inBufferSize = 0;
    bool rts = false;

private:
    void note(Event::Kind kind, const std::string& text) { events.push_back({kind, m_pump.NowMs(), m_port, text}); }
    std::string speed() const { return m_settings.substr(0, m_settings.find(',')); }
    Port* reachable()
    {
        const auto found = ports.find(m_port);
        const bool same =
            m_open && found != ports.end() && (found->second.speed.empty() || found->second.speed == speed());
        return same && found->second.device ? &found->second : nullptr;
    }
    void flush()
    {
        if (m_out.empty() || !m_open)
            return;
        note(Event::Kind::Sent, m_out);
        const std::string bytes = std::exchange(m_out, {});
        if (Port* port = reachable()) {
            port->device->Receive(m_pump.NowMs(), bytes);
            await(port->device);
        }
    }
    void await(const std::shared_ptr<SimulatedDevice>& device)
    {
        const double due = device->NextDueMs();
        if (due == SimulatedDevice::Never)
            return;
        m_pump.After(std::max(0.0, due - m_pump.NowMs()), [this, device] {
            const std::string text = device->Transmit(m_pump.NowMs());
            Port* port = reachable();
            if (port && port->device == device && !text.empty())
                arrive(text);
            if (device->NextDueMs() > m_pump.NowMs())
                await(device);
        });
    }
    void arrive(const std::string& text)
    {
        if (!m_open)
            return;
        m_in += text;
        if (threshold > 0 && OnComm) {
            CommEvent = CommEventReceived;
            OnComm();
        }
    }

    VirtualPump& m_pump;
    bool m_open = false;
    int m_port = 1;
    std::string m_settings = "9600,N,8,1";
    std::string m_in;
    std::string m_out;
};

} // namespace harvelop::test
