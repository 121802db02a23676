// A table whose odd bounds are meant: an index outside them is a value to test, not undefined behaviour.
#pragma once

#include <array>
#include <cstddef>

namespace harvelop
{

template <typename T, int First, int Last> class BoundedTable
{
public:
    // The entry, or nullptr where the table has none: the statement that needs it is then skipped.
    T* At(int index) { return has(index) ? &m_entries[static_cast<size_t>(index - First)] : nullptr; }
    const T* At(int index) const { return has(index) ? &m_entries[static_cast<size_t>(index - First)] : nullptr; }

    // The entry's value, or `otherwise`.
    T Get(int index, const T& otherwise = T()) const { return has(index) ? *At(index) : otherwise; }

    // False, and nothing done, where the table has no such entry.
    bool Set(int index, const T& value)
    {
        if (!has(index))
            return false;
        *At(index) = value;
        return true;
    }

    void Fill(const T& value) { m_entries.fill(value); }

private:
    static constexpr bool has(int index) { return index >= First && index <= Last; }
    std::array<T, static_cast<size_t>(Last - First + 1)> m_entries{};
};

} // namespace harvelop
