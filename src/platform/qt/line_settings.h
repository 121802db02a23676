// The line settings of a com port as one text: "9600,N,8,1".
#pragma once

#include <optional>
#include <string_view>

namespace harvelop
{

enum class StopBits { One, OneAndHalf, Two };

struct LineSettings {
    int baud = 9600;
    char parity = 'N'; // N none, E even, O odd, M mark, S space
    int dataBits = 8;  // 5 to 8
    StopBits stopBits = StopBits::One;
};

// Baud, from 50 to 4,000,000, parity letter of either case, data bits, and stop bits ("1", "1.5", "2"); nothing for any
// other text.
std::optional<LineSettings> ReadLineSettings(std::string_view text);

} // namespace harvelop
