// The encoder of a mail login: a text pipeline over strings of binary digits. It pads nothing, and no more than 50
// characters come out: meant.
#pragma once

#include <string>
#include <string_view>

namespace harvelop
{

std::string EncodeBase64(std::string_view text); // by its bytes

std::string CharCodeToBits(unsigned char code); // eight binary digits
int BitsToNumber(std::string_view bits);        // the value of up to 30 binary digits
char Base64Char(int value);                     // the character for 0 to 63

} // namespace harvelop
