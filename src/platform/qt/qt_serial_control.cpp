#include "platform/qt/qt_serial_control.h"

#include "platform/qt/com_port_names.h"

#include <QAbstractEventDispatcher>
#include <QSignalBlocker>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace harvelop
{

namespace
{

QSerialPort::Parity ParityOf(char letter)
{
    switch (letter) {
    case 'E':
        return QSerialPort::EvenParity;
    case 'O':
        return QSerialPort::OddParity;
    case 'M':
        return QSerialPort::MarkParity;
    case 'S':
        return QSerialPort::SpaceParity;
    default:
        return QSerialPort::NoParity;
    }
}

QSerialPort::StopBits StopBitsOf(StopBits bits)
{
    switch (bits) {
    case StopBits::OneAndHalf:
        return QSerialPort::OneAndHalfStop;
    case StopBits::Two:
        return QSerialPort::TwoStop;
    case StopBits::One:
        break;
    }
    return QSerialPort::OneStop;
}

QSerialPort::FlowControl FlowControlOf(int handshaking)
{
    switch (handshaking) {
    case 1:
        return QSerialPort::SoftwareControl;
    case 2:
        return QSerialPort::HardwareControl;
    default:
        return QSerialPort::NoFlowControl;
    }
}

} // namespace

QtSerialControl::QtSerialControl(const SettingsStore& settings) : m_store(settings)
{
    m_port.setReadBufferSize(m_inBufferSize);
    connect(&m_port, &QSerialPort::readyRead, this, [this] { takeArrival(); });
    connect(&m_port, &QSerialPort::errorOccurred, this, [this](auto error) { takeError(error); });
    // At the start of each pass, and once more before it sleeps for what its own events have put out.
    const auto* dispatcher = QAbstractEventDispatcher::instance();
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] { sendQueued(); });
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] { sendQueued(); });
}

QtSerialControl::~QtSerialControl()
{
    Close();
}

int QtSerialControl::Open()
{
    Close();
    const int claimed = m_claim.Take(DeviceName(m_commPort));
    if (claimed != PortOk)
        return claimed;
    m_port.setPortName(QString::fromStdString(m_claim.Device()));
    // What every device can do comes first: a setting that is refused would keep the port from opening.
    m_port.setParity(QSerialPort::NoParity);
    m_port.setDataBits(QSerialPort::Data8);
    m_port.setStopBits(QSerialPort::OneStop);
    m_port.setFlowControl(QSerialPort::NoFlowControl);
    m_port.setBaudRate(m_line.baud);
    if (!m_port.open(QIODevice::ReadWrite)) {
        m_claim.Release();
        return openError();
    }
    // Lock file and claim keep others out and end with this program. This mark of QSerialPort's would outlive a killed
    // one for as long as anybody else has the device open.
    ioctl(static_cast<int>(m_port.handle()), TIOCNXCL);
    applyLine();
    applyFlow();
    m_port.clear(QSerialPort::Input); // what was sent before the opening may still be under way
    return m_port.isOpen() ? PortOk : PortAbsent;
}

// The device itself could be opened by the claim, so what is left is QSerialPort's own lock file, or a device that went
// away in between.
int QtSerialControl::openError()
{
    switch (m_port.error()) {
    case QSerialPort::DeviceNotFoundError:
        return PortAbsent;
    case QSerialPort::PermissionError:
        return m_claim.LockRefused();
    default:
        return PortFailed;
    }
}

void QtSerialControl::Close()
{
    if (m_port.isOpen()) {
        const QSignalBlocker quiet(m_port); // a failure or an arrival now must not come back in here
        // The system would go on sending what is left, and hold the program up while the other side doesn't take it.
        if (!drain())
            tcflush(m_port.handle(), TCOFLUSH);
        m_port.close();
    }
    m_out.clear();
    m_claim.Release();
}

// Gives what is queued the time to leave, without serving events; the closing puts the former speed back, which would
// garble it. True if all of it has left.
bool QtSerialControl::drain()
{
    constexpr std::chrono::milliseconds Longest(250);
    constexpr std::chrono::milliseconds Pause(1);
    const auto end = std::chrono::steady_clock::now() + Longest;
    bool alive = writeQueued();
    while (alive && isSending() && std::chrono::steady_clock::now() < end) {
        pollfd device{static_cast<int>(m_port.handle()), POLLOUT, 0};
        if (m_port.bytesToWrite() > 0 && poll(&device, 1, 0) == 1)
            alive = m_port.flush();
        else
            std::this_thread::sleep_for(Pause);
    }
    return alive && !isSending();
}

// A device that can't tell how much it still holds counts as done.
bool QtSerialControl::isSending() const
{
    const auto handle = static_cast<int>(m_port.handle());
    int waiting = 0;
    int line = 0;
    if (ioctl(handle, TIOCOUTQ, &waiting) != 0)
        waiting = 0;
    const bool inTransmitter = ioctl(handle, TIOCSERGETLSR, &line) == 0 && !(line & TIOCSER_TEMT);
    return m_port.bytesToWrite() > 0 || waiting > 0 || inTransmitter;
}

