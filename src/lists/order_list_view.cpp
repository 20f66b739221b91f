#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "runtime/late_bound.h"
#include "sortable_cells.h"

#include "tamarok/column_texts.h"
#include "tamarok/comm_set.h"
#include "tamarok/convert.h"

namespace tamarok {

namespace {

constexpr std::int32_t ascending = 0;
constexpr std::int32_t descending = 1;
constexpr std::string_view ascendingMark = "<<";
constexpr std::string_view descendingMark = ">>";

/// The cells of one column of a list view, in the order before the sort.
class ColumnCells {
public:
    virtual ~ColumnCells() = default;
    ColumnCells(const ColumnCells&) = delete;
    ColumnCells& operator=(const ColumnCells&) = delete;

    virtual lists::ColumnShape shape(std::string_view emptyText) = 0;
    /// Replaces each text by what `change` makes of it.
    virtual void rewrite(const std::function<void(std::string&)>& change) = 0;
    /// Called between the sort and the next change.
    virtual void finishSort() {}

protected:
    ColumnCells() = default;
};

/// The cells of any view, reached by name.
class LateBoundCells final : public ColumnCells {
public:
    LateBoundCells(const Object& items, std::int32_t column) : index_{column - 1}
    {
        const std::int32_t count = late_bound::numberOf(items, "Count");
        items_.reserve(static_cast<std::size_t>(count));
        for (std::int32_t position = 1; position <= count; ++position)
            items_.push_back(late_bound::elementOf(items, position));
    }

    lists::ColumnShape shape(std::string_view emptyText) override
    {
        lists::ColumnShape shape{emptyText};
        for (const ObjectRef& item : items_)
            if (!shape.add(read(*item))) break;
        return shape;
    }

    void rewrite(const std::function<void(std::string&)>& change) override
    {
        for (const ObjectRef& item : items_) {
            std::string text = read(*item);
            change(text);
            write(*item, std::move(text));
        }
    }

private:
    std::string read(const Object& item) const
    {
        const Variant index{index_};
        return convert::toText(index_ == 0 ? item.get("text", {}) : item.get("SubItems", {&index, 1}));
    }

    void write(Object& item, std::string text) const
    {
        const Variant index{index_};
        if (index_ == 0) {
            item.put("text", std::move(text));
        } else {
            item.putIndexed("SubItems", {&index, 1}, std::move(text));
        }
    }

    std::int32_t index_; ///< 0 for the text of the item, else the index of its SubItems
    std::vector<ObjectRef> items_;
};

/// The cells of a view that gives the texts of a column at once.
class DirectCells final : public ColumnCells {
public:
    DirectCells(ColumnTexts& source, std::int32_t column) :
        source_{source}, texts_{source.textsOf(static_cast<std::size_t>(column) - 1)}
    {}

    lists::ColumnShape shape(std::string_view emptyText) override
    {
        lists::ColumnShape shape{emptyText};
        for (const std::string* const text : texts_)
            if (!shape.add(*text)) break;
        return shape;
    }

    void rewrite(const std::function<void(std::string&)>& change) override
    {
        for (std::string* const text : texts_)
            change(*text);
    }

    void finishSort() override { source_.finishSort(); }

private:
    ColumnTexts& source_;
    std::vector<std::string*> texts_;
};

std::unique_ptr<ColumnCells> cellsOf(Object& items, std::int32_t column)
{
    if (auto* const texts = dynamic_cast<ColumnTexts*>(&items)) return std::make_unique<DirectCells>(*texts, column);
    return std::make_unique<LateBoundCells>(items, column);
}

/// Removes the marks of a former order from all headers.
void removeMarks(const Object& headers)
{
    const std::int32_t count = late_bound::numberOf(headers, "Count");
    for (std::int32_t position = 1; position <= count; ++position) {
        const ObjectRef header = late_bound::elementOf(headers, position);
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
            late_bound::numberOf(view, "SortOrder") == ascending && convert::toBoolean(view.get("Sorted", {}));
        view.put("SortOrder", wasAscending ? descending : ascending);
    }
    view.put("Sorted", true);
    const std::string_view mark = late_bound::numberOf(view, "SortOrder") == ascending ? ascendingMark : descendingMark;
    header.put("text", std::string{mark} + convert::toText(header.get("text", {})));
}

} // namespace

void Comm_Set::OrderColumnListview(const TmkVar& tmkVar, Object& ColumnHeader, Object& ListView1,
                                   bool OnlyActualize) const
{
    const ObjectRef items = late_bound::objectOf(ListView1, "ListItems");
    if (late_bound::numberOf(*items, "Count") == 0) return;
    const std::int32_t column = late_bound::numberOf(ColumnHeader, "Index");
    const std::unique_ptr<ColumnCells> cells = cellsOf(*items, column);
    const std::string& emptyText = tmkVar.strEmptyText;
    const lists::ColumnShape shape = cells->shape(emptyText);
    if (shape.isDate()) {
        const std::string otherwise = column == 1 ? emptyText : " ";
        cells->rewrite([&](std::string& cell) { cell = lists::sortableDate(cell, otherwise); });
    }
    // Required by the contract: the padding stays in the cells.
    if (shape.isNumber()) cells->rewrite([&](std::string& cell) { cell = lists::paddedNumber(cell, shape.width()); });

    removeMarks(*late_bound::objectOf(ListView1, "ColumnHeaders"));
    sortBy(ListView1, ColumnHeader, column, OnlyActualize);

    if (!shape.isDate()) return;
    cells->finishSort();
    cells->rewrite([&](std::string& cell) {
        if (lists::isSortableDate(cell) && cell != emptyText) cell = lists::shownDate(cell);
    });
}

} // namespace tamarok
