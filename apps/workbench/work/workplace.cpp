#include "work/workplace.h"

#include <utility>

#include "session.h"

#include "tamarok/comm_lock.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::workbench {

namespace {

std::string textOrEmpty(const Variant& value)
{
    return value.isNull() ? std::string{} : convert::toText(value);
}

std::int32_t numberOrZero(const Variant& value)
{
    return value.isNull() ? 0 : convert::toLong(value);
}

/// Returns the part of a level's code that all levels below it share: the code without the groups "00" at its end.
std::string_view sharedCode(std::string_view code)
{
    while (code.ends_with("00"))
        code.remove_suffix(2);
    return code;
}

} // namespace

Workplace::Workplace(cli::DatabaseChoice database, Yard& yard) :
    database_{std::move(database)}, yard_{yard}, session_{cli::commandSession(cli::openDatabase(database_))}
{}

Workplace::~Workplace()
{
    logOut();
}

std::vector<Account> Workplace::accounts() const
{
    std::vector<Account> accounts;
    ado::Recordset rows;
    rows.Open(
        "SELECT USERS.ID,ISNULL(USERS.LONGNAME,USERS.NAME),USERS.[PASSWORD],USERS.ID_ACCESS_LEVELS,ACCESS_LEVELS.NAME "
        "FROM USERS LEFT JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = USERS.ID_ACCESS_LEVELS "
        "WHERE ISNULL(USERS.DISABLE,0)=0 ORDER BY 2",
        session_.db_ADO);
    for (; !rows.AtEOF(); rows.MoveNext()) {
        const auto field = [&rows](std::int32_t column) { return rows.Fields().Item(column).Value(); };
        accounts.push_back({convert::toLong(field(0)), textOrEmpty(field(1)), !textOrEmpty(field(2)).empty(),
                            numberOrZero(field(3)), textOrEmpty(field(4))});
    }
    return accounts;
}

bool Workplace::isPassword(const Account& account, const std::string& password) const
{
    ado::Recordset rows;
    rows.Open("SELECT [PASSWORD] FROM USERS WHERE ID = " + std::to_string(account.id), session_.db_ADO);
    return !rows.AtEOF() && textOrEmpty(rows.Fields().Item(0).Value()) == password;
}

bool Workplace::logIn(const Account& account)
{
    logOut();
    session_.bolLan = true;
    session_.ID_User = account.id;
    session_.ID_Access_Levels = account.level;
    session_.strID_Access_Levels = visibleLevels(account.level);
    dbLock_ = cli::openDatabase(database_);
    loggedIn_ = Comm_Lock{}.LogIn(&rsLock_, session_, dbLock_);
    if (loggedIn_) user_ = account;
    return loggedIn_;
}

void Workplace::logOut() noexcept
{
    if (!std::exchange(loggedIn_, false)) return;
    try {
        Comm_Lock{}.LockOff("", "", session_);
        Comm_Lock{}.LogOut(&rsLock_, "True");
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): the next login removes what remains
    }
}

/// Returns the ids of the user's level and of all levels below it.
std::string Workplace::visibleLevels(std::int32_t level) const
{
    std::vector<std::pair<std::string, std::string>> codes;
    std::string own;
    ado::Recordset rows;
    for (rows.Open("SELECT ID,ACCESS_LEVELS FROM ACCESS_LEVELS ORDER BY ID", session_.db_ADO); !rows.AtEOF();
         rows.MoveNext()) {
        std::string id = convert::toText(rows.Fields().Item(0).Value());
        std::string code = textOrEmpty(rows.Fields().Item(1).Value());
        if (id == std::to_string(level)) own = code;
        codes.emplace_back(std::move(id), std::move(code));
    }
    const std::string_view shared = sharedCode(own);
    std::string ids;
    for (const auto& [id, code] : codes)
        if (id == std::to_string(level) || (!own.empty() && code.starts_with(shared)))
            ids += (ids.empty() ? "" : ",") + id;
    return ids;
}

TmkVar Workplace::sessionOver(const ado::ConnectionRef& connection) const
{
    TmkVar session = session_;
    session.db_ADO = connection;
    return session;
}

Worker::Open Workplace::opener() const
{
    return [database = database_] { return cli::openForReading(database); };
}

std::string Workplace::databaseName() const
{
    return database_.odbc ? session_.strConnection : database_.file;
}

} // namespace tamarok::workbench
