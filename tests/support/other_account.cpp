#include "support/other_account.h"

#include <array>
#include <exception>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tamarok::test {

namespace {

constexpr unsigned otherAccount = 65534;

/// The child's part: its result goes into the pipe.
[[noreturn]] void runChild(int output, const std::function<std::string()>& work)
{
    std::string result;
    try {
        const bool changed = ::setgroups(0, nullptr) == 0 &&
                             ::setresgid(otherAccount, otherAccount, otherAccount) == 0 &&
                             ::setresuid(otherAccount, otherAccount, otherAccount) == 0;
        result = changed ? work() : "the account cannot be changed";
    } catch (const std::exception& error) {
        result = error.what();
    }
    const bool written = ::write(output, result.data(), result.size()) == static_cast<ssize_t>(result.size());
    ::_exit(written ? 0 : 1); // without the parent's clean-up
}

} // namespace

bool canChangeAccount()
{
    return ::geteuid() == 0 && asOtherAccount([] { return std::string{"changed"}; }) == "changed";
}

std::string asOtherAccount(const std::function<std::string()>& work)
{
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) return "no pipe";
    const pid_t child = ::fork();
    if (child == 0) runChild(ends[1], work);
    ::close(ends[1]);
    std::string result;
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = ::read(ends[0], buffer.data(), buffer.size())) > 0;)
        result.append(buffer.data(), static_cast<std::size_t>(count));
    ::close(ends[0]);
    ::waitpid(child, nullptr, 0);
    return result;
}

} // namespace tamarok::test
