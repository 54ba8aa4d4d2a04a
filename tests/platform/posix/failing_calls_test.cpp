// Every operation on files with its n-th system call failing, for each n: what is told, what is
// left, and that nothing stays open.
#include "tests/platform/posix/failing_calls.h"

#include <errno.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <set>

#include "tests/platform/file_handle.h"
#include "tests/support/temp_folder.h"
#include "zorutils/fs/cfile.h"
#include "zorutils/fs/platform_file.h"
#include "zorutils/fs/zor_ini_file.h"
#include "zorutils/platform/posix/system_error.h"
#include "zorutils/zortext/text_file.h"

using namespace zor_test;

namespace {

// An operation over a fresh folder; true if it told success.
using Operation = std::function<bool(const TempFolder&)>;
// What must hold behind it, whether or not it told success.
using Check = std::function<void(const TempFolder&, bool)>;

class FailingCallsTest : public testing::TestWithParam<int>
{
protected:
    // Walks the operation through failures of its first call, its second, and so on, until no call
    // is left that could fail.
    void walk(const Operation& operation, const Check& check, bool tells_errors = true)
    {
        for (const auto times : {FailingCalls::once, FailingCalls::from_then_on}) {
            int number = 1;
            for (bool more = true; more; ++number) {
                ASSERT_LT(number, 200) << "the operation has no end";
                const TempFolder folder;
                folder.write("old", "old content");
                folder.write("other", "other content");
                const int before = open_descriptors();
                bool told = false;
                std::string name;
                DWORD error = 0;
                {
                    FailingCalls calls(number, GetParam(), times);
                    SetLastError(0);
                    told = operation(folder);
                    error = GetLastError();
                    more = calls.failed();
                    name = calls.name();
                }
                SCOPED_TRACE("call " + std::to_string(number) + ", " + name +
                             (times == FailingCalls::once ? " once" : " from then on"));
                EXPECT_EQ(open_descriptors(), before);
                if (!more) {
                    EXPECT_TRUE(told) << "without a failure";
                }
                if (!told && tells_errors) {
                    EXPECT_EQ(error, zor::platform::win32_error_of(GetParam()));
                }
                check(folder, told);
            }
            EXPECT_GT(number, 2) << "no call was made";
        }
    }
};

bool write_file(const TempFolder& folder)
{
    const FileHandle file = open_file(folder.wide("new"), GENERIC_WRITE, 0, CREATE_NEW);
    DWORD done = 0;
    return file.ok() && WriteFile(file.get(), "text", 4, &done, nullptr) && done == 4 &&
           FlushFileBuffers(file.get());
}

} // namespace

TEST_P(FailingCallsTest, Writing)
{
    walk(write_file, [](const TempFolder& folder, bool told) {
        if (told) {
            EXPECT_EQ(folder.read("new"), "text");
        }
        EXPECT_EQ(folder.read("old"), "old content");
    });
}

TEST_P(FailingCallsTest, Reading)
{
    std::string read;
    walk(
        [&](const TempFolder& folder) {
            read.assign(32, '?');
            DWORD done = 0;
            const FileHandle file = open_file(folder.wide("old"), GENERIC_READ);
            const bool ok = file.ok() && ReadFile(file.get(), read.data(), 32, &done, nullptr);
            const DWORD error = GetLastError();
            read.resize(ok ? done : 0);
            SetLastError(error);
            return ok;
        },
        [&](const TempFolder&, bool told) {
            if (told) {
                EXPECT_EQ(read, "old content");
            }
        });
}

TEST_P(FailingCallsTest, Truncating)
{
    walk(
        [](const TempFolder& folder) {
            const FileHandle file = open_file(folder.wide("old"));
            return file.ok() && SetFilePointer(file.get(), 3, nullptr, FILE_BEGIN) == 3 &&
                   SetEndOfFile(file.get());
        },
        [](const TempFolder& folder, bool told) {
            EXPECT_EQ(folder.read("old"), told ? "old" : "old content");
        });
}

TEST_P(FailingCallsTest, Deleting)
{
    walk([](const TempFolder& folder) { return DeleteFileW(folder.wide("old").c_str()) != 0; },
         [](const TempFolder& folder, bool told) { EXPECT_NE(folder.has("old"), told); });
}

TEST_P(FailingCallsTest, Renaming)
{
    walk(
        [](const TempFolder& folder) {
            return MoveFileW(folder.wide("old").c_str(), folder.wide("new").c_str()) != 0;
        },
        [](const TempFolder& folder, bool told) {
            EXPECT_EQ(folder.has("new"), told);
            EXPECT_EQ(folder.read(told ? "new" : "old"), "old content");
        });
}

