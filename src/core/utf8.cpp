#include "core/utf8.h"

namespace harvelop
{

namespace
{

// How many bytes the character at the beginning of `text` takes; 0 if it is no UTF-8.
size_t characterLength(std::string_view text)
{
    const auto byte = [text](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    const size_t length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (length == 0 || length > text.size())
        return 0;
    for (size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xC0U) != 0x80)
            return 0;
    const bool overlong = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xF0 && byte(1) < 0x90);
    const bool noCharacter = (lead == 0xED && byte(1) > 0x9F) || (lead == 0xF4 && byte(1) > 0x8F);
    return overlong || noCharacter ? 0 : length;
}

} // namespace

std::optional<size_t> FirstBadByte(std::string_view text)
{
    size_t at = 0;
    while (at < text.size()) {
        const size_t length = characterLength(text.substr(at));
        if (length == 0)
            return at + 1;
        at += length;
    }
    return std::nullopt;
}

} // namespace harvelop
