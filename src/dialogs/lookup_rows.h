#pragma once

#include <cstddef>
#include <string>

#include "tamarok/ado.h"
#include "tamarok/lookup_window.h"

namespace tamarok::dialogs {

/// The rows of a lookup, read at once: the grid shows them and the search walks them without moving the recordset. That
/// is 3 times as fast as walking a clone of it, and 10 times as fast as GetRows at each key (bench: typeCharacter,
/// searchClone, searchArray).
class LookupRows final : public GridRows {
public:
    /// Reads all rows of a recordset through a clone, so that it keeps its position.
    void read(const ado::Recordset& recordset);
    /// Takes the values of the recordset's current row over, in place of those of row `index`.
    void readRow(const ado::Recordset& recordset, std::size_t index);

    std::size_t count() const override { return count_; }
    std::size_t columns() const override { return columns_; }
    std::string text(std::size_t row, std::size_t column) const override;
    /// Decided by the first value that is not Null.
    bool isNumber(std::size_t column) const override;

    const Variant& value(std::size_t row, std::size_t column) const { return values_[row * columns_ + column]; }

private:
    std::vector<Variant> values_; ///< row after row
    std::size_t count_ = 0;
    std::size_t columns_ = 0;
};

} // namespace tamarok::dialogs
