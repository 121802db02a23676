// Which ports there are, and how that is told and offered.

#include "link_bench.h"

#include <gmock/gmock.h>

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class ComPortListTest : public LinkTest
{
protected:
    ComPortListTest() { progress.ShowMessageForm(); }

    void plug(const std::vector<int>& ports)
    {
        for (const int port : ports)
            serial.ports[port] = {};
    }
    const std::vector<std::string>& lines() { return state.cbxUnload_Ports.Lines(); }
};

TEST_F(ComPortListTest, FindingOpensEachPortOnce)
{
    plug({1, 3, 16});
    rs232.FindComPorts();
    EXPECT_EQ(options.AvailablePorts, "1,3,16,");
    std::vector<int> opened;
    for (const auto& event : serial.events)
        if (event.kind == FakeSerial::Event::Kind::Opened)
            opened.push_back(event.port);
    EXPECT_THAT(opened, ElementsAre(1, 3, 16));
    EXPECT_FALSE(serial.PortOpen());
    for (int port = 1; port <= ComPorts; ++port)
        EXPECT_EQ(link.PortAvailable[static_cast<size_t>(port - 1)], port == 1 || port == 3 || port == 16) << port;
}

TEST_F(ComPortListTest, FindingForgetsWhatWasKnown)
{
    options.AvailablePorts = "7,8,";
    link.PortAvailable.fill(true);
    rs232.FindComPorts();
    EXPECT_EQ(options.AvailablePorts, "");
    for (const bool available : link.PortAvailable)
        EXPECT_FALSE(available);
}

TEST_F(ComPortListTest, FindingStopsAt16)
{
    plug({0, 17, 18});
    rs232.FindComPorts();
    EXPECT_EQ(options.AvailablePorts, "");
}

TEST_F(ComPortListTest, FindingClosesAnOpenPort)
{
    OpenPort1();
    rs232.FindComPorts();
    EXPECT_EQ(serial.calls.front(), "Close");
    EXPECT_EQ(options.AvailablePorts, "1,");
}

TEST_F(ComPortListTest, EveryPortThatIsNotAbsentCountsAsAvailable)
{
    serial.ports[2].openError = PortBusy;
    serial.ports[4].openError = PortFailed;
    serial.ports[6].openError = PortNoPermission;
    serial.ports[8].openError = PortAbsent;
    rs232.FindComPorts();
    EXPECT_EQ(options.AvailablePorts, "2,4,6,");
    EXPECT_THAT(shownDialogs.shown, IsEmpty());
    EXPECT_FALSE(link.NoPermissionTold);
    EXPECT_EQ(link.BusyPorts, "");
    for (int port = 0; port <= ComPorts; ++port)
        EXPECT_FALSE(link.PortBusySeen.Get(port));
}

TEST_F(ComPortListTest, ABusyPortIsMarkedWhileTheOthersAreTried)
{
    serial.ports[2].openError = PortBusy;
    std::vector<bool> seen;
    serial.whenOpened = [&] { seen.push_back(link.PortBusySeen.Get(2)); };
    rs232.FindComPorts();
    ASSERT_EQ(seen.size(), 16u);
    for (size_t port = 1; port <= seen.size(); ++port)
        EXPECT_EQ(seen[port - 1], port > 2);
    EXPECT_FALSE(link.PortBusySeen.Get(2));
}

TEST_F(ComPortListTest, FindingTellsWhatItDoes)
{
    rs232.FindComPorts();
    EXPECT_EQ(window.Caption(), "<- Looking for Available Com Ports ...");
    EXPECT_EQ(progress.Max(), 11);
    EXPECT_EQ(progress.Value(), 0);
}

TEST_F(ComPortListTest, FindingTellsInTheUsersLanguage)
{
    UseLanguageFile("366:1:9:Suche Com-Ports\r\n");
    rs232.FindComPorts();
    EXPECT_EQ(window.Caption(), "<- Suche Com-Ports ...");
}

TEST_F(ComPortListTest, SeveralPortsAreReportedInRisingOrder)
{
    plug({11, 2, 5});
    rs232.FindComPorts();
    rs232.ReportAvailablePorts();
    EXPECT_EQ(window.Caption(), "<- Com ports 2, 5, 11 are available");
    EXPECT_NEAR(pump.NowMs(), 1000, 0.01);
}

