#pragma once

#include <string_view>

namespace tamarok::selections {

/// The label group of a key over the code group tables: "ZUGANG" of "ZUGANG_ID_LOGS_VALID".
/// Required by the contract: `X_VALID` yields `X_`, which matches no row. Do not correct.
std::string_view groupOf(std::string_view key) noexcept;

/// The part of a key that distinguishes it within its family: the number of a relation list ("3" of
/// "RELTABLE3_GRID") or of a kind of contract ("10" of "VERTRAG_VALID10"), the role of a partner ("KUNDE"
/// of "PERSONAL_VALID_KUNDE"). Empty if the key has none.
std::string_view partOf(std::string_view key) noexcept;

} // namespace tamarok::selections
