// common/console.h: texts, arguments and the terminal; what differs has a source per system.
#pragma once

#include <stdio.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "zorutils/zorutils.h"

namespace host {

using Text = zor_text::CZorStringT<WCHAR>;
using TextView = std::basic_string_view<WCHAR>;

inline TextView view(const Text& text)
{
    return TextView(text.c_str(), text.length());
}

// The program: runs with the command line's arguments, without its own name; the exit code.
int run(const std::vector<Text>& arguments);

// UTF-8 of a text; half a surrogate pair becomes U+FFFD.
std::string utf8(TextView text);

inline std::string utf8(const Text& text)
{
    return utf8(view(text));
}

// The text of UTF-8, up to a zero byte. Bytes that are none stand as U+DC80 to U+DCFF, in which the
// library's file layer takes them.
Text from_utf8(const std::string& bytes);

// How many columns a text takes: its characters.
size_t columns(std::string_view utf8_text);

// Runs `work` in a thread of this name, guarded against faults, and waits for it; what it returned.
int in_guarded_thread(const char* name, const std::function<int()>& work);

// The stream is shown to a person.
bool is_terminal(FILE* stream);

// Lets the terminal show UTF-8.
void prepare_console();

} // namespace host
