#include "sorted_rows.h"

#include <algorithm>

#include "tamarok/convert.h"
#include "tamarok/text.h"

namespace tamarok::data {

namespace {

using ReadArguments = std::span<const Variant>;
using CallArguments = std::span<Variant>;

constexpr std::string_view source = "Tamarok.Recordset";

[[noreturn]] void fail(std::int32_t number, std::string description)
{
    throw Error{number, std::move(description), std::string{source}};
}

struct SortColumn {
    std::string name;
    bool descending = false;
};

SortColumn columnOf(std::string_view part)
{
    part = text::trim(part);
    SortColumn column;
    std::size_t end = part.find_first_of(" \t");
    if (part.starts_with('[')) {
        end = part.find(']');
        if (end == std::string_view::npos) fail(errors::invalidArgument, "Sort: a bracket is not closed.");
        column.name = part.substr(1, end - 1);
        ++end;
    } else {
        column.name = part.substr(0, end);
    }
    const std::string_view direction = end < part.size() ? text::trim(part.substr(end)) : std::string_view{};
    column.descending = text::equalsNoCase(direction, "DESC");
    const bool isKnown = column.descending || direction.empty() || text::equalsNoCase(direction, "ASC");
    if (column.name.empty() || !isKnown)
        fail(errors::invalidArgument, "Sort: \"" + std::string{part} + "\" is not of the form COLUMN [ASC|DESC].");
    return column;
}

std::vector<SortColumn> columnsOf(std::string_view order)
{
    std::vector<SortColumn> columns;
    for (;;) {
        const std::size_t comma = order.find(',');
        columns.push_back(columnOf(order.substr(0, comma)));
        if (comma == std::string_view::npos) return columns;
        order.remove_prefix(comma + 1);
    }
}

/// A row to be sorted. Texts are in capital letters.
struct SortRow {
    Variant mark;
    std::vector<Variant> keys;
};

bool isLess(const Variant& first, const Variant& second)
{
    if (first.isNull() || second.isNull()) return first.isNull() && !second.isNull();
    if (first.isString() || second.isString()) return convert::toText(first) < convert::toText(second);
    return convert::toDouble(first) < convert::toDouble(second);
}

std::vector<SortRow> readRows(ado::Recordset& rows, const std::vector<SortColumn>& columns)
{
    std::vector<ado::FieldRef> fields;
    fields.reserve(columns.size());
    for (const SortColumn& column : columns)
        fields.push_back(rows.Fields().share(column.name));
    std::vector<SortRow> read;
    if (rows.AtBOF() && rows.AtEOF()) return read;
    for (rows.MoveFirst(); !rows.AtEOF(); rows.MoveNext()) {
        SortRow& row = read.emplace_back(SortRow{rows.Bookmark(), {}});
        for (const ado::FieldRef& field : fields) {
            const Variant value = field->Value();
            row.keys.push_back(value.isString() ? Variant{text::toUpper(value.asString())} : value);
        }
    }
    return read;
}

void checkNone(CallArguments arguments, std::string_view name)
{
    checkArgumentCount(arguments.size(), 0, 0, name, source);
}

Variant callMove(SortedRows& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 1, "Move", source);
    self.move(convert::toLongLong(arguments[0]));
    return {};
}

template <std::int64_t rows>
Variant step(SortedRows& self, CallArguments arguments)
{
    checkNone(arguments, "The method");
    self.move(rows);
    return {};
}

Variant callMoveFirst(SortedRows& self, CallArguments arguments)
{
    checkNone(arguments, "MoveFirst");
    self.moveTo(0);
    return {};
}

Variant callMoveLast(SortedRows& self, CallArguments arguments)
{
    checkNone(arguments, "MoveLast");
    self.moveTo(std::max<std::int64_t>(self.count() - 1, 0));
    return {};
}

Variant callGetRows(SortedRows& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 1, "GetRows", source);
    const Variant* rows = optionalArgument(arguments, 0);
    return self.takeRows(rows != nullptr ? convert::toLongLong(*rows) : -1);
}

Variant callFind(SortedRows& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 3, "Find", source);
    const Variant* skip = optionalArgument(arguments, 1);
    const Variant* direction = optionalArgument(arguments, 2);
    self.find(convert::toText(arguments[0]), skip != nullptr ? convert::toLongLong(*skip) : 0,
              direction != nullptr && convert::toLong(*direction) < 0);
    return {};
}

Variant callDelete(SortedRows& self, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 1, "Delete", source);
    self.removeRow();
    return {};
}

} // namespace

std::span<const Member<SortedRows>> SortedRows::members() noexcept
{
    using S = SortedRows;
    static constexpr Member<S> rows[]{
        {.name = "EOF", .get = [](const S& s, ReadArguments) -> Variant { return s.atEOF(); }},
        {.name = "MoveNext", .call = step<1>},
        {.name = "BOF", .get = [](const S& s, ReadArguments) -> Variant { return s.atBOF(); }},
        {.name = "MovePrevious", .call = step<-1>},
        {.name = "MoveFirst", .call = callMoveFirst},
        {.name = "MoveLast", .call = callMoveLast},
        {.name = "Move", .call = callMove},
        {.name = "GetRows", .call = callGetRows},
        {.name = "Find", .call = callFind},
        {.name = "AbsolutePosition",
         .get = [](const S& s, ReadArguments) -> Variant { return s.position(); },
         .put =
             [](S& s, const Variant& value) {
                 const std::int64_t position = convert::toLongLong(value);
                 if (position < 1) fail(errors::invalidArgument, "AbsolutePosition: a position below 1.");
                 if (position > s.count()) fail(errors::noCurrentRecord, "AbsolutePosition: there are fewer rows.");
                 s.moveTo(position - 1);
             }},
        {.name = "Bookmark",
         .get = [](const S& s, ReadArguments arguments) { return s.rows_->get("Bookmark", arguments); },
         .put = [](S& s, const Variant& mark) { s.moveToMark(mark); }},
        {.name = "Delete", .call = callDelete},
    };
    return rows;
}

