#include "print/output.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <string>
#include <system_error>

#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

using errors::deviceError;

[[noreturn]] void fail(int reason)
{
    if (reason == EPIPE) throw PipeClosed{};
    throw Error{deviceError, "cannot write to standard output: " + std::generic_category().message(reason)};
}

} // namespace

void Output::write(std::string_view text)
{
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) fail(errno);
}

void Output::flush()
{
    errno = 0;
    if (std::fflush(stdout) != 0) fail(errno);
}

void ignoreWriteSignals()
{
    for (const int signal : {SIGPIPE, SIGXFSZ})
        std::signal(signal, SIG_IGN);
}

} // namespace tamarok::cli
