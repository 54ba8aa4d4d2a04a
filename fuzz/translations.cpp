// Translation files: every pair is found as a walk over all pairs finds it, whatever the file
// holds.
#include <string.h>

#include <vector>

#include "fuzz/input_file.h"
#include "fuzz/properties.h"
#include "zorutils/zortext/xlateTable.h"
#include "zorutils/zortext/xlate_group.h"

using namespace zor_test;

namespace {

typedef std::basic_string<WCHAR> Units;

struct Pair
{
    Units key, value;
};

std::vector<Pair> pairs_of(const Units& text)
{
    std::vector<Pair> pairs;
    const WCHAR* at = text.data();
    const WCHAR* const end = at + text.size();
    CXlateGroup key, value;
    while (FindXlateGroup(at, end, key) == XLATE_GROUP_FOUND &&
           FindXlateGroup(key.next, end, value) == XLATE_GROUP_FOUND) {
        at = value.next;
        if (key.length > 0 && value.length > 0)
            pairs.push_back({Units(key.text, key.length), Units(value.text, value.length)});
    }
    return pairs;
}

Units replaced(Units text, const char* from, const char* to)
{
    const Units what(from, from + strlen(from)), by(to, to + strlen(to));
    for (size_t at = 0; (at = text.find(what, at)) != Units::npos; at += by.size())
        text.replace(at, what.size(), by);
    return text;
}

// Comparison ends at a zero unit.
Units up_to_zero(const Units& text)
{
    return text.substr(0, text.find(WCHAR{0}));
}

} // namespace

void zor_fuzz::translations(const unsigned char* data, size_t size)
{
    static const InputFile input(".txt");
    Units text;
    for (size_t i = 0; i + 1 < size; i += 2)
        text += static_cast<WCHAR>(data[i] | data[i + 1] << 8);
    const CXlateTable table(input.write(bytes_of(data, size)).c_str());
    const std::vector<Pair> pairs = pairs_of(text);
    for (const Pair& pair : pairs) {
        const Units asked = up_to_zero(pair.key);
        const Units key = replaced(replaced(asked, "\r", "\\r"), "\n", "\\n");
        const Wide given = table.Xlate(asked.c_str());
        const Units found(given.c_str(), given.length());
        bool possible = false, known = false;
        for (const Pair& other : pairs) {
            if (other.key.size() != key.size() || up_to_zero(other.key) != key)
                continue;
            known = true;
            possible |= found == replaced(replaced(other.value, "\\r", "\r"), "\\n", "\n");
        }
        const Wide plain = CXlateTable::RemoveContext(asked.c_str());
        require(known ? possible : shown(given) == shown(plain),
                "a key is found by its whole length, and nothing else is");
    }
    const Wide missing = table.Xlate(ZOR_W("not in [any file@@x"));
    require(shown(missing) == "not in [any file", "a miss gives the text without its context");
}
