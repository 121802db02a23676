// A logger behind a modem, from the record to its identification.
#include "identify/identify_program.h"
#include "simulator/simulated_modem.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

class DialledLogger : public testing::Test
{
protected:
    void Dial(const std::string& model, ModemFailure failure = ModemFailure::None)
    {
        LoggerRecord record;
        record.LoggerModel = "KR200 Series 2";
        record.LoggerPort = "3";
        record.LoggerBaud = "5551234";
        record.LoggerParity = "at&f";
        record.LoggerDataBits = "9600";
        record.LoggerTimeout = "3";
        program.Store(1, record);
        program.heart.state.CurrentLogger = 1;
        program.heart.options.ModemTimeout = "45";
        program.heart.options.ShowMessages = true;
        ModemConfig config;
        config.failure = failure;
        const PhoneBook book{{"5551234", Logger(model, "", "")}};
        program.serial.Plug(3, std::make_shared<SimulatedModem>(config, book), "9600");
        program.heart.connecting.ConnectLogger(1);
    }

    IdentifyProgram program;
};

} // namespace

TEST_F(DialledLogger, IsReachedThroughTheModem)
{
    Dial("KR200");
    EXPECT_TRUE(program.heart.link.LinkConnected);
    EXPECT_TRUE(program.Said("Connected to 5551234 at 9600 baud"));
    EXPECT_TRUE(program.Said("Found a KR200 Series 2 via the Modem on Com 3"));
    EXPECT_EQ(program.heart.link.DefaultTimeout, 5000);
}

TEST_F(DialledLogger, OfAnotherModelIsTold)
{
    program.dialogs.Expect(BoxAnswer::Ok);
    Dial("KR40");
    EXPECT_FALSE(program.heart.link.LinkConnected);
    EXPECT_EQ(program.dialogs.shown.at(0).text, "Could not find a KR200 Series 2 via the Modem on Com 3.     ");
}

TEST_F(DialledLogger, WhoseCallDropsIsTold)
{
    program.dialogs.Expect(BoxAnswer::Ok);
    Dial("KR200", ModemFailure::DropsCall);
    EXPECT_FALSE(program.heart.link.LinkConnected);
}

TEST_F(DialledLogger, IsReachedAgainAfterTheLinkWasClosed)
{
    Dial("KR200");
    program.heart.rs232.CloseLink();
    Dial("KR200");
    EXPECT_TRUE(program.heart.link.LinkConnected);
}

} // namespace harvelop::test
