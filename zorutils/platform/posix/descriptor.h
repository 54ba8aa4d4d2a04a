// zorutils/platform/posix/descriptor.h: the owner of a file descriptor, and the policies of
// opening, reading, writing and closing.
#pragma once

#include "zorutils/platform/posix/system_calls.h"

#include <errno.h>
#include <stdint.h>

namespace zor::platform {

// A signal that came before anything happened is no failure.
template <typename Call>
auto retry_interrupted(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

// Owns one descriptor, or none. Movable only.
class Descriptor
{
public:
    Descriptor() noexcept = default;
    explicit Descriptor(int descriptor) noexcept : m_descriptor(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : m_descriptor(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();

    bool valid() const noexcept { return m_descriptor >= 0; }
    int get() const noexcept { return m_descriptor; }
    int release() noexcept;

    // Closes it and tells whether the system reported success; errno otherwise. It is gone either
    // way.
    bool close() noexcept;

private:
    int m_descriptor = -1;
};

// Opens a file; not valid, with errno set, on failure.
Descriptor open_descriptor(const char* path, int flags, mode_t mode = 0);

// At most `count` bytes at the current position, or at `offset` if that is not negative; what was
// transferred is added to `done`. Both go on after an interruption and after a short transfer, and
// end early at the end of a file. False with errno set when the system refused; `done` then tells
// what was transferred before that.
bool read_bytes(int descriptor, void* buffer, size_t count, int64_t offset, size_t& done);
bool write_bytes(int descriptor, const void* buffer, size_t count, int64_t offset, size_t& done);

} // namespace zor::platform
