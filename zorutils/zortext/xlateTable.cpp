#include "zorutils/zortext/xlateTable.h"

#include <algorithm>

#include "zorutils/fs/mapped_file_internal.h"
#include "zorutils/platform/crt.h"
#include "zorutils/zorsys/zor_check.h"
#include "zorutils/zortext/xlate_group.h"

namespace {

typedef zor_text::CZorStringT<WCHAR> String;
typedef std::vector<CXlateEntry> Entries;

constexpr const char* source_path = "zortext\\xlateTable";

// Of two keys with one beginning the longer stands first, on purpose: lookups rely on it.
bool is_before(const CXlateEntry& a, const CXlateEntry& b)
{
    const int order = wcsncmp(a.key, b.key, std::min(a.keyLength, b.keyLength));
    return order != 0 ? order < 0 : a.keyLength > b.keyLength;
}

Entries::const_iterator first_not_before(const Entries& entries, const CXlateEntry& wanted)
{
    return std::lower_bound(entries.begin(), entries.end(), wanted, is_before);
}

// False if there is none, or it has no end.
bool find_group(const WCHAR* position, const WCHAR* end, CXlateGroup& group)
{
    const EXlateGroup result = FindXlateGroup(position, end, group);
    if (result == XLATE_GROUP_UNMATCHED)
        zor_logging::zor_err_log(source_path, 104, "No matching ']' in Help.map\n");
    return result == XLATE_GROUP_FOUND;
}

} // namespace

CXlateTable::CXlateTable(const WCHAR* path)
{
    loadTranslationFile(path);
}

CXlateTable::~CXlateTable() = default;

bool CXlateTable::loadTranslationFile(const WCHAR* path)
{
    resetTranslated();
    auto file = std::make_unique<CMappedFile>();
    const bool opened = file->Open(path);
    m_file = std::move(file);
    if (!opened)
        return false;
    m_loaded = createTableDataIndex() != 0;
    return m_loaded;
}

unsigned int CXlateTable::createTableDataIndex()
{
    const auto* position = reinterpret_cast<const WCHAR*>(m_file->data());
    const WCHAR* const end = position + m_file->size() / sizeof(WCHAR);
    m_entries.reserve(16384);
    CXlateGroup key, value;
    while (find_group(position, end, key) && find_group(key.next, end, value)) {
        position = value.next;
        if (key.length > 0 && value.length > 0)
            m_entries.push_back({key.text, static_cast<unsigned short>(key.length), value.text,
                                 static_cast<unsigned short>(value.length)});
    }
    std::sort(m_entries.begin(), m_entries.end(), is_before);
    return static_cast<unsigned int>(m_entries.size());
}

void CXlateTable::resetTranslated()
{
    m_entries.clear();
    m_loaded = false;
}

String CXlateTable::Xlate(const WCHAR* text) const
{
    if (text == nullptr) {
        zor_logging::zor_err_log(source_path, 144, "");
        return String();
    }
    if (m_loaded) {
        String key = text;
        key.Replace(ZOR_W("\r"), ZOR_W("\\r"));
        key.Replace(ZOR_W("\n"), ZOR_W("\\n"));
        const CXlateEntry wanted = {key.c_str(), static_cast<unsigned short>(key.GetLength()),
                                    nullptr, 0};
        const auto hit = first_not_before(m_entries, wanted);
        if (hit != m_entries.end() && hit->keyLength == wanted.keyLength &&
            wcsncmp(hit->key, wanted.key, wanted.keyLength) == 0) {
            String value(hit->value, hit->valueLength);
            value.Replace(ZOR_W("\\r"), ZOR_W("\r"));
            value.Replace(ZOR_W("\\n"), ZOR_W("\n"));
            return value;
        }
    }
    return RemoveContext(text);
}

String CXlateTable::RemoveContext(const WCHAR* text)
{
    const String whole = text;
    const int last = whole.ReverseFind('@');
    return last >= 1 && whole[last - 1] == '@' ? whole.Left(last - 1) : whole;
}

bool CXlateTable::Test() const
{
    return std::none_of(m_entries.begin(), m_entries.end(), [this](const CXlateEntry& entry) {
        return first_not_before(m_entries, entry) == m_entries.end();
    });
}
