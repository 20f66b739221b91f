#include "json_rows.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "literals.h"
#include "tamarok_tsql/table_definition.h"

#include "tamarok/text.h"

namespace tamarok::database {
namespace {

/// A text in quotes. No character below the blank stays, so that a backslash never stands before the end of a line.
void appendJsonText(std::string& json, std::string_view value)
{
    static constexpr std::string_view digits = "0123456789abcdef";
    json += '"';
    for (const char c : value) {
        const auto code = static_cast<unsigned char>(c);
        if (code < 0x20) {
            json.append("\\u00").append({digits[code >> 4U], digits[code & 15U]});
            continue;
        }
        if (c == '"' || c == '\\') json += '\\';
        json += c;
    }
    json += '"';
}

/// Numbers are written as their literals; those of decimals and dates stand in single quotes.
void appendJson(std::string& json, const Variant& value, ado::DataType type)
{
    if (value.isNull()) {
        json += "null";
        return;
    }
    if (value.kind() == Variant::Kind::String) return appendJsonText(json, value.asString());
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
    const auto hasZero = [](const Variant& value) {
        return value.kind() == Variant::Kind::String && value.asString().find('\0') != std::string::npos;
    };
    return std::ranges::none_of(rows, [&](const auto& row) { return std::ranges::any_of(row, hasZero); });
}

std::string jsonStatementOf(const std::string& table, std::span<const std::vector<Variant>> rows,
                            const std::vector<RowColumn>& columns, std::span<const std::size_t> used)
{
    std::string names;
    std::string values;
    std::string paths;
    for (std::size_t place = 0; place < used.size(); ++place) {
        const std::string number = std::to_string(place);
        const std::string comma = place == 0 ? "" : ", ";
        names += comma + tsql::bracketed(columns[used[place]].name);
        values += comma + "V" + number;
        paths += comma + "V" + number + " NVARCHAR(MAX) '$[" + number + "]'";
    }
    return "INSERT INTO " + table + " (" + names + ") SELECT " + values + " FROM OPENJSON(N'" +
           text::replaceAll(jsonOf(rows, columns, used), "'", "''") + "') WITH (" + paths + ")";
}

} // namespace tamarok::database
