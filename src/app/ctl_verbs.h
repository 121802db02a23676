// The commands of `harvelctl` by their words.
#pragma once

#include "app/ctl_arguments.h"

#include <span>
#include <string_view>

namespace harvelop
{

struct CtlVerb {
    enum class Number { None, Wanted, Possible }; // of a stored logger
    // What stands behind the word, and behind the number. MayFields: fields or nothing.
    enum class Rest { Nothing, Fields, MayFields, Text, File, Shell };
    std::string_view word;
    CtlCommand::Verb verb;
    Number number = Number::None;
    Rest rest = Rest::Nothing;
};

std::span<const CtlVerb> CtlVerbs();

// Null if there is no such command.
const CtlVerb* CtlVerbOf(std::string_view word);

} // namespace harvelop
