#include "panels/option_edits.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "panels/add_rules.h"
#include "panels/options_rules.h"

#include <algorithm>

namespace harvelop
{

namespace
{

using Refusal = std::optional<std::string>; // what follows the key in the line; none: it is in

// At 0 every wait is over at once.
bool isWait(const std::string& value)
{
    constexpr double Longest = 9999;
    return IsNumberUpTo(value, Longest);
}

bool isFileName(const std::string& value)
{
    return value.find_first_of("/\\") == std::string::npos;
}

constexpr std::string_view LettersAndPoints = " can hold only the letters A to Z, digits, points and @.";

constexpr std::string_view Seconds = " wants a number of seconds, from 1 to 9999.";

constexpr OptionField Fields[] = {
    {"Language", "", 0, " wants a name without a folder.", isFileName},
    {"SiteID", "", 0},
    {"ModemTimeout", TimeoutChars, 0, Seconds, isWait},
    {"DesktopDir", DesktopDirChars, 32, " can hold only the letters A to Z, digits and _."},
    {"LogFileSize", SizeChars, 7, " wants a number."},
    {"SMTPServerName", ServerChars, 0, LettersAndPoints},
    {"SMTPPort", TimeoutChars, 5, " wants a number from 1 to 65535.", IsTcpPort},
    {"SMTPSender", ServerChars, 0, LettersAndPoints},
    {"SMTPUserName", ServerChars, 0, LettersAndPoints},
    {"SMTPPassword", "", 0},
    {"SMTPTimeout", TimeoutChars, 3, Seconds, isWait},
    {"FTPServername", ServerChars, 0, LettersAndPoints},
    {"FTPUserName", "", 0},
    {"FTPPassword", "", 0},
    {"FTPTimeout", TimeoutChars, 3, Seconds, isWait},
};

// What the panel keeps disabled while another box is not checked.
struct HeldRule {
    std::string_view key;
    bool Options::*box;
    std::string_view why;
};

constexpr HeldRule HeldRules[] = {
    {"RunHarvelOnStartup", &Options::ShowHarvelOnStartup, " is held on while ShowHarvelOnStartup is off."},
    {"DesktopDir", &Options::SaveToDesktop, " can be changed only while SaveToDesktop is on."},
    {"SMTPUserName", &Options::SMTPServerRequiresAuthentication,
     " can be changed only while SMTPServerRequiresAuthentication is on."},
    {"SMTPPassword", &Options::SMTPServerRequiresAuthentication,
     " can be changed only while SMTPServerRequiresAuthentication is on."},
};

Refusal changeBox(Options& options, bool Options::*box, const std::string& value)
{
    const auto wanted = ToBoolean(value);
    if (!wanted)
        return " wants 0 or 1.";
    const bool changed = options.*box != *wanted;
    options.*box = *wanted;
    if (box == &Options::ShowHarvelOnStartup && changed)
        options.RunHarvelOnStartup = !*wanted; // without its form it always unloads
    if (box == &Options::SMTPServerRequiresAuthentication && *wanted)
        options.SMTPAuthenticationType = AuthenticationWritten(AuthenticationButton::Login);
    return std::nullopt;
}

Refusal refusedText(const OptionField& rule, const std::string& value)
{
    if (value.find_first_of(CrLf) != std::string::npos)
        return " can't hold a line end.";
    const bool holds = value.empty() || !rule.holds || rule.holds(value);
    if (!holds || (!rule.allowed.empty() && value != KeepAllowed(value, rule.allowed)))
        return std::string(rule.takes);
    if (rule.longest > 0 && value.size() > rule.longest)
        return " can't be longer than " + std::to_string(rule.longest) + " characters.";
    return std::nullopt;
}

bool isSame(const OptionKey& key, const std::string& held, const std::string& wanted)
{
    const bool box = std::holds_alternative<bool Options::*>(key.variable);
    return held == wanted || (box && ToBoolean(held) == ToBoolean(wanted));
}

Refusal applyEdit(Options& options, const OptionEdit& edit)
{
    const auto keys = SavedOptionKeys();
    const auto key = std::ranges::find(keys, edit.key, &OptionKey::key);
    if (key == keys.end())
        return " is no option.";
    const std::string before = OptionText(options, key->variable);
    for (const HeldRule& held : HeldRules)
        if (held.key == edit.key && !(options.*held.box) && !isSame(*key, before, edit.value))
            return std::string(held.why);
    if (const auto* box = std::get_if<bool Options::*>(&key->variable))
        return changeBox(options, *box, edit.value);
    const OptionField* rule = FindOptionField(edit.key);
    if (!rule)
        return edit.key == "SMTPAuthenticationType" ? " follows from SMTPServerRequiresAuthentication."
                                                    : " can't be changed: the program keeps it by itself.";
    if (Refusal refusal = refusedText(*rule, edit.value))
        return refusal;
    const bool repaired = edit.value.empty() && !key->insteadOfEmpty.empty();
    if (!AssignOption(options, key->variable, repaired ? std::string(key->insteadOfEmpty) : edit.value))
        return std::string(rule->takes);
    return std::nullopt;
}

} // namespace

const OptionField* FindOptionField(std::string_view key)
{
    const auto* const field = std::ranges::find(Fields, key, &OptionField::key);
    return field == std::end(Fields) ? nullptr : field;
}

bool IsEditable(const OptionKey& key)
{
    return std::holds_alternative<bool Options::*>(key.variable) || FindOptionField(key.key);
}

std::optional<std::string> ApplyOptionEdits(Options& options, const std::vector<OptionEdit>& edits)
{
    Options edited = options;
    for (const OptionEdit& edit : edits)
        if (Refusal refusal = applyEdit(edited, edit))
            return edit.key + *refusal;
    options = edited;
    return std::nullopt;
}

} // namespace harvelop
