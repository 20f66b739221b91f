#include "text_joins.h"

#include <memory>
#include <sqlite3.h>
#include <string>

#include "database.h"
#include "failures.h"

namespace tamarok::embedded {

namespace {

// SQLite's header has the number of the control, but no names for its bits. 0x80000 is SQLITE_BloomFilter in all
// versions that have these filters; `requireCompleteTextJoins` checks the effect.
constexpr unsigned int bloomFilters = 0x00080000;

// Each of four texts "x    " meets each of four texts "X". The recursive source keeps SQLite from knowing how few the
// rows are, so that it builds an index.
constexpr const char* probe = "WITH RECURSIVE N(I) AS (VALUES(1) UNION ALL SELECT I+1 FROM N WHERE I<4),"
                              "A(X) AS MATERIALIZED (SELECT 'x    ' FROM N),B(Y) AS MATERIALIZED (SELECT 'X' FROM N) "
                              "SELECT count(B.Y) FROM A LEFT JOIN B ON A.X=B.Y COLLATE TAMAROK";
constexpr int completeCount = 16;

} // namespace

void switchOffJoinFilters(sqlite3* database)
{
    sqlite3_test_control(SQLITE_TESTCTRL_OPTIMIZATIONS, database, bloomFilters);
}

void requireCompleteTextJoins(sqlite3* database)
{
    sqlite3_stmt* prepared = nullptr;
    int code = sqlite3_prepare_v2(database, probe, -1, &prepared, nullptr);
    const Compiled statement{prepared};
    if (code == SQLITE_OK) {
        code = sqlite3_step(statement.get());
    }
    if (code != SQLITE_ROW) {
        throw failure(database, code, {});
    }
    if (sqlite3_column_int(statement.get(), 0) != completeCount) {
        throw failure(native::cannotOpen,
                      std::string{"SQLite "} + sqlite3_libversion() +
                          " cannot be used: its joins of texts lose rows where trailing blanks differ, and the filter "
                          "that causes it cannot be switched off.");
    }
}

} // namespace tamarok::embedded
