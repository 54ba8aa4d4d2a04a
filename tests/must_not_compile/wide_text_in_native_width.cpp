// Texts are 16-bit units: a literal of another width is no text of the library's.
#include "zorutils/zortext/zor_string.h"

#ifdef ZOR_CONTROL
zor_text::CZorStringT<WCHAR> text(ZOR_W("text"));
#else
zor_text::CZorStringT<WCHAR> text(U"text");
#endif
