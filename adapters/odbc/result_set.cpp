#include "result_set.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <utility>

#include "failures.h"
#include "wide_text.h"

#include "tamarok/date.h"
#include "tamarok/text.h"

namespace tamarok::odbc {

namespace {

constexpr std::size_t mostBlockRows = 256;
constexpr std::size_t mostBlockBytes = std::size_t{1} << 20U;
constexpr std::size_t partBytes = std::size_t{1} << 16U;

/// Binary values are shown as 0x and their bytes in hexadecimal.
std::string hexText(std::span<const std::byte> bytes)
{
    static constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "0x";
    for (const std::byte byte : bytes) {
        const auto value = std::to_integer<unsigned>(byte);
        text.append({digits[value >> 4U], digits[value & 15U]});
    }
    return text;
}

std::span<const SQLWCHAR> unitsOf(const std::byte* bytes, std::size_t size)
{
    // The space was filled with units by the driver, and is aligned for them.
    return {static_cast<const SQLWCHAR*>(static_cast<const void*>(bytes)), size / sizeof(SQLWCHAR)};
}

std::string textAttribute(SQLHANDLE statement, SQLUSMALLINT number, SQLUSMALLINT attribute)
{
    std::array<SQLWCHAR, 260> text{};
    SQLSMALLINT bytes = 0;
    const SQLRETURN code = SQLColAttributeW(statement, number, attribute, text.data(),
                                            static_cast<SQLSMALLINT>(sizeof text), &bytes, nullptr);
    if (!succeeded(code) || bytes <= 0) return {};
    const std::size_t units = std::min(static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR), text.size() - 1);
    std::string result = toUtf8(std::span{text}.first(units));
    return result.substr(0, result.find('\0'));
}

/// What the name of a type tells where its number does not.
struct NamedType {
    std::string_view name;
    SQLSMALLINT sqlType;
};

/// SQLite's driver knows no wide types and gives every text the same number.
constexpr std::array sqliteTypes{NamedType{"NVARCHAR", SQL_WVARCHAR}, NamedType{"NCHAR", SQL_WCHAR},
                                 NamedType{"NTEXT", SQL_WLONGVARCHAR}, NamedType{"TEXT", SQL_LONGVARCHAR},
                                 NamedType{"CHAR", SQL_CHAR}};

/// The driver tells a declared type with its length, and may tell it with or without.
bool namesType(std::string_view typeName, std::string_view wanted)
{
    return text::equalsNoCase(typeName.substr(0, typeName.find('(')), wanted);
}

} // namespace

/// Nanoseconds are rounded to the milliseconds that a Date holds; the last ones of a day belong to the next day.
Variant dateValue(const std::byte* bytes, bool timeOnly)
{
    SQL_TIMESTAMP_STRUCT stamp{};
    std::memcpy(&stamp, bytes, sizeof stamp);
    constexpr std::uint32_t nanosecondsOfMillisecond = 1'000'000;
    constexpr std::int32_t millisecondsOfDay = 86'400'000;
    const auto fraction =
        static_cast<std::int32_t>((stamp.fraction + nanosecondsOfMillisecond / 2) / nanosecondsOfMillisecond);
    std::int32_t milliseconds = ((stamp.hour * 60 + stamp.minute) * 60 + stamp.second) * 1000 + fraction;
    std::int32_t day = timeOnly ? 0 : dayNumber(stamp.year, stamp.month, stamp.day);
    if (milliseconds >= millisecondsOfDay) {
        milliseconds -= millisecondsOfDay;
        if (!timeOnly) ++day;
    }
    return joinDate(day, milliseconds);
}

ResultSet::ResultSet(StatementHandle statement, const ServerTraits& traits) : statement_{std::move(statement)}
{
    describe(traits);
    bind(traits);
}

ResultSet::~ResultSet()
{
    // Cancelling first spares the driver reading what the server has yet to send.
    if (!ended_ && statement_) SQLCancel(statement_.get());
}

/// The columns as the driver describes them, and the types by which they are read.
void ResultSet::describe(const ServerTraits& traits)
{
    SQLSMALLINT count = 0;
    SQLNumResultCols(statement_.get(), &count);
    for (SQLSMALLINT number = 1; number <= count; ++number) {
        ado::ColumnInfo info;
        const auto column = static_cast<SQLUSMALLINT>(number);
        const DescribedType described = describeColumn(column, info, traits);
        const ColumnType type = columnType(described);
        info.type = type.type;
        info.definedSize = type.definedSize;
        const bool decimal = described.sqlType == SQL_DECIMAL || described.sqlType == SQL_NUMERIC;
        if (decimal && text::findNoCase(textAttribute(statement_.get(), column, SQL_DESC_TYPE_NAME), "money") != 0) {
            info.type = ado::DataType::Currency;
            info.definedSize = 8;
        }
        infos_.push_back(std::move(info));
        columns_.push_back({.type = type, .values = {}, .lengths = {}});
    }
}

