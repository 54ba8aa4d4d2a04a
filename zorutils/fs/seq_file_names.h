// zorutils/fs/seq_file_names.h: numbered file names, with the counter on disk.
//
//     const SeqFileNames names = {GetRootDir(), ZOR_W("job"), ZOR_W(".txt"), 10};
//     path = names.getNext(); // ...\job1.txt, ...\job2.txt, and after job10.txt job1.txt again
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"
#include "zorutils/zortext/zor_string.h"

struct SeqFileNames
{
    zor_text::CZorStringT<WCHAR> folder; // of the names and of the counter
    zor_text::CZorStringT<WCHAR> prefix;
    zor_text::CZorStringT<WCHAR> suffix; // the extension with its point
    DWORD maxIndex;                      // the greatest number

    // The next path. The number last handed out is in the file `folder`\`prefix`.seq.ini, a decimal
    // number alone; a missing or unreadable one counts as 0, and one that cannot be written is
    // passed over, so that the same number comes again. Nothing is locked: two callers at once can
    // get the same number.
    ZOR_API zor_text::CZorStringT<WCHAR> getNext() const;
};
