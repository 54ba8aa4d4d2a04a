#include "zorutils/platform/posix/locale.h"

#include <langinfo.h>
#include <locale.h>

#include <algorithm>
#include <memory>
#include <string>
#include <type_traits>

#include "zorutils/platform/posix/last_error.h"
#include "zorutils/platform/posix/utf8.h"

namespace {

struct LocaleRelease
{
    void operator()(locale_t locale) const { freelocale(locale); }
};

using OwnedLocale = std::unique_ptr<std::remove_pointer_t<locale_t>, LocaleRelease>;

// A sign of a locale whose text is not UTF-8 is taken byte by byte, as Latin-1 has it.
std::u16string wide_sign(const std::string& sign)
{
    using namespace zor::platform;
    const int length = static_cast<int>(sign.size());
    std::u16string wide(sign.size(), u'\0');
    const int count =
        length == 0 ? 0 : utf8_to_wide(sign.data(), length, wide.data(), length, true);
    if (count < 0)
        std::transform(sign.begin(), sign.end(), wide.begin(),
                       [](char byte) { return static_cast<unsigned char>(byte); });
    else
        wide.resize(static_cast<size_t>(count));
    return wide;
}

std::u16string sign_of_user(nl_item item)
{
    const OwnedLocale locale(newlocale(LC_NUMERIC_MASK, "", nullptr));
    if (locale == nullptr)
        return item == RADIXCHAR ? u"." : u"";
    return wide_sign(nl_langinfo_l(item, locale.get()));
}

int failed(DWORD error)
{
    SetLastError(error);
    return 0;
}

} // namespace

LCID GetUserDefaultLCID()
{
    return LOCALE_USER_DEFAULT;
}

int GetLocaleInfoW(LCID locale, LCTYPE type, WCHAR* buffer, int size)
{
    if (locale != LOCALE_USER_DEFAULT || size < 0 || (buffer == nullptr && size > 0))
        return failed(ERROR_INVALID_PARAMETER);
    if (type != LOCALE_SDECIMAL && type != LOCALE_STHOUSAND)
        return failed(ERROR_INVALID_FLAGS);
    const std::u16string sign = sign_of_user(type == LOCALE_SDECIMAL ? RADIXCHAR : THOUSEP);
    const int needed = static_cast<int>(sign.size()) + 1;
    if (size == 0)
        return needed;
    if (size < needed)
        return failed(ERROR_INSUFFICIENT_BUFFER);
    std::copy_n(sign.c_str(), needed, buffer);
    return needed;
}
