#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "call/host_state.h"
#include "print/output.h"

#include "tamarok/ado.h"

namespace tamarok::cli {

/// Answers requests, one JSON object a line, with one JSON object on one line each.
class CallHost {
public:
    /// @param connection  the connection "db"; may be empty
    CallHost(const ado::ConnectionRef& connection, std::string_view locale) : state_{connection, locale} {}

    /// Answers every line of `requests`, each answer flushed at once.
    void run(std::istream& requests, Output& output);

    /// The answer to one line, without line end. Never fails, whatever the line contains.
    std::string answer(std::string_view line);

    /// To be called behind the last request. Error 5 where a transaction was still open; it is rolled
    /// back.
    void finish();

private:
    HostState state_;
};

} // namespace tamarok::cli
