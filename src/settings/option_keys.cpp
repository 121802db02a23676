#include "settings/option_keys.h"

#include "core/text_numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace harvelop
{

namespace
{

constexpr OptionKey SavedKeys[] = {
    {"Options", "UseLangFile", &Options::UseLangFile},
    {"Options", "Language", &Options::Language},
    {"Options", "AvailablePorts", &Options::AvailablePorts, &Options::AvailablePorts, "0", true},
    {"Options", "ModemTimeout", &Options::ModemTimeout, &Options::ModemTimeout, "45", true},
    {"Options", "OptionsTop", &Options::OptionsTop},
    {"Options", "OptionsLeft", &Options::OptionsLeft},
    {"Options", "MessagesTop", &Options::MessagesTop},
    {"Options", "MessagesLeft", &Options::MessagesLeft},
    // Both pairs of positions are written from the options panel's: that is meant.
    {"tallyCores", "tallyCoresTop", &Options::tallyCoresTop, &Options::OptionsTop},
    {"tallyCores", "tallyCoresLeft", &Options::tallyCoresLeft, &Options::OptionsLeft},
    {"Options", "LastSearch", &Options::LastSearch},
    {"Options", "SiteID", &Options::SiteID},
    {"Options", "RunHarvelOnStartup", &Options::RunHarvelOnStartup},
    {"Options", "UnloadAll", &Options::UnloadAll},
    {"Options", "ShowDir", &Options::ShowDir},
    {"Options", "SaveToDesktop", &Options::SaveToDesktop},
    {"Options", "DesktopDir", &Options::DesktopDir},
    {"Options", "SaveToOneFile", &Options::SaveToOneFile},
    {"Options", "ShowHarvelOnStartup", &Options::ShowHarvelOnStartup},
    {"Options", "HideHarvelAfterUnload", &Options::HideHarvelAfterUnload},
    {"Options", "ExitAfterUnload", &Options::ExitAfterUnload},
    {"Options", "LastUtallyCore", &Options::LastUtallyCore},
    {"Options", "ShowMessages", &Options::ShowMessages},
    {"Options", "ShowLoadMessages", &Options::ShowLoadMessages},
    {"Options", "SaveLogFile", &Options::SaveLogFile},
    {"Options", "LogFileSize", &Options::LogFileSize},
    {"Options", "FindPorts", &Options::FindPorts},
    {"Options", "SMTPServerName", &Options::SMTPServerName},
    {"Options", "SMTPPort", &Options::SMTPPort},
    {"Options", "SMTPServerRequiresAuthentication", &Options::SMTPServerRequiresAuthentication},
    {"Options", "SMTPAuthenticationType", &Options::SMTPAuthenticationType},
    {"Options", "SMTPSender", &Options::SMTPSender},
    {"Options", "SMTPUserName", &Options::SMTPUserName},
    {"Options", "SMTPPassword", &Options::SMTPPassword},
    {"Options", "SMTPRememberPassword", &Options::SMTPRememberPassword},
    {"Options", "SMTPTimeout", &Options::SMTPTimeout, &Options::SMTPTimeout, "5"},
    {"Options", "FTPServername", &Options::FTPServername},
    {"Options", "FTPUserName", &Options::FTPUserName},
    {"Options", "FTPPassword", &Options::FTPPassword},
    {"Options", "FTPTimeout", &Options::FTPTimeout, &Options::FTPTimeout, "5"},
    {"Options", "Icons", &Options::Icons},
    {"Options", "LockControls", &Options::LockControls},
    {"Terminal", "TerminalTop", &Options::TerminalTop},
    {"Terminal", "TerminalLeft", &Options::TerminalLeft},
    {"Terminal", "TerminalWidth", &Options::TerminalWidth},
    {"Terminal", "TerminalHeight", &Options::TerminalHeight},
    {"Terminal", "TransmitHeight1", &Options::TransmitHeight1},
};

// Known to a reader, but neither saved nor asked for.
constexpr OptionKey UnsavedKeys[] = {
    {"Options", "SMTPChecked", &Options::SMTPChecked},
    {"Options", "FTPChecked", &Options::FTPChecked},
};

// Some of these lines have no variable and vanish with the first save: that is meant.
constexpr std::string_view DefaultLines[] = {
    "UseLangFile=0",
    "ModemTimeout=45",
    "OptionsTop=0",
    "OptionsLeft=0",
    "MessagesTop=0",
    "MessagesLeft=0",
    "tallyCoresTop=0",
    "tallyCores=0",
    "LastSearch=0",
    "SiteID=",
    "RunHarvelOnStartup=1",
    "ShowDir=1",
    "SaveToDesktop=0",
    "DesktopDir=",
    "SaveToOneFile=0",
    "UnloadAll=0",
    "ShowHarvelOnStartup=1",
    "HideHarvelAfterUnload=0",
    "ExitAfterUnload=1",
    "LastUtallyCore=0",
    "ShowMessages=1",
    "ShowLoadMessages=1",
    "SaveLogFile=1",
    "LogFileSize=100",
    "FindPorts=1",
    "SMTPServerName=",
    "SMTPPort=25",
    "SMTPServerRequiresAuthentication=0",
    "SMTPAuthenticationType=PLAIN",
    "SMTPSender=",
    "SMTPUserName=",
    "SMTPPassword=",
    "SMTPRememberPassword=0",
    "SMTPChecked=0",
    "SMTPTimeout=",
    "FTPServername=",
    "FTPUserName=",
    "FTPPassword=",
    "FTPStartDirectory=",
    "FTPChecked=0",
    "FTPTimeout=",
    "Icons=1",
    "LockControls=0",
    "TerminalTop=0",
    "TerminalLeft=0",
    "TerminalWidth=6345",
    "TerminalHeight=5880",
    "TransmitHeight1=2000",
};

// Four of these have no variable. They are asked for all the same: it is the first one that creates a missing file.
constexpr OptionRequest StartRequests[] = {
    {"Smart", "SmartTop"},
    {"Smart", "SmartLeft"},
    {"Options", "UseLangFile"},
    {"Options", "Language"},
    {"Options", "AvailablePorts"},
    {"Options", "ModemTimeout"},
    {"Options", "OptionsTop"},
    {"Options", "OptionsLeft"},
    {"Options", "MessagesTop"},
    {"Options", "MessagesLeft"},
    {"tallyCores", "tallyCoresTop"},
    {"tallyCores", "tallyCoresLeft"},
    {"Options", "LastSearch"},
    {"Options", "SiteID"},
    {"Options", "UnloadAll"},
    {"Options", "ShowHarvelOnStartup"},
    {"Options", "RunHarvelOnStartup"},
    {"Options", "ShowDir"},
    {"Options", "SaveToDesktop"},
    {"Options", "DesktopDir"},
    {"Options", "SaveToOneFile"},
    {"Options", "HideHarvelAfterUnload"},
    {"Options", "ExitAfterUnload"},
    {"Options", "LastUtallyCore"},
    {"Options", "ShowMessages"},
    {"Options", "ShowLoadMessages"},
    {"Options", "SaveLogFile"},
    {"Options", "LogFileSize"},
    {"Options", "FindPorts"},
    {"Options", "SMTPServerName"},
    {"Options", "SMTPPort"},
    {"Options", "SMTPServerRequiresAuthentication"},
    {"Options", "SMTPAuthenticationType"},
    {"Options", "SMTPSender"},
    {"Options", "SMTPUserName"},
    {"Options", "SMTPPassword"},
    {"Options", "SMTPRememberPassword"},
    {"Options", "SMTPTimeout"},
    {"Options", "FTPServername"},
    {"Options", "FTPUserName"},
    {"Options", "FTPPassword"},
    {"Options", "FTPStartDirectory"},
    {"Options", "FTPRememberPassword"},
    {"Options", "FTPTimeout"},
    {"Options", "Icons"},
    {"Options", "LockControls"},
};

constexpr OptionRequest TerminalRequests[] = {
    {"Terminal", "TerminalTop"},    {"Terminal", "TerminalLeft"},    {"Terminal", "TerminalWidth"},
    {"Terminal", "TerminalHeight"}, {"Terminal", "TransmitHeight1"},
};

template <typename T> bool take(const std::optional<T>& converted, T& value)
{
    value = converted.value_or(value);
    return converted.has_value();
}

bool assign(const std::string& text, std::string& value)
{
    value = text;
    return true;
}

bool assign(const std::string& text, bool& value)
{
    return take(ToBoolean(text), value);
}

bool assign(const std::string& text, std::int16_t& value)
{
    return take(ToInt16(text), value);
}

bool assign(const std::string& text, double& value)
{
    return take(ToDouble(text), value);
}

bool assign(const std::string& text, float& value)
{
    const auto number = ToDouble(text);
    if (!number || std::fabs(*number) > std::numeric_limits<float>::max())
        return false;
    value = static_cast<float>(*number);
    return true;
}

std::string spell(const std::string& value)
{
    return value;
}

std::string spell(bool value)
{
    return BooleanText(value);
}

std::string spell(std::int16_t value)
{
    return std::to_string(value);
}

std::string spell(double value)
{
    return NumberText(value);
}

std::string spell(float value)
{
    return NumberText(value);
}

const OptionKey* findIn(std::span<const OptionKey> keys, std::string_view section, std::string_view key)
{
    const auto found = std::find_if(keys.begin(), keys.end(),
                                    [&](const OptionKey& row) { return row.section == section && row.key == key; });
    return found == keys.end() ? nullptr : &*found;
}

} // namespace

const OptionKey* FindOptionKey(std::string_view section, std::string_view key)
{
    const OptionKey* saved = findIn(SavedKeys, section, key);
    return saved ? saved : findIn(UnsavedKeys, section, key);
}

std::span<const OptionKey> SavedOptionKeys()
{
    return SavedKeys;
}

std::span<const std::string_view> DefaultOptionLines()
{
    return DefaultLines;
}

std::span<const OptionRequest> StartOptionRequests()
{
    return StartRequests;
}

std::span<const OptionRequest> TerminalOptionRequests()
{
    return TerminalRequests;
}

bool AssignOption(Options& options, const OptionVariable& variable, const std::string& text)
{
    return std::visit([&](auto member) { return assign(text, options.*member); }, variable);
}

std::string OptionText(const Options& options, const OptionVariable& variable)
{
    return std::visit([&](auto member) { return spell(options.*member); }, variable);
}

} // namespace harvelop
