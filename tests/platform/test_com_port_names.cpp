#include "platform/qt/com_port_names.h"
#include "support/fake_desktop.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace harvelop::test
{

TEST(ComPortNames, UsualPlacesStandForSixteenPorts)
{
    const MemorySettings none;
    EXPECT_EQ(ComPortDevice(1, none), "/dev/ttyS0");
    EXPECT_EQ(ComPortDevice(4, none), "/dev/ttyS3");
    EXPECT_EQ(ComPortDevice(5, none), "/dev/ttyUSB0");
    EXPECT_EQ(ComPortDevice(12, none), "/dev/ttyUSB7");
    EXPECT_EQ(ComPortDevice(13, none), "/dev/ttyACM0");
    EXPECT_EQ(ComPortDevice(16, none), "/dev/ttyACM3");
    for (const int port : {-1, 0, 17, 1000})
        EXPECT_EQ(ComPortDevice(port, none), "") << port;
}

TEST(ComPortNames, SettingsComeBeforeUsualPlaces)
{
    MemorySettings settings;
    settings.Save("Harvel", "ComPorts", "2", "/dev/serial/by-id/logger");
    settings.Save("Harvel", "ComPorts", "3", "");
    EXPECT_EQ(ComPortDevice(2, settings), "/dev/serial/by-id/logger");
    EXPECT_EQ(ComPortDevice(3, settings), "");
    EXPECT_EQ(ComPortDevice(1, settings), "/dev/ttyS0");
}

TEST(ComPortNames, EnvironmentComesBeforeSettings)
{
    MemorySettings settings;
    settings.Save("Harvel", "ComPorts", "2", "/dev/a");
    setenv("HARVELOP_COM2", "/dev/b", 1);
    setenv("HARVELOP_COM3", "", 1);
    EXPECT_EQ(ComPortDevice(2, settings), "/dev/b");
    EXPECT_EQ(ComPortDevice(3, settings), "");
    unsetenv("HARVELOP_COM2");
    unsetenv("HARVELOP_COM3");
}

} // namespace harvelop::test
