#include "link.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <utility>

#include "failures.h"
#include "parameters.h"
#include "result_set.h"
#include "wide_text.h"

#include "tamarok/convert.h"
#include "tamarok/text.h"

namespace tamarok::odbc {

namespace {

constexpr std::uintptr_t loginSeconds = 15;
/// The driver's time-out stands behind the server's: it ends a call that the server does not answer at all.
constexpr std::int32_t netSeconds = 5;

/// PostgreSQL's driver gives numbers for Booleans, long texts in their whole length, and rows in portions with these.
struct DriverOption {
    std::string_view name;
    std::string_view value;
};
constexpr std::array postgresOptions{DriverOption{"BoolsAsChar", "0"}, DriverOption{"UseDeclareFetch", "1"},
                                     DriverOption{"Fetch", "256"}, DriverOption{"MaxVarcharSize", "8000"},
                                     DriverOption{"LFConversion", "0"}};

std::string textInfo(SQLHANDLE connection, SQLUSMALLINT kind)
{
    std::array<SQLWCHAR, 256> text{};
    SQLSMALLINT bytes = 0;
    if (!succeeded(SQLGetInfoW(connection, kind, text.data(), static_cast<SQLSMALLINT>(sizeof text), &bytes)))
        return {};
    return toUtf8(std::span{text}.first(static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR)));
}

/// Drivers do not show passwords in their messages; one that did would not get further than this.
void hidePassword(Error& error, const std::string& password)
{
    if (password.empty()) return;
    for (const std::string& shown : {"=" + password, "={" + text::replaceAll(password, "}", "}}") + "}"})
        error.description = text::replaceAll(error.description, shown, "=***");
}

/// The drivers for SQL Server in the order in which one is taken.
constexpr std::array sqlServerDrivers{"ODBC Driver 18 for SQL Server", "ODBC Driver 17 for SQL Server", "FreeTDS"};

std::vector<std::string> installedDrivers(SQLHANDLE environment)
{
    std::vector<std::string> names;
    std::array<SQLWCHAR, 256> name{};
    std::array<SQLWCHAR, 1024> attributes{};
    SQLSMALLINT length = 0;
    SQLSMALLINT rest = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (succeeded(SQLDriversW(environment, direction, name.data(), static_cast<SQLSMALLINT>(name.size()), &length,
                                 attributes.data(), static_cast<SQLSMALLINT>(attributes.size()), &rest))) {
        names.push_back(toUtf8(std::span{name}.first(static_cast<std::size_t>(length))));
        direction = SQL_FETCH_NEXT;
    }
    return names;
}

/// A statement as it is sent: ended by a zero, since SQLite's driver counts a length in another unit, and by a line
/// end, since PostgreSQL's driver writes behind the text, which may end with a comment.
std::vector<SQLWCHAR> sentText(std::string_view text)
{
    if (text.find('\0') != std::string_view::npos)
        throw Error{errors::statementRefused, "The statement contains the character zero.", std::string{sourceName}};
    std::vector<SQLWCHAR> wide = toWide(text);
    wide.push_back('\n');
    wide.push_back(0);
    return wide;
}

/// A text in the style of ADO names no driver.
void addDriver(std::vector<ado::ConnectionProperty>& properties, SQLHANDLE environment)
{
    const bool named = findProperty(properties, "DRIVER") != nullptr || findProperty(properties, "DSN") != nullptr ||
                       findProperty(properties, "FILEDSN") != nullptr;
    if (named) return;
    const std::vector<std::string> installed = installedDrivers(environment);
    for (const char* const wanted : sqlServerDrivers) {
        if (std::ranges::find(installed, wanted) == installed.end()) continue;
        properties.insert(properties.begin(), {"DRIVER", wanted});
        if (std::string_view{wanted} == "FreeTDS") {
            properties.push_back({"TDS_Version", "7.4"});
            properties.push_back({"ClientCharset", "UTF-8"});
        }
        return;
    }
    throw providerFailure(
        "The connection text names neither Driver nor DSN, and no driver for SQL Server is installed. "
        "Install one (Debian: tdsodbc), or name another one.");
}

} // namespace

// A connection that fails in any step of the opening is closed at once.
Link::Link(const ConnectionTarget& target) : target_{target}, environment_{makeEnvironment()}
{
    addDriver(target_.properties, environment_.get());
    try {
        connect(composeDriverText(target_.properties));
        identify();
        checkTexts();
    } catch (Error& error) {
        hidePassword(error, target_.password);
        close();
        throw;
    }
}

Link::~Link()
{
    close();
}

void Link::connect(const std::string& driverText)
{
    connection_ = ConnectionHandle{environment_.get()};
    SQLSetConnectAttrW(connection_.get(), SQL_ATTR_LOGIN_TIMEOUT, asPointer(loginSeconds), 0);
    std::vector<SQLWCHAR> wide = toWide(driverText);
    const SQLRETURN code =
        SQLDriverConnectW(connection_.get(), nullptr, wide.data(), static_cast<SQLSMALLINT>(wide.size()), nullptr, 0,
                          nullptr, SQL_DRIVER_NOPROMPT);
    if (!succeeded(code)) {
        Error error = failure(readDiagnostics(SQL_HANDLE_DBC, connection_.get()));
        // Whatever the reason, a connection that does not open is no refused statement.
        error.number = errors::providerFailure;
        throw error;
    }
    connected_ = true;
}

