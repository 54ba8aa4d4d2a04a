// tests/support/temp_folder.h: a fresh folder per test, gone with it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "tests/support/text.h"

namespace zor_test {

class TempFolder
{
public:
    TempFolder()
    {
        std::random_device random;
        const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = test == nullptr ? "zor" : std::string("zor-") + test->name();
        for (char& c : name)
            c = c == '/' ? '-' : c;
        m_path = std::filesystem::temp_directory_path() / (name + std::to_string(random()));
        std::filesystem::create_directories(m_path);
    }
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }
    const std::filesystem::path& path() const { return m_path; }

    // The library's form of a path in the folder.
    Wide wide(const std::string& name) const
    {
        return Wide((m_path / name).string<WCHAR>().c_str());
    }
    Wide wide() const { return Wide(m_path.string<WCHAR>().c_str()); }

    Wide write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(m_path / name, std::ios::binary) << bytes;
        return wide(name);
    }
    std::string read(const std::string& name) const
    {
        std::ifstream file(m_path / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    bool has(const std::string& name) const { return std::filesystem::exists(m_path / name); }

private:
    std::filesystem::path m_path;
};

// The bytes of a text as UTF-16 little-endian, without a mark.
inline std::string utf16(const std::basic_string<WCHAR>& text)
{
    std::string bytes;
    for (const WCHAR unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

} // namespace zor_test
