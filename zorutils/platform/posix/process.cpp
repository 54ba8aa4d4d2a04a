#include "zorutils/platform/posix/process.h"

#include <errno.h>
#include <pthread.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "zorutils/platform/posix/path_text.h"
#include "zorutils/platform/posix/stay_loaded.h"
#include "zorutils/platform/posix/system_calls.h"
#include "zorutils/platform/posix/system_error.h"
#include "zorutils/platform/posix/waitable.h"

using namespace zor::platform;

namespace {

// --- Ends of processes.

// waitid, made again when a signal came between.
int wait_for(pid_t process, siginfo_t& end, int options)
{
    int result = 0;
    do {
        end = {};
        result = system_calls().waitid(P_PID, static_cast<id_t>(process), &end, options);
    } while (result != 0 && errno == EINTR);
    return result;
}

void* wait_for_abandoned(void* process)
{
    siginfo_t end;
    wait_for(static_cast<pid_t>(reinterpret_cast<intptr_t>(process)), end, WEXITED);
    return nullptr;
}

// Sees to it that a process nobody waits for leaves nothing behind.
void abandon(pid_t process) noexcept
{
    siginfo_t end;
    if (wait_for(process, end, WEXITED | WNOHANG) != 0 || end.si_pid == process)
        return;
    stay_loaded(); // for the thread that waits
    pthread_attr_t small;
    if (pthread_attr_init(&small) != 0)
        return;
    pthread_attr_setstacksize(&small, 64 * 1024);
    pthread_attr_setdetachstate(&small, PTHREAD_CREATE_DETACHED);
    // Signals are the business of the host's threads.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    pthread_t thread;
    pthread_create(&thread, &small, wait_for_abandoned,
                   reinterpret_cast<void*>(static_cast<intptr_t>(process)));
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    pthread_attr_destroy(&small);
}

class Process : public Waitable
{
public:
    explicit Process(pid_t process) : m_process(process) {}
    ~Process() override
    {
        if (!m_ended)
            abandon(m_process);
    }

    // False with errno.
    bool wait() override
    {
        siginfo_t end;
        {
            const std::lock_guard<std::mutex> guard(m_mutex);
            if (m_ended)
                return true;
        }
        // Left for take_end, so that several threads may wait.
        return wait_for(m_process, end, WEXITED | WNOWAIT) == 0 || errno == ECHILD;
    }

    // False if the code is lost.
    bool code(DWORD& code)
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        if (!m_ended)
            take_end();
        code = m_code;
        return !m_lost;
    }

private:
    void take_end()
    {
        siginfo_t end;
        m_lost = wait_for(m_process, end, WEXITED | WNOHANG) != 0;
        m_ended = m_lost || end.si_pid == m_process;
        if (end.si_pid == m_process)
            m_code = static_cast<DWORD>(end.si_status) + (end.si_code == CLD_EXITED ? 0 : 128);
    }

    const pid_t m_process;
    std::mutex m_mutex;
    bool m_ended = false;
    bool m_lost = false;
    DWORD m_code = STILL_ACTIVE;
};

// --- Command lines.

// The parts of a command line: blanks divide, quotes keep them; before a quote two backslashes are
// one, and an odd one makes the quote a character; two quotes within quotes are one.
std::vector<Text> split_command(TextView command)
{
    std::vector<Text> parts;
    size_t at = 0;
    const auto is_blank = [&] { return command[at] == ' ' || command[at] == '\t'; };
    // The program's own name knows quotes only.
    if (!command.empty()) {
        const bool quoted = command[0] == '"';
        size_t end = quoted ? command.find('"', 1) : command.find_first_of(TextView(ZOR_W(" \t")));
        end = end == TextView::npos ? command.size() : end;
        parts.emplace_back(command.substr(quoted, end - quoted));
        at = quoted && end < command.size() ? end + 1 : end;
    }
    for (;;) {
        while (at < command.size() && is_blank())
            ++at;
        if (at == command.size())
            return parts;
        Text part;
        for (bool quoted = false; at < command.size() && (quoted || !is_blank());) {
            const size_t start = at;
            while (at < command.size() && command[at] == '\\')
                ++at;
            const size_t backslashes = at - start;
            if (at == command.size() || command[at] != '"') {
                part.append(backslashes, '\\');
                if (at < command.size() && backslashes == 0)
                    part += command[at++];
                continue;
            }
            part.append(backslashes / 2, '\\');
            ++at;
            if (backslashes % 2 != 0)
                part += '"';
            else if (quoted && at < command.size() && command[at] == '"')
                part += command[at++];
            else
                quoted = !quoted;
        }
        parts.push_back(part);
    }
}

// What the parts are to the system: UTF-8, with bytes that are none as in names.
std::vector<std::string> arguments_of(LPCWSTR command)
{
    std::vector<std::string> arguments;
    for (const Text& part : split_command(command))
        arguments.push_back(to_system_name(part));
    return arguments;
}

DWORD start_error(int reason, const std::string& path)
{
    struct stat folder;
    if (reason == ENOENT && system_calls().stat(parent_of(path).c_str(), &folder) != 0)
        return ERROR_PATH_NOT_FOUND;
    return reason == ENOEXEC ? ERROR_BAD_EXE_FORMAT : win32_error_of(reason);
}

} // namespace

BOOL CreateProcessW(LPCWSTR program, LPWSTR command, void*, void*, BOOL, DWORD, void*, LPCWSTR,
                    STARTUPINFOW*, PROCESS_INFORMATION* process)
{
    return without_exceptions(FALSE, [&]() -> BOOL {
        SystemPath path;
        if (const DWORD error = to_system_path(program, path); error != ERROR_SUCCESS)
            return fail_with(error, FALSE);
        std::vector<std::string> arguments = arguments_of(command);
        std::vector<char*> pointers;
        for (std::string& argument : arguments)
            pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        pid_t started = 0;
        if (system_calls().spawn(&started, path.path.c_str(), pointers.data()) != 0)
            return fail_with(start_error(errno, path.path), FALSE);
        // One object behind both handles, for the process and for its first thread.
        auto object = std::make_shared<Process>(started);
        *process = {};
        process->dwProcessId = static_cast<DWORD>(started);
        process->hProcess = add_handle(object);
        try {
            process->hThread = add_handle(object);
        } catch (...) {
            close_handle(process->hProcess);
            throw;
        }
        return TRUE;
    });
}

BOOL GetExitCodeProcess(HANDLE process, LPDWORD code)
{
    const auto object = handle_as<Process>(process);
    if (!object)
        return FALSE;
    return object->code(*code) ? TRUE : fail_with(ERROR_GEN_FAILURE, FALSE);
}
