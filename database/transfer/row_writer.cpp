#include "row_writer.h"

#include <algorithm>
#include <utility>

#include "json_rows.h"
#include "literals.h"

namespace tamarok::database {
namespace {

/// A VALUES clause takes 1000 rows. Larger statements are not faster; see bench_transfer_loading.
constexpr std::size_t mostRows = 1000;
constexpr std::size_t mostBytes = std::size_t{1} << 17U;

/// About the bytes of a literal.
std::size_t bytesOf(const Variant& value)
{
    constexpr std::size_t bytesOfNumber = 12;
    if (value.isNull()) return 1;
    return value.kind() == Variant::Kind::String ? value.asString().size() + 4 : bytesOfNumber;
}

/// The columns that a statement names. Most columns of a wide table are Null in all rows of a statement; the server
/// reads their literals as slowly as any others.
std::vector<std::size_t> usedColumns(std::span<const std::vector<Variant>> rows, const std::vector<bool>& omittable)
{
    std::vector<std::size_t> used;
    for (std::size_t i = 0; i < omittable.size(); ++i) {
        const bool isUsed =
            !omittable[i] || std::ranges::any_of(rows, [i](const auto& row) { return !row[i].isNull(); });
        if (isUsed) used.push_back(i);
    }
    if (used.empty()) used.push_back(0);
    return used;
}

} // namespace

RowWriter::RowWriter(Store& store, const tsql::TableDefinition& table, std::vector<RowColumn> columns) :
    store_{store}, table_{tsql::bracketed(table.name)}, columns_{std::move(columns)}, hasIdentity_{table.identity() !=
                                                                                                   nullptr}
{
    for (const tsql::DefinedColumn& column : table.columns)
        omittable_.push_back(column.defaultValue.empty());
    if (hasIdentity_) execute("SET IDENTITY_INSERT " + table_ + " ON");
    if (store_.rowForm() != RowForm::Parameters) return;
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
    for (const Variant& value : row)
        bytes_ += bytesOf(value);
    rows_.emplace_back(row.begin(), row.end());
    if (rows_.size() == mostRows || bytes_ >= mostBytes) send();
}

void RowWriter::finish()
{
    send();
    if (hasIdentity_) execute("SET IDENTITY_INSERT " + table_ + " OFF");
}

void RowWriter::send()
{
    if (rows_.empty()) return;
    const bool asJson = store_.rowForm() == RowForm::Json && jsonHolds(rows_, columns_);
    execute(asJson ? jsonStatementOf(table_, rows_, columns_, usedColumns(rows_, omittable_))
                   : statementOf(table_, rows_, columns_, omittable_));
    rows_.clear();
    bytes_ = 0;
}

std::string RowWriter::statementOf(const std::string& table, std::span<const std::vector<Variant>> rows,
                                   const std::vector<RowColumn>& columns, const std::vector<bool>& omittable)
{
    const std::vector<std::size_t> used = usedColumns(rows, omittable);
    std::string text = "INSERT INTO " + table + " (";
    for (const std::size_t i : used)
        text.append(i == used.front() ? "" : ", ").append(tsql::bracketed(columns[i].name));
    text += ") VALUES\n";
    for (const std::vector<Variant>& row : rows) {
        text += &row == rows.data() ? "(" : ",\n(";
        for (const std::size_t i : used) {
            if (i != used.front()) text += ',';
            appendLiteral(text, row[i], columns[i].type);
        }
        text += ')';
    }
    return text;
}

} // namespace tamarok::database
