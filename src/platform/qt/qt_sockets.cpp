#include "platform/qt/qt_sockets.h"

#include <QTcpSocket>

namespace harvelop
{

namespace
{

constexpr qint64 LargestBlock = 262144; // bytes; what comes faster waits, so that other events have their turn

// Its slots come from the event loop only, as each is queued; one that is still queued when the socket is closed is
// dropped.
class QtSocketControl : public QObject, public SocketControl
{
public:
    QtSocketControl()
    {
        m_socket.setReadBufferSize(LargestBlock);
        connect(&m_socket, &QTcpSocket::connected, this, [this] {
            m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        }); // before, it may have no effect
        connect(
            &m_socket, &QTcpSocket::connected, this, [this] { raise(OnConnect); }, Qt::QueuedConnection);
        connect(
            &m_socket, &QTcpSocket::readyRead, this, [this] { raise(OnDataArrival); }, Qt::QueuedConnection);
        connect(
            &m_socket, &QTcpSocket::disconnected, this, [this] { raise(OnClose); }, Qt::QueuedConnection);
        connect(
            &m_socket, &QTcpSocket::errorOccurred, this,
            [this](QAbstractSocket::SocketError error) {
                if (!m_closed && OnError && error != QAbstractSocket::RemoteHostClosedError)
                    OnError(error, m_socket.errorString().toStdString());
            },
            Qt::QueuedConnection);
    }

    void Connect(const std::string& host, int port) override
    {
        m_socket.connectToHost(QString::fromStdString(host), static_cast<quint16>(port));
    }
    void Close() override
    {
        m_closed = true;
        m_socket.flush();
        m_socket.abort();
    }
    Condition State() const override
    {
        switch (m_socket.state()) {
        case QAbstractSocket::ConnectedState:
            return Condition::Connected;
        case QAbstractSocket::HostLookupState:
        case QAbstractSocket::ConnectingState:
            return Condition::Connecting;
        default:
            return Condition::Closed;
        }
    }
    void SendData(std::string_view bytes) override
    {
        if (m_socket.state() != QAbstractSocket::ConnectedState)
            return;
        m_socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
        m_socket.flush(); // spares a round through the event loop for every command
    }
    std::string GetData() override { return m_socket.readAll().toStdString(); }

private:
    void raise(const std::function<void()>& event)
    {
        if (!m_closed && event)
            event();
    }

    QTcpSocket m_socket;
    bool m_closed = false;
};

} // namespace

std::unique_ptr<SocketControl> QtSockets::MakeSocket()
{
    return std::make_unique<QtSocketControl>();
}

} // namespace harvelop
