// Junk as a bad line makes it, the same for the same seed.
#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace harvelop
{

class LineNoise
{
public:
    explicit LineNoise(std::uint32_t seed) : m_random(seed) {}

    // Characters that occur in no command, reply or flow control.
    std::string Harmless(std::size_t size)
    {
        return draw(size, [](unsigned any) { return 0x80 + any % 0x80; });
    }

    // Any characters, line ends, zeros and flow control too, but never a '<': what answers so is no logger.
    std::string Any(std::size_t size)
    {
        return draw(size, [](unsigned any) { return any % 0x100 == '<' ? '>' : any % 0x100; });
    }

private:
    template <typename Pick> std::string draw(std::size_t size, Pick pick)
    {
        std::string junk;
        junk.reserve(size);
        while (junk.size() < size)
            junk += static_cast<char>(pick(static_cast<unsigned>(m_random() >> 8)));
        return junk;
    }

    std::minstd_rand m_random;
};

} // namespace harvelop
