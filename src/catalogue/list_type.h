#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "tamarok/error.h"

/// The description of a list type: everything that the catalogue knows about one kind of list.
///
/// To add a list type: write its description into types/<type>.cpp and name it in types/all_types.h and in
/// list_types.cpp. To add a column: add a row to `columns`, in the order of the ids, its label to the texts of the
/// type, and its id to one of the `joins` if the expression reads a table that is not part of `base`. The build
/// checks every description (list_type_checks.h) and computes the look-up by column id (list_type_index.h).
///
/// Texts are SQL templates (dialect/sql_template.h); column_values.h lists their values. They are `const char*` and
/// the tables initializer lists, since GCC 12 accepts no class with a constructor in such constant tables.
namespace tamarok::catalogue {

/// How an aggregate list treats a column.
enum class Aggregate : std::uint8_t {
    none,   ///< a key: the list is grouped by it
    sum,    ///< a measure: the list sums it and is not grouped by it
    max,    ///< a measure of which the list shows the greatest value; it is not grouped by it
    itself, ///< the expression aggregates already: the list neither sums it nor is grouped by it
};

/// Whether the column is a measure: inside an aggregate function in an aggregate list, and never grouped.
constexpr bool isMeasure(Aggregate aggregate) noexcept
{
    return aggregate == Aggregate::sum || aggregate == Aggregate::max;
}

/// What a column holds. Its display format and the form in which a value is compared with it follow
/// (column_kind.h), so that they cannot drift apart.
enum class Kind : std::uint8_t {
    text,
    date,            ///< day, without time
    weekday,         ///< a date of which the name of the day is shown
    time,            ///< hour and minute
    timeWithSeconds, ///< hour, minute and second
    whole,           ///< number without decimals
    twoDigits,       ///< number of two digits, such as a month
    fourDigits,      ///< number of four digits, such as a year
    oneDecimal,
    twoDecimals,
    threeDecimals,
    fourDecimals,
    fiveDecimals,
    nineDecimals,
    amount,            ///< money, with separators of thousands
    quantity,          ///< timber quantity, with the decimals of the option KUBATURPLACE
    roundedPrice,      ///< price whose expression rounds to two decimals, which a comparison has to repeat
    textShownAsNumber, ///< compared as a text
    numberShownAsText, ///< compared as a number
};

/// One column of a list type.
struct Column {
    std::int16_t id;
    std::int16_t label; ///< number of its text in table STRINGS
    Kind kind;
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
    const char* text; ///< select_values.h lists the further values of these templates
};

/// How a value that a user picked becomes a condition on a column (Comm_CSel::IsStr).
enum class ValueFilter : std::uint8_t {
    byFormat,  ///< the column's format decides: none is text, that of a day is a date, any other a number
    log,       ///< the column's kind decides; what is no number finds the Null rows; an unknown id is a number
    listed,    ///< the same, but an unknown id is reported to the user
    unchecked, ///< the column's kind decides; numbers are not checked; an unknown id is a number
    none,      ///< the list is not filtered by value
};

/// Entries of a choice list: the box in which a user chooses the columns of a list. Several rows of one key follow
/// each other in the box.
struct Choice {
    const char* keys;           ///< keys of Comm_CSel::AddComboTyp, separated by blanks
    const char* columns;        ///< a list of ids in the order of the box, such as "5, 182, 289-303"
    const char* edition = "";   ///< entries for TmkVar::strCustomer equal to this alone; else for every customer
    const char* option = "";    ///< entries for a database whose number option of this name is not 0
    const char* fixedText = ""; ///< the text of the entry, instead of the column's label
};

struct ListDescription {
    const char* key;               ///< upper case
    const char* base;              ///< opens the FROM body
    std::int16_t label = 0;        ///< number of the list's name in table STRINGS
    bool dependsOnVersion = false; ///< columns take a version key: GetColumn reads them, GetColumnTyp does not
    bool composesSelect = false;   ///< CorrectStrSelect composes the columns; else they are fillers
    ValueFilter valueFilter = ValueFilter::byFormat;
    std::initializer_list<Column> columns{};                     ///< by rising id
    std::initializer_list<Join> joins{};                         ///< each column has at most one
    std::initializer_list<SelectExpression> selectExpressions{}; ///< by rising id
    std::initializer_list<Choice> choices{};
};

/// Positions, plus 1, of what one column id has in the tables of a description; 0 for nothing. The length of a plain
/// text stands beside them, so that copying the text is all that a plain column costs.
struct ColumnSlot {
    std::uint16_t column = 0;
    std::uint16_t join = 0;
    std::uint16_t selectExpression = 0;
    std::uint16_t plainLength = 0; ///< bytes of the column's text, 0 if it has placeholders or is longer
};

/// The row at a position of a slot, or nullptr for position 0.
template <class Row>
constexpr const Row* rowAt(std::initializer_list<Row> rows, std::uint16_t position) noexcept
{
    return position == 0 ? nullptr : rows.begin() + (position - 1);
}

/// A description whose rows are found by column id in constant time.
class ListType {
public:
    /// @param slots  by column id, from 0 to the highest id of the description
    constexpr ListType(const ListDescription& description, std::span<const ColumnSlot> slots) noexcept :
        description_{&description}, slots_{slots}
    {}

    constexpr const ListDescription& description() const noexcept { return *description_; }

    /// The expression of a column whose text has no placeholders; "" for any other id.
    constexpr std::string_view plainText(std::int16_t id) const noexcept
    {
        const ColumnSlot found = slot(id);
        return found.plainLength == 0
                   ? std::string_view{}
                   : std::string_view{rowAt(description_->columns, found.column)->text, found.plainLength};
    }

    /// The row of a column id, or nullptr.
    constexpr const Column* column(std::int16_t id) const noexcept
    {
        return rowAt(description_->columns, slot(id).column);
    }
    constexpr const Join* join(std::int16_t id) const noexcept { return rowAt(description_->joins, slot(id).join); }
    constexpr const SelectExpression* selectExpression(std::int16_t id) const noexcept
    {
        return rowAt(description_->selectExpressions, slot(id).selectExpression);
    }

private:
    constexpr ColumnSlot slot(std::int16_t id) const noexcept
    {
        const auto index = static_cast<std::size_t>(id);
        return id >= 0 && index < slots_.size() ? slots_[index] : ColumnSlot{};
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
