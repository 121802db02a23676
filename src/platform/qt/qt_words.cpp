#include "platform/qt/qt_words.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

#include <algorithm>

namespace harvelop
{

void QtWords::Speak(const std::string& language)
{
    const QString name = QString::fromStdString(language);
    const auto all = QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
    const auto found = std::find_if(all.begin(), all.end(), [&name](const QLocale& locale) {
        return QLocale::languageToString(locale.language()) == name;
    });
    if (found != all.end() && m_words.load(*found, "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_words);
}

} // namespace harvelop
