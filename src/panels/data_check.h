// What is odd in the data files, told from their texts alone. It goes by the tables and rules of those that read, write
// and edit them, and tells no values but addresses: the rest may be somebody's password.
#pragma once

#include "settings/language_check.h" // MostFindings

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

enum class Oddity {
    PassedOver, // the program does not read it
    Changed,    // the program's next save writes it otherwise, or not at all
    Risk        // it is read as it stands, and may not do what it should
};

struct Finding {
    int line = 0; // from 1; 0: the file as a whole
    Oddity oddity = Oddity::Risk;
    std::string text; // one line
};
using Findings = std::vector<Finding>;

// All that look into a text stop reading once they have more than `MostFindings`.

// The bytes and line ends of a file that is written with CR LF. Lines that `isFree` names may hold control characters.
Findings CheckBytes(std::string_view text, bool (*isFree)(std::string_view line) = nullptr);

// Whether a line of `options.ini` belongs to an option whose field takes every character.
bool IsFreeOption(std::string_view line);

// `options.ini`, but for its bytes.
Findings CheckOptions(std::string_view text);

// What `found.ini` is held against.
struct LoggerSurroundings {
    std::optional<double> icons; // the counter behind the loggers' keys; none: it is not known
    std::function<bool(const std::string& path)> isFolder;
    std::function<bool(const std::string& name)> isProgram; // there is such a program to run
};
Findings CheckLoggers(std::string_view text, const LoggerSurroundings& surroundings);

// The delivery list of a logger of this model.
Findings CheckDeliveryList(std::string_view text, std::string_view model);

// `install.ini`.
Findings CheckInstallMark(std::string_view text);

// An address as people write it: a name, one "@" and a place, of the characters that a delivery list keeps.
bool IsAddress(std::string_view text);

} // namespace harvelop
