// The version text of Windows, as a table over the numbers that the system gives.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

struct WindowsVersion {
    int major = 0;
    int minor = 0;
    int build = 0;
    int platform = 0; // 1: the 9x line
    std::string servicePack;
};

// The version of the system that the program runs on; none anywhere but on Windows.
std::optional<WindowsVersion> GetVersion();

// A text that names the version, with its numbers in a further line. Without a version it tells that the call failed.
std::string DescribeWindows(const std::optional<WindowsVersion>& version);

// Whether a panel is made taller on the system of that text: on "XP", whose title bars are higher.
bool TallerPanel(const std::string& windowsVersion);

// The text up to its first NUL, looking at no more than the first 255 characters.
std::string TrimAtNull(std::string_view text);

// The directory that Windows stands in; empty anywhere else.
std::string GetWindowsDir();

} // namespace harvelop
