// The store, and the grammar of its files.
#include "zorutils/fs/zor_ini_file.h"

#include <algorithm>

#include "zorutils/formats/number_text.h"
#include "zorutils/fs/zor_ini_file_internal.h"
#include "zorutils/platform/crt.h"
#include "zorutils/zorsys/zor_check.h"

namespace zor_settings {

namespace {

constexpr const char* source_path = "fs\\zor_ini_file";

// The numbers that the checks have always had in the log: support staff look for them.
enum FailedCheck
{
    check_blank_line = 212,
    check_section = 221,
    check_key = 235,
    check_first_character = 243,
};

bool fail(FailedCheck check)
{
    zor_logging::zor_err_log(source_path, check, "");
    return false;
}

// ASCII as it is everywhere; beyond it the letters and digits of the run-time's tables.
bool begins_key(WCHAR unit)
{
    if (unit < 128)
        return isalnum(unit) != 0;
    return iswalpha(unit) != 0 || iswdigit(unit) != 0;
}

bool take_section(String line, String& section)
{
    line.TrimRight();
    line.TrimLeft();
    const int length = line.GetLength();
    if (line[length - 1] != ']' || length < 3)
        return false;
    section = line.Mid(1, length - 2);
    return true;
}

bool take_key(const String& line, const String& section, CThreeTupleStore& store)
{
    const int sign = line.Find(static_cast<WCHAR>('='));
    if (sign < 1)
        return false;
    store.setValue(section, line.Left(sign), line.Mid(sign + 1));
    return true;
}

bool take_line(const String& line, String& section, CThreeTupleStore& store)
{
    const WCHAR first = line.empty() ? WCHAR{0} : line[0];
    switch (first) {
    case 0:
        section.Empty();
        return true;
    case '\t':
    case ' ': {
        String rest = line;
        rest.TrimRight();
        rest.TrimLeft();
        // A line of blanks ends the section, on purpose.
        section = rest.empty() ? String() : section;
        return rest.empty() || fail(check_blank_line);
    }
    case '#':
    case '/':
    case ';':
        return true;
    case '[':
        return take_section(line, section) || fail(check_section);
    default:
        if (!begins_key(first))
            return fail(check_first_character);
        return take_key(line, section, store) || fail(check_key);
    }
}

} // namespace

bool UnitOrder::operator()(const String& a, const String& b) const
{
    return std::lexicographical_compare(a.c_str(), a.c_str() + a.GetLength(), b.c_str(),
                                        b.c_str() + b.GetLength(),
                                        [](WCHAR left, WCHAR right) { return left < right; });
}

CThreeTupleStore::CThreeTupleStore() = default;
CThreeTupleStore::CThreeTupleStore(const CThreeTupleStore& other) = default;
CThreeTupleStore& CThreeTupleStore::operator=(const CThreeTupleStore& other) = default;
CThreeTupleStore::~CThreeTupleStore() = default;

void CThreeTupleStore::setValue(const String& section, const String& key, const String& value)
{
    SettingsSection& entry = m_sections[section];
    entry.m_name = section;
    entry.m_entries[key] = value;
}

void CThreeTupleStore::setValue(const String& section, const String& key, int value)
{
    setValue(section, key, zor_formats::IntToString(value));
}

bool CThreeTupleStore::getValue(const String& section, const String& key, String& value) const
{
    const auto entry = m_sections.find(section);
    if (entry == m_sections.end())
        return false;
    const auto found = entry->second.m_entries.find(key);
    if (found == entry->second.m_entries.end())
        return false;
    value = found->second;
    return true;
}

void CThreeTupleStore::clear()
{
    m_sections.clear();
}

bool parseSettings(IZorIniFileReaderImpl& lines, CThreeTupleStore& store)
{
    store.clear();
    String section;
    while (!lines.isEof()) {
        if (!take_line(lines.readLine(), section, store))
            return false;
    }
    return true;
}

mandatory_error::ZorErrorCode<bool> readSettingsAsIni(const WCHAR* path, CThreeTupleStore& store,
                                                      zor::text_utils::EZorTextEncoding& encoding)
{
    CIniFileReader reader;
    if (!reader.open(path) || !parseSettings(reader.lines(), store))
        return false;
    encoding = reader.encoding();
    return true;
}

mandatory_error::ZorErrorCode<bool> writeSettingsAsIni(const WCHAR* path,
                                                       const CThreeTupleStore& store,
                                                       zor::text_utils::EZorTextEncoding encoding)
{
    return CIniFileWriter(encoding).write(path, store);
}

} // namespace zor_settings
