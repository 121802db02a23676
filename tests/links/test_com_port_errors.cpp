#include "links/com_port_errors.h"
#include "platform/serial_control.h"

#include <gtest/gtest.h>
#include <map>

namespace harvelop::test
{
namespace
{

const std::map<int, std::string> EngineTexts = {
    {8000, "Operation not valid while the port is opened"},
    {8001, "Timeout value must be greater than zero"},
    {8003, "Property available only at run time"},
    {8004, "Property is read only at runtime"},
    {8006, "The device identifier is invalid or unsupported"},
    {8007, "The device's baud rate is unsupported"},
    {8008, "The specified byte size is invalid"},
    {8009, "The default parameters are in error"},
    {8010, "The hardware is not available (locked by another device)"},
    {8011, "The function cannot allocate the queues"},
    {8013, "The device is already open"},
    {8014, "Could not enable comm notification"},
    {8015, "Could not set comm state"},
    {8016, "Could not set comm event mask"},
    {8018, "Operation valid only when the port is open"},
    {8019, "Device busy"},
    {8020, "Error reading comm device"},
};

TEST(ComPortErrors, EachNumberHasItsText)
{
    for (int number = 0; number <= 9000; ++number) {
        const auto box = ComPortErrorBox(number, 3);
        const auto wanted = EngineTexts.find(number);
        if (number == PortAbsent)
            continue;
        ASSERT_EQ(box.has_value(), wanted != EngineTexts.end()) << number;
        if (!box)
            continue;
        EXPECT_EQ(box->text, wanted->second);
        EXPECT_EQ(box->title, "Com Port Engine");
        EXPECT_EQ(box->icon, BoxIcon::Exclamation);
        EXPECT_EQ(box->buttons, BoxButtons::Ok);
    }
}

TEST(ComPortErrors, AnAbsentPortIsCriticalUnderTheProgramsOwnTitle)
{
    const auto box = ComPortErrorBox(8002, 12);
    ASSERT_TRUE(box);
    EXPECT_EQ(box->text,
              "Com Port 12 Doesn't Exist. The AvailablePorts Paramater in the term.ini File is INCORRECT.   ");
    EXPECT_EQ(box->title, "");
    EXPECT_EQ(box->icon, BoxIcon::Critical);
}

TEST(ComPortErrors, ABusyPortHasNoMessageHere)
{
    EXPECT_FALSE(ComPortErrorBox(8005, 1));
    EXPECT_FALSE(ComPortErrorBox(8012, 1));
    EXPECT_FALSE(ComPortErrorBox(-1, 1));
}

} // namespace
} // namespace harvelop::test
