// Files whose every byte is a contract with the unload program.
#pragma once

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace harvelop::test
{

inline std::string GoldenFile(const std::string& name)
{
    std::ifstream file(std::string(GOLDEN_DIRECTORY) + "/" + name, std::ios::binary);
    EXPECT_TRUE(file) << "no golden file " << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace harvelop::test
