#include "zorutils/zortext/resource_modules.h"

#include "tests/support/text.h"
#include "zorutils/zorsys/zor_time.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using zor_test::Narrow;
using zor_test::shown;
using zor_test::Wide;

std::string loaded(unsigned int id)
{
    Wide text;
    return text.LoadStringW(id) ? shown(text) : "<none>";
}

// The list is the process's: each test starts from what it is at the beginning, and leaves it so.
class ResourceModules : public testing::Test
{
protected:
    void SetUp() override { ASSERT_EQ(zor_text::GetResourceModuleCount(), 1u); }

    void TearDown() override
    {
        zor_text::RemoveResourceModule(a());
        zor_text::RemoveResourceModule(b());
        zor_text::AddResourceModule(nullptr, 0);
    }

    static HINSTANCE a()
    {
        static const HINSTANCE module = zor_text::LoadResourceModule(ZOR_W(ZOR_TEST_STRINGS_A));
        return module;
    }
    static HINSTANCE b()
    {
        static const HINSTANCE module = zor_text::LoadResourceModule(ZOR_W(ZOR_TEST_STRINGS_B));
        return module;
    }
};

TEST_F(ResourceModules, StartWithTheProgram)
{
    EXPECT_EQ(loaded(900), "of the program");
    EXPECT_EQ(loaded(1), "<none>");
    EXPECT_TRUE(zor_text::RemoveResourceModule(nullptr));
    EXPECT_EQ(zor_text::GetResourceModuleCount(), 0u);
    EXPECT_EQ(loaded(900), "<none>");
    EXPECT_TRUE(zor_text::AddResourceModule(nullptr));
    EXPECT_EQ(loaded(900), "of the program");
}

TEST_F(ResourceModules, AreAskedOnlyWhileTheyAreOnTheList)
{
    ASSERT_NE(a(), nullptr);
    EXPECT_EQ(loaded(1), "<none>") << "loading alone doesn't put a module on the list";
    EXPECT_TRUE(zor_text::AddResourceModule(a()));
    EXPECT_EQ(zor_text::GetResourceModuleCount(), 2u);
    EXPECT_EQ(loaded(1), "first of a");
    EXPECT_TRUE(zor_text::RemoveResourceModule(a()));
    EXPECT_EQ(loaded(1), "<none>");
}

TEST_F(ResourceModules, AreAskedInTheirOrder)
{
    zor_text::AddResourceModule(a());
    zor_text::AddResourceModule(b());
    EXPECT_EQ(loaded(1), "first of a");
    EXPECT_EQ(loaded(300), "three hundred of a");
    zor_text::RemoveResourceModule(b());
    zor_text::AddResourceModule(b(), 0);
    EXPECT_EQ(loaded(1), "first of b");
    EXPECT_EQ(loaded(300), "three hundred of b");
    EXPECT_EQ(loaded(16), "sixteen");
    zor_text::RemoveResourceModule(a());
    zor_text::AddResourceModule(a(), 1);
    EXPECT_EQ(loaded(1), "first of b");
    zor_text::RemoveResourceModule(b());
    zor_text::AddResourceModule(b(), 1000); // far behind the end
    EXPECT_EQ(loaded(1), "first of a");
}

TEST_F(ResourceModules, GoOnToTheNextWhereAnEntryIsEmptyOrMissing)
{
    zor_text::AddResourceModule(a());
    zor_text::AddResourceModule(b());
    EXPECT_EQ(loaded(301), "only in b") << "its block is in the first module too";
    EXPECT_EQ(loaded(303), "empty in a");
    EXPECT_EQ(loaded(700), "seven hundred of b");
    EXPECT_EQ(loaded(302), "<none>");
    EXPECT_EQ(loaded(5000), "<none>");
}

TEST_F(ResourceModules, AreOnTheListOnce)
{
    EXPECT_TRUE(zor_text::AddResourceModule(a()));
    EXPECT_FALSE(zor_text::AddResourceModule(a()));
    EXPECT_FALSE(zor_text::AddResourceModule(nullptr));
    EXPECT_EQ(zor_text::GetResourceModuleCount(), 2u);
    EXPECT_TRUE(zor_text::RemoveResourceModule(a()));
    EXPECT_FALSE(zor_text::RemoveResourceModule(a()));
}

// Nothing is looked up here, so that any values will do for handles.
TEST_F(ResourceModules, FillTheListToItsEnd)
{
    const auto handle = [](uintptr_t number) { return reinterpret_cast<HINSTANCE>(number << 16); };
    for (uintptr_t number = 1; number < 64; ++number)
        EXPECT_TRUE(zor_text::AddResourceModule(handle(number), 0));
    EXPECT_EQ(zor_text::GetResourceModuleCount(), 64u);
    EXPECT_FALSE(zor_text::AddResourceModule(handle(64)));
    for (uintptr_t number = 1; number < 64; ++number)
        EXPECT_TRUE(zor_text::RemoveResourceModule(handle(number)));
    EXPECT_EQ(zor_text::GetResourceModuleCount(), 1u);
    EXPECT_EQ(loaded(900), "of the program");
}

TEST_F(ResourceModules, GiveNothingForNumbersBeyondTheBlocks)
{
    zor_text::AddResourceModule(a());
    Wide text;
    WCHAR buffer[20];
    EXPECT_EQ(zor_text::AfxLoadString(65535, buffer, 20), 19);
    EXPECT_EQ(zor_text::AfxLoadString(0x100001, buffer, 20), 0) << "its low bits are of number 1";
    EXPECT_EQ(zor_text::AfxLoadString(0xFFFFFFFF, buffer, 20), 0);
}

TEST_F(ResourceModules, GiveLongTextsWhole)
{
    zor_text::AddResourceModule(a());
    for (const auto& [id, length] :
         {std::pair(500u, 300), {501u, 255}, {502u, 256}, {503u, 511}, {504u, 512}}) {
        Wide text;
        EXPECT_EQ(text.LoadStringW(id), 1);
        EXPECT_EQ(text.GetLength(), length) << id;
    }
}

TEST_F(ResourceModules, GiveTheFormatsOfTimes)
{
    zor_text::AddResourceModule(a());
    EXPECT_EQ(shown(base::CTime(0).FormatGmt(400u)), "1970-01-01 00:00");
    EXPECT_EQ(shown(base::CTime(2024, 3, 5, 9, 8, 7, -1).Format(400u)), "2024-03-05 09:08");
    EXPECT_EQ(shown(base::CTime(0).FormatGmt(403u)), "") << "a bad conversion";
}

TEST_F(ResourceModules, ReportAFileThatIsNone)
{
    EXPECT_EQ(zor_text::LoadResourceModule(ZOR_W("no such file.dll")), nullptr);
    EXPECT_EQ(zor_text::LoadResourceModule(ZOR_W(ZOR_TEST_DATA "/strings_a.rc")), nullptr);
}

TEST_F(ResourceModules, AreLookedUpWhileTheListChanges)
{
    zor_text::AddResourceModule(a());
    std::thread changer([] {
        for (int i = 0; i < 200; ++i) {
            zor_text::AddResourceModule(b(), 0);
            zor_text::RemoveResourceModule(b());
        }
    });
    for (int i = 0; i < 200; ++i) {
        const std::string text = loaded(1);
        EXPECT_TRUE(text == "first of a" || text == "first of b") << text;
    }
    changer.join();
}

} // namespace
