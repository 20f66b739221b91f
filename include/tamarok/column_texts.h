#pragma once

#include <cstddef>
#include <string>
#include <vector>

#pragma GCC visibility push(default)

namespace tamarok {

/// Rows of texts in columns, such as the items of a list view. A collection of items that offers it beside its members
/// by name spares the late-bound calls for each cell: a click on a header sorts 100,000 dates in half the
/// time (bench: orderListView/dates against orderListViewByName/dates).
class ColumnTexts {
public:
    /// Returns the texts of a column in the order of the rows. They stay valid when the rows are sorted, and until a
    /// row or column is added or removed. A changed text does not move its row; if the rows are sorted by this column,
    /// `finishSort` comes before a change.
    /// @param column  from 0; Error 380 for a column that is not there
    virtual std::vector<std::string*> textsOf(std::size_t column) = 0;

    /// Carries out a sort that waits until the order is looked at.
    virtual void finishSort() = 0;

protected:
    ColumnTexts() = default;
    ~ColumnTexts() = default;
    ColumnTexts(const ColumnTexts&) = default;
    ColumnTexts& operator=(const ColumnTexts&) = default;
};

} // namespace tamarok

#pragma GCC visibility pop
