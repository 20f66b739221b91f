#include "lookup_statement.h"

#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::dialogs {

namespace {

constexpr std::string_view from = " FROM ";
constexpr std::string_view orderBy = " ORDER BY ";
constexpr std::string_view descending = " DESC";

} // namespace

bool readsTemporaryTable(std::string_view statement)
{
    return statement.find('#') != std::string_view::npos;
}

std::string orderedBy(std::string_view statement, std::size_t column)
{
    std::string ordered{statement.substr(0, statement.rfind(orderBy))};
    ordered.append(orderBy).append(std::to_string(column));
    if (ordered == statement) ordered += descending;
    return ordered;
}

bool isDescending(std::string_view orderedStatement)
{
    return orderedStatement.ends_with(descending);
}

std::string_view tableOf(std::string_view statement)
{
    const std::size_t at = statement.find(from);
    if (at == std::string_view::npos) return {};
    const std::string_view rest = statement.substr(at + from.size());
    return rest.substr(0, rest.find(' '));
}

std::string defaultRowStatement(std::string_view statement, std::size_t element)
{
    constexpr std::size_t behindSelect = 8; // characters count from 1
    const std::size_t at = statement.find(from);
    if (at == std::string_view::npos) return {};
    std::string_view list = text::mid(statement.substr(0, at), behindSelect);
    for (; element > 0; --element) {
        const std::size_t comma = list.find(',');
        if (comma == std::string_view::npos) return {};
        list.remove_prefix(comma + 1);
    }
    return std::string{"SELECT "}
        .append(list.substr(0, list.find(',')))
        .append(from)
        .append(tableOf(statement))
        .append(" WHERE STANDART = 1");
}

std::string widthsRelation(std::string_view statement, std::span<const std::string> baseColumns)
{
    constexpr std::size_t room = 27; // a relation has 30 characters
    const std::string_view table = tableOf(statement);
    if (table.empty()) return {};
    std::string letters;
    for (const std::string& column : baseColumns)
        letters += text::left(column, 2);
    const std::size_t length = text::length(letters);
    // Required by the contract: columns that leave a negative length for the table fail. Do not correct.
    if (length > room)
        throw Error{errors::invalidArgument,
                    "The " + std::to_string(baseColumns.size()) + " columns of the lookup give " +
                        std::to_string(length) + " characters for the relation of their widths; " +
                        std::to_string(room) + " is the most.",
                    "GridHelp"};
    return std::string{"GH_"}.append(text::right(table, room - length)).append(letters);
}

} // namespace tamarok::dialogs
