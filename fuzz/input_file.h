// fuzz/input_file.h: an input as a file on disk, replaced by the next and removed at the end.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "tests/support/text.h"

namespace zor_fuzz {

class InputFile
{
public:
    explicit InputFile(const std::string& extension)
        : m_path(std::filesystem::temp_directory_path() /
                 ("zor-fuzz" + std::to_string(std::random_device()()) + extension))
    {
    }
    ~InputFile()
    {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    zor_test::Wide write(const std::string& bytes) const
    {
        std::ofstream(m_path, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return zor_test::Wide(m_path.string<WCHAR>().c_str());
    }

    std::string path() const { return m_path.string(); }

private:
    std::filesystem::path m_path;
};

inline std::string bytes_of(const unsigned char* data, size_t size)
{
    return std::string(reinterpret_cast<const char*>(data), size);
}

} // namespace zor_fuzz
