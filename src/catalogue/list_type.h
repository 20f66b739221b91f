#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "tamarok/error.h"

/// The description of a list type: everything that the catalogue knows about one kind of list.
///
/// To add a list type: write its description into types/<type>.inc and include that file in
/// list_types.cpp. To add a column: add a row to `columns`, in the order of the ids, and its id to one of
/// the `joins` if the expression reads a table that is not part of `base`. The build checks every
/// description (list_types.cpp) and computes the look-up by column id.
///
/// A further property of columns, such as a display format or a label, becomes a member of ListDescription
/// with the operation that reads it; descriptions without the property need no change.
///
/// Texts are SQL templates (dialect/sql_template.h); column_values.h lists their values. They are
/// `const char*` and the tables initializer lists, since GCC 12 accepts no class with a constructor
/// in the constant tables of an included description.
namespace tamarok::catalogue {

/// How an aggregate list treats a column.
enum class Aggregate : std::uint8_t {
    none,   ///< a key: the list is grouped by it
    sum,    ///< a measure: the list sums it and is not grouped by it
    itself, ///< the expression aggregates already: the list neither sums it nor is grouped by it
};

/// One column of a list type.
struct Column {
    std::int16_t id;
    const char* text;
    Aggregate aggregate = Aggregate::none;
    const char* groupText = ""; ///< expression under GROUP BY where it differs, else empty
};

/// One join, shared by all columns that read its table.
struct Join {
    const char* ids;           ///< the columns, as a list of ids such as "5, 182, 289-303"
    const char* prerequisites; ///< columns whose joins this one refers to, as a list of ids
    const char* text;          ///< begins with a blank; its exact spelling is its identity
};

/// When an expression takes the place of a column in a SELECT list.
enum class Applies : std::uint8_t { always, grouped };

/// An expression that Comm_CSel::CorrectStrSelect selects in place of a column: a weighted average in place
/// of a sum, or a share of the whole list.
struct SelectExpression {
    std::int16_t id;
    Applies applies;
    const char* text; ///< select_list.cpp lists the further values of these templates
};

struct ListDescription {
    const char* key;               ///< upper case
    const char* base;              ///< opens the FROM body
    bool dependsOnVersion = false; ///< columns take a version key: GetColumn reads them, GetColumnTyp does not
    bool composesSelect = false;   ///< CorrectStrSelect composes the columns; it fills those of other types up
    std::initializer_list<Column> columns{};                     ///< by rising id
    std::initializer_list<Join> joins{};                         ///< each column has at most one
    std::initializer_list<SelectExpression> selectExpressions{}; ///< by rising id
};

/// Positions, plus 1, of what one column id has in the tables of a description; 0 for nothing.
struct ColumnSlot {
    std::uint16_t column = 0;
    std::uint16_t join = 0;
    std::uint16_t selectExpression = 0;
};

/// A description whose rows are found by column id in constant time.
class ListType {
public:
    /// @param slots  by column id, from 0 to the highest id of the description
    constexpr ListType(const ListDescription& description, std::span<const ColumnSlot> slots) noexcept :
        description_{&description}, slots_{slots}
    {}

    constexpr const ListDescription& description() const noexcept { return *description_; }

    /// The row of a column id, or nullptr.
    constexpr const Column* column(std::int16_t id) const noexcept
    {
        return row(description_->columns, slot(id).column);
    }
    constexpr const Join* join(std::int16_t id) const noexcept { return row(description_->joins, slot(id).join); }
    constexpr const SelectExpression* selectExpression(std::int16_t id) const noexcept
    {
        return row(description_->selectExpressions, slot(id).selectExpression);
    }

private:
    constexpr ColumnSlot slot(std::int16_t id) const noexcept
    {
        const auto index = static_cast<std::size_t>(id);
        return id >= 0 && index < slots_.size() ? slots_[index] : ColumnSlot{};
    }

    template <class Row>
    static constexpr const Row* row(std::initializer_list<Row> rows, std::uint16_t position) noexcept
    {
        return position == 0 ? nullptr : rows.begin() + (position - 1);
    }

    const ListDescription* description_;
    std::span<const ColumnSlot> slots_;
};

/// Calls `visit` with each id of a list such as "5, 182, 289-303", in the order of the list.
/// Error 5 for a malformed list, which fails the build in a description.
template <class Visit>
constexpr void forEachId(std::string_view list, Visit visit)
{
    std::size_t at = 0;
    const auto readId = [&]() -> int {
        int id = 0;
        const std::size_t first = at;
        for (; at < list.size() && list[at] >= '0' && list[at] <= '9'; ++at) {
            id = id * 10 + (list[at] - '0');
        }
        if (at == first || id > INT16_MAX) {
            throw Error{errors::invalidArgument, "An id is expected in the list of column ids."};
        }
        return id;
    };
    while (at < list.size()) {
        const int first = readId();
        int last = first;
        if (list.substr(at).starts_with('-')) {
            ++at;
            last = readId();
        }
        for (int id = first; id <= last; ++id) {
            visit(static_cast<std::int16_t>(id));
        }
        if (list.substr(at).starts_with(", ") && at + 2 < list.size()) {
            at += 2;
        } else if (at < list.size()) {
            throw Error{errors::invalidArgument, "Column ids are separated by a comma and a blank."};
        }
    }
}

} // namespace tamarok::catalogue
