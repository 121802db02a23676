// The rules of the options panel, as plain functions over values.
#pragma once

#include "settings/options.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

// The characters that the panel's fields keep; all others are dropped silently.
constexpr std::string_view SizeChars = "0123456789.";
constexpr std::string_view DesktopDirChars = "AABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
// No hyphen and no underscore: that they go from server names and addresses is meant.
constexpr std::string_view ServerChars = ".@ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

// The options as they were when the panel opened.
struct OptionsSnapshot {
    Options options;
    std::int16_t DesktopDir = 0; // a name that is no whole number becomes 0; that Cancel then writes "0" is meant
};

OptionsSnapshot TakeSnapshot(const Options& options);

// Puts back what Cancel undoes. That the two time-outs are not among it is meant.
void RestoreSnapshot(const OptionsSnapshot& snapshot, Options& options);

// The size of the log file as its field shows it: never with an exponent, which the field's filter would spoil.
std::string SizeText(double kB);

// Writes "LOGIN" as it is but "CRAM-MD5" as "CRM-MD5", so that a choice of it selects no button at the next load:
// meant.
enum class AuthenticationButton { Plain, Login, CramMd5 };
std::string_view AuthenticationWritten(AuthenticationButton button);
std::optional<AuthenticationButton> AuthenticationRead(std::string_view stored);

// Why a control can't be used, in a few words for its tool tip.
enum class Hindrance { PanelOpen, Working, None };
std::string_view DisabledReason(std::string_view control, Hindrance hindrance, bool lockControls);

} // namespace harvelop
