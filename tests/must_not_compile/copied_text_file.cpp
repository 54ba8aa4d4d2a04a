// A text file owns its handle: there is no second owner.
#include "zorutils/zortext/text_file.h"

void run(CTextFile& file)
{
#ifdef ZOR_CONTROL
    CTextFile& copy = file;
#else
    CTextFile copy(file);
#endif
    copy.Close();
}
