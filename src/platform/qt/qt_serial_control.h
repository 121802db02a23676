// The serial control on QSerialPort.
#pragma once

#include "platform/qt/line_settings.h"
#include "platform/qt/port_claim.h"
#include "platform/serial_control.h"
#include "platform/settings_store.h"

#include <QObject>
#include <QSerialPort>

#include <string>

namespace harvelop
{

// Needs the application object. A port whose device vanishes closes by itself at the first sign of it: what the control
// held is gone then, and what is put out is dropped.
class QtSerialControl : public QObject, public SerialControl
{
public:
    // The settings tell which devices stand behind the port numbers.
    explicit QtSerialControl(const SettingsStore& settings);
    ~QtSerialControl() override;

    void CommPort(int port) override { m_commPort = port; }
    int CommPort() const override { return m_commPort; }

    int Open() override;
    void Close() override;
    bool PortOpen() const override { return m_port.isOpen(); }

    std::string Holder() const override { return m_claim.Holder(); }
    std::string DeviceName(int port) const override;

    void Settings(const std::string& baudParityDataStop) override;
    std::string Settings() const override { return m_settingsText; }
    void Handshaking(int kind) override;
    void RTSEnable(bool on) override;
    void InBufferSize(int characters) override;

    int InBufferCount() const override { return static_cast<int>(m_port.bytesAvailable()); }
    void ClearInBuffer() override;
    void ClearOutBuffer() override;
    void RThreshold(int count) override;
    std::string Input() override;
    void Output(std::string_view bytes) override;

private:
    int openError();
    void applyLine();
    void applyFlow();
    void resumeByXonOnly();
    void takeArrival();
    void takeError(QSerialPort::SerialPortError error);
    void sendQueued();
    bool writeQueued();
    bool drain();
    bool isSending() const;

    const SettingsStore& m_store;
    QSerialPort m_port;
    PortClaim m_claim;
    int m_commPort = 1;
    std::string m_settingsText = "9600,N,8,1";
    LineSettings m_line;
    int m_handshaking = 0;
    bool m_rts = false;
    int m_inBufferSize = 1024;
    int m_threshold = 0;
    std::string m_out; // waits for the next run of events
};

} // namespace harvelop
