#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok_tsql/names.h"
#include "tamarok_tsql/schema.h"

namespace tamarok::odbc {

class Link;

/// The tables of the server as the driver tells them. Each is read at its first use and kept until a name is not found
/// in it: another session may have changed it since.
class Catalogue final : public tsql::Schema {
public:
    explicit Catalogue(Link& link) : link_{link} {}

    /// The columns of a table or view, with their types. nullptr for an unknown one.
    const tsql::Table* table(std::string_view name) const override;

    /// The columns of the table's primary key, or of its first unique index; empty for a table without either.
    const std::vector<std::string>& key(std::string_view table) const;
    /// The column that the server numbers; empty for none.
    std::string identity(std::string_view table) const;

    void forget() const { tables_.clear(); }
    Link& link() const noexcept { return link_; }

private:
    struct Less {
        using is_transparent = void;
        bool operator()(std::string_view a, std::string_view b) const { return tsql::nameLess(a, b); }
    };
    struct Entry {
        std::optional<tsql::Table> table;
        std::optional<std::vector<std::string>> key;
    };

    Entry& entry(std::string_view name) const;
    std::optional<tsql::Table> readTable(std::string_view name) const;
    std::vector<std::string> readKey(std::string_view name) const;
    void markIdentity(tsql::Table& table) const;

    Link& link_;
    mutable std::map<std::string, Entry, Less> tables_;
};

} // namespace tamarok::odbc
