#include "key_moves.h"

#include <string>

#include "column_types.h"
#include "failures.h"
#include "parameters.h"

namespace tamarok::embedded {

namespace {

/// Sets a switch of SQLite for a while.
class Switched {
public:
    Switched(const Database& database, std::string_view name) : database_{database}, name_{name}
    {
        database_.run("PRAGMA " + name_ + "=ON");
    }
    Switched(const Switched&) = delete;
    Switched& operator=(const Switched&) = delete;
    ~Switched() { sqlite3_exec(database_.handle(), ("PRAGMA " + name_ + "=OFF").c_str(), nullptr, nullptr, nullptr); }

private:
    const Database& database_;
    std::string name_;
};

/// The temporary table of the new values: the row key "k" and a column for each assignment. Its columns have no types,
/// so that every value stays as it is.
constexpr std::string_view newRows = "temp.\"~new rows\"";

std::string columnsOf(const Step& update)
{
    std::string columns;
    for (std::size_t i = 1; i <= update.assigned.size(); ++i) {
        columns += ",c" + std::to_string(i);
    }
    return columns;
}

/// A join may give a row several times; the first one counts.
void readNewRows(const Database& database, const Step& update, std::span<const ado::Parameter> parameters)
{
    const std::string table{newRows};
    database.run("DROP TABLE IF EXISTS " + table + "; CREATE TABLE " + table + "(k INTEGER PRIMARY KEY" +
                 columnsOf(update) + ")");
    const Compiled insert = database.compile("INSERT OR IGNORE INTO " + table + " " + update.newRows);
    bindParameters(insert.get(), update.newRowsParameters, parameters);
    while (database.step(insert.get())) {}
}

/// The stand-in of a key is a binary value with the row's number, which no column of the server's types can hold beside
/// others of its kind. Rows whose key stays keep it, so that references to it are not touched.
void parkKeys(const Database& database, const Step& update)
{
    std::string assignments;
    std::string changed;
    for (std::size_t i = 0; i < update.assigned.size(); ++i) {
        if (!update.assigned[i].inKey) {
            continue;
        }
        const std::string column = quoted(update.assigned[i].column);
        assignments += (assignments.empty() ? "" : ",") + column + "=CAST('~'||t.rowid AS BLOB)";
        changed += (changed.empty() ? "t." : " OR t.") + column + " IS NOT u.c" + std::to_string(i + 1);
    }
    // A CHECK constraint rules the column's values, not the stand-ins.
    const Switched unchecked{database, "ignore_check_constraints"};
    database.run("UPDATE " + quoted(update.target) + " AS t SET " + assignments + " FROM " + std::string{newRows} +
                 " AS u WHERE t.rowid=u.k AND (" + changed + ")");
}

void assignNewRows(const Database& database, const Step& update)
{
    std::string assignments;
    for (std::size_t i = 0; i < update.assigned.size(); ++i) {
        assignments += (i == 0 ? "" : ",") + quoted(update.assigned[i].column) + "=u.c" + std::to_string(i + 1);
    }
    database.run("UPDATE " + quoted(update.target) + " AS t SET " + assignments + " FROM " + std::string{newRows} +
                 " AS u WHERE t.rowid=u.k");
}

bool hasBrokenReference(const Database& database)
{
    int pending = 0;
    int highest = 0;
    sqlite3_db_status(database.handle(), SQLITE_DBSTATUS_DEFERRED_FKS, &pending, &highest, 0);
    return pending != 0;
}

} // namespace

void moveKeys(const Database& database, const Step& update, std::span<const ado::Parameter> parameters)
{
    // While keys have stand-ins, the references to them are broken.
    const Switched deferred{database, "defer_foreign_keys"};
    readNewRows(database, update, parameters);
    parkKeys(database, update);
    assignNewRows(database, update);
    if (hasBrokenReference(database)) {
        throw failure(native::checkFailed, "The statement conflicted with a FOREIGN KEY constraint.");
    }
    database.run("DROP TABLE " + std::string{newRows});
}

} // namespace tamarok::embedded
