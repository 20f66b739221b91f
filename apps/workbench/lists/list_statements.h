#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "list/list_query.h"
#include "lists/list_setup.h"
#include "lists/record_keys.h"

#include "tamarok/tmkvar.h"

namespace tamarok::workbench {

/// The statements of one list. The library composes their clauses; see cli::composeList.
class ListStatements {
public:
    /// Errors: cli::UnknownColumn; 5 for an unknown type; those of the operations.
    ListStatements(ListSetup setup, const TmkVar& session);

    const ListSetup& setup() const noexcept { return setup_; }

    /// Tells whether rows can be read by the keys of their records: not those of a grouped list, and not where a column
    /// is computed over all rows of the list.
    bool hasKeys() const;
    /// Returns the statement of all rows with all columns.
    std::string rows() const;
    /// Returns the statement of the record keys of all rows, in the order of the list, if it has keys.
    std::string keys() const;
    /// Returns the statement of the first rows, if it has keys: the columns, and the key as the last one.
    std::string firstRows(std::size_t most) const;
    /// Returns the statement of the rows of some records: the columns, and the key as the last one.
    /// @param keyTexts  of the records, as keys() gives them
    std::string records(std::span<const std::string> keyTexts) const;
    /// Returns the statement of the one row that sums the measures of the list, in their order; "" without measures.
    std::string totals(const TmkVar& session) const;
    /// Returns the statement of the values that a column has in the list, in their order, at most `most` of them.
    std::string values(std::int16_t column, std::int32_t most, const TmkVar& session) const;

private:
    std::string conditionWith(const std::string& further) const;

    ListSetup setup_;
    const RecordKey& key_;
    cli::ListRequest request_;
    cli::ListQuery query_;
    std::string keyOrder_; ///< the order of the list, then that of the key
};

/// Returns whether a type's rows can be filtered by the values of its columns.
bool canFilter(const std::string& type, std::int16_t column, const TmkVar& session);

} // namespace tamarok::workbench
