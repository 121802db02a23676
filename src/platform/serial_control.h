// The one serial port of the program, as its link layer sees it.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace harvelop
{

// The error numbers of the port control that the program tells apart. 0 is success.
enum PortError : int {
    PortOk = 0,
    PortNoPermission = 70, // the user may not open the device; told once, with what to do
    PortAbsent = 8002,     // no such port on this machine
    PortBusy = 8005,       // another program holds it
    PortFailed = 8015,     // anything else
};

// `MSComm1`: property by property what the link layer uses. The settings made while the port is closed take effect at
// the next opening, those made while it is open at once. What a device can't do (a pseudo terminal has no parity and
// no modem lines) is passed over and never ends a link.
//
// Output is queued and leaves when events run next; received text arrives by `OnComm` when events run.
class SerialControl
{
public:
    virtual ~SerialControl() = default;

    virtual void CommPort(int port) = 0; // 1 to 16; takes effect at the next opening
    virtual int CommPort() const = 0;

    // Opens `CommPort`; an open port is closed first. Gives PortOk or the error number; a failure leaves it closed.
    virtual int Open() = 0;
    // What is queued leaves first, unless the device does not take it soon. Harmless on a closed port.
    virtual void Close() = 0;
    virtual bool PortOpen() const = 0;

    // After `Open` gave PortBusy: "minicom (process 1234)", or empty if the holder is not known.
    virtual std::string Holder() const = 0;
    // The device behind a port number, for messages: "/dev/ttyUSB0", or empty.
    virtual std::string DeviceName(int port) const = 0;

    virtual void
    Settings(const std::string& baudParityDataStop) = 0; // "9600,N,8,1"; a text it can't read changes nothing
    virtual std::string Settings() const = 0;            // at first "9600,N,8,1"
    virtual void Handshaking(int kind) = 0;              // 0 none, 1 XON/XOFF, 2 RTS/CTS
    virtual void RTSEnable(bool on) = 0;
    virtual void InBufferSize(int characters) = 0; // what the control holds at most before it makes the sender wait

    virtual int InBufferCount() const = 0;           // characters waiting in the control
    virtual void ClearInBuffer() = 0;                // `InBufferCount` = 0: drops what the control and the device hold
    virtual void ClearOutBuffer() = 0;               // `OutBufferCount` = 0: drops what has not left
    virtual void RThreshold(int count) = 0;          // 1: each arrival raises `OnComm`; 0: text stays in the control
    virtual std::string Input() = 0;                 // takes all that is waiting
    virtual void Output(std::string_view bytes) = 0; // nothing happens on a closed port

    int CommEvent = 0;            // kind of the latest event; 2: characters received
    std::function<void()> OnComm; // raised from the event pump only, never from within a call above
};

constexpr int CommEventReceived = 2;

} // namespace harvelop
