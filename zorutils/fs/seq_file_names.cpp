#include "zorutils/fs/seq_file_names.h"

#include <stdio.h>

#include "zorutils/platform/crt.h"

namespace {

typedef zor_text::CZorStringT<WCHAR> String;

// By way of the active code page, on purpose: a counter in a folder whose name that page does not
// have is not kept.
FILE* open_counter(const String& path, const WCHAR* mode)
{
    const zor_text::CZorStringT<char> narrow(path.c_str());
    return _wfopen(String(narrow.c_str()).c_str(), mode);
}

DWORD read_counter(const String& path)
{
    FILE* const file = open_counter(path, ZOR_W("r"));
    if (file == nullptr)
        return 0;
    unsigned int counter = 0;
    const bool read = fscanf(file, "%u", &counter) == 1;
    fclose(file);
    return read ? counter : 0;
}

void write_counter(const String& path, DWORD counter)
{
    FILE* const file = open_counter(path, ZOR_W("w"));
    if (file == nullptr)
        return;
    fprintf(file, "%u", static_cast<unsigned int>(counter));
    fclose(file);
}

} // namespace

String SeqFileNames::getNext() const
{
    String counter_path = folder;
    counter_path += ZOR_W("\\");
    counter_path += prefix;
    counter_path += ZOR_W(".seq.ini");
    const DWORD last = read_counter(counter_path);
    const DWORD next = last < maxIndex ? last + 1 : 1;
    write_counter(counter_path, next);
    String path;
    path.Format(ZOR_W("%s\\%s%u%s"), folder.c_str(), prefix.c_str(),
                static_cast<unsigned int>(next), suffix.c_str());
    return path;
}
