#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "id_list.h"

#include "tamarok/error.h"

namespace tamarok::catalogue {

/// One column of a list type. Texts hold placeholders in braces where they depend on the session
/// or on the version; row_text.h lists them.
struct Column {
    constexpr Column(std::int16_t columnId, std::string_view expression, std::string_view aggregateWord = {},
                     std::string_view groupExpression = {}) :
        id{columnId},
        text{expression}, word{aggregateWord}, groupText{groupExpression}, composed{expression.find('{') !=
                                                                                    std::string_view::npos}
    {}

    std::int16_t id;
    std::string_view text;
    std::string_view word;      ///< aggregate word of a measure, empty for a key
    std::string_view groupText; ///< expression under GROUP BY where it differs, else empty
    bool composed;              ///< the text holds placeholders
};

/// One join, shared by all columns of its table.
struct Join {
    constexpr Join(std::string_view columnIds, std::string_view prerequisiteIds, std::string_view fragment) :
        ids{columnIds}, text{fragment}, composed{fragment.find('{') != std::string_view::npos}
    {
        std::size_t next = 0;
        forEachId(prerequisiteIds, [&](std::int16_t id) { prerequisites.at(next++) = id; });
    }

    std::string_view ids;
    std::array<std::int16_t, 2> prerequisites{}; ///< ids whose joins stand earlier; 0 for none
    std::string_view text;                       ///< begins with a blank
    bool composed;
};

/// Position in a table's rows plus one by column id, 0 where there is no row.
using IdIndex = std::span<const std::uint16_t>;

/// Rows that are found by column id in constant time.
template <class Row>
struct IdTable {
    std::span<const Row> rows;
    IdIndex index;

    constexpr const Row* find(std::int16_t id) const noexcept
    {
        if (id < 0 || static_cast<std::size_t>(id) >= index.size()) {
            return nullptr;
        }
        const std::uint16_t position = index[static_cast<std::size_t>(id)];
        return position == 0 ? nullptr : &rows[position - 1U];
    }
};

using ColumnTable = IdTable<Column>;
using JoinTable = IdTable<Join>;

/// True if the ids rise from row to row, so that none occurs twice.
constexpr bool isSortedAndUnique(std::span<const Column> rows)
{
    return std::ranges::adjacent_find(rows, [](const Column& a, const Column& b) { return a.id >= b.id; }) ==
               rows.end() &&
           !rows.empty() && rows.front().id > 0;
}

/// The index of columns by id. @tparam lastId  highest id of the table
template <std::size_t lastId>
constexpr std::array<std::uint16_t, lastId + 1> makeColumnIndex(std::span<const Column> rows)
{
    std::array<std::uint16_t, lastId + 1> index{};
    for (std::size_t position = 0; position < rows.size(); ++position) {
        index.at(static_cast<std::size_t>(rows[position].id)) = static_cast<std::uint16_t>(position + 1);
    }
    return index;
}

/// The index of joins by column id; an id with two joins fails the build.
template <std::size_t lastId>
constexpr std::array<std::uint16_t, lastId + 1> makeJoinIndex(std::span<const Join> rows)
{
    std::array<std::uint16_t, lastId + 1> index{};
    for (std::size_t position = 0; position < rows.size(); ++position) {
        forEachId(rows[position].ids, [&](std::int16_t id) {
            std::uint16_t& entry = index.at(static_cast<std::size_t>(id));
            if (entry != 0) {
                throw Error{errors::invalidArgument, "A column id has two joins."};
            }
            entry = static_cast<std::uint16_t>(position + 1);
        });
    }
    return index;
}

} // namespace tamarok::catalogue
