// A second process for tests of locks: opens the file of its first argument for itself alone, makes
// the file of its second to say so (or that with ".refused"), and holds on until its input ends.
#include <stdio.h>

#include "zorutils/fs/FileFunctions.h"
#include "zorutils/fs/platform_file.h"

using Wide = zor_text::CZorStringT<WCHAR>;

int main(int count, char** arguments)
{
    if (count != 3)
        return 2;
    const base::PlatformFile file = base::CreatePlatformFile(
        Wide(arguments[1]),
        base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ | base::PLATFORM_FILE_EXCLUSIVE_READ |
            base::PLATFORM_FILE_EXCLUSIVE_WRITE,
        nullptr, nullptr);
    Wide sign(arguments[2]);
    if (file == INVALID_HANDLE_VALUE)
        sign += ZOR_W(".refused");
    if (!FileFuncs::WriteFile(sign.c_str(), "", 0))
        return 2;
    while (getchar() != EOF) {
    }
    return 0;
}
