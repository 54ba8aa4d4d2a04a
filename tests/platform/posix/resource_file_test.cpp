// Resource files that are broken: each is refused or read without leaving its bytes.
#include "zorutils/platform/posix/resource_file.h"

#include "tests/support/failing_allocation.h"
#include "zorutils/platform/posix/system_calls.h"
#include "zorutils/platform/winapi.h"

#include <gtest/gtest.h>

#include <errno.h>
#include <fstream>
#include <iterator>

namespace {

using zor::platform::read_resources;
using zor::platform::ResourceEntry;

using Bytes = std::vector<BYTE>;
using Entries = std::vector<ResourceEntry>;

Bytes read(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// What a reader does with the entries: every byte of them is looked at.
unsigned int sum_of(const Entries& entries)
{
    unsigned int sum = 0;
    for (const ResourceEntry& entry : entries) {
        for (DWORD i = 0; i < entry.size; ++i)
            sum += entry.data[i];
    }
    return sum;
}

void expect_inside(const Bytes& bytes, const Entries& entries)
{
    for (const ResourceEntry& entry : entries) {
        EXPECT_GE(entry.data, bytes.data());
        EXPECT_LE(entry.data + entry.size, bytes.data() + bytes.size());
    }
}

void put32(Bytes& bytes, size_t offset, DWORD value)
{
    for (size_t i = 0; i < 4; ++i)
        bytes.at(offset + i) = static_cast<BYTE>(value >> (8 * i));
}

DWORD get32(const Bytes& bytes, size_t offset)
{
    DWORD value = 0;
    for (size_t i = 0; i < 4; ++i)
        value |= static_cast<DWORD>(bytes.at(offset + i)) << (8 * i);
    return value;
}

class ResourceFile : public testing::TestWithParam<const char*>
{
protected:
    Bytes bytes = read(GetParam());
};
INSTANTIATE_TEST_SUITE_P(Forms, ResourceFile,
                         testing::Values(ZOR_TEST_STRINGS_A, ZOR_TEST_STRINGS_A_DLL));

TEST_P(ResourceFile, GivesTheSameEntriesInBothForms)
{
    Entries entries;
    ASSERT_TRUE(read_resources(bytes, entries));
    EXPECT_EQ(entries.size(), 14u);
    expect_inside(bytes, entries);
    const Bytes other_bytes = read(ZOR_TEST_STRINGS_A);
    Entries other;
    ASSERT_TRUE(read_resources(other_bytes, other));
    EXPECT_EQ(sum_of(entries), sum_of(other));
}

TEST_P(ResourceFile, CutAnywhereStaysInItsBytes)
{
    for (size_t length = 0; length < bytes.size(); ++length) {
        const Bytes cut(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(length));
        Entries entries;
        if (read_resources(cut, entries))
            sum_of(entries);
        expect_inside(cut, entries);
    }
}

TEST_P(ResourceFile, ChangedAnywhereStaysInItsBytes)
{
    for (size_t at = 0; at < bytes.size(); ++at) {
        for (const BYTE value : {BYTE(0), BYTE(1), BYTE(0x7F), BYTE(0x80), BYTE(0xFF)}) {
            Bytes changed = bytes;
            changed[at] = value;
            Entries entries;
            if (read_resources(changed, entries))
                sum_of(entries);
            expect_inside(changed, entries);
        }
    }
}

TEST(ResourceFileCompiled, RefusesSizesThatLeadOutside)
{
    const Bytes good = read(ZOR_TEST_STRINGS_A);
    for (const DWORD value : {DWORD(0xFFFFFFFF), DWORD(0x7FFFFFFF), DWORD(0x10000)}) {
        for (const size_t field : {size_t(32), size_t(36)}) { // the first entry's two sizes
            Bytes bytes = good;
            put32(bytes, field, value);
            Entries entries;
            EXPECT_FALSE(read_resources(bytes, entries)) << field << ' ' << value;
        }
    }
    Bytes bytes = good;
    put32(bytes, 36, 0);
    Entries entries;
    EXPECT_FALSE(read_resources(bytes, entries)) << "a header of no size";
}

TEST(ResourceFileCompiled, PassesOverTextualNames)
{
    Bytes bytes = read(ZOR_TEST_STRINGS_B);
    Entries before;
    ASSERT_TRUE(read_resources(bytes, before));
    const Bytes named = {
        4,   0, 0,   0, 0x24, 0, 0, 0, // sizes of data and header
        'T', 0, 0,   0,                // type "T"
        'N', 0, 'M', 0, 0,    0, 0, 0, // name "NM", padded
        0,   0, 0,   0, 0,    0, 0, 0, // version, flags, language
        0,   0, 0,   0, 0,    0, 0, 0, // version, characteristics
        1,   2, 3,   4,                // data
    };
    bytes.insert(bytes.end(), named.begin(), named.end());
    Entries after;
    ASSERT_TRUE(read_resources(bytes, after));
    EXPECT_EQ(after.size(), before.size());
    bytes.resize(bytes.size() - 1);
    Entries cut;
    EXPECT_FALSE(read_resources(bytes, cut));
}

TEST(ResourceFileCompiled, RefusesOtherBytes)
{
    for (const Bytes& bytes : {Bytes(), Bytes(1, 0), Bytes(7, 0), Bytes(100, 'a'), Bytes(100, 0),
                               Bytes{'M', 'Z'}, Bytes(64, 'M')}) {
        Entries entries;
        EXPECT_FALSE(read_resources(bytes, entries)) << bytes.size();
    }
}

// Where a PE module keeps its section table and its resource tree.
struct PePlaces
{
    explicit PePlaces(const Bytes& bytes)
    {
        const size_t header = get32(bytes, 0x3C);
        const size_t optional = header + 24;
        directory = optional + 112 + 16;
        const DWORD root = get32(bytes, directory);
        const size_t sections = optional + (get32(bytes, header + 20) & 0xFFFF);
        for (size_t section = sections;; section += 40) {
            const DWORD address = get32(bytes, section + 12);
            const DWORD size = get32(bytes, section + 16);
            if (root >= address && root - address < size) {
                tree = get32(bytes, section + 20) + (root - address);
                return;
            }
        }
    }

    size_t directory; // the data directory's entry of the resources
    size_t tree;      // the root directory
};

TEST(ResourceFilePe, RefusesDirectoriesThatLeadOutsideOrBack)
{
    const Bytes good = read(ZOR_TEST_STRINGS_A_DLL);
    const PePlaces places(good);
    const size_t first_target = places.tree + 16 + 4;
    constexpr DWORD directory = 0x80000000;
    for (const DWORD target : {directory | 0x7FFFFFFF, directory | 0x7FFFFF00, directory | 0u,
                               DWORD(0), DWORD(0x7FFFFFFF)}) {
        Bytes bytes = good;
        put32(bytes, first_target, target);
        Entries entries;
        EXPECT_FALSE(read_resources(bytes, entries)) << std::hex << target;
    }
    Bytes bytes = good;
    put32(bytes, places.tree + 12, 0xFFFFFFFF); // 65535 entries of both kinds
    Entries entries;
    EXPECT_FALSE(read_resources(bytes, entries));
}

// A level whose entries all lead to the same one below would be read 2^24 times over.
TEST(ResourceFilePe, RefusesATreeThatIsGreaterThanItsFile)
{
    Bytes bytes = read(ZOR_TEST_STRINGS_A_DLL);
    const PePlaces places(bytes);
    constexpr DWORD count = 100;
    const auto directory = [&](size_t offset, DWORD target) {
        put32(bytes, places.tree + offset + 12, count << 16);
        for (size_t i = 0; i < count; ++i) {
            put32(bytes, places.tree + offset + 16 + 8 * i, static_cast<DWORD>(i + 1));
            put32(bytes, places.tree + offset + 16 + 8 * i + 4, target);
        }
    };
    constexpr DWORD step = 16 + 8 * count;
    bytes.resize(std::max(bytes.size(), places.tree + 4 * step));
    const DWORD leaf_address = get32(bytes, places.directory);
    directory(0, 0x80000000 | step);
    directory(step, 0x80000000 | (2 * step));
    directory(2 * step, 3 * step);
    put32(bytes, places.tree + 3 * step, leaf_address);
    put32(bytes, places.tree + 3 * step + 4, 4);
    Entries entries;
    EXPECT_FALSE(read_resources(bytes, entries));
}

TEST(ResourceFilePe, WithoutResourcesHasNoEntries)
{
    Bytes bytes = read(ZOR_TEST_STRINGS_A_DLL);
    put32(bytes, PePlaces(bytes).directory, 0);
    Entries entries;
    EXPECT_TRUE(read_resources(bytes, entries));
    EXPECT_TRUE(entries.empty());
}

TEST(ResourceFilePe, RefusesAResourceTreeOutsideItsSections)
{
    Bytes bytes = read(ZOR_TEST_STRINGS_A_DLL);
    put32(bytes, PePlaces(bytes).directory, 0x7FFFFFF0);
    Entries entries;
    EXPECT_FALSE(read_resources(bytes, entries));
}

// --- Failures of the system and of memory.

HMODULE load()
{
    return LoadLibraryExW(ZOR_W(ZOR_TEST_STRINGS_A), nullptr, LOAD_LIBRARY_AS_DATAFILE);
}

class SystemCallsRestored : public testing::Test
{
    void TearDown() override { zor::platform::system_calls() = m_saved; }
    zor::platform::SystemCalls m_saved = zor::platform::system_calls();
};

using ResourceLoading = SystemCallsRestored;

TEST_F(ResourceLoading, FailsWhenTheFileCantBeRead)
{
    zor::platform::system_calls().read = [](int, void*, size_t) -> ssize_t {
        errno = EIO;
        return -1;
    };
    zor::platform::system_calls().pread = [](int, void*, size_t, off_t) -> ssize_t {
        errno = EIO;
        return -1;
    };
    SetLastError(NO_ERROR);
    EXPECT_EQ(load(), nullptr);
    EXPECT_NE(GetLastError(), DWORD(NO_ERROR));
}

TEST_F(ResourceLoading, FailsWhenTheFileEndsEarly)
{
    zor::platform::system_calls().read = [](int, void*, size_t) -> ssize_t { return 0; };
    zor::platform::system_calls().pread = [](int, void*, size_t, off_t) -> ssize_t { return 0; };
    EXPECT_EQ(load(), nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_BAD_EXE_FORMAT));
}

TEST(ResourceMemory, LoadingFailsCleanlyWithoutMemory)
{
    HMODULE module = nullptr;
    DWORD error = 0;
    zor_test::for_each_failing_allocation(
        [&] {
            module = load();
            error = GetLastError();
        },
        [&](int, bool failed) {
            if (!failed) {
                EXPECT_NE(module, nullptr);
            } else if (!module) {
                EXPECT_EQ(error, DWORD(ERROR_NOT_ENOUGH_MEMORY));
            }
        });
}

TEST(ResourceMemory, FindingFailsCleanlyWithoutMemory)
{
    HMODULE module = load();
    HRSRC found = nullptr;
    zor_test::for_each_failing_allocation(
        [&] { found = FindResourceW(module, MAKEINTRESOURCEW(1), RT_STRING); },
        [&](int, bool failed) { EXPECT_EQ(found == nullptr, failed); });
}

TEST(ResourceHandle, OfNoModuleHasNoEntries)
{
    int other = 0;
    SetLastError(NO_ERROR);
    EXPECT_EQ(FindResourceW(reinterpret_cast<HMODULE>(&other), MAKEINTRESOURCEW(1), RT_STRING),
              nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_RESOURCE_DATA_NOT_FOUND));
    EXPECT_EQ(LoadLibraryExW(ZOR_W(ZOR_TEST_STRINGS_A), nullptr, 0), nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
}

} // namespace
