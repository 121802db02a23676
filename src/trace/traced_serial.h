// The serial port of a program whose links are traced.
#pragma once

#include "platform/serial_control.h"
#include "trace/link_trace.h"

namespace harvelop
{

// Passes everything on to `port`, which must outlive it, and writes down what the program sees of it. What a device
// still held when its input was cleared is nobody's, and not in the trace.
class TracedSerial : public SerialControl
{
public:
    TracedSerial(SerialControl& port, LinkTrace& trace);
    ~TracedSerial() override;
    TracedSerial(const TracedSerial&) = delete;
    TracedSerial& operator=(const TracedSerial&) = delete;

    void CommPort(int number) override { m_port.CommPort(number); }
    int CommPort() const override { return m_port.CommPort(); }
    int Open() override;
    void Close() override;
    bool PortOpen() const override { return m_port.PortOpen(); }
    std::string Holder() const override { return m_port.Holder(); }
    std::string DeviceName(int number) const override { return m_port.DeviceName(number); }

    void Settings(const std::string& baudParityDataStop) override;
    std::string Settings() const override { return m_port.Settings(); }
    void Handshaking(int kind) override;
    void RTSEnable(bool on) override { m_port.RTSEnable(on); }
    void InBufferSize(int characters) override { m_port.InBufferSize(characters); }

    int InBufferCount() const override { return m_port.InBufferCount(); }
    void ClearInBuffer() override;
    void ClearOutBuffer() override;
    void RThreshold(int count) override { m_port.RThreshold(count); }
    std::string Input() override;
    void Output(std::string_view bytes) override;

private:
    std::string settingsText() const;
    void noteSettings(const std::string& before);
    void noteDropped();
    void noticeLoss(); // the control tells nobody that it has closed itself

    SerialControl& m_port;
    TracedLink m_link;
    int m_handshaking = 0;
    bool m_open = false; // as far as the trace has told
};

} // namespace harvelop
