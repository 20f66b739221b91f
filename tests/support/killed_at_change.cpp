#include "support/killed_at_change.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <limits>
#include <stdexcept>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tamarok::test {

namespace {

/// System calls that change files. Some machines lack the older ones.
constexpr std::array changes{
#ifdef SYS_rename
    SYS_rename,    SYS_unlink,    SYS_link,   SYS_chmod,    SYS_chown,
#endif
    SYS_renameat2, SYS_unlinkat,  SYS_linkat, SYS_pwrite64, SYS_ftruncate,
    SYS_fsync,     SYS_fdatasync, SYS_fchmod, SYS_fchown,   SYS_fallocate};

/// True for the entry into a system call that changes files. The standard streams are none.
bool isChange(const __ptrace_syscall_info& call)
{
    if (call.op != PTRACE_SYSCALL_INFO_ENTRY) return false;
    const auto number = static_cast<long>(call.entry.nr);
    if (number == SYS_write) return call.entry.args[0] > STDERR_FILENO;
    if (number == SYS_openat) return (call.entry.args[2] & static_cast<std::uint64_t>(O_CREAT)) != 0;
    return std::ranges::find(changes, number) != changes.end();
}

[[noreturn]] void runTraced(const std::string& program, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), program);
    std::vector<char*> words;
    for (std::string& argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    const int nowhere = ::open("/dev/null", O_RDWR);
    ::dup2(nowhere, STDIN_FILENO);
    ::dup2(nowhere, STDOUT_FILENO);
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0) ::execv(program.c_str(), words.data());
    ::_exit(127);
}

/// Lets the child go on to its next system call, entry or end. @return false at its end
bool nextStop(pid_t child, __ptrace_syscall_info& call)
{
    int status = 0;
    ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    if (::waitpid(child, &status, 0) != child || !WIFSTOPPED(status)) return false;
    call.op = PTRACE_SYSCALL_INFO_NONE;
    if (WSTOPSIG(status) == (SIGTRAP | 0x80)) ::ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof call, &call);
    return true;
}

} // namespace

bool canTrace()
{
    try {
        killAtChange("/bin/true", {}, std::numeric_limits<int>::max());
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

bool killAtChange(const std::string& program, const std::vector<std::string>& arguments, int n)
{
    const pid_t child = ::fork();
    if (child == 0) runTraced(program, arguments);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (!WIFSTOPPED(status) ||
        ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) != 0)
        throw std::runtime_error{"processes cannot be traced here"};
    __ptrace_syscall_info call{};
    for (int change = 0; nextStop(child, call);) {
        if (isChange(call) && ++change == n) {
            ::kill(child, SIGKILL);
            ::waitpid(child, &status, 0);
            return true;
        }
    }
    return false;
}

} // namespace tamarok::test
