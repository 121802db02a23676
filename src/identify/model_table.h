// Which model a logger's reply tells.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

// A logger that announces itself by name.
struct NamedModel {
    std::string_view announcement;  // what its reply holds, in any case, trailing blank included
    std::string_view model;         // "KR40"
    std::string_view versionPrompt; // stands in front of the version
    int serialPosition = 0;         // of the serial number in the reply to "CHARAC1", 1 the first character
};

// A logger of the older families, known by a short code.
struct SignedModel {
    std::string_view model;  // "KR200 with a XBM"
    std::string_view series; // "1", "2" or "3"
};

std::optional<NamedModel> ModelByName(std::string_view reply);

// The first signature, in the table's order, that occurs in the report.
std::optional<SignedModel> ModelBySignature(std::string_view report);

} // namespace harvelop
