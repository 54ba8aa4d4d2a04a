#include "zorutils/fs/FileFunctions.h"
#include "zorutils/fs/compact_path_internal.h"
#include "zorutils/fs/file_names.h"
#include "zorutils/platform/window_text.h"

namespace FileFuncs {

typedef CZorStringT<WCHAR> String;

String compact_path(const String& path, const std::function<bool(const String&)>& fits)
{
    if (fits(path))
        return path;
    const String separators(ZOR_W("\\/"));
    const int name_start = zor::file_names::GetFileNameStart(path);
    // The first part ends behind the separators that begin a network path or a root.
    int first_end = 0;
    while (first_end < name_start && separators.Find(path[first_end]) >= 0)
        ++first_end;
    while (first_end < name_start && separators.Find(path[first_end]) < 0)
        ++first_end;
    for (const String& head : {path.Left(first_end + 1), String()}) {
        for (int rest = first_end; rest < name_start - 1;) {
            do
                ++rest;
            while (rest < name_start - 1 && separators.Find(path[rest]) < 0);
            String shorter = head;
            shorter += ZOR_W("...");
            shorter += path.Mid(rest);
            if ((!head.empty() || rest >= name_start - 1) && fits(shorter))
                return shorter;
        }
    }
    return path.Mid(name_start);
}

String CompactPath(HWND window, const String& path)
{
    const zor::platform::WindowText measure(window);
    return compact_path(
        path, [&](const String& text) { return measure.fits(text.c_str(), text.GetLength()); });
}

} // namespace FileFuncs
