// xlate_check/catalogue.h: a translation file with what stands where.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "../common/console.h"

namespace xlate_check {

using host::Text;
using host::TextView;

// Where a unit stands, from 1; columns count characters.
struct Place
{
    size_t line = 1, column = 1;
};

struct Pair
{
    TextView key, value;
    Place key_place, value_place;
};

struct Problem
{
    Place place;
    std::string text;
};

// Owns the file's text; pairs point into it.
class Catalogue
{
public:
    Catalogue() = default;
    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;

    // Reads a file as the library's table would. False, with the reason, for a file that cannot be
    // read or is no UTF-16 little-endian text.
    bool read(const Text& path, std::string& reason);

    // All pairs, those with an empty side too.
    const std::vector<Pair>& pairs() const { return m_pairs; }
    // Brackets without their counterpart, a key without a translation.
    const std::vector<Problem>& problems() const { return m_problems; }
    bool has(TextView key) const { return m_keys.count(key) != 0; }

private:
    bool load(const Text& path, std::string& reason);
    void find_pairs();
    void find_stray(const WCHAR* from, const WCHAR* to);
    Place place_of(const WCHAR* unit) const;

    std::basic_string<WCHAR> m_text;
    std::vector<const WCHAR*> m_lines; // where each begins
    std::vector<Pair> m_pairs;
    std::vector<Problem> m_problems;
    std::map<TextView, size_t> m_keys;
};

} // namespace xlate_check
