#include "trace/traced_serial.h"

namespace harvelop
{

namespace
{

std::string errorText(int number, const std::string& holder)
{
    switch (number) {
    case PortNoPermission:
        return "no permission";
    case PortAbsent:
        return "no such port";
    case PortBusy:
        return "in use" + (holder.empty() ? "" : " by " + holder);
    default:
        return "cannot be opened";
    }
}

} // namespace

TracedSerial::TracedSerial(SerialControl& port, LinkTrace& trace) : m_port(port), m_link(trace)
{
    m_port.OnComm = [this] {
        CommEvent = m_port.CommEvent;
        if (OnComm)
            OnComm();
    };
}

TracedSerial::~TracedSerial()
{
    m_port.OnComm = nullptr;
    if (m_open)
        m_link.End("close"); // as the control itself ends next
}

int TracedSerial::Open()
{
    Close();
    const int number = CommPort();
    const int error = m_port.Open();
    m_link.Begin("com" + std::to_string(number), PasswordWatch::Line::ComPort);
    m_open = error == PortOk;
    if (m_open)
        m_link.Note("open", settingsText() + " " + QuotedForTrace(DeviceName(number)));
    else
        m_link.End("error",
                   std::to_string(error) + " " + QuotedForTrace(errorText(error, error == PortBusy ? Holder() : "")));
    return error;
}

void TracedSerial::Close()
{
    noticeLoss();
    if (m_open)
        noteDropped();
    m_port.Close();
    if (m_open)
        m_link.End("close");
    m_open = false;
}

void TracedSerial::Settings(const std::string& baudParityDataStop)
{
    const std::string before = settingsText();
    m_port.Settings(baudParityDataStop);
    noteSettings(before);
}

void TracedSerial::Handshaking(int kind)
{
    const std::string before = settingsText();
    m_handshaking = kind;
    m_port.Handshaking(kind);
    noteSettings(before);
}

std::string TracedSerial::settingsText() const
{
    return QuotedForTrace(m_port.Settings()) + " " + std::to_string(m_handshaking);
}

void TracedSerial::noteSettings(const std::string& before)
{
    noticeLoss();
    if (m_open && settingsText() != before)
        m_link.Note("set", settingsText());
}

void TracedSerial::ClearInBuffer()
{
    noticeLoss();
    if (m_open)
        noteDropped();
    m_port.ClearInBuffer();
}

void TracedSerial::noteDropped()
{
    if (m_port.InBufferCount() > 0)
        m_link.Pass("drop", m_port.Input());
}

void TracedSerial::ClearOutBuffer()
{
    noticeLoss();
    if (m_open)
        m_link.Note("unsent");
    m_port.ClearOutBuffer();
}

std::string TracedSerial::Input()
{
    std::string text = m_port.Input();
    m_link.Pass("in", text);
    noticeLoss();
    return text;
}

void TracedSerial::Output(std::string_view bytes)
{
    noticeLoss();
    if (m_open)
        m_link.Pass("out", bytes);
    m_port.Output(bytes);
}

void TracedSerial::noticeLoss()
{
    if (!m_open || m_port.PortOpen())
        return;
    m_open = false;
    m_link.End("lost");
}

} // namespace harvelop
