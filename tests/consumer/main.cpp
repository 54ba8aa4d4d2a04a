// Counts a point name on in another module, in a thread of its own, and prints a value with it.
#include <stdio.h>

#include <zorutils/zorutils.h>

zor_text::CZorStringT<WCHAR> next_name(const zor_text::CZorStringT<WCHAR>& name);

int main()
{
    zor_text::CZorStringT<WCHAR> text;
    zor::thread::thread counter("counter", [&text] { text = next_name(ZOR_W("STA0099")); });
    counter.join();
    text += ' ';
    text += zor_formats::ConvertFloat(2.5, 2, false);
    const zor_text::CZorStringT<char> narrow(text.c_str());
    puts(narrow.c_str());
    return narrow.Compare("STA0100 2.50") == 0 ? 0 : 1;
}