TEST_F(ComPortListTest, OnePortIsReportedAlone)
{
    plug({12});
    rs232.FindComPorts();
    rs232.ReportAvailablePorts();
    EXPECT_EQ(window.Caption(), "<- Com port 12 is available");
    EXPECT_NEAR(pump.NowMs(), 1000, 0.01);
}

TEST_F(ComPortListTest, NoPortIsReportedAsAnEmptyList)
{
    rs232.FindComPorts();
    rs232.ReportAvailablePorts();
    EXPECT_EQ(window.Caption(), "<- Com ports  are available");
}

TEST_F(ComPortListTest, ALanguageFilesPiecesAreJoinedAsTheyStand)
{
    UseLanguageFile("367:1:9:Nur Com\r\n368:1:9: ist da\r\n369:1:9:Ports:\r\n370:1:9: sind da\r\n");
    plug({3});
    rs232.FindComPorts();
    rs232.ReportAvailablePorts();
    EXPECT_EQ(window.Caption(), "<- Nur Com3 ist da");
    plug({4});
    rs232.FindComPorts();
    rs232.ReportAvailablePorts();
    EXPECT_EQ(window.Caption(), "<- Ports:3, 4 sind da");
}

TEST_F(ComPortListTest, NothingIsReportedWhileTheSearchIsToStop)
{
    state.StopSearch = true;
    rs232.ReportAvailablePorts();
    EXPECT_EQ(window.Caption(), "");
    EXPECT_EQ(pump.NowMs(), 0);
}

TEST_F(ComPortListTest, AnUnknownListOffersOnlyAllPorts)
{
    options.AvailablePorts = "0";
    options.LastSearch = "0";
    rs232.FillPortLists(true);
    EXPECT_THAT(lines(), ElementsAre(" All Ports"));
    EXPECT_EQ(state.cbxUnload_Ports.Selected(), 0);
}

TEST_F(ComPortListTest, OnePortIsOfferedAlone)
{
    plug({4});
    rs232.FindComPorts();
    rs232.FillPortLists(false);
    EXPECT_THAT(lines(), ElementsAre("Com 4"));
}

TEST_F(ComPortListTest, SeveralPortsAreOfferedBehindAllPorts)
{
    plug({1, 3, 10});
    rs232.FindComPorts();
    rs232.FillPortLists(false);
    EXPECT_THAT(lines(), ElementsAre(" All Ports", " Com 1", " Com 3", " Com 10"));
}

TEST_F(ComPortListTest, AllSixteenPortsAreOffered)
{
    for (int port = 1; port <= ComPorts; ++port)
        serial.ports[port] = {};
    rs232.FindComPorts();
    rs232.FillPortLists(false);
    ASSERT_EQ(lines().size(), 17u);
    EXPECT_EQ(lines().back(), " Com 16");
}

TEST_F(ComPortListTest, NoPortAtAllOffersAllPorts)
{
    rs232.FindComPorts();
    rs232.FillPortLists(false);
    EXPECT_THAT(lines(), ElementsAre(" All Ports"));
}

TEST_F(ComPortListTest, RefillingKeepsTheSelectionOrRestoresTheLastSearch)
{
    plug({1, 3, 10});
    rs232.FindComPorts();
    rs232.FillPortLists(false);
    state.cbxUnload_Ports.Select(2);
    rs232.FillPortLists(false);
    EXPECT_EQ(state.cbxUnload_Ports.Text(), " Com 3");
    options.LastSearch = "3";
    rs232.FillPortLists(true);
    EXPECT_EQ(state.cbxUnload_Ports.Text(), " Com 10");
}

TEST_F(ComPortListTest, AnIndexThatIsNotThereSelectsNothing)
{
    plug({1, 3});
    rs232.FindComPorts();
    for (const char* index : {"3", "-7", "x", ""}) {
        options.LastSearch = index;
        rs232.FillPortLists(true);
        EXPECT_EQ(state.cbxUnload_Ports.Selected(), -1) << index;
    }
}

TEST_F(ComPortListTest, OnlyTheFirstFiftyCharactersAreCounted)
{
    options.AvailablePorts = "5," + std::string(48, ' ') + "6,";
    rs232.FillPortLists(false);
    EXPECT_THAT(lines(), ElementsAre("Com 5"));
}

} // namespace
} // namespace harvelop::test
