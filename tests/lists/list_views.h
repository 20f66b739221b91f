#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/form.h"
#include "tamarok/list_view.h"

namespace tamarok::test {

/// A list view on a form, as a caller sets it up: a header for each column, with the id in its key.
class ListOnForm {
public:
    explicit ListOnForm(const std::vector<std::int16_t>& ids = {})
    {
        view->Parent(form);
        for (const std::int16_t id : ids)
            view->headers()->Add({}, "COL_" + std::to_string(id), "Column " + std::to_string(id));
    }

    /// Adds a row. @param cells  the text of the item, then its subitems
    void add(const std::vector<std::string>& cells)
    {
        const controls::ListItemRef item = view->items()->Add({}, "", cells.front());
        for (std::size_t column = 1; column < cells.size(); ++column)
            item->SubItems(static_cast<std::int32_t>(column), cells[column]);
    }

    /// The texts of a column from top to bottom. @param column  from 0
    std::vector<std::string> column(std::int32_t column) const
    {
        std::vector<std::string> texts;
        for (std::int32_t row = 1; row <= view->items()->Count(); ++row)
            texts.push_back(view->text(row, column));
        return texts;
    }

    std::vector<std::string> keys() const
    {
        std::vector<std::string> all;
        for (const controls::ListItemRef& item : view->items()->all())
            all.push_back(item->Key());
        return all;
    }

    std::shared_ptr<controls::Form> form = std::make_shared<controls::Form>();
    std::shared_ptr<controls::ListView> view = std::make_shared<controls::ListView>();
};

} // namespace tamarok::test
