#include "zorutils/platform/posix/resource_file.h"

#include <string.h>

namespace zor::platform {

namespace {

// A range of bytes whose reads fail, once and for all, when they lead outside.
class Bytes
{
public:
    Bytes(const BYTE* begin, size_t size) : m_begin(begin), m_size(size) {}

    bool good() const { return m_good; }
    size_t size() const { return m_size; }

    const BYTE* range(size_t offset, size_t length)
    {
        if (offset > m_size || length > m_size - offset)
            m_good = false;
        return m_good ? m_begin + offset : nullptr;
    }
    WORD word(size_t offset) { return read<WORD>(offset); }
    DWORD dword(size_t offset) { return read<DWORD>(offset); }

private:
    template <class T>
    T read(size_t offset)
    {
        T value = 0;
        if (const BYTE* at = range(offset, sizeof(T)))
            memcpy(&value, at, sizeof(T));
        return value;
    }

    const BYTE* m_begin;
    size_t m_size;
    bool m_good = true;
};

constexpr size_t align4(size_t offset)
{
    return (offset + 3) & ~size_t(3);
}

// --- Compiled resource files: entries one behind the other, each a header and its data.

constexpr WORD numbered = 0xFFFF;

// Reads a type or name at `offset` and moves behind it. False for a textual one.
bool read_number(Bytes& bytes, size_t& offset, WORD& number)
{
    if (bytes.word(offset) == numbered) {
        number = bytes.word(offset + 2);
        offset += 4;
        return true;
    }
    while (bytes.good() && bytes.word(offset) != 0)
        offset += 2;
    offset += 2;
    return false;
}

bool read_compiled(Bytes bytes, std::vector<ResourceEntry>& entries)
{
    size_t begin = 0;
    while (bytes.good() && begin < bytes.size()) {
        const DWORD data_size = bytes.dword(begin);
        const DWORD header_size = bytes.dword(begin + 4);
        size_t at = begin + 8;
        ResourceEntry entry = {};
        const bool has_type = read_number(bytes, at, entry.type);
        const bool has_name = read_number(bytes, at, entry.name);
        at = align4(at);
        entry.language = bytes.word(at + 6); // behind the data version and the memory flags
        entry.data = bytes.range(begin + header_size, data_size);
        entry.size = data_size;
        if (at + 16 > begin + header_size || header_size % 4 != 0)
            return false;
        if (has_type && has_name && entry.type != 0) // type 0 is the mark at the file's head
            entries.push_back(entry);
        begin = align4(begin + header_size + data_size);
    }
    return bytes.good();
}

// --- PE modules: a tree of three levels (type, name, language) in one section.

constexpr WORD pe32_magic = 0x10B;
constexpr WORD pe32_plus_magic = 0x20B;
constexpr DWORD resource_directory = 2;
constexpr DWORD high_bit = 0x80000000;

struct Section
{
    DWORD address;
    DWORD size;
    const BYTE* data;
};

class PeReader
{
public:
    PeReader(Bytes bytes, std::vector<ResourceEntry>& entries) : m_bytes(bytes), m_entries(entries)
    {
    }

    bool read()
    {
        const size_t header = m_bytes.dword(0x3C);
        if (m_bytes.dword(header) != 0x4550) // "PE"
            return false;
        const size_t optional = header + 24;
        const DWORD root = find_root(optional);
        read_sections(optional + m_bytes.word(header + 20), m_bytes.word(header + 6));
        if (!m_bytes.good() || root == 0)
            return m_bytes.good();
        const Section* section = section_of(root);
        if (!section)
            return false;
        const DWORD skipped = root - section->address;
        Bytes tree(section->data + skipped, section->size - skipped);
        return read_level(tree, 0, 0, ResourceEntry());
    }

private:
    // The address of the resource tree, 0 if there is none.
    DWORD find_root(size_t optional)
    {
        const WORD magic = m_bytes.word(optional);
        if (magic != pe32_magic && magic != pe32_plus_magic)
            return 0;
        const size_t directories = optional + (magic == pe32_magic ? 96 : 112);
        const DWORD count = m_bytes.dword(directories - 4);
        return count > resource_directory ? m_bytes.dword(directories + 8 * resource_directory) : 0;
    }

    void read_sections(size_t offset, WORD count)
    {
        for (WORD i = 0; i < count && m_bytes.good(); ++i, offset += 40) {
            Section section = {m_bytes.dword(offset + 12), m_bytes.dword(offset + 16), nullptr};
            section.data = m_bytes.range(m_bytes.dword(offset + 20), section.size);
            if (section.data)
                m_sections.push_back(section);
        }
    }

    const Section* section_of(DWORD address) const
    {
        for (const Section& section : m_sections) {
            if (address >= section.address && address - section.address < section.size)
                return &section;
        }
        return nullptr;
    }

    // Reads the directory at `offset` of the tree; `entry` has what the levels above it say.
    bool read_level(Bytes& tree, size_t offset, int level, ResourceEntry entry)
    {
        const size_t texts = tree.word(offset + 12);
        const size_t numbers = tree.word(offset + 14);
        for (size_t i = texts; i < texts + numbers; ++i) {
            const size_t at = offset + 16 + 8 * i;
            const WORD number = static_cast<WORD>(tree.dword(at));
            const DWORD target = tree.dword(at + 4);
            WORD* const fields[] = {&entry.type, &entry.name, &entry.language};
            *fields[level] = number;
            const bool is_directory = (target & high_bit) != 0;
            if (!tree.good() || is_directory != (level < 2))
                return false;
            const bool read = is_directory ? read_level(tree, target & ~high_bit, level + 1, entry)
                                           : read_leaf(tree, target, entry);
            if (!read)
                return false;
        }
        return tree.good();
    }

    bool read_leaf(Bytes& tree, size_t offset, ResourceEntry entry)
    {
        const DWORD address = tree.dword(offset);
        entry.size = tree.dword(offset + 4);
        const Section* section = section_of(address);
        // Directories may share their children, so that a small file could hold a boundless tree.
        if (!tree.good() || !section || m_entries.size() >= m_bytes.size() / 8)
            return false;
        const DWORD skipped = address - section->address;
        if (entry.size > section->size - skipped)
            return false;
        entry.data = section->data + skipped;
        if (reinterpret_cast<uintptr_t>(entry.data) % sizeof(WCHAR) != 0)
            return false; // the units of a text couldn't be read in place
        m_entries.push_back(entry);
        return true;
    }

    Bytes m_bytes;
    std::vector<ResourceEntry>& m_entries;
    std::vector<Section> m_sections;
};

} // namespace

bool read_resources(const std::vector<BYTE>& bytes, std::vector<ResourceEntry>& entries)
{
    entries.clear();
    Bytes all(bytes.data(), bytes.size());
    bool read = false;
    if (all.word(0) == 0x5A4D) // "MZ"
        read = PeReader(all, entries).read();
    else if (all.dword(0) == 0 && all.dword(4) == 32 && all.good())
        read = read_compiled(all, entries);
    if (!read)
        entries.clear();
    return read;
}

} // namespace zor::platform
