#include "zorutils/platform/posix/folders.h"

#include <pwd.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string>

#include "zorutils/platform/posix/path_text.h"
#include "zorutils/platform/posix/system_error.h"

using namespace zor::platform;

namespace {

// An absolute path from the environment, or nothing.
std::string from_environment(const char* name)
{
    const char* const value = getenv(name);
    return value != nullptr && value[0] == '/' ? value : "";
}

std::string home_folder()
{
    const std::string home = from_environment("HOME");
    if (!home.empty())
        return home;
    passwd entry = {};
    passwd* found = nullptr;
    char texts[4096];
    if (getpwuid_r(getuid(), &entry, texts, sizeof texts, &found) != 0 || found == nullptr)
        return "";
    return found->pw_dir;
}

std::string config_folder()
{
    const std::string folder = from_environment("XDG_CONFIG_HOME");
    const std::string home = home_folder();
    return !folder.empty() ? folder : home.empty() ? "" : home + "/.config";
}

// The line XDG_DOCUMENTS_DIR="$HOME/Documents" of the user's file.
std::string documents_of_user_file(const std::string& home)
{
    std::ifstream file(config_folder() + "/user-dirs.dirs");
    const std::string key = "XDG_DOCUMENTS_DIR=\"";
    for (std::string line; std::getline(file, line);) {
        const size_t end = line.find('"', key.size());
        if (line.compare(0, key.size(), key) != 0 || end == std::string::npos)
            continue;
        const std::string value = line.substr(key.size(), end - key.size());
        if (value.compare(0, 6, "$HOME/") == 0)
            return home + value.substr(5);
        return value[0] == '/' ? value : "";
    }
    return "";
}

std::string documents_folder()
{
    const std::string folder = from_environment("XDG_DOCUMENTS_DIR");
    if (!folder.empty())
        return folder;
    const std::string home = home_folder(), listed = documents_of_user_file(home);
    return listed.empty() ? home : listed;
}

std::string common_folder()
{
    const std::string folder = from_environment("ZOR_COMMON_APPDATA");
    return folder.empty() ? "/var/lib" : folder;
}

} // namespace

HRESULT SHGetFolderPathW(HWND, int folder, HANDLE, DWORD, LPWSTR path)
{
    path[0] = 0;
    if (folder != CSIDL_PERSONAL && folder != CSIDL_APPDATA && folder != CSIDL_COMMON_APPDATA)
        return E_INVALIDARG;
    std::string found = folder == CSIDL_PERSONAL  ? documents_folder()
                        : folder == CSIDL_APPDATA ? config_folder()
                                                  : common_folder();
    while (found.size() > 1 && found.back() == '/')
        found.pop_back();
    const Text text = from_system_path(found);
    if (found.empty() || text.size() >= MAX_PATH)
        return E_FAIL;
    *std::copy(text.begin(), text.end(), path) = 0;
    return S_OK;
}
