#include "console.h"

#include "thread_end.h"

namespace host {

namespace {

// Where the work is done.
DWORD WINAPI do_work(void* work)
{
    return static_cast<DWORD>((*static_cast<const std::function<int()>*>(work))());
}

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

Text from_utf8(const std::string& bytes)
{
    Text text;
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.c_str());
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

size_t columns(std::string_view utf8_text)
{
    size_t count = 0;
    for (const char c : utf8_text)
        count += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
    return count;
}

int in_guarded_thread(const char* name, const std::function<int()>& work)
{
    void* const thread = zor::thread::startThread(__FILE__, __LINE__, name, do_work,
                                                  const_cast<std::function<int()>*>(&work), 0);
    // Without a thread of its own the work is done all the same.
    return thread == nullptr ? work() : wait_for_thread(thread);
}

} // namespace host
