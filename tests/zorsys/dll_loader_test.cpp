#include "zorutils/zorsys/dll_loader.h"

#include <gtest/gtest.h>

#include <new>

#include "tests/support/debug_capture.h"
#include "tests/support/modules.h"
#include "tests/support/temp_folder.h"
#include "zorutils/fs/app_dirs.h"
#include "zorutils/zortext/zor_ui.h"

using namespace zor_test;

namespace {

constexpr LONG missing_library = 126, broken_library = 193, missing_function = 127;

// By way of an untyped address: the system's type is not the function's own.
template <class Function>
Function* function_as(FARPROC function)
{
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(function));
}

int answer_of(FARPROC function)
{
    return function == nullptr ? -1 : function_as<int()>(function)();
}

// Loaders of a copy of the module that no other test loads.
class DllLoader : public testing::Test
{
protected:
    DllLoader()
    {
        std::filesystem::copy_file(module_file("test_module"), path());
        name = folder.wide(file);
    }
    static std::filesystem::path module_file(const std::string& base)
    {
        return std::filesystem::path(ZOR_TEST_MODULES) / (base + ZOR_TEST_MODULE_SUFFIX);
    }
    std::filesystem::path path() const { return folder / file; }
    HINSTANCE loaded() const { return find_module(path().string()); }

    TempFolder folder;
    const std::string file = std::string("own") + ZOR_TEST_MODULE_SUFFIX;
    Wide name;
};

// What the user is told, and in what language.
class Told final : public zor_ui::IZorUiMsg, public zor_ui::IZorUiTranslate
{
public:
    explicit Told(bool translating) : m_translating(translating)
    {
        zor_ui::set_msg(this);
        if (translating)
            zor_ui::set_lang(this);
    }
    ~Told()
    {
        zor_ui::set_msg(nullptr);
        zor_ui::set_lang(nullptr);
    }
    int showMessage(const WCHAR* text) override
    {
        messages.push_back(shown(text));
        return 1;
    }
    int askYesNo(const WCHAR*) override { return other(); }
    int showNotice(const WCHAR*) override { return other(); }
    Wide translate(const WCHAR* text) override
    {
        asked.push_back(shown(text));
        Wide translated(ZOR_W("{"));
        translated += text;
        translated += ZOR_W("}");
        return translated;
    }

    std::vector<std::string> messages, asked;

private:
    int other()
    {
        ADD_FAILURE() << "another operation was called";
        return m_translating;
    }
    bool m_translating;
};

Wide module_name(const char* base)
{
    return (std::string(base) + ZOR_TEST_MODULE_SUFFIX).c_str();
}

std::u16string wide(const std::string& text)
{
    return std::u16string(text.begin(), text.end());
}

} // namespace

// --- The shared loader.

TEST_F(DllLoader, OneNameIsOneLoader)
{
    TDLLFuncLoader* const loader = TDLLFuncLoader::LoadDLL(name);
    ASSERT_NE(loader, nullptr);
    EXPECT_EQ(TDLLFuncLoader::LoadDLL(name), loader);
    EXPECT_EQ(shown(loader->GetDLLName()), shown(name));
    TDLLFuncLoader::ReleaseDLL(loader);
    EXPECT_EQ(answer_of(loader->GetFunc(ZOR_W("zor_test_answer"))), 42) << "one count is left";
    EXPECT_NE(loaded(), nullptr);
    TDLLFuncLoader::ReleaseDLL(loader);
    EXPECT_EQ(loaded(), nullptr);
}

TEST_F(DllLoader, NothingIsLoadedBeforeTheFirstFunction)
{
    TDLLFuncLoader* const loader = TDLLFuncLoader::LoadDLL(name);
    EXPECT_EQ(loaded(), nullptr);
    EXPECT_EQ(loader->GetResult(), 0);
    loader->GetFunc(ZOR_W("zor_test_answer"));
    EXPECT_NE(loaded(), nullptr);
    TDLLFuncLoader::ReleaseDLL(loader);
    TDLLFuncLoader::ReleaseDLL(TDLLFuncLoader::LoadDLL(name)); // never asked: nothing to free
    EXPECT_EQ(loaded(), nullptr);
}