std::string QtSerialControl::DeviceName(int port) const
{
    return ComPortDevice(port, m_store);
}

void QtSerialControl::Settings(const std::string& baudParityDataStop)
{
    const auto line = ReadLineSettings(baudParityDataStop);
    if (!line)
        return;
    m_line = *line;
    m_settingsText = baudParityDataStop;
    applyLine();
}

void QtSerialControl::Handshaking(int kind)
{
    m_handshaking = kind;
    applyFlow();
}

void QtSerialControl::RTSEnable(bool on)
{
    m_rts = on;
    applyFlow();
}

void QtSerialControl::InBufferSize(int characters)
{
    m_inBufferSize = std::max(1, characters);
    m_port.setReadBufferSize(m_inBufferSize);
}

// The speed comes last: it is the one setting that every device takes, and must not be lost with one that is refused.
void QtSerialControl::applyLine()
{
    if (!m_port.isOpen())
        return;
    m_port.setParity(ParityOf(m_line.parity));
    m_port.setDataBits(static_cast<QSerialPort::DataBits>(m_line.dataBits));
    m_port.setStopBits(StopBitsOf(m_line.stopBits));
    m_port.setBaudRate(m_line.baud);
}

void QtSerialControl::applyFlow()
{
    if (!m_port.isOpen())
        return;
    m_port.setFlowControl(FlowControlOf(m_handshaking));
    resumeByXonOnly();
    if (m_port.flowControl() != QSerialPort::HardwareControl) // there the line is the driver's
        m_port.setRequestToSend(m_rts);
}

// QSerialPort lets any character end an XOFF.
void QtSerialControl::resumeByXonOnly()
{
    const auto handle = static_cast<int>(m_port.handle());
    termios line{};
    if (tcgetattr(handle, &line) != 0 || !(line.c_iflag & IXANY))
        return;
    line.c_iflag &= ~static_cast<tcflag_t>(IXANY);
    tcsetattr(handle, TCSANOW, &line);
}

void QtSerialControl::ClearInBuffer()
{
    if (!m_port.isOpen())
        return;
    m_port.clear(QSerialPort::Input);
    // A full buffer had stopped the reading, and clearing alone does not start it again; this does.
    m_port.setReadBufferSize(m_inBufferSize);
}

void QtSerialControl::ClearOutBuffer()
{
    m_out.clear();
    if (m_port.isOpen())
        m_port.clear(QSerialPort::Output);
}

void QtSerialControl::RThreshold(int count)
{
    m_threshold = count;
    // While text was held back the buffer may have filled up: then no arrival would ever tell of it.
    if (count > 0 && InBufferCount() >= m_inBufferSize)
        QMetaObject::invokeMethod(
            this, [this] { takeArrival(); }, Qt::QueuedConnection);
}

std::string QtSerialControl::Input()
{
    std::string text(static_cast<size_t>(InBufferCount()), '\0');
    const qint64 taken = text.empty() ? 0 : m_port.read(text.data(), static_cast<qint64>(text.size()));
    text.resize(static_cast<size_t>(std::max<qint64>(taken, 0)));
    return text;
}

void QtSerialControl::Output(std::string_view bytes)
{
    if (m_port.isOpen())
        m_out += bytes;
}

void QtSerialControl::takeArrival()
{
    if (m_threshold <= 0 || InBufferCount() < m_threshold || !OnComm)
        return;
    CommEvent = CommEventReceived;
    OnComm();
}

// A vanished device goes on reporting without end, so the first report closes the port. What a device merely can't do
// is passed over.
void QtSerialControl::takeError(QSerialPort::SerialPortError error)
{
    if (error == QSerialPort::ResourceError || error == QSerialPort::ReadError || error == QSerialPort::WriteError)
        Close();
}

void QtSerialControl::sendQueued()
{
    if (!writeQueued())
        Close();
}

// Straight to the device, which spares a round through the event loop for every command; QSerialPort gets only what the
// device does not take at once. False if the device is gone.
bool QtSerialControl::writeQueued()
{
    if (m_out.empty())
        return true;
    const std::string bytes = std::exchange(m_out, {});
    size_t sent = 0;
    if (m_port.bytesToWrite() == 0) {
        const ssize_t written = ::write(static_cast<int>(m_port.handle()), bytes.data(), bytes.size());
        if (written < 0 && errno != EAGAIN && errno != EINTR)
            return false;
        sent = static_cast<size_t>(std::max<ssize_t>(written, 0));
    }
    if (sent < bytes.size())
        m_port.write(bytes.data() + sent, static_cast<qint64>(bytes.size() - sent));
    return true;
}

} // namespace harvelop
