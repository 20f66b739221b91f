#include <string>
#include <vector>

#include "late_bound.h"
#include "sortable_cells.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"

namespace tamarok {

namespace {

constexpr std::int32_t ascending = 0;
constexpr std::int32_t descending = 1;
constexpr std::string_view ascendingMark = "<<";
constexpr std::string_view descendingMark = ">>";

/// The cells of one column of a list view, with the items that they belong to.
class ColumnCells {
public:
    /// @param column  position of the column, from 1
    ColumnCells(const Object& items, std::int32_t column) : index_{column - 1}
    {
        const std::int32_t count = lists::numberOf(items, "Count");
        items_.reserve(static_cast<std::size_t>(count));
        texts_.reserve(static_cast<std::size_t>(count));
        for (std::int32_t position = 1; position <= count; ++position) {
            items_.push_back(lists::elementOf(items, position));
            texts_.push_back(read(*items_.back()));
        }
    }

    bool isItemText() const noexcept { return index_ == 0; }
    const std::vector<std::string>& texts() const noexcept { return texts_; }

    /// Replaces each text by what `change` returns for it, in the view as well.
    template <class Change>
    void rewrite(Change change)
    {
        for (std::size_t row = 0; row < items_.size(); ++row) {
            std::string changed = change(texts_[row]);
            if (changed == texts_[row]) continue;
            texts_[row] = std::move(changed);
            write(*items_[row], texts_[row]);
        }
    }

private:
    std::string read(const Object& item) const
    {
        const Variant index{index_};
        return convert::toText(isItemText() ? item.get("text", {}) : item.get("SubItems", {&index, 1}));
    }

    void write(Object& item, const std::string& text) const
    {
        const Variant index{index_};
        if (isItemText()) {
            item.put("text", text);
        } else {
            item.putIndexed("SubItems", {&index, 1}, text);
        }
    }

    std::int32_t index_; ///< 0 for the text of the item, else the index of its SubItems
    std::vector<ObjectRef> items_;
    std::vector<std::string> texts_;
};

/// Removes the marks of a former order from all headers.
void removeMarks(const Object& headers)
{
    const std::int32_t count = lists::numberOf(headers, "Count");
    for (std::int32_t position = 1; position <= count; ++position) {
        const ObjectRef header = lists::elementOf(headers, position);
        const std::string text = convert::toText(header->get("text", {}));
        if (text.starts_with(ascendingMark) || text.starts_with(descendingMark)) header->put("text", text.substr(2));
    }
}

/// Sorts the view by a column and marks its header.
void sortBy(Object& view, Object& header, std::int32_t column, bool keepsDirection)
{
    view.put("SortKey", column - 1);
    if (!keepsDirection) {
        const bool wasAscending =
            lists::numberOf(view, "SortOrder") == ascending && convert::toBoolean(view.get("Sorted", {}));
        view.put("SortOrder", wasAscending ? descending : ascending);
    }
    view.put("Sorted", true);
    const std::string_view mark = lists::numberOf(view, "SortOrder") == ascending ? ascendingMark : descendingMark;
    header.put("text", std::string{mark} + convert::toText(header.get("text", {})));
}

} // namespace

void Comm_Set::OrderColumnListview(const TmkVar& tmkVar, Object& ColumnHeader, Object& ListView1,
                                   bool OnlyActualize) const
{
    const ObjectRef items = lists::objectOf(ListView1, "ListItems");
    if (lists::numberOf(*items, "Count") == 0) return;
    const std::int32_t column = lists::numberOf(ColumnHeader, "Index");
    ColumnCells cells{*items, column};
    const std::string& emptyText = tmkVar.strEmptyText;
    const lists::ColumnShape shape = lists::shapeOf(cells.texts(), emptyText);
    if (shape.isDate) {
        const std::string otherwise = cells.isItemText() ? emptyText : " ";
        cells.rewrite([&](const std::string& cell) { return lists::sortableDate(cell, otherwise); });
    }
    // Required by the contract: the padding stays in the cells.
    if (shape.isNumber) cells.rewrite([&](const std::string& cell) { return lists::paddedNumber(cell, shape.width); });

    removeMarks(*lists::objectOf(ListView1, "ColumnHeaders"));
    sortBy(ListView1, ColumnHeader, column, OnlyActualize);

    if (!shape.isDate) return;
    constexpr std::size_t sortableLength = 8;
    cells.rewrite([&](const std::string& cell) {
        const bool isSortable =
            cell.size() == sortableLength && cell != emptyText && cell.find(' ') == std::string::npos;
        return isSortable ? lists::shownDate(cell) : cell;
    });
}

} // namespace tamarok
