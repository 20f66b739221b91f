#include "embedded/contract/server_session.h"

#include <array>
#include <cstdint>
#include <sql.h>
#include <sqlext.h>
#include <stdexcept>

#include "embedded/contract/contract.h"

#include "tamarok/text.h"

namespace tamarok::embedded::contract {

namespace {

/// Number and text of the last failure on a handle.
struct Diagnosis {
    SQLINTEGER number = 0;
    std::string text;
};

Diagnosis diagnosis(SQLSMALLINT kind, SQLHANDLE handle)
{
    std::array<SQLCHAR, 6> state{};
    std::array<SQLCHAR, 1000> text{};
    SQLSMALLINT length = 0;
    Diagnosis found;
    const SQLRETURN code = SQLGetDiagRec(kind, handle, 1, state.data(), &found.number, text.data(),
                                         static_cast<SQLSMALLINT>(text.size()), &length);
    if (SQL_SUCCEEDED(code)) found.text.assign(text.begin(), text.begin() + std::min<std::ptrdiff_t>(length, 999));
    return found;
}

void require(SQLRETURN code, SQLSMALLINT kind, SQLHANDLE handle, const std::string& what)
{
    if (!SQL_SUCCEEDED(code)) throw std::runtime_error{what + ": " + diagnosis(kind, handle).text};
}

/// ODBC takes texts that it does not change by pointers to mutable characters.
SQLCHAR* characters(std::string& text)
{
    return static_cast<SQLCHAR*>(static_cast<void*>(text.data()));
}

/// A statement handle.
class Statement {
public:
    explicit Statement(SQLHDBC connection)
    {
        require(SQLAllocHandle(SQL_HANDLE_STMT, connection, &handle_), SQL_HANDLE_DBC, connection, "no statement");
    }
    ~Statement() { SQLFreeHandle(SQL_HANDLE_STMT, handle_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    SQLHSTMT get() const { return handle_; }

private:
    SQLHSTMT handle_ = SQL_NULL_HSTMT;
};

/// The value of a column in the current row as `Value`; false for Null.
template <class Value>
bool fetch(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, Value& value)
{
    SQLLEN length = 0;
    require(SQLGetData(statement, column, type, &value, sizeof value, &length), SQL_HANDLE_STMT, statement, "no value");
    return length != SQL_NULL_DATA;
}

/// A text arrives as UTF-16, whatever the server's code page is.
std::string textValue(SQLHSTMT statement, SQLUSMALLINT column)
{
    std::array<SQLWCHAR, 10000> units{};
    if (!fetch(statement, column, SQL_C_WCHAR, units)) return "NULL";
    std::string text;
    for (std::size_t at = 0; at < units.size() && units[at] != 0; ++at) {
        char32_t character = units[at];
        const bool paired = character >= 0xD800 && character < 0xDC00 && at + 1 < units.size();
        if (paired) character = 0x10000 + ((character - 0xD800) << 10U) + (units[++at] - 0xDC00U);
        text::append(text, character);
    }
    return spelled(std::string_view{text});
}

std::string wholeValue(SQLHSTMT statement, SQLUSMALLINT column, bool asBoolean)
{
    std::int64_t number = 0;
    if (!fetch(statement, column, SQL_C_SBIGINT, number)) return "NULL";
    if (asBoolean) return number != 0 ? "true" : "false";
    return std::to_string(number);
}

std::string fractionValue(SQLHSTMT statement, SQLUSMALLINT column)
{
    double number = 0;
    return fetch(statement, column, SQL_C_DOUBLE, number) ? spelled(number) : "NULL";
}

std::string dateValue(SQLHSTMT statement, SQLUSMALLINT column)
{
    SQL_TIMESTAMP_STRUCT stamp{};
    if (!fetch(statement, column, SQL_C_TYPE_TIMESTAMP, stamp)) return "NULL";
    constexpr SQLUINTEGER millisecond = 1000000; // nanoseconds
    CivilTime time{};
    time.year = stamp.year;
    time.month = stamp.month;
    time.day = stamp.day;
    time.hour = stamp.hour;
    time.minute = stamp.minute;
    time.second = stamp.second;
    time.millisecond = static_cast<std::int32_t>((stamp.fraction + millisecond / 2) / millisecond);
    return spelled(time);
}

std::string valueOf(SQLHSTMT statement, SQLUSMALLINT column)
{
    SQLLEN type = 0;
    SQLColAttribute(statement, column, SQL_DESC_CONCISE_TYPE, nullptr, 0, nullptr, &type);
    switch (type) {
    case SQL_BIT: return wholeValue(statement, column, true);
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT: return wholeValue(statement, column, false);
    case SQL_DECIMAL:
    case SQL_NUMERIC:
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE: return fractionValue(statement, column);
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIME:
    case SQL_TYPE_TIMESTAMP: return dateValue(statement, column);
    default: return textValue(statement, column);
    }
}

/// Adds the rows of the current result. @return the code that ended them
SQLRETURN addRows(SQLHSTMT statement, SQLSMALLINT columns, AnswerText& rows)
{
    SQLRETURN code = SQLFetch(statement);
    for (; SQL_SUCCEEDED(code); code = SQLFetch(statement)) {
        rows.beginRow();
        for (SQLSMALLINT column = 1; column <= columns; ++column)
            rows.add(valueOf(statement, static_cast<SQLUSMALLINT>(column)));
    }
    return code;
}

} // namespace

struct ServerSession::Handles {
    ~Handles()
    {
        SQLDisconnect(connection);
        SQLFreeHandle(SQL_HANDLE_DBC, connection);
        SQLFreeHandle(SQL_HANDLE_ENV, environment);
    }

    SQLHENV environment = SQL_NULL_HENV;
    SQLHDBC connection = SQL_NULL_HDBC;
};

ServerSession::ServerSession(const std::string& connectionText) : handles_{std::make_unique<Handles>()}
{
    Handles& handles = *handles_;
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handles.environment);
    // ODBC takes whole numbers for attributes as pointers.
    SQLSetEnvAttr(handles.environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, handles.environment, &handles.connection);
    std::string text = connectionText;
    require(SQLDriverConnect(handles.connection, nullptr, characters(text), SQL_NTS, nullptr, 0, nullptr,
                             SQL_DRIVER_NOPROMPT),
            SQL_HANDLE_DBC, handles.connection, "The server cannot be reached");
}

ServerSession::~ServerSession() = default;

/// A batch may have several results; the first with rows is the answer, and a failure of any of them.
std::string ServerSession::answer(const std::string& statement)
{
    const Statement handle{handles_->connection};
    std::string text = statement;
    AnswerText rows;
    SQLRETURN code = SQLExecDirect(handle.get(), characters(text), SQL_NTS);
    while (code != SQL_NO_DATA && SQL_SUCCEEDED(code)) {
        SQLSMALLINT columns = 0;
        SQLNumResultCols(handle.get(), &columns);
        if (columns > 0) code = addRows(handle.get(), columns, rows);
        if (code == SQL_ERROR) break;
        code = SQLMoreResults(handle.get());
    }
    if (code == SQL_NO_DATA) return rows.text();
    return "error " + std::to_string(diagnosis(SQL_HANDLE_STMT, handle.get()).number);
}

void ServerSession::run(const std::string& statement)
{
    const std::string result = answer(statement);
    if (result.starts_with("error ")) throw std::runtime_error{statement + " gives " + result};
}

} // namespace tamarok::embedded::contract