DescribedType ResultSet::describeColumn(SQLUSMALLINT number, ado::ColumnInfo& info, const ServerTraits& traits) const
{
    std::array<SQLWCHAR, 260> name{};
    SQLSMALLINT length = 0;
    DescribedType described;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    if (!succeeded(SQLDescribeColW(statement_.get(), number, name.data(), static_cast<SQLSMALLINT>(name.size()),
                                   &length, &described.sqlType, &described.size, &digits, &nullable)))
        throw failure(readDiagnostics(SQL_HANDLE_STMT, statement_.get()));
    info.name = toUtf8(std::span{name}.first(std::min(static_cast<std::size_t>(length), name.size() - 1)));
    if (traits.driverNamesBases) {
        info.baseColumn = textAttribute(statement_.get(), number, SQL_DESC_BASE_COLUMN_NAME);
        if (!info.baseColumn.empty())
            info.baseTable = textAttribute(statement_.get(), number, SQL_DESC_BASE_TABLE_NAME);
        if (info.baseTable.empty()) info.baseColumn.clear();
    }
    if (traits.server == Server::Sqlite) {
        const std::string typeName = textAttribute(statement_.get(), number, SQL_DESC_TYPE_NAME);
        for (const NamedType& row : sqliteTypes)
            if (namesType(typeName, row.name)) described.sqlType = row.sqlType;
    }
    return described;
}

/// The columns up to the first long one are bound. A block has more than one row only where no column is read in parts:
/// most drivers read parts of the last row of a block alone.
void ResultSet::bind(const ServerTraits& traits)
{
    std::size_t rowBytes = 0;
    for (; bound_ < columns_.size(); ++bound_) {
        const ColumnType& type = columns_[bound_].type;
        const bool variable = type.cType == SQL_C_WCHAR || type.cType == SQL_C_BINARY;
        if (type.width == 0 || (variable && traits.exceedsWidths)) break;
        rowBytes += type.width + sizeof(SQLLEN);
    }
    const std::size_t fitting = mostBlockBytes / std::max<std::size_t>(rowBytes, 1);
    const bool whole = bound_ == columns_.size();
    bindColumns(whole ? std::clamp<std::size_t>(fitting, 1, mostBlockRows) : 1);
}

/// Column by column, as all drivers can. A driver that refuses blocks gives single rows.
void ResultSet::bindColumns(std::size_t blockRows)
{
    SQLHANDLE const statement = statement_.get();
    states_.assign(blockRows, SQL_ROW_SUCCESS);
    SQLSetStmtAttrW(statement, SQL_ATTR_ROW_BIND_TYPE, asPointer(SQL_BIND_BY_COLUMN), 0);
    if (!succeeded(SQLSetStmtAttrW(statement, SQL_ATTR_ROW_ARRAY_SIZE, asPointer(blockRows), 0))) blockRows = 1;
    SQLSetStmtAttrW(statement, SQL_ATTR_ROW_STATUS_PTR, states_.data(), 0);
    SQLSetStmtAttrW(statement, SQL_ATTR_ROWS_FETCHED_PTR, &rows_, 0);
    for (std::size_t index = 0; index < bound_; ++index) {
        Column& column = columns_[index];
        column.values.resize(blockRows * column.type.width);
        column.lengths.assign(blockRows, SQL_NULL_DATA);
        if (!succeeded(SQLBindCol(statement, static_cast<SQLUSMALLINT>(index + 1), column.type.cType,
                                  column.values.data(), static_cast<SQLLEN>(column.type.width), column.lengths.data())))
            throw failure(readDiagnostics(SQL_HANDLE_STMT, statement));
    }
}

/// The next block. A failure that waits behind the rows of the last one comes first.
bool ResultSet::fetchBlock()
{
    parts_.clear();
    if (pending_) {
        ended_ = true;
        rows_ = 0;
        throw *std::exchange(pending_, std::nullopt);
    }
    if (ended_) {
        row_ = rows_;
        return false;
    }
    row_ = 0;
    rows_ = 0;
    const SQLRETURN code = SQLFetch(statement_.get());
    if (code == SQL_SUCCESS) [[likely]]
        return true;
    if (code == SQL_NO_DATA) {
        rows_ = 0;
        finishBatch();
        return false;
    }
    if (code != SQL_SUCCESS_WITH_INFO) fail();
    checkRows();
    return fetch();
}

