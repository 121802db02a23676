#include "panels/options_rules.h"

#include "core/text_numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <tuple>

namespace harvelop
{

namespace
{

// All that Cancel puts back but `DesktopDir`.
constexpr auto Restored = std::tuple{
    &Options::SiteID,
    &Options::RunHarvelOnStartup,
    &Options::UnloadAll,
    &Options::ShowHarvelOnStartup,
    &Options::ShowDir,
    &Options::SaveToDesktop,
    &Options::SaveToOneFile,
    &Options::HideHarvelAfterUnload,
    &Options::ExitAfterUnload,
    &Options::LastUtallyCore,
    &Options::ShowMessages,
    &Options::SaveLogFile,
    &Options::LogFileSize,
    &Options::LockControls,
    &Options::FindPorts,
    &Options::SMTPServerName,
    &Options::SMTPPort,
    &Options::SMTPServerRequiresAuthentication,
    &Options::SMTPAuthenticationType,
    &Options::SMTPSender,
    &Options::SMTPUserName,
    &Options::SMTPPassword,
    &Options::FTPServername,
    &Options::FTPUserName,
    &Options::FTPPassword,
};

struct AuthenticationRow {
    AuthenticationButton button;
    std::string_view read;
    std::string_view written;
};

constexpr std::array<AuthenticationRow, 3> AuthenticationRows = {
    {{AuthenticationButton::Plain, "PLAIN", "PLAIN"},
     {AuthenticationButton::Login, "LOGIN", "LOGIN"},
     {AuthenticationButton::CramMd5, "CRAM-MD5", "CRM-MD5"}}};

struct Reason {
    std::string_view control;
    std::string_view text;
};

constexpr std::string_view Locked = "Locked by the check box Lock Find, Add and Delete buttons on the page Options.";
constexpr std::array LockedControls = {"cmdUnload_FindTallycores", "cmdUnload_Add", "cmdUnload_Delete"};
constexpr std::string_view NoLogin = "Check Server Requires Authentication first.";
constexpr std::string_view LoginOnly = "Harvel can only log in by LOGIN.";

constexpr Reason Reasons[] = {
    {"cmdApply", "Nothing has been changed."},
    {"chkRunHarvelOnStartup", "Without its form Harvel always unloads data when it starts."},
    {"txtDesktopDir", "Check Copy to desktop first."},
    {"optSMTPPLAIN", LoginOnly},
    {"optSMTPLOGIN", NoLogin},
    {"optSMTPCRMMD5", LoginOnly},
    {"txtSMTPUserName", NoLogin},
    {"txtSMTPPassword", NoLogin},
};

std::int16_t wholeNumber(const std::string& text)
{
    const auto value = ToDouble(text);
    return value && *value == std::floor(*value) ? ToInt16(text).value_or(0) : std::int16_t(0);
}

} // namespace

OptionsSnapshot TakeSnapshot(const Options& options)
{
    return {options, wholeNumber(options.DesktopDir)};
}

void RestoreSnapshot(const OptionsSnapshot& snapshot, Options& options)
{
    std::apply([&](auto... member) { ((options.*member = snapshot.options.*member), ...); }, Restored);
    options.DesktopDir = std::to_string(snapshot.DesktopDir);
}

std::string SizeText(double kB)
{
    std::array<char, 400> buffer{}; // the longest number has some 340 characters
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), kB, std::chars_format::fixed);
    return std::string(buffer.data(), result.ptr);
}

std::string_view AuthenticationWritten(AuthenticationButton button)
{
    return AuthenticationRows[static_cast<size_t>(button)].written;
}

std::optional<AuthenticationButton> AuthenticationRead(std::string_view stored)
{
    for (const auto& row : AuthenticationRows)
        if (row.read == stored)
            return row.button;
    return std::nullopt;
}

std::string_view DisabledReason(std::string_view control, Hindrance hindrance, bool lockControls)
{
    if (hindrance == Hindrance::PanelOpen)
        return "Close the panel of the tallyCore first.";
    const auto reason =
        std::find_if(std::begin(Reasons), std::end(Reasons), [&](const Reason& row) { return row.control == control; });
    const bool lockable = std::find(LockedControls.begin(), LockedControls.end(), control) != LockedControls.end();
    if (lockControls && lockable)
        return Locked;
    if (hindrance == Hindrance::Working && (reason == std::end(Reasons) || control == "cmdApply"))
        return "Wait until the work in hand is done.";
    return reason == std::end(Reasons) ? std::string_view() : reason->text;
}

} // namespace harvelop
