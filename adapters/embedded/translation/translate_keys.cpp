#include <algorithm>

#include "translation/translator.h"

/// Identity columns, and what SQLite needs to treat keys as the server does.
namespace tamarok::embedded::translation {

namespace {

/// Position of the identity column, -1 without one.
std::int32_t identityColumn(const Table& table)
{
    const auto found = std::ranges::find_if(table.columns, &TableColumn::identity);
    return found == table.columns.end() ? -1 : static_cast<std::int32_t>(found - table.columns.begin());
}

} // namespace

void Translator::identityInsert(const Name& name)
{
    const Table* const table = schema_.table(name.text);
    if (table == nullptr) {
        source_.refuse(name.offset, 1088,
                       "Cannot find the object '" + std::string(name.text) +
                           "' because it does not exist or you do not have permissions.",
                       "42S02");
    }
    if (identityColumn(*table) < 0) {
        source_.refuse(name.offset, 8106,
                       "Table '" + table->name +
                           "' does not have the identity property. Cannot perform SET operation.");
    }
    step_.kind = Step::Kind::IdentityInsert;
    step_.target = table->name;
}

/// With IDENTITY_INSERT the statement gives the numbers, otherwise the database does.
void Translator::checkIdentity(const InsertStatement& insert, const Table& table, std::span<const std::int32_t> columns)
{
    const std::int32_t identity = identityColumn(table);
    if (identity < 0) return;
    const bool given = std::ranges::find(columns, identity) != columns.end();
    const std::size_t values = insert.query != nullptr ? insert.query->outputs.size()
                               : insert.rows.empty()   ? 0
                                                       : insert.rows[0].size();
    if (insert.columns.empty() && !insert.defaults && values == table.columns.size()) {
        source_.refuse(insert.table.offset, 8101,
                       "An explicit value for the identity column in table '" + table.name +
                           "' can only be specified when a column list is used and IDENTITY_INSERT is ON.");
    }
    if (given != table.identityInsert) {
        source_.refuse(insert.table.offset, given ? 544 : 545, identityRefusal(given, table.name), "23000");
    }
    step_.flag = !given;
}

/// The text is written only for an UPDATE that assigns to a key, since no other one needs it.
void Translator::newRows(const UpdateStatement& update, const Source& target, bool joined)
{
    std::vector<const TableColumn*> assigned;
    for (const Assignment& assignment : update.assignments) {
        const auto index = static_cast<std::size_t>(binder_.requireColumn(*target.table, assignment.column));
        assigned.push_back(&target.table->columns[index]);
    }
    if (std::ranges::none_of(assigned, &TableColumn::inKey)) return;
    Emitter rows(source_, order_, 256);
    const Emitter::Joins joins = nestedJoins(rows, update, target, joined);
    rows.write("SELECT ");
    rows.rowKey(target);
    for (std::size_t i = 0; i < assigned.size(); ++i) {
        rows.write(", ");
        rows.assigned(*update.assignments[i].value, *assigned[i], *target.table);
        step_.assigned.push_back({assigned[i]->name, assigned[i]->inKey});
    }
    rows.write(" FROM ");
    rows.rows(update.from, update.where, joined ? nullptr : &target);
    step_.newRows = std::move(rows.text());
    step_.newRowsParameters = std::move(rows.parameters());
}

/// SQLite lets any number of Nulls into a unique key, the server one. A second index covers the rows with a Null in the
/// key; there each column is represented by its value and by whether it is Null.
/// @param kind  "constraint" or "index", from which the error number follows
void Translator::oneNull(const Table& table, std::span<const std::int32_t> columns, std::string_view kind,
                         std::string_view name)
{
    const auto column = [&table](std::int32_t index) -> const TableColumn& {
        return table.columns[static_cast<std::size_t>(index)];
    };
    if (std::ranges::none_of(columns, [&](std::int32_t index) { return column(index).nullable; })) return;
    emitter_.write("; CREATE UNIQUE INDEX ");
    if (table.name.starts_with('#')) emitter_.write("temp.");
    emitter_.writeName(oneNullIndexName(kind, table.name, name));
    emitter_.write(" ON ");
    emitter_.writeName(table.name);
    emitter_.write(" (");
    for (const std::int32_t index : columns) {
        if (index != columns.front()) emitter_.write(", ");
        if (column(index).nullable) {
            emitter_.write("coalesce(");
            emitter_.writeName(column(index).name);
            emitter_.write(column(index).binary ? ", 0) COLLATE BINARY, " : ", 0) COLLATE TAMAROK, ");
            emitter_.writeName(column(index).name);
            emitter_.write(" IS NULL");
        } else {
            emitter_.writeName(column(index).name);
        }
    }
    emitter_.write(") WHERE ");
    bool first = true;
    for (const std::int32_t index : columns) {
        if (!column(index).nullable) continue;
        if (!first) emitter_.write(" OR ");
        first = false;
        emitter_.writeName(column(index).name);
        emitter_.write(" IS NULL");
    }
}

} // namespace tamarok::embedded::translation

namespace tamarok::embedded {

std::string identityRefusal(bool given, std::string_view table)
{
    return std::string(given ? "Cannot insert explicit value" : "Explicit value must be specified")
        .append(" for identity column in table '")
        .append(table)
        .append("' when IDENTITY_INSERT is set to ")
        .append(given ? "OFF." : "ON.");
}

std::string oneNullIndexName(std::string_view kind, std::string_view table, std::string_view key)
{
    return std::string(oneNullPrefix).append(kind).append(".").append(table).append(".").append(key);
}

} // namespace tamarok::embedded
