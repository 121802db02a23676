// A file descriptor that closes itself.
#pragma once

#include <unistd.h>
#include <utility>

namespace harvelop
{

class FileHandle
{
public:
    FileHandle() = default;
    explicit FileHandle(int fd) : m_fd(fd) {}
    FileHandle(FileHandle&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    FileHandle& operator=(FileHandle&& other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        other.Close();
        return *this;
    }
    ~FileHandle() { Close(); }

    void Close()
    {
        if (const int fd = std::exchange(m_fd, -1); fd >= 0)
            ::close(fd);
    }
    bool IsOpen() const { return m_fd >= 0; }
    int Get() const { return m_fd; }

private:
    int m_fd = -1;
};

} // namespace harvelop
