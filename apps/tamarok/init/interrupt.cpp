#include "init/interrupt.h"

#include <array>
#include <csignal>

namespace tamarok::cli {

namespace {

constexpr std::array signals{SIGINT, SIGTERM, SIGHUP};

// A signal handler may write nothing but a variable of this kind.
volatile std::sig_atomic_t received = 0;

void note(int signal)
{
    received = signal;
}

} // namespace

InterruptScope::InterruptScope()
{
    received = 0;
    for (const int signal : signals)
        std::signal(signal, note);
}

InterruptScope::~InterruptScope()
{
    for (const int signal : signals)
        std::signal(signal, SIG_DFL);
}

void InterruptScope::check()
{
    if (received != 0) throw Interrupted{received};
}

} // namespace tamarok::cli
