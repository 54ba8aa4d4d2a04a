#include "zorutils/zortext/zor_ui.h"

namespace zor_ui {

namespace {

class SilentMsg final : public IZorUiMsg
{
public:
    int showMessage(const WCHAR*) override { return 1; }
    int askYesNo(const WCHAR*) override { return 6; }
    int showNotice(const WCHAR*) override { return 1; }
};

class SourceLanguage final : public IZorUiTranslate
{
public:
    zor_text::CZorStringT<WCHAR> translate(const WCHAR* text) override { return text; }
};

IZorUiMsg* g_msgUi = nullptr;
IZorUiTranslate* g_langUi = nullptr;

} // namespace

IZorUiMsg& msg_ui()
{
    static SilentMsg silent;
    return g_msgUi != nullptr ? *g_msgUi : silent;
}

IZorUiTranslate& lang_ui()
{
    static SourceLanguage source;
    return g_langUi != nullptr ? *g_langUi : source;
}

void set_msg(IZorUiMsg* hook)
{
    g_msgUi = hook;
}

void set_lang(IZorUiTranslate* hook)
{
    g_langUi = hook;
}

} // namespace zor_ui
