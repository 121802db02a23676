// The options of `harvelctl` and the words that they take.
#pragma once

#include "app/ctl_arguments.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

using ArgumentError = std::string; // one line; empty: none. It never holds a value that may be a password

struct CtlOption {
    std::string_view word;
    std::vector<CtlCommand::Verb> verbs; // none: goes with every command
    bool takesValue;
    std::function<ArgumentError(CtlCommand&, const std::string& value)> apply;
    std::vector<std::string_view> links = {}; // add: the kinds of link that it goes with; none: all
};

const std::vector<CtlOption>& CtlOptions();

// What is wrong with the options that were used, each for itself and together. `verb`: the command's word.
ArgumentError WrongTogether(const CtlCommand& command, const std::string& verb,
                            const std::vector<const CtlOption*>& used);

// A whole number in a range, written in digits only.
std::optional<int> NumberIn(const std::string& word, int first, int last);

} // namespace harvelop
