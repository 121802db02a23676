// The per-user settings store: one value by application, section and key.
#pragma once

#include <optional>
#include <string>

namespace harvelop
{

class SettingsStore
{
public:
    virtual ~SettingsStore() = default;

    virtual std::optional<std::string> Get(const std::string& application, const std::string& section,
                                           const std::string& key) const = 0;
    virtual void Save(const std::string& application, const std::string& section, const std::string& key,
                      const std::string& value) = 0;
};

} // namespace harvelop
