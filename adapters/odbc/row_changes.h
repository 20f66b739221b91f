#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "catalogue.h"
#include "row_locks.h"

#include "tamarok/ado_backend.h"

namespace tamarok::odbc {

/// The base table of a result and how its rows are found again: its key, and the columns of the result that show it.
/// Without a key, or with one that the result does not show whole, rows can be added but not found again.
struct BaseTable {
    std::string name;
    std::vector<std::string> keyColumns;
    std::vector<std::size_t> keyPositions; ///< columns of the result; empty where the key is not shown whole
    std::string identity;                  ///< column that the server numbers, empty for none
    bool plain = false;                    ///< every column of the result is one of the table

    bool showsKey() const noexcept { return !keyPositions.empty(); }

    /// The one table that the base columns of a result belong to; nothing otherwise.
    static std::optional<BaseTable> of(const Catalogue& catalogue, std::span<const ado::ColumnInfo> columns);
};

/// The values of a key, in the order of its columns.
using KeyValues = std::vector<Variant>;

/// Changes single rows of a base table by statements. @param columns  those of the result
class RowChanges {
public:
    RowChanges(Link& link, BaseTable table, std::vector<ado::ColumnInfo> columns, std::int32_t timeoutSeconds) :
        link_{link}, table_{std::move(table)}, columns_{std::move(columns)}, timeoutSeconds_{timeoutSeconds}
    {}

    const BaseTable& table() const noexcept { return table_; }
    RowName rowName(const KeyValues& key) const;

    // The key of a row is empty where it is not known. Changing and deleting such a row is error 3251.

    /// @return the key that the row has afterwards. Error 0x80040E23 for a deleted row.
    KeyValues update(const KeyValues& key, std::span<const ado::Assignment> assignments) const;
    /// @return the new row's key; empty where the result does not show it, or a default of the table has given it
    /// @param toBeFound  the row must be found again: error 3251, and no row, where its key would not be known
    KeyValues insert(std::span<const ado::Assignment> assignments, bool toBeFound) const;
    void erase(const KeyValues& key) const;
    /// Reads the columns of the result from the table; they must all be of it. Nothing for a deleted row.
    std::optional<std::vector<Variant>> read(const KeyValues& key) const;

private:
    void requireKey(const KeyValues& key) const;
    std::vector<ado::Parameter> keyParameters(const KeyValues& key) const;
    const ado::ColumnInfo& target(std::size_t column) const;
    void change(const std::string& text, std::span<const ado::Parameter> parameters) const;
    Variant insertNumbered(const std::string& text, std::span<const ado::Parameter> parameters,
                           const std::string& column) const;
    KeyValues keyOfNewRow(std::span<const ado::Assignment> assignments) const;

    Link& link_;
    BaseTable table_;
    std::vector<ado::ColumnInfo> columns_;
    std::int32_t timeoutSeconds_;
};

} // namespace tamarok::odbc
