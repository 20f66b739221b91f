#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "bulk_insert.h"
#include "delivery.h"
#include "master_keys.h"

namespace tamarok::database {

/// Objects from which the fields of a row are read. A table of fields needs only some of them, as noted
/// beside it below; the others may be null.
struct RowSource {
    const MasterKeys& keys;
    const Delivery& delivery;
    const TimberList* list = nullptr;
    const LogLine* line = nullptr;
    const Document* document = nullptr;
    const Article* article = nullptr;
    std::int32_t log = 0;          ///< LOGS.ID_LOG
    std::int32_t deliveryNote = 0; ///< TRANSPORTLOGISTIK.ID, 0 for none
    std::int32_t provision = 0;    ///< BEREITSTELLUNG_KOPF.ID, 0 for none
};

/// A column with the function that computes its value.
struct RowField {
    std::string_view name;
    ado::DataType type;
    Variant (*value)(const RowSource&);
};

std::span<const RowField> listHeadFields() noexcept;     ///< LISTENKOPF; list
std::span<const RowField> listFields() noexcept;         ///< LOGS, shared by the lines of a list; list
std::span<const RowField> lineFields() noexcept;         ///< LOGS, each line's own; line
std::span<const RowField> surchargeFields() noexcept;    ///< LOGS_RECH_PRICE; line and log
std::span<const RowField> provisionLogFields() noexcept; ///< BEREITSTELLUNG_LOGS; log and provision
std::span<const RowField> documentFields() noexcept;     ///< HEADERRECH; document
std::span<const RowField> articleFields() noexcept;      ///< NN_POSITIONEN; document and article
std::span<const RowField> deliveryNoteFields() noexcept; ///< TRANSPORTLOGISTIK; list and deliveryNote
std::span<const RowField> provisionFields() noexcept;    ///< BEREITSTELLUNG_KOPF; list and provision

/// An INSERT statement into one table with a value for each field.
class TableInsert {
public:
    using Fields = std::span<const RowField>;

    /// @param groups  the fields in the order of the columns; they may be given in several groups
    TableInsert(ado::Connection& connection, std::string_view table, std::initializer_list<Fields> groups);

    /// Inserts the row of `source`. Errors: provider failures.
    void insert(const RowSource& source);

private:
    std::vector<RowField> fields_;
    BulkInsert statement_;
};

/// Returns a text as a value, Null for an empty one.
Variant textOrNull(std::string_view text);

/// Returns the value, or Null for nullopt.
template <class Value>
Variant orNull(const std::optional<Value>& value)
{
    return value ? Variant{*value} : Variant{Null{}};
}

} // namespace tamarok::database
