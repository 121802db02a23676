#include "trace/traced_sockets.h"

#include <utility>

namespace harvelop
{

namespace
{

class TracedSocket : public SocketControl
{
public:
    TracedSocket(std::unique_ptr<SocketControl> socket, LinkTrace& trace, std::string name)
        : m_socket(std::move(socket)), m_link(trace), m_name(std::move(name))
    {
        m_socket->OnConnect = [this] {
            m_link.Note("connected");
            if (OnConnect)
                OnConnect();
        };
        m_socket->OnDataArrival = [this] {
            if (OnDataArrival)
                OnDataArrival();
        };
        m_socket->OnClose = [this] {
            m_link.Note("lost"); // what has come before may still be taken
            if (OnClose)
                OnClose();
        };
        m_socket->OnError = [this](int number, const std::string& description) {
            m_link.Note("error", std::to_string(number) + " " + QuotedForTrace(description));
            if (OnError)
                OnError(number, description);
        };
    }
    ~TracedSocket() override { noteEnd(); }
    TracedSocket(const TracedSocket&) = delete;
    TracedSocket& operator=(const TracedSocket&) = delete;

    void Connect(const std::string& host, int port) override
    {
        m_link.Begin(m_name, PasswordWatch::Line::Network);
        m_link.Note("open", QuotedForTrace(host + ":" + std::to_string(port)));
        m_begun = true;
        m_socket->Connect(host, port);
    }
    void Close() override
    {
        m_socket->Close();
        noteEnd();
    }
    Condition State() const override { return m_socket->State(); }
    void SendData(std::string_view bytes) override
    {
        if (State() == Condition::Connected)
            m_link.Pass("out", bytes);
        m_socket->SendData(bytes);
    }
    std::string GetData() override
    {
        std::string text = m_socket->GetData();
        if (m_begun)
            m_link.Pass("in", text);
        return text;
    }

private:
    void noteEnd()
    {
        if (std::exchange(m_begun, false))
            m_link.End("close");
    }

    std::unique_ptr<SocketControl> m_socket;
    TracedLink m_link;
    std::string m_name;
    bool m_begun = false;
};

} // namespace

std::unique_ptr<SocketControl> TracedSockets::MakeSocket()
{
    return std::make_unique<TracedSocket>(m_sockets.MakeSocket(), m_trace, "tcp" + std::to_string(++m_made));
}

} // namespace harvelop
