// The names of modules, loading them, and their functions.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/modules.h"
#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "zorutils/platform/winapi.h"

using namespace zor_test;

namespace {

Wide own_name()
{
    WCHAR name[1024] = {};
    const DWORD length = GetModuleFileNameW(nullptr, name, 1024);
    EXPECT_GT(length, 0u);
    EXPECT_LT(length, 1024u);
    return Wide(name, static_cast<int>(length));
}

} // namespace

TEST(Module, TheProgramHasItsFullNameWithBackslashes)
{
    const Wide name = own_name();
    EXPECT_GE(name.Find(ZOR_W("\\zor_internal_tests")), 0) << shown(name);
    EXPECT_LT(name.Find('/'), 0) << shown(name);
    EXPECT_NE(GetFileAttributesW(name.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(Module, ASmallBufferGetsACutName)
{
    const Wide name = own_name();
    WCHAR small[8];
    for (WCHAR& unit : small)
        unit = '#';
    SetLastError(0);
    EXPECT_EQ(GetModuleFileNameW(nullptr, small, 6), 6u);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_EQ(shown(Wide(small, 5)), shown(name.Left(5)));
    // The sixth is the terminator, or one more unit of the name: systems differ.
    EXPECT_EQ(small[6], '#');
}

TEST(Module, ANameThatJustFitsIsWhole)
{
    const Wide name = own_name();
    std::basic_string<WCHAR> buffer(static_cast<size_t>(name.GetLength()) + 1, '#');
    EXPECT_EQ(GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size())),
              static_cast<DWORD>(name.GetLength()));
    EXPECT_EQ(shown(Wide(buffer.c_str())), shown(name));
}

// --- Loading.

namespace {

Wide module_path(const char* base)
{
    const std::filesystem::path path =
        std::filesystem::path(ZOR_TEST_MODULES) / (std::string(base) + ZOR_TEST_MODULE_SUFFIX);
    return Wide(path.string<WCHAR>().c_str());
}

HINSTANCE found(const Wide& path)
{
    return find_module(std::filesystem::path(path.c_str()).string());
}

} // namespace

TEST(ModuleLoading, LoadsAreCounted)
{
    const Wide path = module_path("test_module");
    ASSERT_EQ(found(path), nullptr);
    HMODULE const module = LoadLibraryW(path.c_str());
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(found(path), module);
    EXPECT_EQ(LoadLibraryW(path.c_str()), module) << "the same handle";
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(found(path), module);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(found(path), nullptr);
    EXPECT_FALSE(FreeLibrary(module));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
}

TEST(ModuleLoading, ALoadedModuleHasItsName)
{
    const Wide path = module_path("test_module");
    HMODULE const module = LoadLibraryW(path.c_str());
    WCHAR name[1024] = {};
    EXPECT_GT(GetModuleFileNameW(module, name, 1024), 0u);
    const Wide file((std::string("\\test_module") + ZOR_TEST_MODULE_SUFFIX).c_str());
    EXPECT_GT(Wide(name).Find(file.c_str()), 0) << shown(name);
    FreeLibrary(module);
}

TEST(ModuleLoading, ANameWithoutAFolderIsLookedForBesideTheProgram)
{
    const Wide name((std::string("test_module") + ZOR_TEST_MODULE_SUFFIX).c_str());
    HMODULE const module = LoadLibraryW(name.c_str());
    ASSERT_NE(module, nullptr) << GetLastError();
    EXPECT_EQ(found(module_path("test_module")), module);
    FreeLibrary(module);
}

TEST(ModuleLoading, WhatCannotBeLoaded)
{
    TempFolder folder;
    const struct
    {
        Wide path;
        DWORD error;
    } cases[] = {
        {folder.wide("missing.dll"), ERROR_MOD_NOT_FOUND},
        {folder.wide("no/such.dll"), ERROR_MOD_NOT_FOUND},
        {Wide("zor_no_such_library.dll"), ERROR_MOD_NOT_FOUND},
        {module_path("broken_module"), ERROR_BAD_EXE_FORMAT},
        {module_path("needing_module"), ERROR_MOD_NOT_FOUND},
        {folder.write("empty.dll", ""), ERROR_BAD_EXE_FORMAT},
    };
    for (const auto& row : cases) {
        SetLastError(0);
        EXPECT_EQ(LoadLibraryW(row.path.c_str()), nullptr) << shown(row.path);
        EXPECT_EQ(GetLastError(), row.error) << shown(row.path);
    }
    EXPECT_EQ(LoadLibraryW(nullptr), nullptr);
    EXPECT_EQ(LoadLibraryW(ZOR_W("")), nullptr);
    EXPECT_FALSE(FreeLibrary(nullptr));
}

TEST(ModuleLoading, FunctionsAreTheModulesOwn)
{
    HMODULE const module = LoadLibraryW(module_path("test_module").c_str());
    FARPROC const answer = GetProcAddress(module, "zor_test_answer");
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(reinterpret_cast<int (*)()>(reinterpret_cast<void*>(answer))(), 42);
    for (const char* const name : {"no_such_function", "", "malloc", "ZOR_TEST_ANSWER"}) {
        SetLastError(0);
        EXPECT_EQ(GetProcAddress(module, name), nullptr) << name;
        EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND}) << name;
    }
    FreeLibrary(module);
}
