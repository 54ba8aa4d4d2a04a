#include "zorutils/platform/posix/file_copy.h"

#include "zorutils/platform/posix/descriptor.h"

#include <errno.h>
#include <memory>
#include <utility>

namespace zor::platform {

namespace {

constexpr size_t block_bytes = 256 * 1024;
constexpr mode_t permission_bits = 07777;

bool copy_content(int from, int to)
{
    const auto block = std::make_unique<char[]>(block_bytes);
    for (;;) {
        size_t read = 0;
        size_t written = 0;
        if (!read_bytes(from, block.get(), block_bytes, -1, read))
            return false;
        if (read == 0)
            return true;
        if (!write_bytes(to, block.get(), read, -1, written))
            return false;
    }
}

bool copy_record(int from, int to)
{
    struct stat status;
    if (system_calls().fstat(from, &status) != 0)
        return false;
    const struct timespec times[] = {status.st_atim, status.st_mtim};
    return system_calls().fchmod(to, status.st_mode & permission_bits) == 0 &&
           system_calls().futimens(to, times) == 0;
}

// The old file goes only after the new one has reached the disk whole.
bool write_copy(const std::string& from, Descriptor target)
{
    const Descriptor source = open_descriptor(from.c_str(), O_RDONLY | O_NOFOLLOW);
    return source.valid() && copy_open_file(source.get(), target.get()) && target.close();
}

} // namespace

bool copy_open_file(int from, int to)
{
    return copy_content(from, to) && copy_record(from, to) &&
           retry_interrupted([&] { return system_calls().fsync(to); }) == 0;
}

bool move_by_copy(const std::string& from, const std::string& to, bool replaces)
{
    // Under a name of its own until it is whole, so that a failure leaves the target alone.
    const std::string unfinished = to + ".zormove";
    Descriptor target = open_descriptor(unfinished.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
    if (!target.valid())
        return false;
    const char* made = unfinished.c_str();
    const bool stands = write_copy(from, std::move(target)) &&
                        (replaces ? system_calls().rename(made, to.c_str())
                                  : system_calls().rename_new(made, to.c_str())) == 0;
    if (stands)
        return system_calls().unlink(from.c_str()) == 0;
    const int error = errno;
    system_calls().unlink(made);
    errno = error;
    return false;
}

} // namespace zor::platform
