#include "platform/qt/qt_window_desktop.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace harvelop
{

bool QtWindowDesktop::ShowTextFile(const std::string& path)
{
    const QFileInfo file(QString::fromStdString(path));
    return file.exists() && QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath()));
}

} // namespace harvelop
