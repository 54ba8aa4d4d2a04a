#include "console.h"

namespace survey_road {

namespace {

void append(std::string& out, unsigned long character)
{
    if (character < 0x80) {
        out += static_cast<char>(character);
        return;
    }
    const int following = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    const unsigned long lead = following == 1 ? 0xC0 : following == 2 ? 0xE0 : 0xF0;
    out += static_cast<char>(lead | (character >> (6 * following)));
    for (int i = following - 1; i >= 0; --i)
        out += static_cast<char>(0x80 | ((character >> (6 * i)) & 0x3F));
}

} // namespace

std::string utf8(TextView text)
{
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        unsigned long unit = text[i];
        if (unit >= 0xD800 && unit < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] < 0xE000) {
            unit = 0x10000 + ((unit - 0xD800) << 10) + (text[i + 1] - 0xDC00u);
            ++i;
        } else if (unit >= 0xD800 && unit < 0xE000) {
            unit = 0xFFFD;
        }
        append(out, unit);
    }
    return out;
}

size_t columns(std::string_view utf8_text)
{
    size_t count = 0;
    for (const char c : utf8_text)
        count += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
    return count;
}

} // namespace survey_road
