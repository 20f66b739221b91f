#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database.h"
#include "tamarok_embedded/procedures.h"
#include "tamarok_tsql/schema.h"

namespace tamarok::embedded {

/// The tables and views of an open database, temporary tables included. The names are read at once,
/// the columns of a table at its first use.
class SchemaCatalog final : public tsql::Schema {
public:
    explicit SchemaCatalog(Database& database) : database_{database} {}

    const tsql::Table* table(std::string_view name) const override;
    /// The names of all tables and views but the temporary ones, in their order.
    std::vector<std::string> names() const;

    /// Counts the changes of the schema that have been seen; what was translated under an older
    /// number is out of date.
    std::uint64_t generation() const noexcept { return generation_; }

    /// Forgets everything that was read, since the schema has changed or may have.
    void forget();
    /// SET IDENTITY_INSERT. Error 8107 if it is ON for another table.
    void setIdentityInsert(const std::string& table, bool on);
    /// Checks whether another session has changed the schema, and forgets it in that case.
    void refresh();

private:
    struct Entry {
        bool temporary = false;
        std::optional<tsql::Table> table;
    };

    void loadNames() const;
    tsql::Table loadTable(const std::string& name, bool temporary) const;

    Database& database_;
    mutable bool loaded_ = false;
    mutable std::int64_t cookie_ = -1;
    mutable std::map<std::string, Entry, CompareNames> entries_;
    std::uint64_t generation_ = 1;
    mutable std::string identityInsert_; ///< the table that takes values for its identity column; empty for none
};

} // namespace tamarok::embedded
