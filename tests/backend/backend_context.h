#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/ado.h"

/// What the shared suite must know about a back end. Each back end has one small file: its
/// context, `makeBackendContext`, and a `main` that names the number of cases it must run.
namespace tamarok::ado::backend {

/// Where a back end answers otherwise, and why. Cases that ask for it by name are skipped visibly.
struct Quirk {
    std::string name;
    std::string reason;
};

/// The words of the cases' SQL in which the servers differ; T-SQL unless told otherwise.
struct Words {
    std::string national = "N";                 ///< before a text literal
    std::string noCount = "SET NOCOUNT ON\r\n"; ///< at the start of a batch that reports no counts
    std::string next = "\r\n";                  ///< between two statements of a batch
    std::string rowLock = "WITH (ROWLOCK) ";    ///< behind a table
    std::string topNone = "TOP 0 ";             ///< behind SELECT, for the columns without rows
    std::string limitNone;                      ///< the same at the end of the statement
    std::string yes = "1";                      ///< literals of a column of two values
    std::string no = "0";
};

/// A column whose type a server or its driver tells otherwise.
struct OtherType {
    std::string column;
    DataType type;
    std::int32_t size;
};

class BackendContext {
public:
    virtual ~BackendContext() = default;

    /// A connection of its own session to the database under test. Every call gives a new one.
    virtual ConnectionRef connect() = 0;

    /// CREATE TABLE of the standard columns:
    /// ID (key, counted by the database), SHORT_TEXT nvarchar(40), PLAIN_TEXT varchar(20), FIXED_TEXT
    /// nchar(5), LONG_TEXT ntext, AMOUNT float, WHOLE int, SMALL smallint, TINY tinyint, BIG bigint,
    /// FELLED datetime, ACTIVE bit; all of them may be Null. REQUIRED nvarchar(10) may not, default ''.
    virtual std::string createTable(std::string_view table) const = 0;
    /// CREATE TABLE of one column CODE nvarchar(10), the key.
    virtual std::string createKeyTable(std::string_view table) const = 0;
    /// DROP of a table that may or may not be there.
    virtual std::string dropTable(std::string_view table) const = 0;
    /// A date with time as a literal.
    virtual std::string dateLiteral(std::string_view isoDateTime) const = 0;

    /// Makes a procedure known to `connection` that inserts its two arguments, a text and a whole
    /// number, into SHORT_TEXT and WHOLE of `table`. @return its name
    virtual std::string insertProcedure(Connection& connection, std::string_view table) = 0;

    virtual Words words() const { return {}; }
    virtual std::vector<OtherType> otherTypes() const { return {}; }
    virtual std::vector<Quirk> quirks() const { return {}; }
};

/// Defined once per back end.
std::unique_ptr<BackendContext> makeBackendContext();

/// Part of table names that differs from process to process, so that runs can be parallel.
const std::string& processToken();

/// Exit status of a program whose server is missing; CTest reports it as skipped.
inline constexpr int serverMissing = 77;

/// Runs the suite. Where no filter is given, the numbers of cases that ran and that were skipped must be those given.
/// @return exit status of the program
int runBackendSuite(int argc, char** argv, int expectedRuns, int expectedSkips);

} // namespace tamarok::ado::backend
