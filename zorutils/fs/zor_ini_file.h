// zorutils/fs/zor_ini_file.h: settings in sections, and their files.
//
//     zor_settings::CThreeTupleStore settings;
//     zor::text_utils::EZorTextEncoding encoding = zor::text_utils::TEXT_ENCODING_ANSI;
//     if (zor_settings::readSettingsAsIni(path, settings, encoding)) {
//         settings.setValue(ZOR_W("Table"), ZOR_W("Precision"), 3);
//         if (!zor_settings::saveSettingsAsIni(path, settings, encoding))
//             tell_the_user();
//     }
//
// A file is bytes of the active code page, or UTF-16 little-endian. Its grammar is strict, and a
// line that it does not know fails the read:
//
//     [section]         everything between the first and the last character is the name
//     key=value         begins with a letter or digit; nothing is trimmed, nothing is quoted
//     # ; /             at the start of a line: a comment
//     a line of blanks  ends the section, on purpose: what follows is in the section with no name
//
// Lines end with CR, LF or both; empty lines mean nothing. A zero ends the file. Order is not kept:
// sections and keys are written in the order of their 16-bit units.
//
// Errors: by results; a failed allocation is std::bad_alloc. Threads: a store belongs to one.
#pragma once

#include <map>

#include "zorutils/core/zor_api.h"
#include "zorutils/core/zor_error_code.h"
#include "zorutils/zortext/text_utils.h"
#include "zorutils/zortext/zor_string.h"

namespace zor_settings {

typedef zor_text::CZorStringT<WCHAR> String;

// By 16-bit units, unsigned: "Key" and "key" are two.
struct UnitOrder
{
    bool operator()(const String& a, const String& b) const;
};

struct SettingsSection
{
    std::map<String, String, UnitOrder> m_entries;
    String m_name; // as in the store; what is written
};

class ZOR_API CThreeTupleStore
{
public:
    typedef std::map<String, SettingsSection, UnitOrder> Sections;

    CThreeTupleStore();
    CThreeTupleStore(const CThreeTupleStore& other);
    CThreeTupleStore& operator=(const CThreeTupleStore& other);
    ~CThreeTupleStore();

    // Makes the section if needed, and replaces an older value.
    void setValue(const String& section, const String& key, const String& value);
    void setValue(const String& section, const String& key, int value);

    // False, with `value` as it was, if the section or the key is missing.
    bool getValue(const String& section, const String& key, String& value) const;

    void clear();

    const Sections& sections() const { return m_sections; }

private:
    Sections m_sections;
};

// Reads a file in place of what `store` held. A line that the grammar does not know gives false,
// and is logged; the store then holds what stood before it. A file that cannot be opened, or is
// empty, gives false with the store as it was. `encoding` receives what the file is, for writing it
// back; it is left alone on failure. UTF-8 has no meaning here: such a file is read as bytes.
ZOR_API mandatory_error::ZorErrorCode<bool>
readSettingsAsIni(const WCHAR* path, CThreeTupleStore& store,
                  zor::text_utils::EZorTextEncoding& encoding);

// Writes the store, over the file that is there: it is emptied first, so what was in it is lost if
// the writing fails or the process ends. saveSettingsAsIni keeps it. Bytes unless `encoding` is
// UTF-16; what the active code page does not have is lost in bytes. No mark is written.
//
// False if the file cannot be opened, and for a section without a name, which cannot be written:
// the file then ends in front of it. On purpose a write that the system refuses counts as success.
ZOR_API mandatory_error::ZorErrorCode<bool>
writeSettingsAsIni(const WCHAR* path, const CThreeTupleStore& store,
                   zor::text_utils::EZorTextEncoding encoding);

// The same by way of a new file beside it (".new"), which takes the place of the old one when it
// has reached the disk whole: whatever happens, `path` is the old file or the new one. False, with
// the old file in place and no other left, on any failure, a refused write included.
ZOR_API mandatory_error::ZorErrorCode<bool>
saveSettingsAsIni(const WCHAR* path, const CThreeTupleStore& store,
                  zor::text_utils::EZorTextEncoding encoding);

} // namespace zor_settings
