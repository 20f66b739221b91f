#include "row_writer.h"

#include <utility>

#include "literals.h"

namespace tamarok::database {
namespace {

/// A VALUES clause takes 1000 rows. Statements of this size are the fastest on the open server; see
/// bench_transfer_loading.
constexpr std::size_t mostRows = 1000;
constexpr std::size_t mostBytes = 128 * 1024;

} // namespace

RowWriter::RowWriter(Store& store, const tsql::TableDefinition& table, std::vector<RowColumn> columns) :
    store_{store}, table_{tsql::bracketed(table.name)}, columns_{std::move(columns)},
    hasIdentity_{table.identity() != nullptr}, front_{insertText(table_, columns_)}
{
    if (hasIdentity_) execute("SET IDENTITY_INSERT " + table_ + " ON");
    if (store_.takesManyRows()) return;
    std::vector<std::string> names;
    std::vector<BulkInsert::Column> parameters;
    names.reserve(columns_.size());
    for (const RowColumn& column : columns_) {
        names.push_back(tsql::bracketed(column.name));
        parameters.push_back({names.back(), column.type});
    }
    single_ = std::make_unique<BulkInsert>(*store_.connection(), table_, parameters);
}

void RowWriter::write(std::span<const Variant> row)
{
    if (single_ != nullptr) {
        for (std::size_t i = 0; i < row.size(); ++i)
            (*single_)[i] = row[i];
        single_->insert();
        return;
    }
    statement_ += rows_ == 0 ? front_ : ",\n";
    appendRow(statement_, row, columns_);
    if (++rows_ == mostRows || statement_.size() >= mostBytes) send();
}

void RowWriter::finish()
{
    send();
    if (hasIdentity_) execute("SET IDENTITY_INSERT " + table_ + " OFF");
}

void RowWriter::send()
{
    if (rows_ == 0) return;
    execute(statement_);
    statement_.clear();
    rows_ = 0;
}

std::string RowWriter::insertText(const std::string& table, const std::vector<RowColumn>& columns)
{
    std::string text = "INSERT INTO " + table + " (";
    for (const RowColumn& column : columns)
        text.append(&column == columns.data() ? "" : ", ").append(tsql::bracketed(column.name));
    return text + ") VALUES\n";
}

void RowWriter::appendRow(std::string& text, std::span<const Variant> row, const std::vector<RowColumn>& columns)
{
    text += '(';
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i != 0) text += ',';
        appendLiteral(text, row[i], columns[i].type);
    }
    text += ')';
}

} // namespace tamarok::database
