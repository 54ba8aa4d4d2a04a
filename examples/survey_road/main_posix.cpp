// The entry point and the terminal on POSIX: arguments are UTF-8.
#include <unistd.h>

#include "console.h"
#include "run.h"

namespace survey_road {

bool is_terminal(FILE* stream)
{
    return isatty(fileno(stream)) != 0;
}

void prepare_console() {}

} // namespace survey_road

namespace {

// Bytes that are no UTF-8 stand as U+DC80 to U+DCFF, in which the library's file layer takes them.
survey_road::Text from_utf8(const char* bytes)
{
    survey_road::Text text;
    const auto* at = reinterpret_cast<const unsigned char*>(bytes);
    while (*at != 0) {
        const int following = *at < 0x80 ? 0 : *at >= 0xF0 ? 3 : *at >= 0xE0 ? 2 : 1;
        unsigned long character = following == 0 ? *at : *at & (0x3Fu >> following);
        bool valid = *at < 0x80 || (*at >= 0xC2 && *at < 0xF5);
        for (int i = 1; valid && i <= following; ++i) {
            valid = (at[i] & 0xC0) == 0x80;
            character = character << 6 | (at[i] & 0x3Fu);
        }
        if (!valid) {
            text += static_cast<WCHAR>(0xDC00 + *at++);
        } else if (character < 0x10000) {
            text += static_cast<WCHAR>(character);
            at += following + 1;
        } else {
            text += static_cast<WCHAR>(0xD800 + ((character - 0x10000) >> 10));
            text += static_cast<WCHAR>(0xDC00 + ((character - 0x10000) & 0x3FF));
            at += following + 1;
        }
    }
    return text;
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<survey_road::Text> arguments;
    for (int i = 1; i < argc; ++i)
        arguments.push_back(from_utf8(argv[i]));
    return survey_road::run(arguments);
}
