#include "platform/qt/file_replacement.h"

#include "platform/qt/file_handle.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace harvelop
{

namespace fs = std::filesystem;

namespace
{

constexpr mode_t NewFileMode = 0600;
constexpr mode_t PermissionBits = 07777;

// The file that a chain of links stands for, whether or not it exists.
fs::path BehindLinks(fs::path path)
{
    constexpr int LongestChain = 40;
    std::error_code error;
    for (int link = 0; link < LongestChain && fs::is_symlink(path, error); ++link)
        path = path.parent_path() / fs::read_symlink(path, error);
    return path;
}

int WriteAll(int handle, const std::string& text)
{
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t written = pwrite(handle, text.data() + done, text.size() - done, static_cast<off_t>(done));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return written < 0 ? errno : ENOSPC;
        done += static_cast<size_t>(written);
    }
    return fsync(handle) == 0 ? 0 : errno;
}

struct Target {
    fs::path path; // with links followed
    bool exists = false;
    struct stat old = {};
    mode_t mode = 0; // that the file gets
};

// The file to which a new text goes first.
struct Temporary {
    std::string path;
    FileHandle file;
};

// The same name each time, so that nothing piles up where programs are killed. Not open if another program is just
// writing to it, or if it is not plainly ours.
Temporary UsualTemporary(const Target& target)
{
    Temporary usual;
    usual.path = (target.path.parent_path() / ("." + target.path.filename().string() + ".new")).string();
    FileHandle file(::open(usual.path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, NewFileMode));
    if (!file.IsOpen() || flock(file.Number(), LOCK_EX | LOCK_NB) != 0)
        return usual;
    // Whoever held the lock before may have renamed the file, which is then somebody's data.
    struct stat held {
    };
    struct stat named {
    };
    const bool still = fstat(file.Number(), &held) == 0 && lstat(usual.path.c_str(), &named) == 0 &&
                       held.st_ino == named.st_ino && held.st_dev == named.st_dev;
    const bool ours = S_ISREG(held.st_mode) && held.st_uid == geteuid() && held.st_nlink == 1;
    if (still && ours && ftruncate(file.Number(), 0) == 0)
        usual.file = std::move(file);
    return usual;
}

Temporary NewTemporary(const Target& target)
{
    Temporary made{target.path.string() + ".XXXXXX", FileHandle()};
    made.file = FileHandle(mkostemp(made.path.data(), O_CLOEXEC));
    return made;
}

int FillAndRename(const Temporary& temporary, const Target& target, const std::string& text)
{
    const int handle = temporary.file.Number();
    if (fchmod(handle, target.mode) != 0)
        return errno;
    if (const int error = WriteAll(handle, text))
        return error;
    // Only the superuser can give a file away; for everybody else it is their own already.
    if (target.exists && fchown(handle, target.old.st_uid, target.old.st_gid) != 0 && errno != EPERM)
        return errno;
    return rename(temporary.path.c_str(), target.path.c_str()) == 0 ? 0 : errno;
}

// Through another file beside the old one. `made` tells whether the folder took it.
int ReplaceByRename(const Target& target, const std::string& text, bool& made)
{
    Temporary temporary = UsualTemporary(target);
    if (!temporary.file.IsOpen())
        temporary = NewTemporary(target);
    made = temporary.file.IsOpen();
    if (!made)
        return errno;
    const int error = FillAndRename(temporary, target, text);
    if (error) {
        unlink(temporary.path.c_str());
        return error;
    }
    const fs::path folder = target.path.has_parent_path() ? target.path.parent_path() : fs::path(".");
    if (const FileHandle opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)); opened.IsOpen())
        fsync(opened.Number()); // the new text stands already; this only makes it last
    return 0;
}

// All the room that the text needs is taken before the first byte of the old one is touched.
int OverwriteInPlace(const Target& target, const std::string& text)
{
    const FileHandle file(::open(target.path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.IsOpen())
        return errno;
    const auto length = static_cast<off_t>(text.size());
    if (const int error = length > 0 ? posix_fallocate(file.Number(), 0, length) : 0) {
        // Gives back what was taken behind the old text.
        return ftruncate(file.Number(), target.old.st_size) == 0 ? error : errno;
    }
    if (const int error = WriteAll(file.Number(), text))
        return error;
    return ftruncate(file.Number(), length) == 0 ? 0 : errno;
}

} // namespace

int ReplaceFile(const std::string& path, const std::string& text, mode_t extraMode)
{
    if (path.empty() || path.find('\0') != std::string::npos)
        return ENOENT;
    Target target{.path = BehindLinks(path)};
    target.exists = stat(target.path.c_str(), &target.old) == 0;
    target.mode = (target.exists ? target.old.st_mode & PermissionBits : NewFileMode) | extraMode;
    if (target.exists && !S_ISREG(target.old.st_mode))
        return S_ISDIR(target.old.st_mode) ? EISDIR : EINVAL;
    // A file that its owner has protected is not written, although its folder would allow it.
    if (target.exists && faccessat(AT_FDCWD, target.path.c_str(), W_OK, AT_EACCESS) != 0)
        return errno;
    bool made = false;
    const int error = ReplaceByRename(target, text, made);
    const bool folderRefused = !made && (error == EACCES || error == EPERM || error == EROFS);
    return target.exists && folderRefused ? OverwriteInPlace(target, text) : error;
}

} // namespace harvelop
