// A handle of the system's that closes itself.
#pragma once

#include <unistd.h>
#include <utility>

namespace harvelop
{

class FileHandle
{
public:
    explicit FileHandle(int number = -1) : m_number(number) {}
    FileHandle(FileHandle&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    FileHandle& operator=(FileHandle&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~FileHandle()
    {
        if (m_number >= 0)
            ::close(m_number);
    }

    bool IsOpen() const { return m_number >= 0; }
    int Number() const { return m_number; }

private:
    int m_number;
};

} // namespace harvelop
