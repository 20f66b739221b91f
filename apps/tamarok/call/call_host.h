#pragma once

#include <cstddef>
#include <functional>
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
    /// @param servers     the text by which it was opened, where it is one of a server
    CallHost(const ado::ConnectionRef& connection, std::string_view locale, ServerTexts servers = {}) :
        state_{connection, locale, std::move(servers)}
    {}

    /// Answers every line of `requests`, each answer flushed at once.
    void run(std::istream& requests, Output& output);

    /// The answer to one line, without line end. Never fails, whatever the line contains.
    std::string answer(std::string_view line);

    /// Longest line that is read as a request, in bytes without its end. A longer one is answered with error 5, and
    /// its rest is skipped.
    static constexpr std::size_t longestLine = std::size_t{64} << 20;

    /// To be called behind the last request. Error 5 where a transaction was still open; it is rolled
    /// back.
    void finish();

private:
    std::string answerByAction(const std::function<Json(Json& request, Json& args)>& action);

    HostState state_;
};

} // namespace tamarok::cli
