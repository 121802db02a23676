#include "app/ctl_verbs.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

using Verb = CtlCommand::Verb;
using Rest = CtlVerb::Rest;

using enum CtlVerb::Number;

constexpr auto Rows = std::to_array<CtlVerb>({{"find", Verb::Find},
                                              {"list", Verb::List},
                                              {"show", Verb::Show, Wanted},
                                              {"set", Verb::Set, Wanted, Rest::Fields},
                                              {"lists", Verb::Lists, Wanted},
                                              {"ports", Verb::Ports},
                                              {"add", Verb::Add},
                                              {"delete", Verb::Delete, Wanted},
                                              {"test", Verb::Test, Wanted},
                                              {"connect", Verb::Connect, Wanted},
                                              {"send", Verb::Send, Wanted, Rest::Text},
                                              {"terminal", Verb::Terminal, Wanted},
                                              {"load", Verb::Load, Wanted, Rest::File},
                                              {"jobs", Verb::Jobs, Wanted},
                                              {"clear", Verb::Clear, Wanted},
                                              {"unload", Verb::Unload, Possible},
                                              {"shortcut", Verb::Shortcut, Wanted},
                                              {"options", Verb::Options, None, Rest::MayFields},
                                              {"test-smtp", Verb::TestSMTP},
                                              {"test-ftp", Verb::TestFTP},
                                              {"check", Verb::Check},
                                              {"language-template", Verb::LanguageTemplate},
                                              {"language-check", Verb::LanguageCheck, None, Rest::File},
                                              {"completion", Verb::Completion, None, Rest::Shell}});

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
