#include "failures.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "wide_text.h"

namespace tamarok::odbc {

namespace {

/// How a failure is recognised. The first row that fits decides; an empty member fits all.
struct FailureRow {
    std::string_view state; ///< SQLSTATE begins with it
    std::int32_t native = 0;
    std::string_view text; ///< the message contains it
    std::int32_t number = errors::providerFailure;
};

constexpr std::int32_t openServerFailure = 33557097; ///< the open T-SQL server: a failure without number of SQL Server
constexpr std::int32_t sqliteBusy = 5;
constexpr std::int32_t sqliteConstraint = 19;

// SQLSTATE says most; numbers tell apart what drivers report under a general state.
constexpr std::array failureRows{
    FailureRow{"", native::lockTimeout, "", errors::timeout},
    FailureRow{"", openServerFailure, "lock timeout", errors::timeout},
    FailureRow{"HYT", 0, "", errors::timeout},
    FailureRow{"S1T00", 0, "", errors::timeout},
    FailureRow{"57014", 0, "", errors::timeout}, // PostgreSQL: statement_timeout
    FailureRow{"55P03", 0, "", errors::timeout}, // PostgreSQL: lock_timeout
    FailureRow{"HY000", sqliteBusy, "locked", errors::timeout},
    FailureRow{"23", 0, "", errors::constraintViolated},
    FailureRow{"HY000", sqliteConstraint, "constraint", errors::constraintViolated},
    FailureRow{"HY000", 1, "", errors::statementRefused}, // SQLite: every mistake in the text
    FailureRow{"HY000", -1, "", errors::statementRefused},
    FailureRow{"07", 0, "", errors::statementRefused},
    FailureRow{"0A", 0, "", errors::statementRefused},
    FailureRow{"21", 0, "", errors::statementRefused},
    FailureRow{"22", 0, "", errors::statementRefused},
    FailureRow{"37", 0, "", errors::statementRefused},
    FailureRow{"42", 0, "", errors::statementRefused},
    FailureRow{"S0", 0, "", errors::statementRefused},
};

/// Whether all conditions of a row hold.
bool fits(const FailureRow& row, const Diagnostic& diagnostic)
{
    return diagnostic.state.starts_with(row.state) && (row.native == 0 || row.native == diagnostic.native) &&
           diagnostic.text.find(row.text) != std::string::npos;
}

/// Removes "[vendor][driver][server]" from the front of a message.
void dropOrigin(std::string& text)
{
    while (text.starts_with('[')) {
        const std::size_t end = text.find(']');
        if (end == std::string::npos) return;
        text.erase(0, end + 1);
    }
    text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
}

/// Reads one record. A text that is longer than the space is read again.
bool readRecord(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT number, Diagnostic& diagnostic)
{
    std::array<SQLWCHAR, 6> state{};
    std::vector<SQLWCHAR> text(1024);
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    const auto read = [&] {
        return SQLGetDiagRecW(type, handle, number, state.data(), &native, text.data(),
                              static_cast<SQLSMALLINT>(text.size()), &length);
    };
    SQLRETURN code = read();
    if (code == SQL_SUCCESS_WITH_INFO && length >= static_cast<SQLSMALLINT>(text.size())) {
        text.resize(static_cast<std::size_t>(length) + 1);
        code = read();
    }
    if (!succeeded(code)) return false;
    diagnostic.state = toUtf8(std::span{state}.first(5));
    diagnostic.native = native;
    diagnostic.text = toUtf8(std::span{text}.first(std::min(static_cast<std::size_t>(length), text.size())));
    dropOrigin(diagnostic.text);
    return true;
}

bool isFailure(const Diagnostic& diagnostic)
{
    return !diagnostic.state.starts_with("01") && !diagnostic.state.starts_with("00");
}

/// Messages and warnings may stand before the record of the failure.
const Diagnostic* firstFailure(const std::vector<Diagnostic>& diagnostics)
{
    const auto found = std::ranges::find_if(diagnostics, isFailure);
    if (found != diagnostics.end()) return &*found;
    return diagnostics.empty() ? nullptr : diagnostics.data();
}

} // namespace

// The number of records is bounded: a driver that repeats its last one must not hang the caller.
std::vector<Diagnostic> readDiagnostics(SQLSMALLINT type, SQLHANDLE handle)
{
    constexpr SQLSMALLINT mostRecords = 100;
    std::vector<Diagnostic> diagnostics;
    Diagnostic diagnostic;
    for (SQLSMALLINT number = 1; number <= mostRecords && readRecord(type, handle, number, diagnostic); ++number)
        diagnostics.push_back(std::move(diagnostic));
    return diagnostics;
}

// A server may report several records; the first failure is the cause, the others follow from it.
Error failure(const std::vector<Diagnostic>& diagnostics)
{
    const Diagnostic* first = firstFailure(diagnostics);
    if (first == nullptr) return providerFailure("The driver failed and gave no reason.");
    const auto* const row =
        std::ranges::find_if(failureRows, [first](const FailureRow& candidate) { return fits(candidate, *first); });
    Error error{row == failureRows.end() ? errors::providerFailure : row->number, first->text, std::string{sourceName}};
    error.nativeError = first->native;
    error.sqlState = first->state;
    return error;
}

Error providerFailure(std::string description)
{
    return Error{errors::providerFailure, std::move(description), std::string{sourceName}};
}

Error unsupported(std::string description)
{
    return Error{errors::readOnlyRecordset, std::move(description), std::string{sourceName}};
}

bool tellsFailure(const std::vector<Diagnostic>& diagnostics)
{
    return std::ranges::any_of(diagnostics, isFailure);
}

} // namespace tamarok::odbc