TEST_F(DllLoader, TwoSpellingsOfAPathAreTwoLoaders)
{
    Wide other = folder.wide(".");
    other += ZOR_W("\\");
    other += Wide(file.c_str());
    TDLLFuncLoader* const first = TDLLFuncLoader::LoadDLL(name);
    TDLLFuncLoader* const second = TDLLFuncLoader::LoadDLL(other);
    EXPECT_NE(first, second);
    EXPECT_EQ(answer_of(first->GetFunc(ZOR_W("zor_test_answer"))), 42);
    EXPECT_EQ(answer_of(second->GetFunc(ZOR_W("zor_test_answer"))), 42);
    TDLLFuncLoader::ReleaseDLL(first);
    EXPECT_NE(loaded(), nullptr) << "the other loader has its own count with the system";
    EXPECT_EQ(answer_of(second->GetFunc(ZOR_W("zor_test_answer"))), 42);
    TDLLFuncLoader::ReleaseDLL(second);
    EXPECT_EQ(loaded(), nullptr);
}

TEST_F(DllLoader, AMissingLibraryIsFinal)
{
    const Wide missing = folder.wide(std::string("late") + ZOR_TEST_MODULE_SUFFIX);
    TDLLFuncLoader* const loader = TDLLFuncLoader::LoadDLL(missing);
    ASSERT_NE(loader, nullptr);
    EXPECT_EQ(loader->GetResult(), 0) << "not tried yet";
    EXPECT_EQ(loader->GetFunc(ZOR_W("zor_test_answer")), nullptr);
    EXPECT_EQ(loader->GetResult(), missing_library);
    std::filesystem::copy_file(path(), folder / (std::string("late") + ZOR_TEST_MODULE_SUFFIX));
    EXPECT_EQ(loader->GetFunc(ZOR_W("zor_test_answer")), nullptr) << "no second attempt";
    EXPECT_EQ(loader->GetFunc(ZOR_W("zor_test_sum")), nullptr);
    EXPECT_EQ(TDLLFuncLoader::LoadDLL(missing), loader) << "it stays, failed as it is";
    TDLLFuncLoader::ReleaseDLL(loader);
    EXPECT_EQ(loader->GetResult(), missing_library);
    TDLLFuncLoader::ReleaseDLL(loader);
    TDLLFuncLoader* const fresh = TDLLFuncLoader::LoadDLL(missing);
    EXPECT_EQ(fresh->GetResult(), 0);
    EXPECT_EQ(answer_of(fresh->GetFunc(ZOR_W("zor_test_answer"))), 42) << "a new loader tries";
    TDLLFuncLoader::ReleaseDLL(fresh);
}

TEST_F(DllLoader, ABrokenLibraryHasAnErrorOfItsOwn)
{
    TDLLFuncLoader* const broken =
        TDLLFuncLoader::LoadDLL(Wide(module_file("broken_module").string<WCHAR>().c_str()));
    EXPECT_EQ(broken->GetFunc(ZOR_W("f")), nullptr);
    EXPECT_EQ(broken->GetResult(), broken_library);
    TDLLFuncLoader::ReleaseDLL(broken);
    // One that another library is missing for counts as missing itself.
    TDLLFuncLoader* const needing =
        TDLLFuncLoader::LoadDLL(Wide(module_file("needing_module").string<WCHAR>().c_str()));
    EXPECT_EQ(needing->GetFunc(ZOR_W("zor_test_needing")), nullptr);
    EXPECT_EQ(needing->GetResult(), missing_library);
    TDLLFuncLoader::ReleaseDLL(needing);
}

TEST_F(DllLoader, AMissingFunctionIsNoFailedLoad)
{
    TDLLFuncLoader* const loader = TDLLFuncLoader::LoadDLL(name);
    EXPECT_EQ(loader->GetFunc(ZOR_W("no_such_function")), nullptr);
    EXPECT_EQ(loader->GetResult(), 0);
    EXPECT_EQ(loader->GetFunc(ZOR_W("no_such_function")), nullptr);
    EXPECT_EQ(loader->GetFunc(ZOR_W("malloc")), nullptr) << "what it needs is not its own";
    EXPECT_EQ(loader->GetFunc(ZOR_W("Zor_Test_Answer")), nullptr) << "case counts";
    EXPECT_EQ(answer_of(loader->GetFunc(ZOR_W("zor_test_answer"))), 42);
    for (HINSTANCE module = loaded(); module != nullptr && loaded() != nullptr; module = loaded())
        FreeLibraryFunction(module);
    TDLLFuncLoader* const copy = loader;
    EXPECT_EQ(copy->GetFunc(ZOR_W("no_such_function")), nullptr)
        << "kept: it would load the library anew";
    EXPECT_EQ(loaded(), nullptr);
    std::filesystem::remove(path());
    TDLLFuncLoader::ReleaseDLL(loader);
}

