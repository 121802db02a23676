// The comma-field splitter that is used throughout.
#pragma once

#include <string>
#include <string_view>

namespace harvelop
{

// Field `fieldNumber`, from 1, of a record whose fields are parted by any of the characters in `delimiters` (none
// given: ","). Empty if there is no such field, for a number outside 1 to 500 and for a record that is empty or longer
// than 10,000 characters.
std::string GetField(std::string_view record, int fieldNumber, std::string_view delimiters = ",");

} // namespace harvelop
