// What a model can do, as the lines that the panel of a logger shows of it.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// The labels of the lines.
inline constexpr std::array<std::string_view, 13> SpecificationLabels = {
    "lblAnalogChannels",
    "lblDigitalChannels",
    "lblDisplay",
    "lblEthernet",
    "lblBootstrapVersion",
    "lblFirmwareMedia",
    "lblFTP",
    "lblMemory",
    "lblMemoryCard",
    "lblProcessor",
    "lblRS232",
    "lblSamplesPerSec",
    "lblUSB",
};

// A line: the label that shows it, and its text. With a number, `text` stands behind the language file's text of that
// number; without one it is the whole caption.
struct SpecificationLine {
    std::string_view label;
    int number = 0;
    std::string text; // may be empty

    bool operator==(const SpecificationLine&) const = default;
};

struct ModelDescription {
    std::vector<SpecificationLine> lines; // labels without a line are empty
    std::optional<bool> flashEnabled;     // of `cmdFlash` and `cmdFlashClear`; none: they stay as they are
};

// The description of a model text as a record holds it ("KR200", "KR200 Series 2", "KR20 with a Display", "KR40").
// `series` is what identification found ("1", "2", "3" or empty); it counts only for texts that can't hold theirs yet.
// `langActive`: a language file is in use. An unknown model has no lines.
ModelDescription DescribeModel(std::string model, const std::string& series, bool langActive);

} // namespace harvelop
