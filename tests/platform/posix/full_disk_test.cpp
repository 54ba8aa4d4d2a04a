// Copies and writes where the disk is full or the rights are missing.
#include <errno.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

#include "tests/platform/file_handle.h"
#include "tests/support/temp_folder.h"
#include "zorutils/fs/FileFunctions.h"
#include "zorutils/fs/file_enumerator.h"
#include "zorutils/zorsys/zor_logger.h"

using namespace zor_test;

namespace {

// No file of the process can grow beyond `bytes` while it lives.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        m_signal = signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit = {bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        signal(SIGXFSZ, m_signal);
    }

private:
    rlimit m_before;
    sighandler_t m_signal;
};

// The process has a user's rights while it lives, also where the tests run as root.
class PlainUser
{
public:
    PlainUser() : m_before(geteuid())
    {
        if (m_before == 0 && seteuid(65534) != 0)
            ADD_FAILURE() << "the user cannot be changed";
    }
    ~PlainUser()
    {
        if (m_before == 0 && seteuid(0) != 0)
            abort();
    }

private:
    uid_t m_before;
};

} // namespace

TEST(FullDiskTest, ACopyLeavesNoPartOfAFile)
{
    const TempFolder folder;
    const std::string content(200000, 'x');
    folder.write("from", content);
    folder.write("to", "old");
    {
        const FullDisk full(65536);
        EXPECT_FALSE(
            FileFuncs::CopyFromTo(folder.wide("from").c_str(), folder.wide("new").c_str(), false));
        EXPECT_FALSE(folder.has("new"));
        EXPECT_FALSE(
            FileFuncs::CopyFromTo(folder.wide("from").c_str(), folder.wide("to").c_str(), true));
        EXPECT_FALSE(folder.has("to")) << "neither the old one nor half of the new one";
        EXPECT_FALSE(FileFuncs::WriteFile(folder.wide("written").c_str(), content.data(),
                                          static_cast<unsigned>(content.size())));
    }
    EXPECT_EQ(folder.read("from"), content);
    EXPECT_TRUE(
        FileFuncs::CopyFromTo(folder.wide("from").c_str(), folder.wide("new").c_str(), false));
    EXPECT_EQ(folder.read("new"), content);
}

TEST(FullDiskTest, AWriteTellsWhatFailed)
{
    const TempFolder folder;
    const FileHandle file = open_file(folder.write("file", ""), GENERIC_WRITE);
    const FullDisk full(4096);
    const std::string bytes(8192, 'x');
    DWORD done = 77;
    const BOOL written = WriteFile(file.get(), bytes.data(), 8192, &done, nullptr);
    EXPECT_TRUE(!written || done == 4096u);
    EXPECT_FALSE(WriteFile(file.get(), bytes.data(), 8192, &done, nullptr));
    EXPECT_NE(GetLastError(), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(done, 0u);
}

TEST(FullDiskTest, TheLogGoesOnWhenTheDiskIsFreedAgain)
{
    const TempFolder folder;
    if (mount("tmpfs", folder.path().c_str(), "tmpfs", 0, "size=1m") != 0)
        GTEST_SKIP() << "no disk can be mounted here";
    {
        zor_logging::CZorLogger log;
        ASSERT_TRUE(log.openFile(folder.wide("log").c_str()));
        const Wide record(std::string(200, 'x').c_str());
        // Four times what the disk holds, some of it written in part and most not at all.
        for (int i = 0; i < 10000; ++i)
            log.logText(7, record);
        EXPECT_LE(std::filesystem::file_size(folder / "log"), 1u << 20);
        folder.write("filler", "");
        std::filesystem::resize_file(folder / "log", 100);
        log.logText(7, ZOR_W("freed again"));
        log.flush();
        EXPECT_NE(folder.read("log").find(utf16(ZOR_W("freed again\r\n"))), std::string::npos);
    }
    EXPECT_NE(folder.read("log").find(utf16(ZOR_W("Logging finished\r\n"))), std::string::npos);
    EXPECT_EQ(umount(folder.path().c_str()), 0);
}

TEST(MissingRights, AFolderThatCannotBeReadIsEmptyAndTold)
{
    const TempFolder folder;
    std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
    std::filesystem::create_directory(folder / "closed");
    folder.write("closed/file", "x");
    folder.write("from", "x");
    std::filesystem::permissions(folder / "from", std::filesystem::perms::all);
    std::filesystem::permissions(folder / "closed", std::filesystem::perms::none);
    {
        const PlainUser user;
        WIN32_FIND_DATAW data;
        EXPECT_EQ(FindFirstFileW(folder.wide("closed/*").c_str(), &data), INVALID_HANDLE_VALUE);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
        base::TFileEnumerator entries(folder.wide("closed"), false, 1);
        EXPECT_TRUE(entries.Next().empty());
        EXPECT_EQ(FileFuncs::CountFiles(folder.wide(), true), 1u);
        EXPECT_FALSE(FileFuncs::CopyFromTo(folder.wide("from").c_str(),
                                           folder.wide("closed/to").c_str(), true));
        EXPECT_FALSE(FileFuncs::CreateDirRecursive(folder.wide("closed/sub")));
        EXPECT_FALSE(FileFuncs::DelFile(folder.wide("closed/file").c_str(), true));
        EXPECT_EQ(error_of(open_file(folder.wide("closed/file")).ok()), DWORD{ERROR_ACCESS_DENIED});
        EXPECT_FALSE(FileFuncs::RemoveDirectoryTree(folder.wide("closed").c_str()));
    }
    std::filesystem::permissions(folder / "closed", std::filesystem::perms::all);
    EXPECT_EQ(folder.read("closed/file"), "x");
}

TEST(OddNames, ANameThatIsNoUtf8IsWalkedOpenedCopiedAndDeleted)
{
    const TempFolder folder;
    const std::string name = "a\xFF\xFE-\xC3(.txt";
    std::ofstream(folder / name, std::ios::binary) << "content";
    base::TFileEnumerator entries(folder.wide(), false, 1);
    const Wide found = entries.Next();
    ASSERT_FALSE(found.empty());
    Wide path = folder.wide();
    path += ZOR_W("\\");
    path += found;
    EXPECT_TRUE(open_file(path).ok());
    EXPECT_TRUE(FileFuncs::IsFileExist(path));
    Wide copy = folder.wide("sub");
    copy += ZOR_W("\\");
    copy += found;
    EXPECT_TRUE(FileFuncs::CopyFromTo(path.c_str(), copy.c_str(), false));
    EXPECT_EQ(folder.read("sub/" + name), "content") << "byte for byte the same name";
    EXPECT_TRUE(FileFuncs::DelFile(path.c_str(), false));
    EXPECT_FALSE(folder.has(name));
}
