#include "lookup_source.h"

#include <utility>

#include "ado/first_row.h"
#include "lookup_statement.h"

#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok::dialogs {

void LookupSource::open(std::string statement)
{
    // The rows are read before the former ones are given up: a failure leaves the grid as it was.
    std::shared_ptr<ado::Recordset> opened =
        readsTemporaryTable(statement) ? openTemporary(statement) : openOwn(statement);
    LookupRows rows;
    rows.read(*opened);
    recordset_ = std::move(opened);
    rows_ = std::move(rows);
    statement_ = std::move(statement);
}

std::shared_ptr<ado::Recordset> LookupSource::openTemporary(const std::string& statement) const
{
    auto opened = std::make_shared<ado::Recordset>();
    opened->Open(statement, session_.db_ADO);
    opened->keepRows();
    return opened;
}

std::shared_ptr<ado::Recordset> LookupSource::openOwn(const std::string& statement)
{
    if (!connection_) connection_ = Platform::connection(session_.strConnection);
    auto opened = std::make_shared<ado::Recordset>();
    opened->Open(statement, connection_, ado::CursorType::OpenStatic, ado::LockType::Optimistic);
    return opened;
}

ado::Recordset& LookupSource::recordset() const
{
    if (!recordset_) throw Error{errors::objectNotSet, "The lookup has no rows yet.", "GridHelp"};
    return *recordset_;
}

std::optional<std::size_t> LookupSource::current() const
{
    if (!recordset_) return std::nullopt;
    const std::int64_t position = recordset_->AbsolutePosition();
    return position > 0 ? std::optional{static_cast<std::size_t>(position - 1)} : std::nullopt;
}

void LookupSource::moveTo(std::size_t row)
{
    recordset().AbsolutePosition(static_cast<std::int64_t>(row) + 1);
}

bool LookupSource::reload()
{
    const std::optional<std::size_t> row = current();
    if (!row) return true;
    recordset().Move(0);
    const bool isThere = current() == row;
    if (isThere)
        rows_.readRow(recordset(), *row);
    else
        readRows();
    return isThere;
}

std::string LookupSource::currentText(std::size_t column) const
{
    const ado::FieldCollection& fields = recordset().Fields();
    if (column >= static_cast<std::size_t>(fields.Count())) return {};
    return ado::fieldText(fields.Item(static_cast<std::int32_t>(column)).Value());
}

std::vector<std::string> LookupSource::names() const
{
    const ado::FieldCollection& fields = recordset().Fields();
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(fields.Count()));
    for (std::int32_t column = 0; column < fields.Count(); ++column)
        names.push_back(fields.Item(column).Name());
    return names;
}

std::vector<std::string> LookupSource::baseColumns() const
{
    const ado::FieldCollection& fields = recordset().Fields();
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(fields.Count()));
    for (std::int32_t column = 0; column < fields.Count(); ++column)
        names.push_back(fields.Item(column).BASECOLUMNNAME());
    return names;
}

} // namespace tamarok::dialogs