SortedRows::SortedRows(std::shared_ptr<ado::Recordset> rows, std::string_view order) : rows_{std::move(rows)}
{
    const std::vector<SortColumn> columns = columnsOf(order);
    std::vector<SortRow> read = readRows(*rows_, columns);
    std::ranges::stable_sort(read, [&columns](const SortRow& first, const SortRow& second) {
        for (std::size_t index = 0; index < columns.size(); ++index) {
            const bool less = isLess(first.keys[index], second.keys[index]);
            if (less || isLess(second.keys[index], first.keys[index])) return less != columns[index].descending;
        }
        return false;
    });
    for (SortRow& row : read)
        marks_.push_back(std::move(row.mark));
    moveTo(0);
}

/// Behind a deleted row the next one has moved into its place.
void SortedRows::move(std::int64_t rows)
{
    if ((rows > 0 && atEOF()) || (rows < 0 && atBOF()))
        fail(errors::noCurrentRecord, "Move: there is no row in this direction.");
    const std::int64_t steps = removed_ && rows > 0 ? rows - 1 : rows;
    moveTo(std::clamp<std::int64_t>(at_ + steps, -1, count()));
}

/// The ends of the rows themselves stand for the ends of the order.
void SortedRows::moveTo(std::int64_t index)
{
    if (index >= 0 && index < count()) {
        rows_->Bookmark(marks_[static_cast<std::size_t>(index)]);
    } else if (count() > 0 && index < 0) {
        rows_->MoveFirst();
        rows_->MovePrevious();
    } else if (count() > 0) {
        rows_->MoveLast();
        rows_->MoveNext();
    }
    at_ = index;
    removed_ = false;
}

std::int64_t SortedRows::position() const noexcept
{
    if (atEOF()) return ado::positionEOF;
    if (atBOF()) return ado::positionBOF;
    return removed_ ? ado::positionUnknown : at_ + 1;
}

VariantArray SortedRows::takeRows(std::int64_t rows)
{
    if (rows < -1) fail(errors::invalidArgument, "GetRows: the number of rows is below -1.");
    requireRow();
    const ado::FieldCollection& fields = rows_->Fields();
    const std::int32_t columns = fields.Count();
    std::vector<Variant> values;
    std::int32_t taken = 0;
    for (; !atEOF() && (rows < 0 || taken < rows); ++taken) {
        for (std::int32_t column = 0; column < columns; ++column)
            values.push_back(fields.Item(column).Value());
        move(1);
    }
    return VariantArray{{0, columns - 1}, {0, taken - 1}, std::move(values)};
}

/// The rows that meet the criterion are sought in their own order, and the first of them in this one.
void SortedRows::find(std::string_view criterion, std::int64_t skip, bool backward)
{
    requireRow();
    if (skip < 0) fail(errors::invalidArgument, "Find: the number of rows to skip is below 0.");
    const std::vector<Variant> found = marksOf(criterion);
    const std::int64_t direction = backward ? -1 : 1;
    std::int64_t index = at_ + direction * std::min(skip, count());
    while (index >= 0 && index < count() &&
           std::ranges::find(found, marks_[static_cast<std::size_t>(index)]) == found.end())
        index += direction;
    moveTo(std::clamp<std::int64_t>(index, -1, count()));
}

std::vector<Variant> SortedRows::marksOf(std::string_view criterion)
{
    std::vector<Variant> found;
    rows_->MoveFirst();
    for (rows_->Find(criterion); !rows_->AtEOF(); rows_->Find(criterion)) {
        found.push_back(rows_->Bookmark());
        rows_->MoveNext();
        if (rows_->AtEOF()) break;
    }
    return found;
}

void SortedRows::moveToMark(const Variant& mark)
{
    rows_->Bookmark(mark);
    const auto found = std::ranges::find(marks_, rows_->Bookmark());
    if (found == marks_.end()) fail(errors::invalidArgument, "Bookmark: the row is none of those that were sorted.");
    at_ = found - marks_.begin();
    removed_ = false;
}

void SortedRows::removeRow()
{
    requireRow();
    rows_->Delete();
    marks_.erase(marks_.begin() + static_cast<std::ptrdiff_t>(at_));
    removed_ = true;
}

void SortedRows::addRow()
{
    const Variant mark = rows_->Bookmark();
    const auto found = std::ranges::find(marks_, mark);
    at_ = found - marks_.begin();
    if (found == marks_.end()) marks_.push_back(mark);
    removed_ = false;
}

void SortedRows::requireRow() const
{
    if (atEOF() || atBOF() || removed_) fail(errors::noCurrentRecord, "There is no current row.");
}

} // namespace tamarok::data
