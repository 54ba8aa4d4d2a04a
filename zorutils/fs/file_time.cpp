#include "zorutils/fs/file_time.h"

#include <initializer_list>

#include "zorutils/fs/platform_file.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/zor_time.h"

namespace zor {
namespace file_time {

namespace {

typedef CZorStringT<WCHAR> String;

void print(FILETIME* time, String* date, String* clock)
{
    if (time != nullptr)
        ConvertAndFormatFileTime(*time, date, clock);
}

} // namespace

bool ConvertAndFormatFileTime(FILETIME& time, String* date, String* clock)
{
    FILETIME local;
    if (!FileTimeToLocalFileTime(&time, &local))
        return false;
    SYSTEMTIME fields = {};
    FileTimeToSystemTime(&local, &fields);
    if (date != nullptr)
        date->Format(ZOR_W("%02d/%02d/%d"), fields.wMonth, fields.wDay, fields.wYear);
    if (clock != nullptr)
        clock->Format(ZOR_W("%02d:%02d"), fields.wHour, fields.wMinute);
    return true;
}

bool zorGetFileTimes(const WCHAR* path, FILETIME* first, FILETIME* second, FILETIME* third)
{
    const base::PlatformFile file = base::CreatePlatformFile(
        path, base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ, nullptr, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    base::PlatformFileInfo info;
    const bool known = base::GetPlatformFileInfo(file, &info);
    if (known) {
        if (first != nullptr)
            base::to_FILETIME(info.creation_time, *first);
        if (second != nullptr)
            base::to_FILETIME(info.last_accessed, *second);
        if (third != nullptr)
            base::to_FILETIME(info.last_modified, *third);
    }
    base::ClosePlatformFile(file);
    return known;
}

bool zorGetFileTimeFormatted(FILETIME* first, FILETIME* second, FILETIME* third, String* date1,
                             String* clock1, String* date2, String* clock2, String* date3,
                             String* clock3)
{
    if (date1 == nullptr)
        return true;
    // Crossed on purpose: hosts show creation, last write and last access in this order.
    print(first, date1, clock1);
    print(third, date2, clock2);
    print(second, date3, clock3);
    return true;
}

bool zorGetFileTimeFormatted(const WCHAR* path, String* date1, String* clock1, String* date2,
                             String* clock2, String* date3, String* clock3)
{
    FILETIME first, second, third;
    if (zorGetFileTimes(path, &first, &second, &third))
        return zorGetFileTimeFormatted(&first, &second, &third, date1, clock1, date2, clock2, date3,
                                       clock3);
    if (date1 == nullptr)
        return true;
    for (String* const text : {date1, clock1, date2, clock2, date3, clock3}) {
        if (text != nullptr)
            text->Empty();
    }
    return true;
}

void zorGetSystemTimeAsFileTime(FILETIME& time)
{
    SYSTEMTIME fields;
    GetSystemTime(&fields);
    SystemTimeToFileTime(&fields, &time);
}

} // namespace file_time
} // namespace zor
