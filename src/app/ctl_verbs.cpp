#include "app/ctl_verbs.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

using Verb = CtlCommand::Verb;
using Rest = CtlVerb::Rest;

constexpr auto Rows = std::to_array<CtlVerb>({{"find", Verb::Find},
                                              {"list", Verb::List},
                                              {"show", Verb::Show, true},
                                              {"set", Verb::Set, true, Rest::Fields},
                                              {"lists", Verb::Lists, true},
                                              {"ports", Verb::Ports},
                                              {"add", Verb::Add},
                                              {"test", Verb::Test, true},
                                              {"connect", Verb::Connect, true},
                                              {"send", Verb::Send, true, Rest::Text},
                                              {"terminal", Verb::Terminal, true},
                                              {"load", Verb::Load, true, Rest::File},
                                              {"jobs", Verb::Jobs, true},
                                              {"clear", Verb::Clear, true},
                                              {"test-smtp", Verb::TestSMTP},
                                              {"test-ftp", Verb::TestFTP},
                                              {"language-template", Verb::LanguageTemplate},
                                              {"language-check", Verb::LanguageCheck, false, Rest::File}});

} // namespace

std::span<const CtlVerb> CtlVerbs()
{
    return Rows;
}

const CtlVerb* CtlVerbOf(std::string_view word)
{
    const auto* const row = std::ranges::find(Rows, word, &CtlVerb::word);
    return row == Rows.end() ? nullptr : &*row;
}

} // namespace harvelop
