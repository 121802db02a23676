#include "servers/base64.h"

namespace harvelop
{

std::string CharCodeToBits(unsigned char code)
{
    std::string bits;
    for (int mask = 0x80; mask > 0; mask >>= 1)
        bits += (code & mask) ? '1' : '0';
    return bits;
}

int BitsToNumber(std::string_view bits)
{
    int number = 0;
    for (const char bit : bits)
        number = 2 * number + (bit == '1' ? 1 : 0);
    return number;
}

char Base64Char(int value)
{
    constexpr std::string_view Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    return Alphabet[static_cast<size_t>(value)];
}

std::string EncodeBase64(std::string_view text)
{
    constexpr size_t GroupBits = 6;
    constexpr size_t MaxGroups = 50;
    std::string bits;
    for (const char c : text)
        bits += CharCodeToBits(static_cast<unsigned char>(c));
    std::string encoded;
    for (size_t at = 0; at < bits.size() && encoded.size() < MaxGroups; at += GroupBits) {
        std::string group = bits.substr(at, GroupBits);
        group.resize(GroupBits, '0');
        encoded += Base64Char(BitsToNumber(group));
    }
    return encoded;
}

} // namespace harvelop
