#include "tests/support/threads.h"

#include <pthread.h>
#include <unistd.h>

#include "zorutils/platform/posix/thread.h"
#include "zorutils/platform/posix/wait.h"

namespace zor_test {

DWORD wait_for(void* thread)
{
    DWORD code = 0;
    WaitForSingleObject(thread, INFINITE);
    GetExitCodeThread(thread, &code);
    CloseHandle(thread);
    return code;
}

DWORD resume(void* thread)
{
    return ResumeThread(thread);
}

DWORD current_thread()
{
    return static_cast<DWORD>(gettid());
}

void watch_names() {}

std::string name_of_this_thread()
{
    char name[64] = {};
    pthread_getname_np(pthread_self(), name, sizeof name);
    return name;
}

std::string kept_of(const std::string& name)
{
    return name.substr(0, 15);
}

} // namespace zor_test
