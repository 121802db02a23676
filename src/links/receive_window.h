// `txtCharacterWindow`: the one growing text in which replies are looked for.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace harvelop
{

class ReceiveWindow
{
public:
    static constexpr size_t OverflowLength = 65501; // a text of this length is emptied at once

    void Append(std::string_view text);
    void Clear();
    void Set(std::string text); // puts a text in the place of what stood there

    const std::string& Text() const { return m_text; }

    // Changes whenever the text was anything but appended to: whoever has scanned a part of it starts over.
    std::uint64_t Generation() const { return m_generation; }

    bool WindowOverflowed = false; // ever
    double WindowClearCount = 0;   // overflows so far

private:
    void overflow();

    std::string m_text;
    std::uint64_t m_generation = 0;
};

} // namespace harvelop
