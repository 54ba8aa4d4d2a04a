// tests/road/road.h: the host program, run as a user runs it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "zorutils/fs/cfile.h"

namespace zor_test {

// A program that lies beside the test program.
inline std::string program(const WCHAR* name)
{
    Wide own, path;
    base::CFile::GetModuleFileNameW(nullptr, own, true);
    const bool windows = own.Find(ZOR_W(".exe")) > 0;
    Wide file = name;
    file += windows ? ZOR_W(".exe") : ZOR_W("");
    base::CFile::UpdateFileName(own, file.c_str(), path);
    std::string text(Narrow(path.c_str()).c_str());
    if (!windows)
        std::replace(text.begin(), text.end(), '\\', '/');
    return text;
}

struct Result
{
    int code;
    std::string out, err;
};

class Road : public testing::Test
{
protected:
    // `arguments` with each "@name" replaced by that file of the test's folder.
    Result run(const std::string& arguments, const WCHAR* name = ZOR_W("survey_road"))
    {
        std::string line = program(name);
        for (const char c : " " + arguments)
            line += c == '@' ? folder.path().string() +
                                   static_cast<char>(std::filesystem::path::preferred_separator)
                             : std::string(1, c);
        line += " >" + (folder / "out").string() + " 2>" + (folder / "err").string();
        int code = std::system(line.c_str());
        if (code > 255)
            code >>= 8; // a POSIX wait status
        return {code, plain(folder.read("out")), plain(folder.read("err"))};
    }

    std::string points(const std::string& out)
    {
        const size_t at = out.find(" points\n");
        const size_t start = out.rfind('\n', at) + 1;
        return at == std::string::npos ? "none" : out.substr(start, at - start);
    }

    static std::string plain(std::string text)
    {
        text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
        return text;
    }

    TempFolder folder;
};

} // namespace zor_test
