// zorutils/zortext/xlateTable.h: a translation file, looked up by source text.
//
//     CXlateTable table(ZOR_W("german.txt"));                     // holds [Open@@Menu][Öffnen]
//     menu = table.Xlate(ZOR_W("Open@@Menu"));                    // Öffnen
//     title = table.Xlate(ZOR_W("Open@@Window"));                 // Open: there is no such key
//
// The file is a run of pairs of groups (xlate_group.h), key and translation; one with an empty side
// is left out. A line end inside a text is spelled by two characters, "\r" or "\n". "@@" and a
// context at the end belong to the key. Of equal keys either translation is given.
//
// The table holds no copy of any text: the file stays mapped while the table lives, and must not
// change. Lengths are held in 16 bits: a text of more than 65,535 units is taken as one of its
// length modulo 65,536, as hosts know it.
//
// Errors: a file that is missing, empty or holds no pair leaves a table that translates nothing. A
// group without an end is reported to the log; what stands in front of it is used.
// Threads: any may look up once the table is made.
#pragma once

#include <memory>
#include <vector>

#include "zorutils/core/zor_api.h"
#include "zorutils/zortext/zor_string.h"

class CMappedFile;

// Texts in the mapped file, not terminated.
struct CXlateEntry
{
    const WCHAR* key;
    unsigned short keyLength;
    const WCHAR* value;
    unsigned short valueLength;
};

class ZOR_API CXlateTable
{
public:
    explicit CXlateTable(const WCHAR* path);
    ~CXlateTable();
    CXlateTable(const CXlateTable&) = delete;
    CXlateTable& operator=(const CXlateTable&) = delete;

    // The translation of a terminated text. There is one lookup, with the context; a text that is
    // not found comes back without its context. Null is reported, and gives the empty text.
    zor_text::CZorStringT<WCHAR> Xlate(const WCHAR* text) const;

    // What stands in front of the last "@@", if the last "@" ends one; else the whole text.
    static zor_text::CZorStringT<WCHAR> RemoveContext(const WCHAR* text);

private:
    friend struct CXlateTableProbe; // of the tests

    bool loadTranslationFile(const WCHAR* path);
    unsigned int createTableDataIndex();
    void resetTranslated();
    bool Test() const;

    std::vector<CXlateEntry> m_entries;
    bool m_loaded = false;
    std::unique_ptr<CMappedFile> m_file;
};
