#include <array>
#include <string>
#include <utility>
#include <vector>

#include "cell_text.h"
#include "list_statement.h"
#include "runtime/late_bound.h"

#include "tamarok/ado.h"
#include "tamarok/comm_csel.h"
#include "tamarok/convert.h"

namespace tamarok {

namespace {

using lists::ListStatement;

constexpr std::int32_t arrow = 0;
constexpr std::int32_t hourglass = 11;

/// The rows of a list, all at once, so that the database is free while the view is filled.
struct Rows {
    std::vector<Variant> cells; ///< row by row
    std::size_t fields = 0;     ///< in each row
};

Rows readRows(const std::string& statement, const ado::ConnectionRef& connection)
{
    ado::Recordset records;
    records.Open(statement, connection, ado::CursorType::OpenForwardOnly, ado::LockType::ReadOnly, -1);
    Rows rows;
    rows.fields = static_cast<std::size_t>(records.Fields().Count());
    if (!records.AtEOF()) rows.cells = std::move(records.GetRows().elements());
    records.Close();
    return rows;
}

/// The key of an item, from which Comm_Get::Get_Key reads the key of the record.
/// Required by the contract: a contract has no running number, so that its second row fails.
std::string itemKey(std::string_view type, std::size_t number, const Variant& value)
{
    const std::string record = value.isNull() ? std::string{} : convert::toText(value);
    if (type == "VERTRAG") return "P" + record;
    return std::to_string(number) + (type == "WAREN" ? 'W' : 'R') + record;
}

/// Adds rows to the items of a list view.
class ItemWriter {
public:
    ItemWriter(Object& items, const ListStatement& statement, std::string_view type, std::string_view emptyText) :
        items_{items}, statement_{statement}, type_{type}, emptyText_{emptyText}
    {}

    /// @param number  of the row, from 1
    /// @param cells   of the row: the columns, the tag of a type with one, and the key
    void add(std::size_t number, std::span<Variant> cells)
    {
        const bool hasTag = statement_.fields != nullptr && statement_.fields->hasTag();
        const std::size_t shown = cells.size() - (hasTag ? 2 : 1);
        if (shown == 0) return; // the only column names the record
        std::array<Variant, 3> arguments{Variant{}, Variant{itemKey(type_, number, cells.back())},
                                         Variant{text(cells, 0, emptyText_)}};
        const Variant added = items_.call("Add", arguments);
        Object& item = require(added.asObject(), "ListItems.Add");
        for (std::size_t column = 1; column < shown; ++column) {
            const Variant index{static_cast<std::int32_t>(column)};
            std::string cell = text(cells, column, "");
            // An empty cell holds a blank, as Comm_Get::Get_String gives it.
            item.putIndexed("SubItems", {&index, 1}, cell.empty() ? Variant{" "} : Variant{std::move(cell)});
        }
        if (hasTag) item.put("Tag", cells[shown]);
    }

private:
    std::string text(std::span<Variant> cells, std::size_t column, std::string_view nullText) const
    {
        const std::string_view format =
            column < statement_.formats.size() ? std::string_view{statement_.formats[column]} : std::string_view{};
        return lists::cellText(std::move(cells[column]), nullText, format, emptyText_);
    }

    Object& items_;
    const ListStatement& statement_;
    std::string_view type_;
    std::string_view emptyText_;
};

} // namespace

void Comm_CSel::FillListview(const TmkVar& tmkVar, std::string_view strVer_type, std::string_view strTypListView,
                             Object& ListView1, std::string_view tmpSelektion) const
{
    const ObjectRef items = late_bound::objectOf(ListView1, "ListItems");
    items->call("Clear", {});
    const ObjectRef headers = late_bound::objectOf(ListView1, "ColumnHeaders");
    if (late_bound::numberOf(*headers, "Count") == 0) return;
    late_bound::objectOf(ListView1, "Parent")->put("MousePointer", hourglass);

    const ListStatement statement = lists::composeListStatement(
        {.session = tmkVar, .version = strVer_type, .type = strTypListView, .selection = tmpSelektion}, ListView1,
        *headers);
    Rows rows = readRows(statement.text, tmkVar.db_ADO);
    ItemWriter writer{*items, statement, strTypListView, tmkVar.strEmptyText};
    const std::size_t count = rows.cells.empty() ? 0 : rows.cells.size() / rows.fields;
    for (std::size_t row = 0; row < count; ++row)
        writer.add(row + 1, std::span{rows.cells}.subspan(row * rows.fields, rows.fields));
    late_bound::objectOf(ListView1, "Parent")->put("MousePointer", arrow);
}

} // namespace tamarok