TEST_F(DllLoader, OneFunctionLoadsOnceAndTwoKeepTheLibrary)
{
    TDLLFuncLoader* loader = TDLLFuncLoader::LoadDLL(name);
    const FARPROC answer = loader->GetFunc(ZOR_W("zor_test_answer"));
    EXPECT_EQ(loader->GetFunc(ZOR_W("zor_test_answer")), answer) << "kept";
    TDLLFuncLoader::ReleaseDLL(loader);
    EXPECT_EQ(loaded(), nullptr);

    loader = TDLLFuncLoader::LoadDLL(name);
    EXPECT_EQ(answer_of(loader->GetFunc(ZOR_W("zor_test_answer"))), 42);
    auto* const sum = function_as<int(int, int)>(loader->GetFunc(ZOR_W("zor_test_sum")));
    EXPECT_EQ(sum(3, 4), 7);
    TDLLFuncLoader::ReleaseDLL(loader);
    HINSTANCE module = loaded();
    ASSERT_NE(module, nullptr) << "each new function loads it once more, and it is freed once";
    EXPECT_EQ(sum(5, 6), 11);
    FreeLibraryFunction(module);
    EXPECT_EQ(module, nullptr);
    EXPECT_EQ(loaded(), nullptr) << "two loads, two frees";
}

TEST_F(DllLoader, ACopySharesTheFunctionsUncounted)
{
    TDLLFuncLoader* const loader = TDLLFuncLoader::LoadDLL(name);
    const FARPROC answer = loader->GetFunc(ZOR_W("zor_test_answer"));
    // Copies are never destroyed: this one gives its name back by hand.
    alignas(TDLLFuncLoader) static unsigned char place[sizeof(TDLLFuncLoader)];
    auto* const copy = new (place) TDLLFuncLoader(*loader);
    EXPECT_EQ(copy->GetResult(), 0);
    EXPECT_EQ(shown(copy->GetDLLName()), shown(name));
    std::filesystem::rename(path(), folder / "moved"); // nothing new can be loaded by this name
    EXPECT_EQ(copy->GetFunc(ZOR_W("zor_test_answer")), answer);
    std::filesystem::rename(folder / "moved", path());
    EXPECT_EQ(TDLLFuncLoader::LoadDLL(name), loader);
    TDLLFuncLoader::ReleaseDLL(loader);
    TDLLFuncLoader::ReleaseDLL(loader);
    EXPECT_EQ(loaded(), nullptr) << "the copy does not count";
}

TEST_F(DllLoader, LoadersGoInAnyOrder)
{
    const Wide other = folder.wide(std::string("other") + ZOR_TEST_MODULE_SUFFIX);
    std::filesystem::copy_file(path(), folder / (std::string("other") + ZOR_TEST_MODULE_SUFFIX));
    TDLLFuncLoader* const first = TDLLFuncLoader::LoadDLL(name);
    TDLLFuncLoader* const second = TDLLFuncLoader::LoadDLL(other);
    EXPECT_EQ(answer_of(first->GetFunc(ZOR_W("zor_test_answer"))), 42);
    EXPECT_EQ(answer_of(second->GetFunc(ZOR_W("zor_test_answer"))), 42);
    TDLLFuncLoader::ReleaseDLL(first);
    EXPECT_EQ(loaded(), nullptr);
    EXPECT_EQ(answer_of(second->GetFunc(ZOR_W("zor_test_answer"))), 42);
    TDLLFuncLoader::ReleaseDLL(second);
}

// --- Single functions.

TEST(LibraryFunction, LoadsFromTheApplicationsFolder)
{
    const Told told(false);
    HINSTANCE library = nullptr;
    FARPROC function = nullptr;
    EXPECT_TRUE(GetLibraryFunction(&library, &function, ZOR_W("zor_test_answer"),
                                   module_name("test_module").c_str()));
    EXPECT_NE(library, nullptr);
    EXPECT_EQ(answer_of(function), 42);
    FreeLibraryFunction(library);
    EXPECT_EQ(library, nullptr);
    FreeLibraryFunction(library);
    EXPECT_EQ(library, nullptr) << "a null handle is fine";
    EXPECT_TRUE(told.messages.empty());
}

TEST(LibraryFunction, WithoutAFunctionTheLibraryIsEnough)
{
    HINSTANCE library = nullptr;
    EXPECT_TRUE(GetLibraryFunction(&library, nullptr, nullptr, module_name("test_module").c_str()));
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(answer_of(GetProcAddress(library, ZOR_W("zor_test_answer"))), 42);
    EXPECT_EQ(GetProcAddress(library, ZOR_W("no_such")), nullptr);
    EXPECT_EQ(GetProcAddress(library, ZOR_W("")), nullptr);
    EXPECT_EQ(GetProcAddress(library, static_cast<const WCHAR*>(nullptr)), nullptr);
    EXPECT_EQ(GetProcAddress(library, ZOR_W("zor_test_\u2192answer")), nullptr);
    FreeLibraryFunction(library);
}

