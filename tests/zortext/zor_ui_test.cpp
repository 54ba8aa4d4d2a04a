#include "zorutils/zortext/zor_ui.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/support/text.h"

using namespace zor_test;

namespace {

class Recorder final : public zor_ui::IZorUiMsg, public zor_ui::IZorUiTranslate
{
public:
    int showMessage(const WCHAR* text) override { return tell("message", text, 11); }
    int askYesNo(const WCHAR* text) override { return tell("question", text, 7); }
    int showNotice(const WCHAR* text) override { return tell("notice", text, 13); }
    Wide translate(const WCHAR* text) override
    {
        Wide translated(ZOR_W("<"));
        translated += text;
        return translated;
    }

    std::string told;

private:
    int tell(const char* what, const WCHAR* text, int result)
    {
        told += std::string(what) + ":" + shown(text) + " ";
        return result;
    }
};

} // namespace

TEST(ZorUi, AnswersOkAndYesWithoutAHook)
{
    EXPECT_EQ(zor_ui::msg_ui().showMessage(ZOR_W("text")), 1);
    EXPECT_EQ(zor_ui::msg_ui().askYesNo(ZOR_W("text")), 6);
    EXPECT_EQ(zor_ui::msg_ui().showNotice(ZOR_W("text")), 1);
    EXPECT_EQ(shown(zor_ui::lang_ui().translate(ZOR_W("Open@@Menu"))), "Open@@Menu")
        << "the context stays";
}

TEST(ZorUi, AHookIsAskedUntilItIsTakenAway)
{
    Recorder hook;
    zor_ui::set_msg(&hook);
    zor_ui::set_lang(&hook);
    EXPECT_EQ(&zor_ui::msg_ui(), static_cast<zor_ui::IZorUiMsg*>(&hook));
    EXPECT_EQ(zor_ui::msg_ui().showMessage(ZOR_W("a")), 11);
    EXPECT_EQ(zor_ui::msg_ui().askYesNo(ZOR_W("b")), 7);
    EXPECT_EQ(zor_ui::msg_ui().showNotice(ZOR_W("c")), 13);
    EXPECT_EQ(shown(zor_ui::lang_ui().translate(ZOR_W("d"))), "<d");
    zor_ui::set_msg(nullptr);
    EXPECT_EQ(zor_ui::msg_ui().askYesNo(ZOR_W("e")), 6);
    EXPECT_EQ(shown(zor_ui::lang_ui().translate(ZOR_W("f"))), "<f") << "each has its own setter";
    zor_ui::set_lang(nullptr);
    EXPECT_EQ(shown(zor_ui::lang_ui().translate(ZOR_W("g"))), "g");
    EXPECT_EQ(hook.told, "message:a question:b notice:c ");
}

// Modules that were built apart call by the place in the table.
TEST(ZorUi, OperationsKeepTheirPlaces)
{
    static_assert(!std::has_virtual_destructor_v<zor_ui::IZorUiMsg>);
    static_assert(!std::has_virtual_destructor_v<zor_ui::IZorUiTranslate>);
    typedef int (*Operation)(void* self, const WCHAR* text);
    zor_ui::IZorUiMsg& silent = zor_ui::msg_ui();
    Operation* const table = *reinterpret_cast<Operation**>(&silent);
    const int results[] = {1, 6, 1};
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(table[i](&silent, ZOR_W("text")), results[i]) << i;
}
