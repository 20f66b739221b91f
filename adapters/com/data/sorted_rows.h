#pragma once

#include <memory>
#include <string>
#include <vector>

#include "forwarding_object.h"

#include "tamarok/ado.h"

namespace tamarok::data {

/// The rows of a static recordset in another order, as its property Sort asks for it. Its moves, searches and arrays of
/// rows go by this order; all other members are those of the recordset, which stands on the same row.
class SortedRows final : public WithForwarding<SortedRows> {
public:
    /// Sorts all rows and moves to the first one. Null comes first; texts go by the code points of their capital
    /// letters.
    /// @param order  "COLUMN [ASC|DESC], ..."; a name may stand in brackets
    /// Errors: 5 for an order of another form, 3265 for an unknown column, 3251 for rows that cannot be moved through.
    SortedRows(std::shared_ptr<ado::Recordset> rows, std::string_view order);

    static std::span<const Member<SortedRows>> members() noexcept;

    std::string_view typeName() const override { return "Recordset"; }

    bool atEOF() const noexcept { return at_ >= count(); }
    bool atBOF() const noexcept { return at_ < 0 || count() == 0; }
    /// Moves as Recordset::Move does. Error 3021 beyond the ends.
    void move(std::int64_t rows);
    /// Moves to a row by its index from 0; -1 is before the first one, the number of rows behind the last one.
    void moveTo(std::int64_t index);
    std::int64_t count() const noexcept { return static_cast<std::int64_t>(marks_.size()); }
    std::int64_t position() const noexcept;
    VariantArray takeRows(std::int64_t rows);
    void find(std::string_view criterion, std::int64_t skip, bool backward);
    void moveToMark(const Variant& mark);
    void removeRow();
    /// Puts the current row, which is new, behind all others.
    void addRow();

protected:
    Object& target() const override { return *rows_; }
    std::shared_ptr<ErrorList> failures() const override { return nullptr; }

private:
    void requireRow() const;
    std::vector<Variant> marksOf(std::string_view criterion);

    std::shared_ptr<ado::Recordset> rows_;
    std::vector<Variant> marks_; ///< bookmarks in the order
    std::int64_t at_ = 0;
    bool removed_ = false; ///< the row before `at_` was the current one and has been deleted
};

} // namespace tamarok::data
