// A com port on a pseudo terminal, served as the program's link layer serves it.
#pragma once

#include "platform/pseudo_terminal.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_serial_control.h"
#include "support/fake_desktop.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>
#include <string>

namespace harvelop::test
{

struct SerialControl : testing::Test {
    PseudoTerminal device;
    MemorySettings settings;
    QtEventPump pump;
    QtSerialControl port{settings};
    std::string arrived;
    int raised = 0;

    void SetUp() override
    {
        settings.Save("Harvel", "ComPorts", "3", device.Name());
        port.CommPort(3);
        port.RThreshold(1);
        port.InBufferSize(2048);
        port.OnComm = [this] { drain(); };
    }

    // As the program's link layer takes what arrives.
    void drain()
    {
        ++raised;
        EXPECT_EQ(port.CommEvent, CommEventReceived);
        port.RThreshold(0);
        while (port.InBufferCount() >= 1)
            arrived += port.Input();
        port.RThreshold(1);
    }

    // Serves events until `done` or far too long.
    template <class Done> bool ServeUntil(Done done)
    {
        QElapsedTimer clock;
        clock.start();
        while (!done() && clock.elapsed() < 10'000)
            pump.ServeFor(1000);
        return done();
    }
    // Serves events for a little while; gives how often any were served.
    int ServeAWhile()
    {
        QElapsedTimer clock;
        clock.start();
        int passes = 0;
        for (; clock.elapsed() < 50; ++passes)
            pump.ServeFor(50 - static_cast<double>(clock.elapsed()));
        return passes;
    }
};

} // namespace harvelop::test