/// A row of the block may have failed: the rows before it are given first, then its failure. Some drivers mark that
/// row; FreeTDS gives fewer rows, and the failure as a record of a call that has succeeded. `fetch` counts up, hence
/// the position before the first row.
void ResultSet::checkRows()
{
    const auto end = states_.begin() + static_cast<std::ptrdiff_t>(rows_);
    const auto good = static_cast<SQLULEN>(std::find(states_.begin(), end, SQL_ROW_ERROR) - states_.begin());
    const std::vector<Diagnostic> diagnostics = readDiagnostics(SQL_HANDLE_STMT, statement_.get());
    if (good < rows_ || tellsFailure(diagnostics)) pending_ = failure(diagnostics);
    rows_ = good;
    row_ = static_cast<SQLULEN>(-1);
}

/// What follows in the batch runs to its end, so that a failure there is not lost.
void ResultSet::finishBatch()
{
    ended_ = true;
    runToEnd(statement_.get(), -1);
}

void ResultSet::fail()
{
    ended_ = true;
    rows_ = 0;
    throw failure(readDiagnostics(SQL_HANDLE_STMT, statement_.get()));
}

Variant ResultSet::valueInParts(std::size_t column)
{
    if (column >= columns_.size())
        throw Error{errors::itemNotFound, "The result has no column " + std::to_string(column) + ".",
                    std::string{sourceName}};
    while (parts_.size() <= column - bound_)
        readParts(bound_ + parts_.size());
    return parts_[column - bound_];
}

/// A value that is longer than its column was described would be cut, which must not pass silently.
Variant ResultSet::textOf(const Column& column, const std::byte* value, SQLLEN length) const
{
    const bool wide = column.type.cType == SQL_C_WCHAR;
    const std::size_t room = column.type.width - (wide ? sizeof(SQLWCHAR) : 0);
    if (length < 0 || static_cast<std::size_t>(length) > room)
        throw providerFailure("Column '" + infos_[static_cast<std::size_t>(&column - columns_.data())].name +
                              "' has a longer value than the driver has described.");
    const auto size = static_cast<std::size_t>(length);
    if (wide) return toUtf8(unitsOf(value, size));
    return hexText({value, size});
}

/// Reads one column in parts. A part ends with a zero unit, which is not counted.
void ResultSet::readParts(std::size_t index)
{
    const Column& column = columns_[index];
    const bool wide = column.type.cType == SQL_C_WCHAR;
    const bool variable = wide || column.type.cType == SQL_C_BINARY;
    partSpace_.resize(partBytes);
    std::vector<std::byte> bytes;
    for (;;) {
        SQLLEN length = 0;
        const SQLRETURN code =
            SQLGetData(statement_.get(), static_cast<SQLUSMALLINT>(index + 1), column.type.cType, partSpace_.data(),
                       static_cast<SQLLEN>(variable ? partSpace_.size() : column.type.width), &length);
        if (code == SQL_NO_DATA) break;
        if (!succeeded(code)) throw failure(readDiagnostics(SQL_HANDLE_STMT, statement_.get()));
        if (length == SQL_NULL_DATA) {
            parts_.emplace_back(Null{});
            return;
        }
        if (!variable) {
            parts_.push_back(fixedValue(column.type.reading, partSpace_.data()));
            return;
        }
        const std::size_t room = partSpace_.size() - (wide ? sizeof(SQLWCHAR) : 0);
        const bool more = length == SQL_NO_TOTAL || static_cast<std::size_t>(length) > room;
        const std::size_t taken = more ? room : static_cast<std::size_t>(length);
        bytes.insert(bytes.end(), partSpace_.begin(), partSpace_.begin() + static_cast<std::ptrdiff_t>(taken));
        if (!more) break;
    }
    if (wide)
        parts_.emplace_back(toUtf8(unitsOf(bytes.data(), bytes.size())));
    else
        parts_.emplace_back(hexText(bytes));
}

// A failure of a later statement of a batch shows only when its turn comes.
std::int64_t runToEnd(SQLHANDLE statement, std::int64_t touched)
{
    for (;;) {
        const SQLRETURN code = SQLMoreResults(statement);
        if (code == SQL_NO_DATA) return touched;
        if (!succeeded(code)) throw failure(readDiagnostics(SQL_HANDLE_STMT, statement));
        SQLSMALLINT columns = 0;
        SQLLEN rows = -1;
        SQLNumResultCols(statement, &columns);
        if (columns == 0 && succeeded(SQLRowCount(statement, &rows)) && rows >= 0) touched = rows;
    }
}

} // namespace tamarok::odbc
