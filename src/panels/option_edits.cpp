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

// What the field of an option takes.
struct FieldRule {
    std::string_view key;
    std::string_view allowed; // empty: every character
    size_t longest = 0;       // 0: no bound
    std::string_view takes = {};
};

constexpr std::string_view LettersAndPoints = " can hold only the letters A to Z, digits, points and @.";

constexpr FieldRule FieldRules[] = {
    {"Language", "", 0},
    {"SiteID", "", 0},
    {"ModemTimeout", TimeoutChars, 0, " wants a number of seconds."},
    {"DesktopDir", DesktopDirChars, 32, " can hold only the letters A to Z, digits and _."},
    {"LogFileSize", SizeChars, 7, " wants a number."},
    {"SMTPServerName", ServerChars, 0, LettersAndPoints},
    {"SMTPPort", TimeoutChars, 5, " wants a number."},
    {"SMTPSender", ServerChars, 0, LettersAndPoints},
    {"SMTPUserName", ServerChars, 0, LettersAndPoints},
    {"SMTPPassword", "", 0},
    {"SMTPTimeout", TimeoutChars, 3, " wants a number of seconds."},
    {"FTPServername", ServerChars, 0, LettersAndPoints},
    {"FTPUserName", "", 0},
    {"FTPPassword", "", 0},
    {"FTPTimeout", TimeoutChars, 3, " wants a number of seconds."},
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

Refusal refusedText(const FieldRule& rule, const std::string& value)
{
    if (value.find_first_of(CrLf) != std::string::npos)
        return " can't hold a line end.";
    if (!rule.allowed.empty() && value != KeepAllowed(value, rule.allowed))
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
    const auto* const rule = std::ranges::find(FieldRules, edit.key, &FieldRule::key);
    if (rule == std::end(FieldRules))
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

bool IsEditable(const OptionKey& key)
{
    return std::holds_alternative<bool Options::*>(key.variable) ||
           std::ranges::find(FieldRules, key.key, &FieldRule::key) != std::end(FieldRules);
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
