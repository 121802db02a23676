#include "platform/qt/qt_data_files.h"

#include "platform/qt/file_handle.h"
#include "platform/qt/file_replacement.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace harvelop
{

namespace
{

constexpr size_t LargestFile = 64 * 1024 * 1024;

} // namespace

FileText QtDataFiles::Read(const std::string& path)
{
    if (path.find('\0') != std::string::npos)
        return {FileState::NotFound};
    const FileHandle file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.IsOpen())
        return {errno == ENOENT || errno == ENOTDIR ? FileState::NotFound : FileState::Unreadable};
    struct stat about;
    if (fstat(file.Number(), &about) != 0 || !S_ISREG(about.st_mode))
        return {FileState::Unreadable};
    std::string text;
    char block[64 * 1024];
    while (const ssize_t count = ::read(file.Number(), block, sizeof block)) {
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || text.size() + static_cast<size_t>(count) > LargestFile)
            return {FileState::Unreadable};
        text.append(block, static_cast<size_t>(count));
    }
    return {FileState::Read, std::move(text)};
}

bool QtDataFiles::Replace(const std::string& path, const std::string& text)
{
    return tell(path, "written", ReplaceFile(path, text));
}

bool QtDataFiles::Remove(const std::string& path)
{
    const bool gone = unlink(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR;
    return tell(path, "removed", gone ? 0 : errno);
}

// The path, but never the text: that holds passwords.
bool QtDataFiles::tell(const std::string& path, const char* what, int error)
{
    if (error == 0) {
        m_told.erase(path);
        return true;
    }
    if (std::exchange(m_told[path], error) != error)
        std::fprintf(stderr, "%s: %s can't be %s: %s\n", program_invocation_short_name, path.c_str(), what,
                     std::strerror(error));
    return false;
}

} // namespace harvelop