TEST(LibraryFunction, ANullLibraryIsRefusedInSilence)
{
    const Told told(true);
    FARPROC function = nullptr;
    const DebugCapture capture;
    EXPECT_FALSE(GetLibraryFunction(nullptr, &function, ZOR_W("f"), ZOR_W("missing.dll")));
    EXPECT_TRUE(told.messages.empty());
    EXPECT_TRUE(told.asked.empty());
    EXPECT_TRUE(capture.texts().empty());
}

TEST(LibraryFunction, AMissingFunctionFreesTheLibraryAndIsOnlyLogged)
{
    const Told told(true);
    HINSTANCE library = nullptr;
    auto function = reinterpret_cast<FARPROC>(intptr_t{1});
    const DebugCapture capture;
    EXPECT_FALSE(GetLibraryFunction(&library, &function, ZOR_W("no_such_function"),
                                    module_name("test_module").c_str()));
    EXPECT_EQ(library, nullptr);
    EXPECT_EQ(function, nullptr);
    EXPECT_TRUE(told.messages.empty());
    // One character of each name, as support staff know the line.
    EXPECT_EQ(records(capture, wide("Missing function 'n' in t. Error code: " +
                                    std::to_string(missing_function))),
              1);
    EXPECT_EQ(find_module(std::string(ZOR_TEST_MODULES) + "/test_module" + ZOR_TEST_MODULE_SUFFIX),
              nullptr);
}

TEST(LibraryFunction, AMissingLibraryIsLoggedAndTold)
{
    Told told(false);
    HINSTANCE library = reinterpret_cast<HINSTANCE>(intptr_t{8});
    FARPROC function = nullptr;
    const DebugCapture capture;
    EXPECT_FALSE(GetLibraryFunction(&library, &function, ZOR_W("f"), ZOR_W("missing.dll")));
    EXPECT_EQ(library, nullptr);
    EXPECT_EQ(told.messages,
              std::vector<std::string>{"Could not load module missing.dll."
                                       "\\u000D\\u000A\\u000D\\u000A"
                                       "Application reinstall may be needed. "
                                       "If the problem persists, collect application log files and "
                                       "contact support."});
    EXPECT_EQ(records(capture, std::u16string(u"Could not load library ") +
                                   reinterpret_cast<const char16_t*>(GetExeDir().c_str()) +
                                   u"\\missing.dll err code = 126"),
              1);
}

TEST(LibraryFunction, ABrokenLibraryAsksForARestart)
{
    Told told(false);
    HINSTANCE library = nullptr;
    const DebugCapture capture;
    EXPECT_FALSE(
        GetLibraryFunction(&library, nullptr, nullptr, module_name("broken_module").c_str()));
    ASSERT_EQ(told.messages.size(), 1u);
    EXPECT_EQ(told.messages[0],
              std::string("Could not load module broken_module") + ZOR_TEST_MODULE_SUFFIX +
                  ".\\u000D\\u000A\\u000D\\u000A"
                  "Save your work and quit application. Restarting device may be needed as well. "
                  "If the problem persists, collect application log files and contact support.");
    EXPECT_EQ(records(capture, std::u16string(u"Could not load library ") +
                                   reinterpret_cast<const char16_t*>(GetExeDir().c_str()) +
                                   u"\\broken_module" + wide(ZOR_TEST_MODULE_SUFFIX) +
                                   u" err code = 193"),
              1);
}

TEST(LibraryFunction, EachSentenceIsTranslatedWithItsBlanks)
{
    Told told(true);
    HINSTANCE library = nullptr;
    EXPECT_FALSE(GetLibraryFunction(&library, nullptr, nullptr, ZOR_W("missing.dll")));
    EXPECT_EQ(told.messages,
              std::vector<std::string>{"{Could not load module }missing.dll."
                                       "\\u000D\\u000A\\u000D\\u000A"
                                       "{Application reinstall may be needed. }"
                                       "{If the problem persists, collect application log files "
                                       "and contact support.}"});
    EXPECT_EQ(told.asked, (std::vector<std::string>{
                              "Could not load module ", "Application reinstall may be needed. ",
                              "If the problem persists, collect application log files "
                              "and contact support."}));
}
