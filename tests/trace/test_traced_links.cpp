// What the decorators write, and that they pass everything on.
#include "support/fake_serial.h"
#include "support/fake_sockets.h"
#include "support/scripted_dialogs.h"
#include "trace/traced_dialogs.h"
#include "trace/traced_serial.h"
#include "trace/traced_sockets.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

struct TracedLinksTest : testing::Test {
    TracedLinksTest()
    {
        std::filesystem::remove(path);
        file.Open(path, "test");
        serial.ports[3] = {};
    }
    ~TracedLinksTest() override { std::filesystem::remove(path); }

    // Without its first line and the times.
    std::string Trace() const
    {
        std::ifstream lines(path);
        std::string text;
        std::string line;
        std::getline(lines, line);
        while (std::getline(lines, line))
            text += line.substr(line.find(' ') + 1) + "\n";
        return text;
    }
    void Serve() { pump.ServeFor(10); }

    const std::string path = testing::TempDir() + "links_" + std::to_string(getpid());
    VirtualPump pump;
    FakeSerial serial{pump};
    FakeSockets sockets{pump};
    TraceFile file{[](const std::string& text) { ADD_FAILURE() << text; }};
    LinkTrace trace{pump, file};
};

TEST_F(TracedLinksTest, APortTellsWhatPassesAndItsSettings)
{
    {
        TracedSerial port(serial, trace);
        port.CommPort(3);
        port.Settings("1200,N,8,1");
        EXPECT_EQ(port.Open(), PortOk);
        port.RThreshold(1);
        port.Output("TEST0\r\n");
        std::string taken;
        port.OnComm = [&] { taken += port.Input(); };
        serial.Arrive("T,1\r\n");
        Serve();
        EXPECT_EQ(taken, "T,1\r\n");
        EXPECT_EQ(port.CommEvent, CommEventReceived);
        port.Settings("9600,N,8,1");
        port.Settings("9600,N,8,1");
        port.Handshaking(2);
        EXPECT_EQ(serial.Sent(), "TEST0\r\n");
        EXPECT_EQ(serial.handshaking, 2);
        port.Close();
        EXPECT_FALSE(serial.PortOpen());
        port.Output("nobody");
        port.Close();
    }
    EXPECT_EQ(Trace(), "com3 open \"1200,N,8,1\" 0 \"/dev/ttyS2\"\n"
                       "com3 out \"TEST0\\r\\n\"\n"
                       "com3 in \"T,1\\r\\n\"\n"
                       "com3 set \"9600,N,8,1\" 0\n"
                       "com3 set \"9600,N,8,1\" 2\n"
                       "com3 close\n");
}

TEST_F(TracedLinksTest, WhatIsThrownAwayUnseenIsToldToo)
{
    TracedSerial port(serial, trace);
    port.CommPort(3);
    port.Open();
    port.RThreshold(0);
    serial.Arrive("noise\r\n");
    Serve();
    port.ClearInBuffer();
    EXPECT_EQ(port.InBufferCount(), 0);
    port.ClearInBuffer();
    port.Output("END\r\n");
    port.ClearOutBuffer();
    serial.Arrive("late");
    Serve();
    port.Close();
    EXPECT_EQ(serial.Sent(), "");
    EXPECT_EQ(Trace(), "com3 open \"9600,N,8,1\" 0 \"/dev/ttyS2\"\ncom3 drop \"noise\\r\\n\"\ncom3 out \"END\\r\\n\"\n"
                       "com3 unsent\ncom3 drop \"late\"\ncom3 close\n");
}

TEST_F(TracedLinksTest, PortsThatCannotBeOpenedTellWhy)
{
    TracedSerial port(serial, trace);
    serial.holder = "minicom (process 12)";
    serial.ports[3].openError = PortBusy;
    for (const int number : {2, 3}) {
        port.CommPort(number);
        EXPECT_EQ(port.Open(), number == 2 ? PortAbsent : PortBusy);
    }
    serial.ports[3].openError = PortNoPermission;
    EXPECT_EQ(port.Open(), PortNoPermission);
    EXPECT_EQ(Trace(), "com2 error 8002 \"no such port\"\ncom3 error 8005 \"in use by minicom (process 12)\"\n"
                       "com3 error 70 \"no permission\"\n");
}

