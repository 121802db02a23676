// Hosts that fail in every way, and the late events of sockets that are no longer the link.
#include "links/connect_bench.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <ostream>

namespace harvelop::test
{
namespace
{

using testing::IsEmpty;

constexpr const char* Here = "10.0.0.5:3000"; // where the stored logger is looked for

struct BadHost {
    const char* name;
    void (*happens)(ConnectTest&);
    bool linkLost; // the peer ends what stood
};

void silent(ConnectTest& t)
{
    t.sockets.places[Here] = {nullptr, false};
}

void closesAfter(ConnectTest& t, double ms)
{
    t.sockets.Plug("10.0.0.5", 3000, SimulatedModel("KR40"));
    t.pump.After(ms, [&t] { t.sockets.made.at(0)->PeerCloses(); });
}

void fails(ConnectTest& t, double ms, int number, const char* description)
{
    t.pump.After(ms, [&t, number, description] { t.sockets.made.at(0)->Fails(number, description); });
}

const BadHost BadHosts[] = {
    {"IsUnknown",
     [](ConnectTest& t) {
         silent(t);
         fails(t, 300, 11001, "Host not found");
     },
     false},
    {"Refuses", [](ConnectTest&) {}, false},
    {"IsSilent", silent, false},
    {"AcceptsAndSaysNothing", [](ConnectTest& t) { t.sockets.places[Here] = {}; }, false},
    {"ClosesAtOnce", [](ConnectTest& t) { closesAfter(t, 1); }, true},
    {"ClosesInTheMiddle", [](ConnectTest& t) { closesAfter(t, 3000); }, true},
    {"Resets",
     [](ConnectTest& t) {
         closesAfter(t, 3000);
         fails(t, 2999, 10054, "Connection reset by peer");
     },
     true},
};

void PrintTo(const BadHost& host, std::ostream* out)
{
    *out << host.name;
}

class ABadHost : public ConnectTest, public testing::WithParamInterface<BadHost>
{
};

// An old socket's event, raised as a socket would.
struct LateEvent {
    const char* name;
    void (*raise)(FakeSocket&);
};

const LateEvent LateEvents[] = {
    {"Connect",
     [](FakeSocket& socket) {
         if (socket.OnConnect)
             socket.OnConnect();
     }},
    {"DataArrival",
     [](FakeSocket& socket) {
         if (socket.OnDataArrival)
             socket.OnDataArrival();
     }},
    {"Close",
     [](FakeSocket& socket) {
         if (socket.OnClose)
             socket.OnClose();
     }},
    {"Error",
     [](FakeSocket& socket) {
         if (socket.OnError)
             socket.OnError(10054, "Connection reset by peer");
     }},
};

// Socket 1 stood; what follows it differs.
void PrintTo(const LateEvent& event, std::ostream* out)
{
    *out << event.name;
}

class ALateEvent : public ConnectTest, public testing::WithParamInterface<LateEvent>
{
protected:
    ALateEvent()
    {
        sockets.places[Here] = sockets.places["10.0.0.6:3000"] = {};
        open("10.0.0.5");
        serial.Plug(3, nullptr, "");
    }
    void open(const std::string& host)
    {
        heart.ethernet.OpenEthernet(host, "3000", "TCP");
        heart.waiting.WaitMs(10);
        ASSERT_TRUE(heart.link.EthernetConnected);
    }
    void raise()
    {
        FakeSocket& old = *sockets.made.at(0);
        old.Arrive("late");
        GetParam().raise(old);
        heart.waiting.WaitMs(10);
    }
    void expectLink(const std::string& mode, int port, bool connected)
    {
        EXPECT_EQ(heart.link.LinkMode, mode);
        EXPECT_EQ(heart.link.CurrentPort, port);
        EXPECT_EQ(heart.link.EthernetConnected, connected);
        EXPECT_EQ(heart.exchange.txtCharacterWindow.Text(), "");
        EXPECT_EQ(heart.link.ReceivedText, "");
        EXPECT_THAT(dialogs.shown, IsEmpty());
    }
};

const auto NameOf = [](const auto& row) { return std::string(row.param.name); };

} // namespace

TEST_P(ABadHost, IsToldAndReleased)
{
    StoreNetwork();
    dialogs.Expect(BoxAnswer::Ok);
    GetParam().happens(*this);
    Connect();
    EXPECT_FALSE(Connected());
    EXPECT_EQ(dialogs.shown.at(0).text, "Could not find a KR40 at 10.0.0.5:3000.     ");
    EXPECT_EQ(heart.link.LinkMode, GetParam().linkLost ? "None" : "Ethernet");
    EXPECT_EQ(heart.link.DefaultTimeout, 5000);
    heart.actions.CloseLink();
    EXPECT_EQ(heart.link.LinkMode, "None");
    EXPECT_FALSE(heart.link.EthernetConnected);
    EXPECT_EQ(sockets.made.at(0)->State(), SocketControl::Condition::Closed);
}

TEST_P(ABadHost, DoesNotStandInTheWayOfTheNextConnection)
{
    StoreNetwork();
    heart.options.ShowMessages = false;
    GetParam().happens(*this);
    Connect();
    EXPECT_FALSE(Connected());
    heart.actions.CloseLink();
    sockets.Plug("10.0.0.5", 3000, SimulatedModel("KR40"));
    Connect();
    EXPECT_TRUE(Connected());
}

INSTANTIATE_TEST_SUITE_P(Host, ABadHost, testing::ValuesIn(BadHosts), NameOf);

TEST_P(ALateEvent, OfASocketThatWasReplacedDoesNotTouchTheNewOne)
{
    open("10.0.0.6");
    raise();
    expectLink("Ethernet", 9, true);
}

TEST_P(ALateEvent, OfASocketThatWasClosedDoesNotBringItBack)
{
    heart.ethernet.CloseEthernet();
    raise();
    expectLink("None", 9, false);
}

TEST_P(ALateEvent, OfASocketThatWasLeftOpenDoesNotTouchAComPort)
{
    heart.rs232.OpenComPort(3);
    raise();
    expectLink("ComPort", 3, std::string(GetParam().name) != "Close");
}

INSTANTIATE_TEST_SUITE_P(Event, ALateEvent, testing::ValuesIn(LateEvents), NameOf);

TEST_F(ConnectTest, ASocketThatConnectsBehindTheWaitDoesNotTouchAComPort)
{
    sockets.places[Here] = {};
    heart.ethernet.OpenEthernet("10.0.0.5", "3000", "TCP");
    serial.Plug(3, nullptr, "");
    heart.rs232.OpenComPort(3);
    heart.waiting.WaitMs(10);
    EXPECT_EQ(heart.link.LinkMode, "ComPort");
    EXPECT_EQ(heart.link.CurrentPort, 3);
    EXPECT_FALSE(heart.link.EthernetConnected);
}

} // namespace harvelop::test
