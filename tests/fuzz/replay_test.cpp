// Each property of the readers of outside text, over the corpus of its fuzzer.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/properties.h"

TEST(FuzzCorpus, KeepsEveryProperty)
{
    for (const auto& property : zor_fuzz::all_properties) {
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
}

TEST(FuzzCorpus, ABrokenPromiseIsTold)
{
    EXPECT_THROW(zor_fuzz::require(false, "told"), std::logic_error);
    EXPECT_NO_THROW(zor_fuzz::require(true, "kept"));
}
