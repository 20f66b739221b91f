#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>
#include <vector>

// An ODBC driver for the tests: a server that sends texts with surrogates out of place. Each SELECT gives one row of
// two texts, a short one and a long one that is read in parts. The text of the opening, which checks letters, comes
// back.

namespace {

/// What a handle is, the environment and the connection included.
struct Handle {
    std::vector<SQLWCHAR> shortText;
    std::vector<SQLWCHAR> longText;
    SQLPOINTER space = nullptr; ///< of the first column
    SQLLEN* length = nullptr;
    SQLULEN* rowsFetched = nullptr;
    std::size_t given = 0; ///< units of the long text
    bool fetched = false;
};

Handle& of(SQLHANDLE handle)
{
    return *static_cast<Handle*>(handle);
}

constexpr SQLWCHAR highSurrogate = 0xD83C;
constexpr SQLWCHAR lowSurrogate = 0xDF32;

/// Units that do not stand in pairs: at both ends, in the wrong order, twice.
std::vector<SQLWCHAR> brokenUnits()
{
    return {lowSurrogate, 'a', highSurrogate, 'b', highSurrogate, highSurrogate, lowSurrogate, 'c', highSurrogate};
}

/// Writes as much as there is space for, and tells the length of all.
SQLRETURN give(const SQLWCHAR* units, std::size_t count, SQLPOINTER space, SQLLEN bytes, SQLLEN* length)
{
    const auto room = static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR) - 1;
    const std::size_t taken = std::min(room, count);
    auto* const target = static_cast<SQLWCHAR*>(space);
    std::copy_n(units, taken, target);
    target[taken] = 0;
    *length = static_cast<SQLLEN>(count * sizeof(SQLWCHAR));
    return taken < count ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

} // namespace

extern "C" {

SQLRETURN SQLAllocHandle(SQLSMALLINT, SQLHANDLE, SQLHANDLE* handle)
{
    *handle = std::make_unique<Handle>().release();
    return SQL_SUCCESS;
}

SQLRETURN SQLFreeHandle(SQLSMALLINT, SQLHANDLE handle)
{
    const std::unique_ptr<Handle> owner{static_cast<Handle*>(handle)};
    return SQL_SUCCESS;
}

SQLRETURN SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER)
{
    return SQL_SUCCESS;
}

SQLRETURN SQLDriverConnectW(SQLHDBC, SQLHWND, SQLWCHAR*, SQLSMALLINT, SQLWCHAR*, SQLSMALLINT, SQLSMALLINT*,
                            SQLUSMALLINT)
{
    return SQL_SUCCESS;
}

SQLRETURN SQLDisconnect(SQLHDBC)
{
    return SQL_SUCCESS;
}

SQLRETURN SQLSetConnectAttrW(SQLHDBC, SQLINTEGER, SQLPOINTER, SQLINTEGER)
{
    return SQL_SUCCESS;
}

SQLRETURN SQLGetInfoW(SQLHDBC, SQLUSMALLINT, SQLPOINTER, SQLSMALLINT, SQLSMALLINT*)
{
    return SQL_ERROR;
}

SQLRETURN SQLGetDiagRecW(SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLWCHAR*, SQLINTEGER*, SQLWCHAR*, SQLSMALLINT,
                         SQLSMALLINT*)
{
    return SQL_NO_DATA;
}

SQLRETURN SQLExecDirectW(SQLHSTMT handle, SQLWCHAR* statement, SQLINTEGER)
{
    constexpr SQLWCHAR euro = 0x20AC;
    Handle& made = of(handle);
    made.shortText = brokenUnits();
    for (const SQLWCHAR* unit = statement; *unit != 0; ++unit)
        if (*unit == euro) made.shortText = {0xE4, euro};
    // One unit before the pair, so that it meets the end of every part of an even number of units.
    made.longText = {'x'};
    constexpr int pairs = 100'000;
    for (int pair = 0; pair < pairs; ++pair)
        made.longText.insert(made.longText.end(), {highSurrogate, lowSurrogate});
    made.longText.push_back(highSurrogate);
    return SQL_SUCCESS;
}

SQLRETURN SQLNumResultCols(SQLHSTMT, SQLSMALLINT* count)
{
    *count = 2;
    return SQL_SUCCESS;
}

SQLRETURN SQLDescribeColW(SQLHSTMT, SQLUSMALLINT number, SQLWCHAR* name, SQLSMALLINT, SQLSMALLINT* nameLength,
                          SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits, SQLSMALLINT* nullable)
{
    name[0] = number == 1 ? 'S' : 'L';
    name[1] = 0;
    *nameLength = 1;
    *type = number == 1 ? SQL_WVARCHAR : SQL_WLONGVARCHAR;
    *size = number == 1 ? 40 : 1'000'000;
    *digits = 0;
    *nullable = SQL_NULLABLE;
    return SQL_SUCCESS;
}

SQLRETURN SQLColAttributeW(SQLHSTMT, SQLUSMALLINT, SQLUSMALLINT, SQLPOINTER, SQLSMALLINT, SQLSMALLINT*, SQLLEN*)
{
    return SQL_ERROR;
}

SQLRETURN SQLSetStmtAttrW(SQLHSTMT handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER)
{
    if (attribute == SQL_ATTR_ROWS_FETCHED_PTR) of(handle).rowsFetched = static_cast<SQLULEN*>(value);
    return SQL_SUCCESS;
}

SQLRETURN SQLGetStmtAttrW(SQLHSTMT, SQLINTEGER, SQLPOINTER value, SQLINTEGER, SQLINTEGER*)
{
    std::memset(value, 0, sizeof(SQLPOINTER)); // the descriptors of the statement, which nobody asks for
    return SQL_SUCCESS;
}

SQLRETURN SQLBindCol(SQLHSTMT handle, SQLUSMALLINT, SQLSMALLINT, SQLPOINTER space, SQLLEN, SQLLEN* length)
{
    of(handle).space = space;
    of(handle).length = length;
    return SQL_SUCCESS;
}

SQLRETURN SQLFetch(SQLHSTMT handle)
{
    Handle& row = of(handle);
    if (row.fetched) return SQL_NO_DATA;
    row.fetched = true;
    if (row.rowsFetched != nullptr) *row.rowsFetched = 1;
    constexpr SQLLEN widthOfColumn = 82;
    return give(row.shortText.data(), row.shortText.size(), row.space, widthOfColumn, row.length);
}

SQLRETURN SQLGetData(SQLHSTMT handle, SQLUSMALLINT, SQLSMALLINT, SQLPOINTER space, SQLLEN bytes, SQLLEN* length)
{
    Handle& row = of(handle);
    const std::size_t left = row.longText.size() - row.given;
    if (left == 0) return SQL_NO_DATA;
    const SQLRETURN code = give(row.longText.data() + row.given, left, space, bytes, length);
    row.given += std::min(left, static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR) - 1);
    return code;
}

SQLRETURN SQLMoreResults(SQLHSTMT)
{
    return SQL_NO_DATA;
}

SQLRETURN SQLRowCount(SQLHSTMT, SQLLEN* rows)
{
    *rows = -1;
    return SQL_SUCCESS;
}

SQLRETURN SQLFreeStmt(SQLHSTMT, SQLUSMALLINT)
{
    return SQL_SUCCESS;
}

SQLRETURN SQLCancel(SQLHSTMT)
{
    return SQL_SUCCESS;
}

} // extern "C"
