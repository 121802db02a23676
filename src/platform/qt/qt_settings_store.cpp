#include "platform/qt/qt_settings_store.h"

#include <QSettings>

namespace harvelop
{

namespace
{

// The user's own file alone; QSettings would look further in those of the whole machine.
struct UserSettings : QSettings {
    explicit UserSettings(const std::string& application)
        : QSettings(IniFormat, UserScope, "Harvel", QString::fromStdString(application))
    {
        setFallbacksEnabled(false);
    }
};

QString FullKey(const std::string& section, const std::string& key)
{
    return QString::fromStdString(section + "/" + key);
}

} // namespace

std::optional<std::string> QtSettingsStore::Get(const std::string& application, const std::string& section,
                                                const std::string& key) const
{
    const QVariant value = UserSettings(application).value(FullKey(section, key));
    return value.isValid() ? std::optional(value.toByteArray().toStdString()) : std::nullopt;
}

void QtSettingsStore::Save(const std::string& application, const std::string& section, const std::string& key,
                           const std::string& value)
{
    const QString text = QString::fromStdString(value);
    const bool exact = text.toStdString() == value;
    // A directory's name need not be UTF-8; then its bytes are kept as they are.
    UserSettings(application)
        .setValue(FullKey(section, key), exact ? QVariant(text) : QByteArray::fromStdString(value));
}

} // namespace harvelop
