#pragma once

namespace tamarok::cli {

/// Raised where the user has interrupted the program.
struct Interrupted {
    int signal = 0;
};

/// While it lives, interrupt, termination and hang-up are noted instead of ending the program, so that
/// it can clean up first.
class InterruptScope {
public:
    InterruptScope();
    ~InterruptScope();
    InterruptScope(const InterruptScope&) = delete;
    InterruptScope& operator=(const InterruptScope&) = delete;

    /// Throws Interrupted if a signal has come.
    static void check();
};

} // namespace tamarok::cli
