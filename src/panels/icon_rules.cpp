#include "panels/icon_rules.h"

#include <algorithm>

namespace harvelop
{

std::string DefaultIconName(const LoggerRecord& record)
{
    std::string name = record.LoggerDescription.empty() ? LinkDescriptionOf(record) : record.LoggerDescription;
    if (record.LoggerLinkType == "Ethernet") {
        std::replace(name.begin(), name.end(), '.', '_');
        std::replace(name.begin(), name.end(), ':', '-');
    }
    return name;
}

std::string UnnamedIcon(const IconChoice& choice, const std::string& defaultName)
{
    return choice.IconKind == "Command" ? "Send " + choice.IconCommand + " to " + defaultName : defaultName;
}

std::optional<Shortcut> IconShortcut(const IconChoice& choice, const LoggerRecord& record,
                                     const std::string& defaultName, const std::string& appPath)
{
    const bool sends = choice.IconKind == "Command";
    if (choice.IconCancelled || (!sends && choice.IconKind != "Data"))
        return std::nullopt;
    Shortcut shortcut;
    shortcut.name = choice.IconName.empty() ? UnnamedIcon(choice, defaultName) : choice.IconName;
    shortcut.program = appPath + "harvel.exe";
    shortcut.arguments = {record.LoggerIconKey};
    if (sends)
        shortcut.arguments.push_back("%" + choice.IconCommand + choice.IconTerminalMark);
    shortcut.workingDirectory = appPath;
    return shortcut;
}

bool MakeIcon(const PanelServices& services, int number,
              const std::function<IconChoice(const std::string& defaultName)>& ask)
{
    StorePanel(services, number);
    const LoggerRecord* stored = services.tables.Record(number);
    if (!stored)
        return false;
    const LoggerRecord record = *stored; // what the user sees it named by while it is asked for
    services.link.LinkDescription = LinkDescriptionOf(record);
    const std::string defaultName = DefaultIconName(record);
    const auto shortcut = IconShortcut(ask(defaultName), record, defaultName, services.state.AppPath);
    return shortcut && !services.end.Ended() && services.desktop.CreateShortcut(*shortcut);
}

} // namespace harvelop
