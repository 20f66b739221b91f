#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

#include "column_types.h"
#include "handles.h"
#include "server_kind.h"

#include "tamarok/ado_backend.h"
#include "tamarok/error.h"

namespace tamarok::odbc {

/// The value of a TIMESTAMP_STRUCT, without its day if only the time counts.
Variant dateValue(const std::byte* bytes, bool timeOnly);

/// A value of fixed width as the driver has written it.
inline Variant fixedValue(Reading reading, const std::byte* bytes)
{
    const auto number = [bytes](auto value) {
        std::memcpy(&value, bytes, sizeof value);
        return value;
    };
    switch (reading) {
    case Reading::Boolean: return number(SQLCHAR{}) != 0;
    case Reading::TinyInt: return static_cast<std::int16_t>(number(SQLCHAR{}));
    case Reading::SmallInt: return number(std::int16_t{});
    case Reading::Integer: return number(std::int32_t{});
    case Reading::BigInt: return number(std::int64_t{});
    case Reading::Double: return number(0.0);
    case Reading::Date: return dateValue(bytes, false);
    case Reading::TimeOfDay: return dateValue(bytes, true);
    case Reading::Text:
    case Reading::Binary: break;
    }
    return Null{};
}

/// The rows of an executed statement, read forward. Columns before the first long one are bound, so that a block of
/// rows comes with one call; the others are read in parts, in rising order, as drivers demand it.
class ResultSet {
public:
    /// @param statement  executed, with at least one column
    ResultSet(StatementHandle statement, const ServerTraits& traits);
    ResultSet(const ResultSet&) = delete;
    ResultSet& operator=(const ResultSet&) = delete;
    ~ResultSet(); ///< ends a statement whose rows were not all read

    const std::vector<ado::ColumnInfo>& columns() const noexcept { return infos_; }
    std::vector<ado::ColumnInfo> takeColumns() { return infos_; }

    /// Moves to the next row. Behind the last one the rest of the batch has run to its end. Any failure ends the
    /// result.
    bool fetch()
    {
        ++row_;
        if (row_ < rows_) [[likely]]
            return true;
        return fetchBlock();
    }

    /// The value of a column in the current row. Columns behind the first long one are kept for further calls.
    Variant value(std::size_t column)
    {
        if (column >= bound_) return valueInParts(column);
        const Column& bound = columns_[column];
        const SQLLEN length = bound.lengths[row_];
        if (length == SQL_NULL_DATA) return Null{};
        const std::byte* const bytes = bound.values.data() + row_ * bound.type.width;
        if (bound.type.reading >= Reading::Text) return textOf(bound, bytes, length);
        return fixedValue(bound.type.reading, bytes);
    }

    SQLHANDLE handle() const noexcept { return statement_.get(); }

private:
    struct Column {
        ColumnType type;
        std::vector<std::byte> values; ///< of a block; empty for a column that is read in parts
        std::vector<SQLLEN> lengths;
    };

    void describe(const ServerTraits& traits);
    DescribedType describeColumn(SQLUSMALLINT number, ado::ColumnInfo& info, const ServerTraits& traits) const;
    void bind(const ServerTraits& traits);
    void bindColumns(std::size_t blockRows);
    bool fetchBlock();
    void checkRows();
    void finishBatch();
    Variant valueInParts(std::size_t column);
    Variant textOf(const Column& column, const std::byte* value, SQLLEN length) const;
    void readParts(std::size_t column);
    [[noreturn]] void fail();

    StatementHandle statement_;
    std::vector<ado::ColumnInfo> infos_;
    std::vector<Column> columns_;
    std::size_t bound_ = 0; ///< number of bound columns; the others follow them
    std::vector<SQLUSMALLINT> states_;
    SQLULEN rows_ = 0; ///< in the block
    SQLULEN row_ = 0;
    std::optional<Error> pending_;     ///< of a row behind those of the block
    std::vector<Variant> parts_;       ///< values of the columns that are read in parts, as far as they were read
    std::vector<std::byte> partSpace_; ///< for one part
    bool ended_ = false;
};

/// The rest of a batch: its results are dropped, its failures raised.
/// @return number of rows that the last counted statement changed, `touched` if there was none
std::int64_t runToEnd(SQLHANDLE statement, std::int64_t touched);

} // namespace tamarok::odbc
