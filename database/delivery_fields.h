#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "database/bulk_insert.h"
#include "database/delivery.h"
#include "database/master_keys.h"

namespace tamarok::database {

/// What the fields of a row are read from.
struct RowSource {
    const MasterKeys& keys;
    const Delivery& delivery;
    const TimberList* list = nullptr;
    const LogLine* line = nullptr;
    const Document* document = nullptr;
    std::int32_t deliveryNote = 0; ///< TRANSPORTLOGISTIK.ID, 0 for none
};

/// A column with the value that it gets.
struct RowField {
    std::string_view name;
    ado::DataType type;
    Variant (*value)(const RowSource&);
};

std::span<const RowField> listHeadFields() noexcept; ///< LISTENKOPF
std::span<const RowField> listFields() noexcept;     ///< LOGS, what all lines of a list share
std::span<const RowField> lineFields() noexcept;     ///< LOGS, what is the line's own
std::span<const RowField> documentFields() noexcept; ///< HEADERRECH

/// The columns of several groups of fields, one after the other.
std::vector<BulkInsert::Column> columnsOf(std::initializer_list<std::span<const RowField>> groups);

/// Sets the fields' values, the first one in column `first`.
void setFields(BulkInsert& row, std::size_t first, std::span<const RowField> fields, const RowSource& source);

/// A text, or Null for an empty one.
Variant textOrNull(std::string_view text);

/// The value, or Null for none.
template <class Value>
Variant orNull(const std::optional<Value>& value)
{
    return value ? Variant{*value} : Variant{Null{}};
}

} // namespace tamarok::database
