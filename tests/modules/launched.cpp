#include "tests/modules/launched.h"

#include <stdlib.h>

#include <chrono>
#include <fstream>
#include <thread>

namespace {

// Whole or not at all to who waits for it: written beside and renamed.
void write_whole(const std::string& path, const std::string& text)
{
    std::ofstream(path + ".part", std::ios::binary) << text;
    rename((path + ".part").c_str(), path.c_str());
}

} // namespace

int run_launched(const std::vector<std::string>& arguments)
{
    const std::string what = arguments.empty() ? "" : arguments[0];
    if (what == "exit" && arguments.size() == 2)
        return atoi(arguments[1].c_str());
    if (what == "args" && arguments.size() >= 2) {
        std::string text;
        for (size_t i = 2; i < arguments.size(); ++i)
            text += arguments[i] + "\n";
        write_whole(arguments[1], text);
        return 0;
    }
    if (what == "wait" && arguments.size() == 2) {
        write_whole(arguments[1], "");
        for (;;)
            std::this_thread::sleep_for(std::chrono::hours(1));
    }
    return 99;
}
