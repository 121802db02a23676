// The loggers that are simulated for whoever has none, as the text of a simulation file.
#pragma once

#include <string_view>

namespace harvelop
{

std::string_view DemoSimulation();

} // namespace harvelop
