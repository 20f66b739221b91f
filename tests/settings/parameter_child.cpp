#include <csignal>
#include <iostream>
#include <span>
#include <string>
#include <string_view>
#include <sys/resource.h>

#include "tamarok/comm_act.h"
#include "tamarok/error.h"

// The other process of the tests of parameter files:
//   save FILE KEY VALUE          writes a parameter
//   read FILE KEY                prints a value and by how many KiB the memory in use has grown
//   limited BYTES FILE KEY VALUE writes a parameter under a limit of the file size
//   report FILE TEXT COUNT       appends lines to a protocol
// A failure is printed as "number description".
namespace {

using tamarok::Comm_Act;

long memoryInUse()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

void run(std::span<const std::string> words)
{
    const std::string& what = words[0];
    if (what == "save") Comm_Act{}.SaveParam(words[2], words[3], words[1]);
    if (what == "limited") {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlim_t bytes = std::stoul(words[1]);
        const rlimit limit{bytes, bytes};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        Comm_Act{}.SaveParam(words[3], words[4], words[2]);
    }
    if (what == "read") {
        const long before = memoryInUse();
        const std::string value = Comm_Act{}.GetParam(words[2], "", words[1]);
        std::cout << value << ' ' << memoryInUse() - before << '\n';
    }
    if (what == "report") {
        for (int count = std::stoi(words[3]); count > 0; --count)
            Comm_Act{}.WriteReport("M", "N", words[2], "U", words[1]);
    }
}

} // namespace

int main(int count, char** words)
{
    try {
        run(std::vector<std::string>(words + 1, words + count));
        return 0;
    } catch (const tamarok::Error& error) {
        std::cout << error.number << ' ' << error.description << '\n';
    } catch (const std::exception& error) {
        std::cout << error.what() << '\n';
    }
    return 1;
}
