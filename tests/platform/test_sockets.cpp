#include "platform/qt/qt_sockets.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace harvelop::test
{

namespace
{

constexpr int LongestWaitMs = 10000;

bool until(const std::function<bool()>& done)
{
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < LongestWaitMs)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return done();
}

// Among the files that this process has open: the sockets whose peer listens on a port of the loopback.
std::vector<int> socketsTo(quint16 port)
{
    constexpr int HighestFile = 1024;
    std::vector<int> found;
    for (int file = 0; file < HighestFile; ++file) {
        sockaddr_in address{};
        socklen_t length = sizeof(address);
        if (getpeername(file, reinterpret_cast<sockaddr*>(&address), &length) == 0 && ntohs(address.sin_port) == port)
            found.push_back(file);
    }
    return found;
}

// A socket and who listens on the loopback for it.
struct Sockets : testing::Test {
    Sockets()
    {
        socket->OnConnect = [this] { events.emplace_back("connect"); };
        socket->OnClose = [this] { events.emplace_back("close"); };
        socket->OnError = [this](int, const std::string&) { events.emplace_back("error"); };
        socket->OnDataArrival = [this] { received += socket->GetData(); };
    }
    void SetUp() override { ASSERT_TRUE(server.listen(QHostAddress::LocalHost)); }

    void Connect()
    {
        socket->Connect("127.0.0.1", server.serverPort());
        ASSERT_TRUE(until([this] { return !events.empty() && server.hasPendingConnections(); }));
        peer = server.nextPendingConnection();
    }
    bool Seen(const std::string& event) const { return !events.empty() && events.back() == event; }

    QTcpServer server;
    QTcpSocket* peer = nullptr; // the server's
    std::unique_ptr<SocketControl> socket = QtSockets().MakeSocket();
    std::vector<std::string> events;
    std::string received;
};

} // namespace

TEST_F(Sockets, AConnectionIsToldByAnEventAndNeverWithinTheCall)
{
    EXPECT_EQ(socket->State(), SocketControl::Condition::Closed);
    socket->Connect("127.0.0.1", server.serverPort());
    EXPECT_EQ(socket->State(), SocketControl::Condition::Connecting);
    EXPECT_TRUE(events.empty());
    ASSERT_TRUE(until([this] { return Seen("connect"); }));
    EXPECT_EQ(socket->State(), SocketControl::Condition::Connected);
}

TEST_F(Sockets, BytesPassBothWaysAsTheyAre)
{
    Connect();
    const std::string bytes("a\0\xFF\r\n", 5);
    socket->SendData(bytes);
    QByteArray got;
    EXPECT_TRUE(until([&] { return (got += peer->readAll()).size() == 5; }));
    EXPECT_EQ(got.toStdString(), bytes);
    peer->write(bytes.data(), 5);
    EXPECT_TRUE(until([&] { return received.size() == 5; }));
    EXPECT_EQ(received, bytes);
}

TEST_F(Sockets, WhatIsSentBeforeTheConnectionIsLost)
{
    socket->SendData("early");
    socket->Connect("127.0.0.1", server.serverPort());
    socket->SendData("early");
    ASSERT_TRUE(until([this] { return Seen("connect") && server.hasPendingConnections(); }));
    peer = server.nextPendingConnection();
    socket->SendData("late");
    QByteArray got;
    EXPECT_TRUE(until([&] { return (got += peer->readAll()).size() >= 4; }));
    EXPECT_EQ(got, "late");
}

TEST_F(Sockets, ALineLeavesAtOnceWhetherTheHostIsANameOrANumber)
{
    for (const char* host : {"127.0.0.1", "localhost"}) {
        events.clear();
        auto one = QtSockets().MakeSocket();
        one->OnConnect = [this] { events.emplace_back("connect"); };
        one->Connect(host, server.serverPort());
        ASSERT_TRUE(until([this] { return Seen("connect"); })) << host;
        const std::vector<int> files = socketsTo(server.serverPort());
        ASSERT_EQ(files.size(), 1U);
        int noDelay = 0;
        socklen_t length = sizeof(noDelay);
        ASSERT_EQ(getsockopt(files[0], IPPROTO_TCP, TCP_NODELAY, &noDelay, &length), 0);
        EXPECT_NE(noDelay, 0) << host;
    }
}

TEST_F(Sockets, APortThatNobodyListensOnIsAnError)
{
    const int port = server.serverPort();
    server.close();
    socket->Connect("127.0.0.1", port);
    EXPECT_TRUE(until([this] { return Seen("error"); }));
    EXPECT_EQ(socket->State(), SocketControl::Condition::Closed);
}

TEST_F(Sockets, AHostThatIsNoneIsAnError)
{
    for (const char* host : {"", "no such host", "256.1.1.1.1"}) {
        events.clear();
        auto one = QtSockets().MakeSocket();
        one->OnError = [this](int, const std::string&) { events.emplace_back("error"); };
        one->Connect(host, 3000);
        EXPECT_TRUE(until([this] { return Seen("error"); })) << host;
        EXPECT_EQ(one->State(), SocketControl::Condition::Closed);
    }
}

TEST_F(Sockets, APeerThatClosesIsToldOnceAfterWhatItSent)
{
    Connect();
    peer->write("bye");
    peer->disconnectFromHost();
    EXPECT_TRUE(until([this] { return Seen("close"); }));
    EXPECT_EQ(received, "bye");
    EXPECT_EQ(events, (std::vector<std::string>{"connect", "close"}));
    EXPECT_EQ(socket->State(), SocketControl::Condition::Closed);
}

TEST_F(Sockets, AResetIsToldAsAClose)
{
    Connect();
    const linger atOnce = {1, 0};
    setsockopt(static_cast<int>(peer->socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof(atOnce));
    peer->abort();
    EXPECT_TRUE(until([this] { return Seen("close"); }));
    EXPECT_EQ(events, (std::vector<std::string>{"connect", "close"}));
}

TEST_F(Sockets, ClosingSendsWhatIsQueuedAndRaisesNothingMore)
{
    Connect();
    peer->write("late");
    peer->flush();
    socket->SendData("Q /H/r\r\n");
    socket->Close();
    QByteArray got;
    EXPECT_TRUE(until([&] { return (got += peer->readAll()).size() == 8; }));
    EXPECT_TRUE(until([&] { return peer->state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(events, std::vector<std::string>{"connect"});
    EXPECT_EQ(received, "");
    socket->SendData("later");
    socket->Close();
}

TEST_F(Sockets, DataArriveWhileTheHandlerOfTheConnectionWaits)
{
    socket->OnConnect = [this] {
        ASSERT_TRUE(until([this] { return server.hasPendingConnections(); }));
        peer = server.nextPendingConnection();
        peer->write("hello");
        EXPECT_TRUE(until([this] { return received == "hello"; }));
        events.emplace_back("connect");
    };
    socket->Connect("127.0.0.1", server.serverPort());
    EXPECT_TRUE(until([this] { return Seen("connect"); }));
}

TEST_F(Sockets, ASocketMayGoInEveryCondition)
{
    QtSockets().MakeSocket().reset();
    auto connecting = QtSockets().MakeSocket();
    connecting->Connect("127.0.0.1", server.serverPort());
    connecting.reset();
    Connect();
    peer->write("late");
    socket.reset();
    EXPECT_TRUE(until([&] { return peer->state() == QAbstractSocket::UnconnectedState; }));
}

} // namespace harvelop::test
