// tests/support/own_app.h: a program with the library beside it, in a folder of its own.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/support/temp_folder.h"

namespace zor_test {

// folder/app holds the program and the library, folder/user the user's data.
class OwnApp
{
public:
    explicit OwnApp(const std::string& built_program)
    {
        namespace fs = std::filesystem;
        fs::create_directory(folder / "app");
        fs::create_directory(folder / "user");
        program = folder / ("app/" + fs::path(built_program).filename().string());
        fs::copy_file(built_program, program);
        // The library, and on Windows what it needs.
        for (const auto& entry : fs::directory_iterator(fs::path(built_program).parent_path())) {
            const std::string name = entry.path().filename().string();
            if (name.find(".dll") != std::string::npos || name.find("libzorutils.so") == 0)
                fs::copy(entry.path(), folder / ("app/" + name),
                         fs::copy_options::overwrite_existing);
        }
        user(native(folder / "user"));
    }

    // Says where the user's data is.
    void user(const std::string& path)
    {
        folder.write("app/zor_dir.ini", "[Directories]\r\nUser=" + path + "\r\n");
    }
    // What the program prints; `code` and `err` tell the rest.
    std::string run(const std::string& arguments)
    {
        const std::string command = program.string() + " " + arguments + " >" +
                                    (folder / "out").string() + " 2>" + (folder / "err").string();
        code = std::system(command.c_str());
        err = plain(folder.read("err"));
        return plain(folder.read("out"));
    }
    static std::string native(const std::filesystem::path& path)
    {
        std::string text = path.string();
        std::replace(text.begin(), text.end(), '/', '\\');
        return text;
    }

    TempFolder folder;
    std::filesystem::path program;
    std::string err;
    int code = 0;

private:
    static std::string plain(std::string text)
    {
        text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
        return text;
    }
};

} // namespace zor_test
