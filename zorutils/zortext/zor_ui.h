// zorutils/zortext/zor_ui.h: how the library speaks to the user, through hooks that the host sets.
//
//     class Messages : public zor_ui::IZorUiMsg { ... };
//     Messages messages;
//     zor_ui::set_msg(&messages);
//
// Without hooks the library is silent: no message is shown and every question is answered with OK
// or Yes, and texts stay as they are. Hooks stay the host's, are never deleted, and must outlive
// their use. Setting one must not overlap with its use; else any thread.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/zortext/zor_string.h"

namespace zor_ui {

// Messages to the user. The results are the system's: 1 is OK, 6 Yes, 7 No. The order of the
// operations is part of the interface, and so is that there is no virtual destructor. The library
// itself calls showMessage only.
class IZorUiMsg
{
public:
    virtual int showMessage(const WCHAR* text) = 0; // 1 without a hook
    virtual int askYesNo(const WCHAR* text) = 0;    // 6 without a hook
    virtual int showNotice(const WCHAR* text) = 0;  // 1 without a hook

protected:
    ~IZorUiMsg() = default;
};

// The language of messages that the library builds. Not the way of windows and menus: those go
// through the global Xlate (xlateWnd.h), and neither knows of the other.
class IZorUiTranslate
{
public:
    virtual zor_text::CZorStringT<WCHAR> translate(const WCHAR* text) = 0; // `text` without a hook

protected:
    ~IZorUiTranslate() = default;
};

// The hook, or the silent one.
ZOR_API IZorUiMsg& msg_ui();
ZOR_API IZorUiTranslate& lang_ui();

// Null takes the hook away.
ZOR_API void set_msg(IZorUiMsg* hook);
ZOR_API void set_lang(IZorUiTranslate* hook);

} // namespace zor_ui
