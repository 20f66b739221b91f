#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "dialect/sql_template.h"

#include "tamarok/tmkvar.h"

namespace tamarok::selections {

/// Fields separated by tabs, numbered from 0. An empty text is one empty field.
class FieldVector {
public:
    explicit FieldVector(std::string_view text) noexcept : text_{text} {}

    bool has(std::size_t index) const noexcept;
    /// Error 9 beyond the last field.
    std::string_view operator[](std::size_t index) const;

private:
    std::string_view text_;
};

enum class SelectionValue : std::uint8_t {
    field,
    fieldIfGiven,
    number,
    capitals,
    accessLevels,
    assortmentFilter,
    locationFilter,
    key,
    labelGroup,
    keyPart
};

struct SelectionValueName {
    std::string_view name;
    SelectionValue value;
};

/// The values that statements of the book may name, besides the words of the dialect;
/// tamarok/selection_book.h tells what they stand for.
inline constexpr SelectionValueName selectionValueNames[] = {
    {"P", SelectionValue::field},
    {"GIVEN", SelectionValue::fieldIfGiven},
    {"N", SelectionValue::number},
    {"UP", SelectionValue::capitals},
    {"ACL", SelectionValue::accessLevels},
    {"MEASURE", SelectionValue::assortmentFilter},
    {"PLACE", SelectionValue::locationFilter},
    {"Typ", SelectionValue::key},
    {"GROUP", SelectionValue::labelGroup},
    {"KEYPART", SelectionValue::keyPart},
};

constexpr bool isSelectionValue(std::string_view name)
{
    return std::ranges::find(selectionValueNames, name, &SelectionValueName::name) != std::end(selectionValueNames);
}

/// The values of one selection for one vector of fields.
class SelectionValues final : public dialect::PlaceholderValues {
public:
    /// The arguments must outlive this object.
    SelectionValues(const TmkVar& tmkVar, std::string_view key, std::string_view fields) noexcept :
        tmkVar_{tmkVar}, key_{key}, fields_{fields}
    {}

    /// Errors: 5 for a field index that is not a number, 9 for a field beyond the vector.
    bool appendValue(std::string& out, const dialect::Placeholder& placeholder) override;

private:
    std::string_view numberText(std::size_t index) const;
    std::string accessLevels(std::uint8_t groups) const;
    std::string assortmentFilter(std::size_t index) const;
    std::string locationFilter(std::size_t index) const;

    const TmkVar& tmkVar_;
    std::string_view key_;
    FieldVector fields_;
};

/// The statement of a selection, filled.
/// @param key     key of the selection
/// @param fields  what the caller gives, separated by tabs; inserted verbatim, without escaping
/// Errors: 9 for a field beyond the vector, 5 for a malformed statement or an unknown value.
std::string fillStatement(const TmkVar& tmkVar, std::string_view key, std::string_view fields,
                          std::string_view statement);

} // namespace tamarok::selections
