// What flash programming reads out of texts, and what it tells.
#pragma once

#include "settings/language_tables.h"

#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

// The question before flash memory is written.
std::string FlashCaution(const LanguageTables& language, bool kr4, const std::string& logger, const std::string& file);

// Tells that a program is larger than flash memory.
std::string TooLargeText(const LanguageTables& language, const std::string& file);

// The job that a program line begins: all that stands in double quotes, taken in pairs; it may be empty. None if the
// line does not hold BEGIN with a double quote behind it.
std::optional<std::string> JobNameOf(std::string_view line);

// By its version a logger of the KR4 family must be told to take what was sent into flash memory. A version that does
// not begin with a digit counts as 0.
bool NeedsFlashOnReset(std::string_view version);

} // namespace harvelop