TEST_F(TracedLinksTest, APortThatClosesItselfIsLost)
{
    TracedSerial port(serial, trace);
    port.CommPort(3);
    port.Open();
    serial.Close(); // as the control does when its device has gone
    port.Output("END\r\n");
    EXPECT_EQ(Trace(), "com3 open \"9600,N,8,1\" 0 \"/dev/ttyS2\"\ncom3 lost\n");
}

TEST_F(TracedLinksTest, APortThatIsStillOpenAtTheEndIsClosed)
{
    {
        TracedSerial port(serial, trace);
        port.CommPort(3);
        port.Open();
    }
    EXPECT_EQ(Trace(), "com3 open \"9600,N,8,1\" 0 \"/dev/ttyS2\"\ncom3 close\n");
}

TEST_F(TracedLinksTest, SocketsTellTheirHostAndWhatBecomesOfThem)
{
    sockets.places["host:7700"] = {};
    TracedSockets maker(sockets, trace);
    auto socket = maker.MakeSocket();
    std::string events;
    socket->OnConnect = [&] { events += "connected "; };
    socket->OnDataArrival = [&] { events += socket->GetData() + " "; };
    socket->OnClose = [&] { events += "closed"; };
    socket->SendData("too early");
    socket->Connect("host", 7700);
    Serve();
    EXPECT_EQ(socket->State(), SocketControl::Condition::Connected);
    socket->SendData("TEST0\r\n");
    sockets.made[0]->Arrive("T,1\r\n");
    Serve();
    sockets.made[0]->PeerCloses();
    Serve();
    socket->Close();
    socket.reset();
    auto other = maker.MakeSocket();
    int number = 0;
    other->OnError = [&](int error, const std::string&) { number = error; };
    other->Connect("nowhere", 21);
    Serve();
    other.reset();
    EXPECT_EQ(number, 10061);
    EXPECT_EQ(events, "connected T,1\r\n closed");
    EXPECT_EQ(Trace(), "tcp1 open \"host:7700\"\ntcp1 connected\ntcp1 out \"TEST0\\r\\n\"\ntcp1 in \"T,1\\r\\n\"\n"
                       "tcp1 lost\ntcp1 close\ntcp2 open \"nowhere:21\"\n"
                       "tcp2 error 10061 \"Connection refused\"\ntcp2 close\n");
}

TEST_F(TracedLinksTest, AnAnswerToAQuestionForAPasswordIsASecret)
{
    ScriptedDialogs dialogs;
    dialogs.ExpectPassword("GREENHOUSE");
    dialogs.ExpectChooser("/a");
    dialogs.ExpectChooser("/b");
    dialogs.Expect(BoxAnswer::Yes);
    TracedDialogs traced(dialogs, trace.Secrets);
    EXPECT_EQ(traced.AskPassword("text", "title"), "GREENHOUSE");
    EXPECT_EQ(traced.BrowseFolder("", ""), "/a");
    EXPECT_EQ(traced.OpenFile("", "", ""), "/b");
    EXPECT_EQ(traced.Show({"text", "title", BoxIcon::None, BoxButtons::YesNo}), BoxAnswer::Yes);
    EXPECT_EQ(trace.Secrets.LookAt("greenhouse", true, true), TraceSecrets::Match::Whole);
}

TEST_F(TracedLinksTest, PasswordsAreGatheredBeforeAnythingIsLookedAt)
{
    std::string password = "first";
    trace.Gather = [&] { trace.Secrets.Learn(password); };
    TracedSerial port(serial, trace);
    port.CommPort(3);
    port.Open();
    port.Output("\r\nfirst word\r\n");
    password = "second";
    port.Output("second word\r\n");
    port.Close();
    EXPECT_EQ(Trace(), "com3 open \"9600,N,8,1\" 0 \"/dev/ttyS2\"\ncom3 out \"\\r\\n\\*\\r\\n\"\n"
                       "com3 out \"\\*\\r\\n\"\ncom3 close\n");
}

} // namespace

} // namespace harvelop::test
