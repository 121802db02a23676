#include "platform/qt/com_port_names.h"

#include <cstdlib>

namespace harvelop
{

namespace
{
struct PortRange {
    int first;
    int last;
    const char* device; // of the first, without its number
};
constexpr PortRange UsualPlaces[] = {{1, 4, "/dev/ttyS"}, {5, 12, "/dev/ttyUSB"}, {13, 16, "/dev/ttyACM"}};
} // namespace

std::string ComPortDevice(int port, const SettingsStore& settings)
{
    for (const PortRange& range : UsualPlaces) {
        if (port < range.first || port > range.last)
            continue;
        const std::string number = std::to_string(port);
        if (const char* device = std::getenv(("HARVELOP_COM" + number).c_str()))
            return device;
        const std::string usual = range.device + std::to_string(port - range.first);
        return settings.Get("Harvel", "ComPorts", number).value_or(usual);
    }
    return {};
}

} // namespace harvelop
