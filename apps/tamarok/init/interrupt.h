#pragma once

namespace tamarok::cli {

/// Raised when a signal has asked the program to end.
struct Interrupted {
    int signal = 0;
};

/// During its lifetime the signals for interrupt, termination and hang-up are recorded instead of ending
/// the program, so that it can clean up first.
class InterruptScope {
public:
    InterruptScope();
    ~InterruptScope();
    InterruptScope(const InterruptScope&) = delete;
    InterruptScope& operator=(const InterruptScope&) = delete;

    /// Throws Interrupted if a signal has arrived.
    static void check();
};

} // namespace tamarok::cli
