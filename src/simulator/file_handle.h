// A file descriptor that closes itself.
#pragma once

#include <unistd.h>
#include <utility>

namespace harvelop
{

class LineHandle
{
public:
    LineHandle() = default;
    explicit LineHandle(int fd) : m_fd(fd) {}
    LineHandle(LineHandle&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    LineHandle& operator=(LineHandle&& other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        other.Close();
        return *this;
    }
    ~LineHandle() { Close(); }

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
