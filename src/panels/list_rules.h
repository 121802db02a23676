// The rules of the delivery lists as people edit them: which characters an address may hold, and the text with one
// address a line.
#pragma once

#include "platform/dialogs.h"
#include "settings/delivery_lists.h"
#include "settings/language_tables.h"

#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// The characters that the text of a list keeps, its line ends among them; all others are dropped silently. No hyphen
// and no plus sign: that they go from addresses is meant.
constexpr std::string_view AddressChars = ".@ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_\r\n";

// The addresses of a text, one a line; an empty line takes a position too. At most 19 from the first 5000 characters
// are kept.
AddressList AddressesIn(std::string_view text);

// The text of a list: each address that is not empty, followed by CR LF. The last position is not shown.
std::string AddressText(const AddressList& addresses);

// What the lists of a model are called, by schedule index: "All Schedules", "Schedule A", …
std::vector<std::string> ListCaptions(std::string_view model);

// The question before all lists of a logger are emptied.
Box DeleteAllQuestion(const LanguageTables& language);

} // namespace harvelop
