#include "zorutils/platform/posix/descriptor.h"

#include <algorithm>
#include <errno.h>
#include <utility>

namespace zor::platform {

namespace {

constexpr int first_own_descriptor = 3;

// The system transfers no more than this in one call.
constexpr size_t most_per_call = 0x40000000;

// Not retried: on this system the descriptor is gone even when the close was interrupted, and the
// number may be someone else's file by then.
int close_once(int descriptor)
{
    return system_calls().close(descriptor);
}

// No file gets 0 to 2: a stray write to a standard stream would land in the user's data.
int keep_off_standard_streams(int descriptor)
{
    if (descriptor < 0 || descriptor >= first_own_descriptor)
        return descriptor;
    const int moved = system_calls().duplicate_above(descriptor, first_own_descriptor);
    const int error = errno;
    close_once(descriptor);
    errno = error;
    return moved;
}

// Calls transfer(done so far) until `count` is reached, the file ends, or the system refuses.
template <typename Transfer>
bool transfer_all(size_t count, size_t& done, Transfer transfer)
{
    done = 0;
    while (done < count) {
        const ssize_t moved = retry_interrupted(transfer);
        if (moved < 0)
            return false;
        if (moved == 0)
            break;
        done += static_cast<size_t>(moved);
    }
    return true;
}

} // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept
{
    if (this != &other) {
        close();
        m_descriptor = other.release();
    }
    return *this;
}

Descriptor::~Descriptor()
{
    // A destructor stands on failure paths: the error that led there is the one to tell.
    const int error = errno;
    close();
    errno = error;
}

int Descriptor::release() noexcept
{
    return std::exchange(m_descriptor, -1);
}

bool Descriptor::close() noexcept
{
    const int descriptor = release();
    return descriptor < 0 || close_once(descriptor) == 0;
}

Descriptor open_descriptor(const char* path, int flags, mode_t mode)
{
    // Not inherited by a program that the host starts, and never the controlling terminal.
    const int all_flags = flags | O_CLOEXEC | O_NOCTTY;
    const int opened =
        retry_interrupted([&] { return system_calls().open(path, all_flags, mode); });
    return Descriptor(keep_off_standard_streams(opened));
}

bool read_bytes(int descriptor, void* buffer, size_t count, int64_t offset, size_t& done)
{
    auto* bytes = static_cast<char*>(buffer);
    return transfer_all(count, done, [&] {
        const size_t part = std::min(count - done, most_per_call);
        if (offset < 0)
            return system_calls().read(descriptor, bytes + done, part);
        return system_calls().pread(descriptor, bytes + done, part,
                                    offset + static_cast<int64_t>(done));
    });
}

bool write_bytes(int descriptor, const void* buffer, size_t count, int64_t offset, size_t& done)
{
    const auto* bytes = static_cast<const char*>(buffer);
    return transfer_all(count, done, [&] {
        const size_t part = std::min(count - done, most_per_call);
        if (offset < 0)
            return system_calls().write(descriptor, bytes + done, part);
        return system_calls().pwrite(descriptor, bytes + done, part,
                                     offset + static_cast<int64_t>(done));
    });
}

} // namespace zor::platform
