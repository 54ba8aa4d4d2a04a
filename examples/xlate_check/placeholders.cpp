#include "placeholders.h"

#include <algorithm>
#include <vector>

namespace xlate_check {

namespace {

using host::TextView;

bool is_one_of(WCHAR unit, const char* set)
{
    const std::string_view all(set);
    return unit < 0x80 && all.find(static_cast<char>(unit)) != std::string_view::npos;
}

const char* const digits = "0123456789";

// Behind the "%" at `at`: the length of a place with a conversion letter, or 0.
size_t conversion_length(TextView text, size_t at)
{
    size_t end = at + 1;
    const auto skip = [&](const char* set) {
        while (end < text.size() && is_one_of(text[end], set))
            ++end;
    };
    skip("-+#0"); // a blank is a flag too, but "50 % of" is no place
    skip("0123456789*.");
    if (text.substr(end, 3) == TextView(ZOR_W("I64")))
        end += 3;
    skip("hlLw");
    return end < text.size() && is_one_of(text[end], "diouxXeEfgGcCsSpn") ? end + 1 - at : 0;
}

// "%1" or "%1!format!".
size_t insert_length(TextView text, size_t at)
{
    size_t end = at + 1;
    while (end < text.size() && end < at + 3 && is_one_of(text[end], digits))
        ++end;
    if (end == at + 1 || text[at + 1] == '0')
        return 0;
    const size_t close =
        end < text.size() && text[end] == '!' ? text.find(WCHAR{'!'}, end + 1) : TextView::npos;
    return (close == TextView::npos ? end : close + 1) - at;
}

size_t field_length(TextView text, size_t at)
{
    size_t end = at + 1;
    while (end < text.size() && is_one_of(text[end], digits))
        ++end;
    return end > at + 1 && end < text.size() && text[end] == '}' ? end + 1 - at : 0;
}

} // namespace

std::string placeholders(TextView text)
{
    std::vector<std::string> in_order, by_number;
    for (size_t at = 0; at < text.size();) {
        size_t length = 0;
        if (text[at] == '%' && at + 1 < text.size() && text[at + 1] == '%') {
            at += 2;
        } else if (text[at] == '%' && (length = insert_length(text, at)) > 0 &&
                   conversion_length(text, at) == 0) {
            by_number.push_back(host::utf8(text.substr(at, length)));
        } else if (text[at] == '%' && (length = conversion_length(text, at)) > 0) {
            in_order.push_back(host::utf8(text.substr(at, length)));
        } else if (text[at] == '{' && at + 1 < text.size() && text[at + 1] == '{') {
            at += 2;
        } else if (text[at] == '{' && (length = field_length(text, at)) > 0) {
            by_number.push_back(host::utf8(text.substr(at, length)));
        } else {
            ++at;
        }
        at += length;
    }
    std::sort(by_number.begin(), by_number.end());
    std::string all;
    for (const auto* list : {&in_order, &by_number}) {
        for (const std::string& place : *list)
            all += (all.empty() ? "" : " ") + place;
    }
    return all;
}

} // namespace xlate_check
