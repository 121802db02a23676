#include "platform/qt/qt_desktop.h"

#include "platform/qt/desktop_entry.h"
#include "platform/qt/file_replacement.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
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

// Here programs have no ending.
QString WithoutEnding(const QString& path)
{
    const QString ending = ".exe";
    return path.endsWith(ending, Qt::CaseInsensitive) ? path.chopped(ending.size()) : path;
}

// The executable file that a program's path stands for.
std::optional<QString> FindProgram(const QString& path)
{
    const QString full = QFileInfo(path).absoluteFilePath();
    for (const QString& one : {full, WithoutEnding(full)})
        if (IsProgram(one))
            return one;
    return std::nullopt;
}

// The path may name the folder of the data, and the programs may all lie in another.
std::string ProgramForShortcut(const std::string& path)
{
    const QString wanted = QString::fromStdString(path);
    if (const auto there = FindProgram(wanted))
        return there->toStdString();
    const QString name = QFileInfo(wanted).fileName();
    if (const auto beside = FindProgram(QCoreApplication::applicationDirPath() + '/' + name); beside && !name.isEmpty())
        return beside->toStdString();
    return WithoutEnding(wanted).toStdString();
}

// Where a shortcut of this name stands already, or else where no other file does.
std::string ShortcutPath(const QString& folder, const std::string& name)
{
    constexpr qint64 LongestLookedAt = 1 << 20;
    for (int number = 1;; ++number) {
        QFile file(folder + '/' + QString::fromStdString(DesktopFileName(name, number)));
        const QFileInfo about(file);
        if (!about.exists() ||
            (about.isFile() && file.open(QFile::ReadOnly) && HasName(file.read(LongestLookedAt).toStdString(), name)))
            return file.fileName().toStdString();
    }
}

} // namespace

std::string QtDesktop::CurrentDirectory() const
{
    std::error_code error;
    return fs::current_path(error).string();
}

std::string QtDesktop::DataDirectory() const
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return (data + "/harvelop").toStdString();
}

bool QtDesktop::EnterDirectory(const std::string& path)
{
    std::error_code error;
    fs::create_directories(path, error);
    if (!error)
        fs::current_path(path, error);
    return !error;
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
    const auto program = FindProgram(QString::fromStdString(path));
    if (!program)
        return false;
    QStringList texts;
    for (const std::string& argument : arguments)
        texts << QString::fromStdString(argument);
    return QProcess::startDetached(*program, texts, QString::fromStdString(workingDirectory));
}

std::string QtDesktop::ProgramOnPath(const std::string& name) const
{
    return QStandardPaths::findExecutable(QString::fromStdString(name)).toStdString();
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
    found.program = ProgramForShortcut(shortcut.program);
    const auto text = DesktopEntryText(found);
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    if (!text || !QDir().mkpath(folder))
        return false;
    return ReplaceFile(ShortcutPath(folder, shortcut.name), *text, Startable) == 0;
}

} // namespace harvelop
