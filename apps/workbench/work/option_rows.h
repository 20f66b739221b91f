#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/tmkvar.h"

namespace tamarok::workbench {

/// The kinds of values that an option has, in the order of their columns.
enum class OptionKind : std::uint8_t { Number, Decimal, Text, Date };
inline constexpr std::size_t optionKinds = 4;

/// An option of the installation, with its values under the regional settings, "" for none.
struct OptionRow {
    std::string name;
    std::array<std::string, optionKinds> values;
};

/// Reads all options by their names. Errors: those of the database.
std::vector<OptionRow> readOptions(const TmkVar& session);

/// Writes a value of an option; "" writes none.
/// Errors: 13 for a text that is no value of the kind; those of the database.
void writeOption(const TmkVar& session, std::string_view name, OptionKind kind, const std::string& text);

/// Returns what a user may do with the options, by his rights.
bool mayReadOptions(const TmkVar& session);
bool mayWriteOptions(const TmkVar& session);

} // namespace tamarok::workbench