TEST_P(FailingCallsTest, Replacing)
{
    walk(
        [](const TempFolder& folder) {
            return MoveFileExW(folder.wide("old").c_str(), folder.wide("other").c_str(),
                               MOVEFILE_REPLACE_EXISTING) != 0;
        },
        [](const TempFolder& folder, bool told) {
            EXPECT_EQ(folder.read("other"), told ? "old content" : "other content");
            EXPECT_NE(folder.has("old"), told);
        });
}

TEST_P(FailingCallsTest, MakingAndRemovingFolders)
{
    walk(
        [](const TempFolder& folder) {
            return CreateDirectoryW(folder.wide("sub").c_str(), nullptr) != 0;
        },
        [](const TempFolder& folder, bool told) { EXPECT_EQ(folder.has("sub"), told); });
    walk(
        [](const TempFolder& folder) {
            std::filesystem::create_directory(folder / "sub");
            return RemoveDirectoryW(folder.wide("sub").c_str()) != 0;
        },
        [](const TempFolder& folder, bool told) { EXPECT_NE(folder.has("sub"), told); });
}

TEST_P(FailingCallsTest, Attributes)
{
    walk(
        [](const TempFolder& folder) {
            return SetFileAttributesW(folder.wide("old").c_str(), FILE_ATTRIBUTE_READONLY) != 0;
        },
        [](const TempFolder& folder, bool told) {
            const DWORD attributes = GetFileAttributesW(folder.wide("old").c_str());
            EXPECT_EQ((attributes & FILE_ATTRIBUTE_READONLY) != 0, told);
        });
    walk(
        [](const TempFolder& folder) {
            return GetFileAttributesW(folder.wide("old").c_str()) != INVALID_FILE_ATTRIBUTES;
        },
        [](const TempFolder&, bool) {});
}

TEST_P(FailingCallsTest, Searching)
{
    std::set<std::string> names;
    walk(
        [&](const TempFolder& folder) {
            names.clear();
            WIN32_FIND_DATAW data;
            const HANDLE search = FindFirstFileW(folder.wide("*").c_str(), &data);
            if (search == INVALID_HANDLE_VALUE)
                return false;
            do
                names.insert(shown(data.cFileName));
            while (FindNextFileW(search, &data));
            const DWORD error = GetLastError();
            FindClose(search);
            SetLastError(error);
            return error == ERROR_NO_MORE_FILES;
        },
        [&](const TempFolder&, bool told) {
            if (told) {
                EXPECT_EQ(names, (std::set<std::string>{".", "..", "old", "other"}));
            }
        });
}

TEST_P(FailingCallsTest, TemporaryNames)
{
    WCHAR name[MAX_PATH];
    walk(
        [&](const TempFolder& folder) {
            return GetTempFileNameW(folder.wide().c_str(), ZOR_W("zor"), 0, name) != 0;
        },
        [&](const TempFolder&, bool told) {
            if (told) {
                EXPECT_NE(GetFileAttributesW(name), INVALID_FILE_ATTRIBUTES);
            }
        },
        false);
}

TEST_P(FailingCallsTest, PlatformFiles)
{
    walk(
        [](const TempFolder& folder) {
            base::PlatformFileError error;
            const base::PlatformFile file = base::CreatePlatformFile(
                folder.wide("new"), base::PLATFORM_FILE_CREATE_ALWAYS | base::PLATFORM_FILE_WRITE,
                nullptr, &error);
            if (file == INVALID_HANDLE_VALUE) {
                EXPECT_NE(error, base::PLATFORM_FILE_OK);
                return false;
            }
            bool ok = base::WritePlatformFile(file, "text", 4) == 4;
            ok = base::TruncatePlatformFile(file, 2) && ok;
            ok = base::FlushPlatformFile(file) && ok;
            return base::ClosePlatformFile(file) && ok;
        },
        [](const TempFolder& folder, bool told) {
            if (told) {
                EXPECT_EQ(folder.read("new"), "te");
            }
        },
        false);
}

TEST_P(FailingCallsTest, FilesThatThrow)
{
    walk(
        [](const TempFolder& folder) {
            base::CFile file;
            try {
                unsigned int done = 0;
                if (!file.Open(folder.wide("new"),
                               base::PLATFORM_FILE_CREATE | base::PLATFORM_FILE_WRITE, nullptr,
                               nullptr))
                    return false;
                file.Write("text", 4, done, nullptr);
                file.Flush();
                file.Close();
                return true;
            } catch (const std::exception&) {
                // The object does not own its handle.
                if (file.Opened())
                    base::ClosePlatformFile(file.GetHandle());
                return false;
            }
        },
        [](const TempFolder& folder, bool told) {
            if (told) {
                EXPECT_EQ(folder.read("new"), "text");
            }
        },
        false);
}

