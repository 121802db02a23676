// The port control's error numbers in words.
#pragma once

#include "platform/dialogs.h"

#include <optional>

namespace harvelop
{

// The box for an error number of the port control; none for a number without a message. Not translated.
std::optional<Box> ComPortErrorBox(int number, int port);

} // namespace harvelop
