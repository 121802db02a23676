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

// The words of the options whose value can be a word of its own.
std::string optionsWithValues(std::string_view between)
{
    std::vector<std::string_view> words;
    for (const CtlOption& option : CtlOptions())
        if (option.takesValue)
            words.push_back(option.word);
    return joined(words, between);
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
    for (const CtlOption& option : CtlOptions())
        if (option.takesValue)
            values += "    " + std::string(option.word) + ") " + bashValue(option) + "return ;;\n";
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
           optionsWithValues(" | ") + R"()
            [[ ${COMP_WORDS[i + 1]} == '=' ]] && ((i++))
            [[ ${COMP_WORDS[i]} == --dir || ${COMP_WORDS[i - 1]} == --dir ]] && dir=${COMP_WORDS[i + 1]}
            ((i++))
            ;;
        -*) ;;
        *) if [[ -z $verb ]]; then verb=${COMP_WORDS[i]}; else ((plain++)); fi ;;
        esac
    done
    # The directory stands there as it was typed.
    dir=${dir//[\\\'\"]/}
    dir=${dir/#\~/"$HOME"}
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
    std::string row = "    " + std::string(verb.word) + ") _arguments '1:command: '";
    for (const CtlOption* option : optionsOf(verb))
        row += " " + zshOption(*option);
    const bool numbered = verb.number != CtlVerb::Number::None;
    if (numbered)
        row += " '2:logger:_harvelctl_loggers'";
    const std::string words = restWords(verb);
    if (verb.rest == Rest::File)
        row += std::string(" '") + (numbered ? "3" : "2") + ":file:_files'";
    else if (verb.rest == Rest::MayFields)
        row += " '*:option:compadd -S \"\" " + words + "'";
    else if (!words.empty())
        row += " '2:word:(" + words + ")'";
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
    numbers=(${${(f)"$(harvelctl --dir "$dir" list 2>/dev/null)"}%% *})
    compadd -- ${numbers:#No}
}
_harvelctl()
{
    local verb='' dir=. i
    for ((i = 2; i < CURRENT; i++)); do
        case $words[i] in
        --dir) dir=$words[++i] ;;
        --dir=*) dir=${words[i]#*=} ;;
        )zsh" +
           optionsWithValues(" | ") + R"zsh() ((i++)) ;;
        -*) ;;
        *) verb=${verb:-$words[i]} ;;
        esac
    done
    # The directory stands there as it was typed.
    dir=${(Q)dir}
    dir=${dir/#\~/$HOME}
    case $verb in
    '') _arguments '--dir=:dir:_files -/' '--help' '--version' '*:command:()zsh" +
           verbWords() + R"zsh()' ;;
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

// A row for the word of that number among those that are neither options nor their values, where the first of these is
// one of the commands. `number` may be a pattern; `''` stands for no command yet.
std::string fishRow(std::string_view number, std::string_view verbs)
{
    return "complete -c harvelctl -n \"__harvelctl_at '" + std::string(number) + "' " + std::string(verbs) + "\"";
}

std::string fishOption(const CtlOption& option)
{
    std::vector<std::string_view> verbs;
    for (const CtlVerb& verb : CtlVerbs())
        if (GoesWith(option, verb.verb))
            verbs.push_back(verb.word);
    std::string row = option.verbs.empty() ? "complete -c harvelctl" : fishRow("*", joined(verbs));
    row += " -l " + std::string(option.word.substr(2));
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

std::string fishVerb(const CtlVerb& verb)
{
    const bool numbered = verb.number != CtlVerb::Number::None;
    std::string rows;
    if (numbered)
        rows += fishRow("2", verb.word) + " -a '(__harvelctl_loggers)'\n";
    if (verb.rest == Rest::File)
        rows += fishRow(numbered ? "3" : "2", verb.word) + " -F\n";
    if (const std::string words = restWords(verb); !words.empty())
        rows += fishRow(verb.rest == Rest::MayFields ? "*" : "2", verb.word) + " -a '" + words + "'\n";
    return rows;
}

std::string fishScript()
{
    std::string known;
    for (const CtlOption& option : CtlOptions())
        known += std::string(option.word.substr(2)) + (option.takesValue ? "= " : " ");
    std::string script = R"(# fish completion of harvelctl
# The directory, and the words that are neither options nor their values, up to the one at the cursor, which stands as
# an empty one.
function __harvelctl_words
    set -l _flag_dir .
    argparse -i )" + known +
                         R"(-- (commandline -opc)[2..] '' 2>/dev/null
    string replace -r '^~' $HOME -- $_flag_dir
    string join \n -- $argv
end
function __harvelctl_at --argument-names number
    set -l words (__harvelctl_words)[2..]
    string match -q -- $number (count $words); and contains -- "$words[1]" $argv[2..]
end
function __harvelctl_loggers
    harvelctl --dir (__harvelctl_words)[1] list 2>/dev/null | string match -r '^\d+'
end
complete -c harvelctl -f
)";
    script += fishRow("1", "''") + " -l help\n";
    script += fishRow("1", "''") + " -l version\n";
    script += fishRow("1", "''") + " -a '" + verbWords() + "'\n";
    for (const CtlOption& option : CtlOptions())
        script += fishOption(option);
    for (const CtlVerb& verb : CtlVerbs())
        script += fishVerb(verb);
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
