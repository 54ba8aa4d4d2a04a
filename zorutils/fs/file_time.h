// zorutils/fs/file_time.h: the times of files, and times printed for people.
//
//     zor_text::CZorStringT<WCHAR> date, clock;
//     FILETIME written;
//     if (zor::file_time::zorGetFileTimes(path, nullptr, nullptr, &written))
//         zor::file_time::ConvertAndFormatFileTime(written, &date, &clock); // 03/05/2024, 09:08
//
// A FILETIME counts tenths of a microsecond since 1601 in UTC; what is printed is the user's local
// time. Results tell of failures, and nothing is logged. Any thread.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"
#include "zorutils/zortext/zor_string.h"

namespace zor {
namespace file_time {

using zor_text::CZorStringT;

// Prints the day as month/day/year and the time of day as hours:minutes; each text may be null.
// False, with the texts untouched, for a time that has no local form.
ZOR_API bool ConvertAndFormatFileTime(FILETIME& time, CZorStringT<WCHAR>* date,
                                      CZorStringT<WCHAR>* clock);

// The times of creation, last access and last write, in whole seconds; each may be null. False,
// with nothing written, for a file that cannot be opened for reading.
ZOR_API bool zorGetFileTimes(const WCHAR* path, FILETIME* first, FILETIME* second, FILETIME* third);

// Prints three times, of which each may be null; true in every case. On purpose the third goes to
// the second pair of texts and the second to the third. With a null `date1` nothing is printed.
ZOR_API bool zorGetFileTimeFormatted(FILETIME* first, FILETIME* second, FILETIME* third,
                                     CZorStringT<WCHAR>* date1, CZorStringT<WCHAR>* clock1,
                                     CZorStringT<WCHAR>* date2, CZorStringT<WCHAR>* clock2,
                                     CZorStringT<WCHAR>* date3, CZorStringT<WCHAR>* clock3);

// The same with the times of a file: creation, last write and last access. For a file that cannot
// be opened all texts become empty, and the result is true all the same.
ZOR_API bool zorGetFileTimeFormatted(const WCHAR* path, CZorStringT<WCHAR>* date1,
                                     CZorStringT<WCHAR>* clock1, CZorStringT<WCHAR>* date2,
                                     CZorStringT<WCHAR>* clock2, CZorStringT<WCHAR>* date3,
                                     CZorStringT<WCHAR>* clock3);

// The time now.
ZOR_API void zorGetSystemTimeAsFileTime(FILETIME& time);

} // namespace file_time
} // namespace zor
