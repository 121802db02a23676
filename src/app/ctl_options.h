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
    using Apply = std::function<ArgumentError(CtlCommand&, const std::string& value)>;
    enum class Path { None, File, Directory };
    std::string_view word;
    std::vector<CtlCommand::Verb> verbs; // none: goes with every command
    bool takesValue;
    Apply apply;
    std::vector<std::string_view> links = {}; // add: the kinds of link that it goes with; none: all
    std::vector<std::string> values = {};     // what a value can be, where that is a list
    Path path = Path::None;                   // what a value names
};

const std::vector<CtlOption>& CtlOptions();

// What is wrong with the options that were used, each for itself and together. `verb`: the command's word.
ArgumentError WrongTogether(const CtlCommand& command, const std::string& verb,
                            const std::vector<const CtlOption*>& used);

// The same of `add` and the options that are its own.
std::vector<CtlOption> AddOptions();
ArgumentError WrongAdd(const CtlCommand& command, const std::vector<const CtlOption*>& used);

bool GoesWith(const CtlOption& option, CtlCommand::Verb verb);

// A whole number in a range, written in digits only.
std::optional<int> NumberIn(const std::string& word, int first, int last);

std::vector<std::string> NumbersTo(int last); // "1", "2", …

} // namespace harvelop
