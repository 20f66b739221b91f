#pragma once

#include <string_view>

namespace tamarok::selections {

/// The label group of a key over the code group tables: "ZUGANG" of "ZUGANG_ID_LOGS_VALID". Of a plain
/// `_VALID` key the underscore stays, which leaves that statement without rows.
std::string_view groupOf(std::string_view key) noexcept;

/// The telling part of a key: the number of a relation list ("3" of "RELTABLE3_GRID") or of a kind of
/// contract ("10" of "VERTRAG_VALID10"), the role of a partner ("KUNDE" of "PERSONAL_VALID_KUNDE").
/// Empty where the key has none.
std::string_view partOf(std::string_view key) noexcept;

} // namespace tamarok::selections
