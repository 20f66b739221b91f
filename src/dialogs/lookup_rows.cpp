#include "lookup_rows.h"

#include <utility>

#include "ado/first_row.h"

namespace tamarok::dialogs {

namespace {

bool holdsNumber(const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Integer:
    case Variant::Kind::Long:
    case Variant::Kind::LongLong:
    case Variant::Kind::Double: return true;
    default: return false;
    }
}

} // namespace

void LookupRows::read(const ado::Recordset& recordset)
{
    values_.clear();
    count_ = 0;
    columns_ = static_cast<std::size_t>(recordset.Fields().Count());
    const std::shared_ptr<ado::Recordset> all = recordset.Clone();
    if (all->AtEOF()) return;
    values_ = std::move(all->GetRows().elements());
    count_ = values_.size() / columns_;
}

void LookupRows::readRow(const ado::Recordset& recordset, std::size_t index)
{
    if (index >= count_) return;
    for (std::size_t column = 0; column < columns_; ++column)
        values_[index * columns_ + column] = recordset.Fields().Item(static_cast<std::int32_t>(column)).Value();
}

std::string LookupRows::text(std::size_t row, std::size_t column) const
{
    return ado::fieldText(value(row, column));
}

bool LookupRows::isNumber(std::size_t column) const
{
    for (std::size_t row = 0; row < count_; ++row) {
        const Variant& cell = value(row, column);
        if (!cell.isNull()) return holdsNumber(cell);
    }
    return false;
}

} // namespace tamarok::dialogs