/// Finds out which server it is. PostgreSQL's driver is opened again with the options that it needs.
void Link::identify()
{
    const std::string driver = textInfo(connection_.get(), SQL_DRIVER_NAME);
    freetds_ = driver.find("tdsodbc") != std::string::npos;
    traits_ = &traitsOf(serverNamed(textInfo(connection_.get(), SQL_DBMS_NAME)));
    if (server() == Server::SqlServer) {
        const auto rows = read({"SELECT @@VERSION"});
        if (!rows.empty() && convert::toText(rows[0][0]).starts_with("Babelfish"))
            traits_ = &traitsOf(Server::OpenTsql);
    }
    if (!driver.starts_with("psqlodbc") || findProperty(target_.properties, "UseDeclareFetch") != nullptr) return;
    for (const DriverOption& option : postgresOptions)
        if (findProperty(target_.properties, option.name) == nullptr)
            target_.properties.push_back({std::string{option.name}, std::string{option.value}});
    SQLDisconnect(connection_.get());
    connected_ = false;
    connect(composeDriverText(target_.properties));
}

/// The driver manager converts for a driver without wide functions, by the locale of the process. What it makes of a
/// letter that the locale lacks must not get into a database.
void Link::checkTexts()
{
    const bool tsql = traits_->nestsTransactions;
    const auto rows = read({tsql ? "SELECT N'\u00E4\u20AC'" : "SELECT '\u00E4\u20AC'"});
    if (!rows.empty() && convert::toText(rows[0][0]) == "\u00E4\u20AC") return;
    throw providerFailure("The driver does not keep letters beyond ASCII. Set ClientCharset=UTF-8 for FreeTDS; for a "
                          "driver without wide functions run the program under a locale with UTF-8 (LC_ALL=C.UTF-8).");
}

void Link::close() noexcept
{
    if (openResult_ != nullptr) std::exchange(openResult_, nullptr)->abandon();
    if (connected_) SQLDisconnect(connection_.get());
    connected_ = false;
    connection_ = ConnectionHandle{};
}

/// A lost connection is not touched any more: some drivers hang in it.
void Link::requireOpen() const
{
    if (lost_) throw providerFailure("The connection to the server is lost. Close it and open a new one.");
    if (!connected_) throw Error{errors::connectionClosed, "The connection is closed.", std::string{sourceName}};
}

void Link::freeConnection()
{
    requireOpen();
    if (openResult_ != nullptr) std::exchange(openResult_, nullptr)->spool();
    requireOpen(); // the connection may have been lost while the rows were taken
}

// Questions to the catalogue are statements too, and need the connection for themselves.
StatementHandle Link::makeStatement()
{
    freeConnection();
    return StatementHandle{connection_.get()};
}

// Runs up to the first result with columns; counts of the statements before it are skipped. The parameters live in this
// function, so that the statement is freed from them before it is returned.
Executed Link::run(const Request& request)
{
    freeConnection();
    boundWaits(request.timeoutSeconds);
    try {
        StatementHandle statement{connection_.get()};
        if (traits_->secondNet && request.timeoutSeconds > 0)
            SQLSetStmtAttrW(statement.get(), SQL_ATTR_QUERY_TIMEOUT,
                            asPointer(static_cast<std::uintptr_t>(request.timeoutSeconds) + netSeconds), 0);
        BoundParameters parameters{request.parameters};
        parameters.bind(statement.get());
        std::vector<SQLWCHAR> wide = sentText(request.text);
        SQLRETURN code = SQLExecDirectW(statement.get(), wide.data(), SQL_NTS);
        std::int64_t touched = -1;
        // SQL_NO_DATA: the statement has run and changed no row.
        for (bool first = true; first || code != SQL_NO_DATA; first = false) {
            if (!succeeded(code) && code != SQL_NO_DATA)
                throw failure(readDiagnostics(SQL_HANDLE_STMT, statement.get()));
            SQLSMALLINT columns = 0;
            SQLNumResultCols(statement.get(), &columns);
            SQLFreeStmt(statement.get(), SQL_RESET_PARAMS);
            if (columns > 0) return {std::move(statement), touched};
            SQLLEN rows = -1;
            if (succeeded(SQLRowCount(statement.get(), &rows)) && rows >= 0) touched = rows;
            code = SQLMoreResults(statement.get());
        }
        return {StatementHandle{}, touched};
    } catch (Error& error) {
        settle(error);
        throw;
    }
}

std::int64_t Link::runToEnd(const Request& request)
{
    const Executed executed = run(request);
    if (!executed.statement) return executed.touched;
    try {
        return odbc::runToEnd(executed.statement.get(), executed.touched);
    } catch (Error& error) {
        settle(error);
        throw;
    }
}

