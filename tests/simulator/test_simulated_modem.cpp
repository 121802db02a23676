#include "simulator/simulated_logger.h"
#include "simulator/simulated_modem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace harvelop
{

namespace
{

using testing::EndsWith;
using testing::HasSubstr;

const std::string Probe = "\x7f\r\n";

class Modem : public testing::Test
{
protected:
    void Make(ModemFailure failure = ModemFailure::None)
    {
        config.failure = failure;
        modem = std::make_unique<SimulatedModem>(config,
                                                 PhoneBook{{"555", std::make_shared<SimulatedLogger>(LoggerConfig())}});
    }
    void SetUp() override { Make(); }

    // All that comes within `ms`.
    std::string Listen(double ms)
    {
        const double until = nowMs + ms;
        std::string heard;
        while (modem->NextDueMs() <= until) {
            nowMs = std::max(nowMs, modem->NextDueMs());
            heard += modem->Transmit(nowMs);
        }
        nowMs = until;
        return heard;
    }
    std::string Ask(const std::string& text, double ms = 5000)
    {
        modem->Receive(nowMs, text);
        return Listen(ms);
    }

    ModemConfig config;
    std::unique_ptr<SimulatedModem> modem;
    double nowMs = 1000;
};

} // namespace

TEST_F(Modem, EchoesUntilToldNotTo)
{
    EXPECT_EQ(Ask("at\r\n"), "at\r\n\r\nOK\r\n");
    EXPECT_THAT(Ask("ATE0V1\r\n"), EndsWith("\r\nOK\r\n"));
    EXPECT_EQ(Ask("at\r\n"), "\r\nOK\r\n");
    EXPECT_EQ(Ask("atz\r\n"), "\r\nOK\r\n");
    EXPECT_EQ(Ask("at\r\n"), "at\r\n\r\nOK\r\n");
}

TEST_F(Modem, LinesThatAreNoCommandMeanNothing)
{
    Ask("ate0\r\n");
    EXPECT_EQ(Ask("hello\r\n\r\n"), "");
    EXPECT_EQ(Ask("at!\r\n"), "\r\nERROR\r\n");
    EXPECT_EQ(Ask("+++"), "");
    EXPECT_EQ(Ask("ath0\r\n"), "\r\nOK\r\n");
}

TEST_F(Modem, CallPassesEverythingOnAndHangsUp)
{
    Ask("ate0\r\n");
    EXPECT_EQ(Ask("atdt555\r\n", 1999), "");
    EXPECT_EQ(Listen(1), "\r\nCONNECT 9600\r\n");
    EXPECT_EQ(Ask(Probe), "<<\r\n");
    EXPECT_EQ(Ask("a+++b" + Probe, 100), "");
    EXPECT_EQ(Ask(Probe), "<<\r\n");
    EXPECT_EQ(Ask("+++", 49), "");
    EXPECT_EQ(Listen(100), "\r\nOK\r\n");
    EXPECT_TRUE(modem->InCall());
    EXPECT_EQ(Ask("at&h\r\n"), "\r\nOK\r\n");
    EXPECT_FALSE(modem->InCall());
    EXPECT_EQ(Ask(Probe), "");
}

TEST_F(Modem, PlusSignsAmongDataAreData)
{
    Ask("ate0\r\natdt555\r\n");
    EXPECT_EQ(Ask("+++\x7f\r\n", 1000), "");
    EXPECT_EQ(Ask(Probe), "<<\r\n"); // no escape: the call goes on
}

TEST_F(Modem, UnknownNumberHasNoCarrier)
{
    EXPECT_THAT(Ask("atdt1\r\n"), EndsWith("\r\nNO CARRIER\r\n"));
    EXPECT_FALSE(modem->InCall());
}

TEST_F(Modem, CommandWhileDiallingGivesTheCallUp)
{
    Ask("ate0\r\natdt555\r\n", 500);
    EXPECT_EQ(Ask("ath0\r\n"), "\r\nOK\r\n");
    EXPECT_FALSE(modem->InCall());
}

TEST_F(Modem, ReportsWhatSpeedItIsTold)
{
    config.speed = "";
    Make();
    EXPECT_THAT(Ask("atdt 555\r\n"), EndsWith("\r\nCONNECT\r\n"));
}

TEST_F(Modem, FailsInEveryNamedWay)
{
    for (const ModemFailureMode& mode : ModemFailureModes())
        EXPECT_EQ(ModemFailureByName(mode.name), mode.failure);
    EXPECT_EQ(ModemFailureByName("busy"), std::nullopt);

    Make(ModemFailure::Silent);
    EXPECT_EQ(Ask("at\r\n"), "");
    Make(ModemFailure::Error);
    EXPECT_THAT(Ask("at\r\n"), EndsWith("\r\nERROR\r\n"));
    Make(ModemFailure::Garbage);
    EXPECT_THAT(Ask("at\r\n"), testing::Not(HasSubstr("OK")));
    Make(ModemFailure::Busy);
    EXPECT_THAT(Ask("atdt555\r\n"), EndsWith("\r\nBUSY\r\n"));
    Make(ModemFailure::NoCarrier);
    EXPECT_THAT(Ask("atdt555\r\n"), EndsWith("\r\nNO CARRIER\r\n"));
    Make(ModemFailure::NoAnswer);
    EXPECT_EQ(Ask("atdt555\r\n", 100000), "atdt555\r\n");
}

TEST_F(Modem, LostCarrierEndsACall)
{
    Make(ModemFailure::DropsCall);
    EXPECT_THAT(Ask("atdt555\r\n", 2000), EndsWith("\r\nCONNECT 9600\r\n"));
    EXPECT_EQ(Listen(2999), "");
    EXPECT_EQ(Listen(1), "\r\nNO CARRIER\r\n");
    EXPECT_FALSE(modem->InCall());
}

TEST_F(Modem, LoggerThatDropsTheLineEndsACall)
{
    LoggerConfig drops;
    drops.failure = Failure::DropsLine;
    drops.dropAfterLines = 1;
    modem = std::make_unique<SimulatedModem>(config, PhoneBook{{"7", std::make_shared<SimulatedLogger>(drops)}});
    EXPECT_THAT(Ask("atdt7\r\n"), EndsWith("CONNECT 9600\r\n"));
    EXPECT_EQ(Ask("TEST0\r\n"), "\r\nNO CARRIER\r\n");
}

} // namespace harvelop
