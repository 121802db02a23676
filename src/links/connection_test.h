// Whether the attempt to connect, that was just made for work on a logger's programs, has reached the logger.
#pragma once

#include "links/link_state.h"
#include "platform/dialogs.h"

namespace harvelop
{

enum class ConnectionTest {
    Connected,
    NotConnected,
    NoEntry, // the table of ports has no entry for the number: the work ends with `OutOfRangeBox`
};

inline const Box OutOfRangeBox = {"Subscript out of range", "", BoxIcon::Critical};

// By the logger's number, though the table is one of com ports: meant. It has no entry for most numbers.
inline ConnectionTest TestConnected(const LinkState& link, int loggerNumber)
{
    const bool* failed = link.PortOpenFailed.At(loggerNumber);
    if (!failed)
        return ConnectionTest::NoEntry;
    return !*failed && link.LinkConnected ? ConnectionTest::Connected : ConnectionTest::NotConnected;
}

} // namespace harvelop