// SET NOCOUNT ON of the caller would hide the count; the server's variable has it all the same.
std::int64_t Link::changeRows(const Request& request)
{
    if (!traits_->nestsTransactions) return runToEnd(request);
    const std::string text = std::string{request.text} + " SELECT @@ROWCOUNT";
    return convert::toLongLong(read({text, request.parameters, request.timeoutSeconds}).at(0).at(0));
}

std::vector<std::vector<Variant>> Link::read(const Request& request)
{
    Executed executed = run(request);
    std::vector<std::vector<Variant>> rows;
    if (!executed.statement) return rows;
    try {
        ResultSet result{std::move(executed.statement), traits()};
        while (result.fetch()) {
            std::vector<Variant>& row = rows.emplace_back();
            for (std::size_t column = 0; column < result.columns().size(); ++column)
                row.push_back(result.value(column));
        }
    } catch (Error& error) {
        settle(error);
        throw;
    }
    return rows;
}

/// Runs a statement of this object itself, under the limit that the server has been told last.
void Link::command(std::string_view text)
{
    runToEnd({.text = text, .timeoutSeconds = boundSeconds_.value_or(30)});
}

/// Tells the server the limit of its waits when it has changed.
void Link::boundWaits(std::int32_t seconds)
{
    if (boundSeconds_ == seconds || traits_->lockTimeout.empty()) return;
    constexpr std::int64_t mostMilliseconds = 2'147'483'647;
    boundSeconds_ = seconds; // first, since the command comes here again
    const std::int64_t milliseconds = std::min(std::int64_t{seconds} * 1000, mostMilliseconds);
    try {
        command(std::string{traits_->lockTimeout} +
                (seconds == 0 ? std::string{traits_->endlessTimeout} : std::to_string(milliseconds)));
    } catch (...) {
        boundSeconds_.reset();
        throw;
    }
}

// A server that nests transactions counts them itself, and refuses what has no beginning.

// On other servers only the outermost level is a transaction.
void Link::begin()
{
    requireOpen();
    if (traits_->nestsTransactions || depth_ == 0) command(traits_->begin);
    ++depth_;
}

void Link::commit()
{
    requireOpen();
    if (!traits_->nestsTransactions && depth_ == 0) {
        Error error = providerFailure("The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION.");
        error.nativeError = native::commitWithoutBegin;
        throw error;
    }
    if (traits_->nestsTransactions || depth_ == 1) command(traits_->commit);
    depth_ = std::max(depth_ - 1, 0);
}

void Link::rollback()
{
    requireOpen();
    if (!traits_->nestsTransactions && depth_ == 0) {
        Error error = providerFailure("The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION.");
        error.nativeError = native::rollbackWithoutBegin;
        throw error;
    }
    command(traits_->rollback);
    depth_ = 0;
    ++rollbacks_;
    boundSeconds_.reset(); // a rollback may take the setting back too
}

void Link::beginHold()
{
    begin();
}

/// The transaction may have ended already, by the caller or by a failure.
void Link::endHold()
{
    if (!connected_ || lost_) return;
    if (traits_->nestsTransactions)
        command("IF @@TRANCOUNT > 0 COMMIT TRANSACTION");
    else if (depth_ == 1)
        command(traits_->commit);
    depth_ = std::max(depth_ - 1, 0);
}

/// Looks at what a failure did besides: it may have cost the connection, or the transaction.
void Link::settle(Error& error) noexcept
{
    // FreeTDS cannot use a connection any more on which a call has run out of time.
    const bool killed = freetds_ && error.sqlState.starts_with("HYT");
    if (!lost_ && (killed || error.sqlState.starts_with("08") || error.sqlState.starts_with("57P") || isDead())) {
        lost_ = true;
        error.addContext("The connection to the server is lost");
        return;
    }
    if (depth_ == 0 || lost_) return;
    try {
        noteRollback(error);
    } catch (const Error&) {
        lost_ = lost_ || isDead();
    }
}

/// A failure may have rolled the transaction back. PostgreSQL refuses every further statement of it: it ends here.
void Link::noteRollback(Error& error)
{
    const std::int32_t depth = std::exchange(depth_, 0); // what follows must not come here again
    if (server() == Server::PostgreSql) {
        command(traits_->rollback);
    } else if (traits_->nestsTransactions) {
        boundSeconds_.reset();
        const auto rows = read({"SELECT @@TRANCOUNT"});
        if (!rows.empty() && convert::toLong(rows[0][0]) > 0) {
            depth_ = depth;
            return;
        }
    } else {
        depth_ = depth;
        return;
    }
    ++rollbacks_;
    boundSeconds_.reset();
    error.description += " The transaction has been rolled back.";
}

/// What the driver knows of its connection, without asking the server.
bool Link::isDead() const noexcept
{
    SQLUINTEGER dead = SQL_CD_FALSE;
    return connected_ &&
           succeeded(SQLGetConnectAttrW(connection_.get(), SQL_ATTR_CONNECTION_DEAD, &dead, sizeof dead, nullptr)) &&
           dead == SQL_CD_TRUE;
}

} // namespace tamarok::odbc
