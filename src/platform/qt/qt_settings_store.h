// The per-user settings store, in the user's configuration folder.
#pragma once

#include "platform/settings_store.h"

namespace harvelop
{

// One INI file an application, one group in it a section.
class QtSettingsStore : public SettingsStore
{
public:
    std::optional<std::string> Get(const std::string& application, const std::string& section,
                                   const std::string& key) const override;
    void Save(const std::string& application, const std::string& section, const std::string& key,
              const std::string& value) override;
};

} // namespace harvelop
