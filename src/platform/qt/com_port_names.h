// Which device stands behind a com port number.
#pragma once

#include "platform/settings_store.h"

#include <string>

namespace harvelop
{

// The environment variable HARVELOP_COM<port> if it is set; else the value of application "Harvel", section "ComPorts",
// key <port> of the user's settings; else the usual place: 1 to 4 /dev/ttyS0 to 3, 5 to 12 /dev/ttyUSB0 to 7,
// 13 to 16 /dev/ttyACM0 to 3. Empty, in either place too: there is no such port.
std::string ComPortDevice(int port, const SettingsStore& settings);

} // namespace harvelop