TEST_P(FailingCallsTest, TextFilesEndEarlyAndLeaveNothingOpen)
{
    walk(
        [](const TempFolder& folder) {
            CTextFile file;
            Wide line;
            // What is read may be cut: neither a failed seek nor a failed read is told, on purpose.
            if (file.Open(folder.wide("old").c_str()) != 0) {
                for (int lines = 0; lines < 3 && file.GetNextLine(line, true) != 0; ++lines)
                    EXPECT_LE(line.GetLength(), 11);
                EXPECT_TRUE(file.IsEndOfFile());
                file.Close();
            }
            return true;
        },
        [](const TempFolder&, bool) {}, false);
}

TEST_P(FailingCallsTest, SavingSettings)
{
    zor_settings::CThreeTupleStore store;
    store.setValue(ZOR_W("s"), ZOR_W("k"), ZOR_W("v"));
    walk(
        [&](const TempFolder& folder) {
            return zor_settings::saveSettingsAsIni(folder.wide("old").c_str(), store,
                                                   zor::text_utils::TEXT_ENCODING_ANSI);
        },
        [](const TempFolder& folder, bool told) {
            EXPECT_EQ(folder.read("old"), told ? "[s]\r\nk=v\r\n\r\n" : "old content");
        },
        false);
}

TEST(KilledCalls, SavingSettingsLeavesTheOldFileOrTheNewOne)
{
    zor_settings::CThreeTupleStore store;
    for (int i = 0; i < 20; ++i)
        store.setValue(ZOR_W("s"), Wide(("k" + std::to_string(i)).c_str()), i);
    bool old_seen = false, new_seen = false;
    for (int number = 1;; ++number) {
        ASSERT_LT(number, 1000);
        const TempFolder folder;
        folder.write("settings.ini", "old content");
        const Wide path = folder.wide("settings.ini");
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            const FailingCalls calls(number, 0, FailingCalls::killing);
            const bool saved = zor_settings::saveSettingsAsIni(path.c_str(), store,
                                                               zor::text_utils::TEXT_ENCODING_ANSI);
            _exit(saved ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        const std::string content = folder.read("settings.ini");
        const bool is_old = content == "old content";
        EXPECT_TRUE(is_old || (content.size() > 130 && content.substr(0, 5) == "[s]\r\n" &&
                               content.substr(content.size() - 4) == "\r\n\r\n"))
            << number << ": " << content;
        (is_old ? old_seen : new_seen) = true;
        if (WIFEXITED(status)) {
            EXPECT_EQ(WEXITSTATUS(status), 0);
            EXPECT_FALSE(is_old);
            break;
        }
        // What a killed saving left beside it is no obstacle to the next.
        EXPECT_TRUE(zor_settings::saveSettingsAsIni(path.c_str(), store,
                                                    zor::text_utils::TEXT_ENCODING_ANSI));
        EXPECT_FALSE(folder.has("settings.ini.new"));
    }
    EXPECT_TRUE(old_seen);
    EXPECT_TRUE(new_seen);
}

// What a call ends with when it is told of a device's fault, of rights, and of a full disk.
INSTANTIATE_TEST_SUITE_P(With, FailingCallsTest, testing::Values(EIO, EACCES, ENOSPC));

TEST(InterruptedCalls, AreMadeAgain)
{
    // A signal that comes in the midst of any call loses nothing. A close is not made again: its
    // descriptor is gone, and may be another's by then.
    const auto change = [](const TempFolder& folder) {
        const FileHandle file = open_file(folder.wide("old"));
        char bytes[3] = {};
        DWORD done = 0;
        return file.ok() && ReadFile(file.get(), bytes, 3, &done, nullptr) &&
               std::string(bytes, done) == "old" && SetEndOfFile(file.get()) &&
               WriteFile(file.get(), "er", 2, &done, nullptr) && FlushFileBuffers(file.get());
    };
    const std::set<std::string> made_again = {"open",   "read",  "write",    "pread",
                                              "pwrite", "fsync", "ftruncate"};
    std::set<std::string> met;
    for (int number = 1;; ++number) {
        const TempFolder folder;
        folder.write("old", "old content");
        const int before = open_descriptors();
        std::string name;
        bool told = false, more = false;
        {
            const FailingCalls calls(number, EINTR);
            told = change(folder);
            more = calls.failed();
            name = calls.name();
        }
        met.insert(name);
        EXPECT_EQ(open_descriptors(), before) << name;
        if (made_again.count(name) != 0 || !more) {
            EXPECT_TRUE(told) << "call " << number << ", " << name;
            EXPECT_EQ(folder.read("old"), "older") << name;
        }
        if (!more)
            break;
    }
    for (const char* name : {"open", "ftruncate", "fsync", "close"})
        EXPECT_EQ(met.count(name), 1u) << name;
}
