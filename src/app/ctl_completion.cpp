#include "app/ctl_completion.h"

#include "app/ctl_options.h"
#include "app/ctl_verbs.h"
#include "panels/option_edits.h"

#include <algorithm>
#include <vector>

namespace harvelop
{

namespace
{

using Rest = CtlVerb::Rest;
using Path = CtlOption::Path;

template <typename Words> std::string joined(const Words& words, std::string_view between = " ")
{
    std::string text;
    for (const auto& word : words)
        text.append(text.empty() ? "" : between).append(word);
    return text;
}

std::string verbWords()
{
    std::vector<std::string_view> words;
    words.reserve(CtlVerbs().size());
    for (const CtlVerb& row : CtlVerbs())
        words.push_back(row.word);
    return joined(words);
}

std::vector<const CtlOption*> optionsOf(const CtlVerb& verb)
{
    std::vector<const CtlOption*> options;
    for (const CtlOption& option : CtlOptions())
        if (GoesWith(option, verb.verb))
            options.push_back(&option);
    return options;
}

// What stands behind a command and its number, where that is a list.
std::string restWords(const CtlVerb& verb)
{
    if (verb.rest == Rest::Shell)
        return joined(CompletionShells);
    std::vector<std::string> words;
    if (verb.rest == Rest::MayFields)
        for (const OptionKey& key : SavedOptionKeys())
            if (IsEditable(key))
                words.push_back(std::string(key.key) + "=");
    return joined(words);
}

// bash

std::string bashValue(const CtlOption& option)
{
    if (option.path == Path::Directory)
        return "compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -d -- \"$cur\"); ";
    if (option.path == Path::File)
        return "compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -f -- \"$cur\"); ";
    if (option.values.empty())
        return {};
    return "mapfile -t COMPREPLY < <(compgen -W '" + joined(option.values) + "' -- \"$cur\"); ";
}

std::string bashVerb(const CtlVerb& verb)
{
    const auto options = optionsOf(verb);
    std::vector<std::string_view> words;
    words.reserve(options.size());
    for (const CtlOption* option : options)
        words.push_back(option->word);
    std::string row = "    " + std::string(verb.word) + ") options='" + joined(words) + "'";
    if (verb.number != CtlVerb::Number::None)
        row += "; number=1";
    if (verb.rest == Rest::File)
        row += "; files=1";
    if (const std::string rest = restWords(verb); !rest.empty())
        row += "; rest='" + rest + "'";
    return row + " ;;\n";
}

std::string bashScript()
{
    std::string values;
    std::vector<std::string_view> taking;
    for (const CtlOption& option : CtlOptions()) {
        if (!option.takesValue)
            continue;
        taking.push_back(option.word);
        values += "    " + std::string(option.word) + ") " + bashValue(option) + "return ;;\n";
    }
    std::string verbs;
    for (const CtlVerb& verb : CtlVerbs())
        verbs += bashVerb(verb);
    return R"(# bash completion of harvelctl
_harvelctl()
{
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    local verb='' options='--dir --help --version' number='' files='' rest='' dir=. joined='' plain=0 i
    COMPREPLY=()
    # A name and its value may be joined by "=", which is a word of its own here.
    if [[ $cur == '=' ]]; then
        cur='' joined=1
    elif [[ $prev == '=' && $COMP_CWORD -gt 2 ]]; then
        prev=${COMP_WORDS[COMP_CWORD - 2]} joined=1
    fi
    case $prev in
)" + values +
           R"(    esac
    [[ -n $joined ]] && return # the value of a NAME=VALUE
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
        )" +
           joined(taking, " | ") + R"()
            [[ ${COMP_WORDS[i + 1]} == '=' ]] && ((i++))
            [[ ${COMP_WORDS[i]} == --dir || ${COMP_WORDS[i - 1]} == --dir ]] && dir=${COMP_WORDS[i + 1]}
            ((i++))
            ;;
        -*) ;;
        *) if [[ -z $verb ]]; then verb=${COMP_WORDS[i]}; else ((plain++)); fi ;;
        esac
    done
    case $verb in
    '') rest=')" +
           verbWords() + R"(' ;;
)" + verbs +
           R"(    esac
    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
    elif [[ -n $number && $plain -eq 0 ]]; then
        rest=$(harvelctl --dir "$dir" list 2>/dev/null | while read -r i _; do echo "$i"; done)
        mapfile -t COMPREPLY < <(compgen -W "${rest#No}" -- "$cur")
    elif [[ -n $files ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
    elif [[ -n $rest ]]; then
        [[ $verb == options ]] && compopt -o nospace 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -W "$rest" -- "$cur")
    fi
}
complete -F _harvelctl harvelctl
)";
}

