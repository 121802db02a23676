#include "links/com_port_errors.h"

#include "platform/serial_control.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace harvelop
{

namespace
{

struct ErrorText {
    int number;
    std::string_view text;
};

// 8005 has none: opening a port tells of a busy one. 8012 has none either.
constexpr std::array<ErrorText, 17> ErrorTexts = {{
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
}};

} // namespace

std::optional<Box> ComPortErrorBox(int number, int port)
{
    if (number == PortAbsent)
        return Box{"Com Port " + std::to_string(port) +
                       " Doesn't Exist. The AvailablePorts Paramater in the term.ini File is INCORRECT.   ",
                   "", BoxIcon::Critical, BoxButtons::Ok};
    const auto found = std::find_if(ErrorTexts.begin(), ErrorTexts.end(),
                                    [number](const ErrorText& entry) { return entry.number == number; });
    if (found == ErrorTexts.end())
        return std::nullopt;
    return Box{std::string(found->text), "Com Port Engine", BoxIcon::Exclamation, BoxButtons::Ok};
}

} // namespace harvelop
