#include "core/windows_version.h"

#include "core/text_lines.h"

#include <array>

namespace harvelop
{

namespace
{

constexpr int Any = -1;

struct VersionRow {
    int major;
    int platform; // Any: whatever it is
    int minor;    // Any: every other
    std::string_view name;
};

// The first row that fits wins.
constexpr std::array<VersionRow, 9> Rows = {{{4, 1, 0, "Windows95 "},
                                             {4, 1, 10, "Windows98 "},
                                             {4, 1, 90, "Windows ME "},
                                             {4, 1, Any, "Unknown Windows 9x system "},
                                             {4, Any, 0, "Windows NT 4"},
                                             {4, Any, Any, "Unknown NT 4-based version"},
                                             {5, Any, 0, "Windows 2000"},
                                             {5, Any, 1, "Windows XP"},
                                             {5, Any, Any, "Unknown Windows NT 5 system"}}};

bool fits(int wanted, int given)
{
    return wanted == Any || wanted == given;
}

std::string nameOf(const WindowsVersion& version)
{
    if (version.major == 3)
        return "Windows NT 3." + std::to_string(version.minor);
    for (const auto& row : Rows)
        if (row.major == version.major && fits(row.platform, version.platform) && fits(row.minor, version.minor))
            return std::string(row.name);
    return "Unknown Windows system";
}

} // namespace

std::optional<WindowsVersion> GetVersion()
{
    return std::nullopt;
}

std::string DescribeWindows(const std::optional<WindowsVersion>& version)
{
    if (!version)
        return "Unable to get version information. GetVersionEx returned 0";
    return nameOf(*version) + TrimAtNull(version->servicePack) +
           "\r\nWindows Version Number = " + std::to_string(version->major) + "." + std::to_string(version->minor) +
           "." + std::to_string(version->build);
}

bool TallerPanel(const std::string& windowsVersion)
{
    return Holds(windowsVersion, "XP");
}

std::string TrimAtNull(std::string_view text)
{
    constexpr size_t Searched = 255;
    const size_t end = text.substr(0, Searched).find('\0');
    return std::string(text.substr(0, end));
}

std::string GetWindowsDir()
{
    return {};
}

} // namespace harvelop
