#include "catalogue.h"

#include <algorithm>

namespace xlate_check {

bool Catalogue::read(const Text& path, std::string& reason)
{
    if (!load(path, reason))
        return false;
    const WCHAR* const begin = m_text.data();
    const WCHAR* const end = begin + m_text.size();
    m_lines.push_back(begin);
    for (const WCHAR* unit = begin; unit != end; ++unit) {
        if (*unit == '\n' || (*unit == '\r' && (unit + 1 == end || unit[1] != '\n')))
            m_lines.push_back(unit + 1);
    }
    find_pairs();
    for (size_t i = 0; i < m_pairs.size(); ++i)
        m_keys.emplace(m_pairs[i].key, i);
    return true;
}

bool Catalogue::load(const Text& path, std::string& reason)
{
    base::PlatformFileError error;
    const base::PlatformFile file = base::CreatePlatformFileUnsafe(
        path, base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ, nullptr, &error);
    if (file == INVALID_HANDLE_VALUE) {
        reason = "cannot be opened";
        return false;
    }
    std::string bytes;
    char block[65536];
    unsigned int count = 0;
    while ((count = base::ReadPlatformFile(file, block, sizeof block)) > 0 && count <= sizeof block)
        bytes.append(block, count);
    base::ClosePlatformFile(file);
    if (count > sizeof block) {
        reason = "cannot be read";
        return false;
    }
    if (bytes.empty()) {
        reason = "is empty";
        return false;
    }
    unsigned int mark = 0;
    using namespace zor::text_utils;
    if (detect_text_encoding(bytes.data(), static_cast<unsigned int>(bytes.size()), &mark) !=
        TEXT_ENCODING_UTF16) {
        reason = "is not UTF-16, little-endian: the library would find nothing in it";
        return false;
    }
    for (size_t i = 0; i + 1 < bytes.size(); i += 2)
        m_text += static_cast<WCHAR>(static_cast<unsigned char>(bytes[i]) |
                                     static_cast<unsigned char>(bytes[i + 1]) << 8);
    if (bytes.size() % 2 != 0)
        m_problems.push_back({{}, "the file ends in half a character"});
    return true;
}

void Catalogue::find_pairs()
{
    const WCHAR* at = m_text.data();
    const WCHAR* const end = at + m_text.size();
    CXlateGroup group, key;
    bool has_key = false;
    for (;;) {
        const EXlateGroup result = FindXlateGroup(at, end, group);
        if (result == XLATE_GROUP_UNMATCHED)
            m_problems.push_back(
                {place_of(group.text - 1), "this \"[\" has no \"]\": all behind it is lost"});
        find_stray(at, result == XLATE_GROUP_NONE ? end : group.text - 1);
        if (result != XLATE_GROUP_FOUND)
            break;
        if (has_key)
            m_pairs.push_back({TextView(key.text, key.length), TextView(group.text, group.length),
                               place_of(key.text), place_of(group.text)});
        has_key = !has_key;
        key = group;
        at = group.next;
    }
    if (has_key)
        m_problems.push_back({place_of(key.text), "this key has no translation behind it"});
}

// Brackets between the groups.
void Catalogue::find_stray(const WCHAR* from, const WCHAR* to)
{
    for (const WCHAR* unit = from; unit != to; ++unit) {
        if (*unit == ']')
            m_problems.push_back({place_of(unit), "this \"]\" has no \"[\""});
        else if (*unit == '[')
            m_problems.push_back({place_of(unit), "this \"[\" has nothing behind it"});
    }
}

Place Catalogue::place_of(const WCHAR* unit) const
{
    const auto line = std::upper_bound(m_lines.begin(), m_lines.end(), unit) - 1;
    Place place;
    place.line = static_cast<size_t>(line - m_lines.begin()) + 1;
    for (const WCHAR* before = *line; before != unit; ++before) {
        // The mark and the second half of a pair are no columns.
        if (*before != 0xFEFF && (*before < 0xDC00 || *before > 0xDFFF))
            ++place.column;
    }
    return place;
}

} // namespace xlate_check
