// survey_road/console.h: what the program needs of the terminal; one source per system.
#pragma once

#include <stdio.h>

#include <string>
#include <string_view>

#include "points.h"

namespace survey_road {

// UTF-8 of a text; half a surrogate pair becomes U+FFFD.
std::string utf8(TextView text);

inline std::string utf8(const Text& text)
{
    return utf8(view(text));
}

// How many columns a text takes: its characters.
size_t columns(std::string_view utf8_text);

// The stream is shown to a person.
bool is_terminal(FILE* stream);

// Lets the terminal show UTF-8.
void prepare_console();

} // namespace survey_road
