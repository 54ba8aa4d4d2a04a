// tests/fuzz/replay.h: a property over the corpus of its fuzzer.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/properties.h"

namespace zor_fuzz {

inline void replay(const Property& property)
{
    int inputs = 0;
    const auto folder = std::filesystem::path(ZOR_FUZZ_CORPUS) / property.name;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(file), {});
        EXPECT_NO_THROW(
            property.check(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()))
            << entry.path();
        ++inputs;
    }
    EXPECT_GT(inputs, 0) << folder;
}

} // namespace zor_fuzz