// zsh

std::string zshOption(const CtlOption& option)
{
    const std::string word(option.word);
    if (!option.takesValue)
        return "'" + word + "'";
    const std::string kind = option.path == Path::Directory ? "_files -/"
                             : option.path == Path::File    ? "_files"
                             : option.values.empty()        ? " "
                                                            : "(" + joined(option.values) + ")";
    return "'*" + word + "=:" + word.substr(2) + ":" + kind + "'";
}

std::string zshVerb(const CtlVerb& verb)
{
    std::string row = "    " + std::string(verb.word) + ") _arguments";
    for (const CtlOption* option : optionsOf(verb))
        row += " " + zshOption(*option);
    const bool numbered = verb.number != CtlVerb::Number::None;
    if (numbered)
        row += " '1:logger:_harvelctl_loggers'";
    const std::string words = restWords(verb);
    if (verb.rest == Rest::File)
        row += std::string(" '") + (numbered ? "2" : "1") + ":file:_files'";
    else if (verb.rest == Rest::MayFields)
        row += " '*:option:compadd -S \"\" " + words + "'";
    else if (!words.empty())
        row += " '1:word:(" + words + ")'";
    return row + " ;;\n";
}

std::string zshScript()
{
    std::string verbs;
    for (const CtlVerb& verb : CtlVerbs())
        verbs += zshVerb(verb);
    return R"zsh(#compdef harvelctl
# zsh completion of harvelctl
_harvelctl_loggers()
{
    local -a numbers
    numbers=(${${(f)"$(harvelctl --dir "${opt_args[--dir]:-.}" list 2>/dev/null)"}%% *})
    compadd -- ${numbers:#No}
}
_harvelctl()
{
    local curcontext="$curcontext" state line
    typeset -A opt_args
    _arguments -C '--dir=:dir:_files -/' '--help' '--version' \
        '1:command:()zsh" +
           verbWords() + R"zsh()' '*::rest:->rest'
    [[ $state == rest ]] || return 0
    case ${line[1]} in
)zsh" + verbs +
           R"zsh(    esac
}
if [[ $funcstack[1] == _harvelctl ]]; then
    _harvelctl "$@"
else
    compdef _harvelctl harvelctl
fi
)zsh";
}

// fish

std::string fishOption(const CtlOption& option, const std::string& condition)
{
    std::string row = "complete -c harvelctl" + condition + " -l " + std::string(option.word.substr(2));
    if (!option.takesValue)
        return row + "\n";
    if (option.path == Path::File)
        return row + " -r -F\n";
    row += " -x";
    if (option.path == Path::Directory)
        row += " -a '(__fish_complete_directories)'";
    else if (!option.values.empty())
        row += " -a '" + joined(option.values) + "'";
    return row + "\n";
}

std::string fishScript()
{
    std::string script = "# fish completion of harvelctl\n"
                         "function __harvelctl_loggers\n"
                         "    harvelctl list 2>/dev/null | string match -r '^\\d+'\n"
                         "end\n"
                         "complete -c harvelctl -f\n"
                         "complete -c harvelctl -n __fish_use_subcommand -l help\n"
                         "complete -c harvelctl -n __fish_use_subcommand -l version\n"
                         "complete -c harvelctl -n __fish_use_subcommand -a '" +
                         verbWords() + "'\n";
    for (const CtlOption& option : CtlOptions()) {
        std::vector<std::string_view> verbs;
        for (const CtlVerb& verb : CtlVerbs())
            if (!option.verbs.empty() && GoesWith(option, verb.verb))
                verbs.push_back(verb.word);
        script += fishOption(option, verbs.empty() ? "" : " -n '__fish_seen_subcommand_from " + joined(verbs) + "'");
    }
    for (const CtlVerb& verb : CtlVerbs()) {
        const std::string row = "complete -c harvelctl -n '__fish_seen_subcommand_from " + std::string(verb.word) + "'";
        if (verb.number != CtlVerb::Number::None)
            script += row + " -a '(__harvelctl_loggers)'\n";
        if (verb.rest == Rest::File)
            script += row + " -F\n";
        if (const std::string words = restWords(verb); !words.empty())
            script += row + " -a '" + words + "'\n";
    }
    return script;
}

} // namespace

std::string CompletionScript(std::string_view shell)
{
    if (shell == "bash")
        return bashScript();
    if (shell == "zsh")
        return zshScript();
    return shell == "fish" ? fishScript() : std::string();
}

} // namespace harvelop
