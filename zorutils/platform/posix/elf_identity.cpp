#include "zorutils/platform/posix/elf_identity.h"

#include <elf.h>
#include <string.h>

#include <algorithm>

#include "zorutils/platform/posix/memory_map.h"

namespace zor::platform {

namespace {

// Notes stand on addresses that 4 divides.
size_t padded(size_t size)
{
    return (size + 3) & ~size_t{3};
}

size_t find_in_notes(const char* notes, size_t length, char* to)
{
    for (size_t at = 0; at + sizeof(Elf64_Nhdr) <= length;) {
        Elf64_Nhdr note;
        memcpy(&note, notes + at, sizeof note);
        const size_t name = at + sizeof note, value = name + padded(note.n_namesz);
        at = value + padded(note.n_descsz);
        if (at > length)
            break;
        if (note.n_type == NT_GNU_BUILD_ID && note.n_namesz == sizeof ELF_NOTE_GNU &&
            memcmp(notes + name, ELF_NOTE_GNU, sizeof ELF_NOTE_GNU) == 0) {
            const size_t size = std::min<size_t>(note.n_descsz, most_build_id_bytes);
            memcpy(to, notes + value, size);
            return size;
        }
    }
    return 0;
}

} // namespace

bool begins_elf(int memory, uint64_t base)
{
    char mark[SELFMAG];
    return read_memory(memory, base, mark, SELFMAG) == SELFMAG &&
           memcmp(mark, ELFMAG, SELFMAG) == 0;
}

size_t read_build_id(int memory, uint64_t base, char* to)
{
    Elf64_Ehdr head;
    if (!begins_elf(memory, base) || read_memory(memory, base, &head, sizeof head) != sizeof head ||
        head.e_phentsize != sizeof(Elf64_Phdr))
        return 0;
    const uint64_t shift = head.e_type == ET_DYN ? base : 0;
    for (int i = 0; i < head.e_phnum; ++i) {
        Elf64_Phdr part;
        read_memory(memory, base + head.e_phoff + static_cast<uint64_t>(i) * sizeof part, &part,
                    sizeof part);
        if (part.p_type != PT_NOTE)
            continue;
        char notes[4096];
        const size_t length = read_memory(memory, shift + part.p_vaddr, notes,
                                          std::min<size_t>(part.p_filesz, sizeof notes));
        if (const size_t size = find_in_notes(notes, length, to))
            return size;
    }
    return 0;
}

} // namespace zor::platform
