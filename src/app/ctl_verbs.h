// The commands of `harvelctl` by their words.
#pragma once

#include "app/ctl_arguments.h"

#include <span>
#include <string_view>

namespace harvelop
{

struct CtlVerb {
    enum class Rest { Nothing, Fields, Text, File }; // what stands behind the word, and behind the number
    std::string_view word;
    CtlCommand::Verb verb;
    bool number = false; // wants the number of a stored logger
    Rest rest = Rest::Nothing;
};

std::span<const CtlVerb> CtlVerbs();

// Null if there is no such command.
const CtlVerb* CtlVerbOf(std::string_view word);

} // namespace harvelop
