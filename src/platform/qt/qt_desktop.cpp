#include "platform/qt/qt_desktop.h"

#include "platform/qt/desktop_entry.h"
#include "platform/qt/file_replacement.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QProcess>
#include <QStandardPaths>

#include <filesystem>
#include <optional>

namespace harvelop
{

namespace fs = std::filesystem;

namespace
{

bool IsProgram(const QString& path)
{
    const QFileInfo file(path);
    return file.isFile() && file.isExecutable();
}

// The executable file that a program's path stands for: here programs have no ending.
std::optional<QString> FindProgram(const std::string& path)
{
    const QString full = QFileInfo(QString::fromStdString(path)).absoluteFilePath();
    const QString ending = ".exe";
    if (IsProgram(full))
        return full;
    if (full.endsWith(ending, Qt::CaseInsensitive) && IsProgram(full.chopped(ending.size())))
        return full.chopped(ending.size());
    return std::nullopt;
}

} // namespace

std::string QtDesktop::CurrentDirectory() const
{
    std::error_code error;
    return fs::current_path(error).string();
}

std::string QtDesktop::DriveRoot() const
{
    const std::string home = QDir::homePath().toStdString();
    return home.ends_with('/') ? home : home + '/';
}

std::string QtDesktop::DateText() const
{
    return QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat).toStdString();
}

std::string QtDesktop::TimeText() const
{
    return QLocale::system().toString(QTime::currentTime(), QLocale::ShortFormat).toStdString();
}

bool QtDesktop::StartProgram(const std::string& path, const std::vector<std::string>& arguments,
                             const std::string& workingDirectory)
{
    const auto program = FindProgram(path);
    if (!program)
        return false;
    QStringList texts;
    for (const std::string& argument : arguments)
        texts << QString::fromStdString(argument);
    return QProcess::startDetached(*program, texts, QString::fromStdString(workingDirectory));
}

bool QtDesktop::ShowTextFile(const std::string& path)
{
    const QString file = QFileInfo(QString::fromStdString(path)).absoluteFilePath();
    const QString viewer = QStandardPaths::findExecutable("xdg-open");
    return QFileInfo::exists(file) && !viewer.isEmpty() && QProcess::startDetached(viewer, {file});
}

bool QtDesktop::CreateShortcut(const Shortcut& shortcut)
{
    constexpr mode_t Startable = 0755;
    Shortcut found = shortcut;
    if (const auto program = FindProgram(shortcut.program))
        found.program = program->toStdString();
    const auto text = DesktopEntryText(found);
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    if (!text || !QDir().mkpath(folder))
        return false;
    return ReplaceFile(folder.toStdString() + '/' + DesktopFileName(shortcut.name), *text, Startable) == 0;
}

} // namespace harvelop
