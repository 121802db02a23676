// Lines that somebody types, or that come from a file or another program.
#pragma once

#include <optional>
#include <string>

namespace harvelop
{

// What comes wakes the event pump; nothing here ever blocks.
class LineInput
{
public:
    virtual ~LineInput() = default;

    // The next line, without its end, if it has come; a last line may lack its end.
    virtual std::optional<std::string> NextLine() = 0;

    // Nothing will come any more, and all that came has been taken.
    virtual bool AtEnd() const = 0;
};

} // namespace harvelop
