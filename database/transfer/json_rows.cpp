#include "json_rows.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "literals.h"
#include "tamarok_tsql/table_definition.h"

#include "tamarok/text.h"

namespace tamarok::database {
namespace {

/// Longest text in bytes. The open server cuts a value of OPENJSON after 4000 characters.
constexpr std::size_t longestText = 4000;

/// Whether a text needs no escapes in JSON, which the open server does not undo.
bool isPlain(std::string_view value)
{
    return value.size() <= longestText && std::ranges::none_of(value, [](char c) {
               return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20;
           });
}

/// Numbers are written as their literals; those of decimals and dates stand in single quotes.
void appendJson(std::string& json, const Variant& value, ado::DataType type)
{
    if (value.isNull()) {
        json += "null";
        return;
    }
    if (value.kind() == Variant::Kind::String) {
        json.append("\"").append(value.asString()).append("\"");
        return;
    }
    std::string literal;
    appendLiteral(literal, value, type);
    std::ranges::replace(literal, '\'', '"');
    json += literal;
}

bool isBinary(const RowColumn& column) noexcept
{
    using ado::DataType;
    return column.type == DataType::Binary || column.type == DataType::VarBinary ||
           column.type == DataType::LongVarBinary;
}

std::string jsonOf(std::span<const std::vector<Variant>> rows, const std::vector<RowColumn>& columns,
                   std::span<const std::size_t> used)
{
    std::string json = "[";
    for (const std::vector<Variant>& row : rows) {
        json += &row == rows.data() ? "[" : ",[";
        for (const std::size_t i : used) {
            if (i != used.front()) json += ',';
            appendJson(json, row[i], columns[i].type);
        }
        json += ']';
    }
    return json + "]";
}

} // namespace

bool jsonHolds(std::span<const std::vector<Variant>> rows, const std::vector<RowColumn>& columns)
{
    if (std::ranges::any_of(columns, isBinary)) return false;
    const auto fits = [](const Variant& value) {
        return value.kind() != Variant::Kind::String || isPlain(value.asString());
    };
    return std::ranges::all_of(rows, [&](const auto& row) { return std::ranges::all_of(row, fits); });
}

std::string jsonStatementOf(const std::string& table, std::span<const std::vector<Variant>> rows,
                            const std::vector<RowColumn>& columns, std::span<const std::size_t> used)
{
    std::string names;
    std::string values;
    std::string paths;
    for (std::size_t place = 0; place < used.size(); ++place) {
        const std::string number = std::to_string(place);
        const std::string_view comma = place == 0 ? "" : ", ";
        names.append(comma).append(tsql::bracketed(columns[used[place]].name));
        values.append(comma).append("V").append(number);
        paths.append(comma).append("V").append(number).append(" NVARCHAR(MAX) '$[").append(number).append("]'");
    }
    return "INSERT INTO " + table + " (" + names + ") SELECT " + values + " FROM OPENJSON(N'" +
           text::replaceAll(jsonOf(rows, columns, used), "'", "''") + "') WITH (" + paths + ")";
}

} // namespace tamarok::database
