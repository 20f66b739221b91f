#include "library_statements.h"

#include <map>
#include <memory>
#include <set>

#include "catalogue/table_file.h"
#include "lists/list_views.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/comm_lock.h"
#include "tamarok/comm_set.h"
#include "tamarok/comm_sql.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/list_catalogue.h"
#include "tamarok/text.h"

namespace tamarok::database::test {

namespace {

using tamarok::test::ListOnForm;

std::string firstCode(const std::string& statement, const ado::ConnectionRef& sample)
{
    ado::Recordset offered;
    offered.Open(statement, sample);
    return offered.AtEOF() ? std::string{} : convert::toText(offered.Fields().Item(0).Value());
}

/// The columns of the log list; 980 lacks an operand, as the contract requires.
std::vector<std::int16_t> logColumns()
{
    constexpr std::int16_t invalidText = 980;
    std::vector<std::int16_t> ids;
    for (const catalogue::ColumnInfo& column : catalogue::columnsOf("LOG"))
        if (column.id != invalidText) ids.push_back(column.id);
    return ids;
}

/// Composes the statements of a log list.
class LogLists {
public:
    LogLists(TmkVar session, std::string version) : session_{std::move(session)}, version_{std::move(version)} {}

    std::string detail(const std::vector<std::int16_t>& ids) const
    {
        return "SELECT " + select(ids, false) + " FROM " + from(ids);
    }
    std::string aggregated(std::int16_t id) const
    {
        const std::string group = csel_.GetGroupByClause2(id, version_, session_);
        return "SELECT " + select({id}, true) + " FROM " + from({id}) + (group.empty() ? "" : " GROUP BY " + group) +
               csel_.OrderBy("1", csel_.GetOrderByClause2(id, version_, session_));
    }

private:
    std::string from(const std::vector<std::int16_t>& ids) const
    {
        std::string body;
        for (const std::int16_t id : ids)
            body = csel_.GetFrom("LOG", id, body, version_, session_);
        return body;
    }
    std::string select(const std::vector<std::int16_t>& ids, bool grouped) const
    {
        std::string selected;
        return csel_.CorrectStrSelect("LOG", ids, selected, "NULL", version_, session_, "", from(ids), grouped);
    }

    TmkVar session_;
    std::string version_;
    Comm_CSel csel_;
};

/// Runs operations and keeps what they send, under the name that was set last.
class Record {
public:
    explicit Record(const ado::ConnectionRef& connection) : connection_{connection}
    {
        connection_->listen([this](std::string_view text) {
            sent_.push_back({name_, std::string{text}, FixedStatement::Expect::Runs});
        });
    }
    ~Record() { connection_->listen({}); }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    template <class Action>
    void run(std::string_view name, Action&& action)
    {
        name_ = name;
        action();
    }
    std::vector<FixedStatement> take() { return std::move(sent_); }

private:
    ado::ConnectionRef connection_;
    std::string name_;
    std::vector<FixedStatement> sent_;
};

void runLocks(Record& record, TmkVar session)
{
    const Comm_Lock locks;
    session.bolLan = true;
    ado::Recordset row;
    record.run("login", [&] { locks.LogIn(&row, session, session.db_ADO); });
    record.run("object lock", [&] { locks.LockOn("LISTE", "'4711'", session); });
    record.run("object lock again", [&] { locks.LockOn("LISTE", "'4711'", session); });
    record.run("lock of an invoice", [&] { locks.LockRechnung("R1", "R", session); });
    record.run("release of an invoice", [&] { locks.UnLockRechnung("R1", "R", session); });
    record.run("release", [&] { locks.LockOff("LISTE", "'4711'", session); });
    record.run("release of all", [&] { locks.LockOff("", "", session); });
    record.run("logout", [&] { locks.LogOut(&row, "True"); });
}

void runRights(Record& record, const TmkVar& session)
{
    const Comm_Lock rights;
    const Comm_SQL users;
    std::vector<std::string> hidden;
    for (const std::string_view node : {"RECHNUNG_BB1", "HV_FREIGABE", "TMK1225", "2PVK", "1ACL"}) {
        record.run("visible node", [&] { rights.NodeVisibleCheck(session, hidden, node); });
        record.run("writable node", [&] { rights.NodeWrite(session, node); });
    }
    record.run("level", [&] { users.ACL(session); });
    record.run("user", [&] { users.USERS_NAME(session); });
    record.run("user by name", [&] { users.USERS(session, "HUBER"); });
    record.run("grants", [&] { users.ONETOMANY_USERS_ACL_cnt(session); });
    for (const std::int16_t type : {std::int16_t{1}, std::int16_t{2}}) {
        const std::string text = users.ACL_str(session, type, 5);
        if (text.starts_with("SELECT ")) record.run("levels", [&] { firstCode(text, session.db_ADO); });
    }
}

void runOptions(Record& record, const TmkVar& session)
{
    const Comm_Get get;
    const Comm_Set set;
    record.run("option, number", [&] { get.GetOptionenNumber(session, "KUBATURPLACE"); });
    record.run("option, double", [&] { get.GetOptionenDouble(session, "UFAKTNAT_EURO"); });
    record.run("option, text", [&] { get.GetOptionenText(session, "ORDERBY"); });
    record.run("option, date", [&] { get.GetOptionenDate(session, "DATE_FROM"); });
    record.run("option without row", [&] { get.GetOptionenNumber(session, "TEST_WITHOUT_ROW"); });
    record.run("option, written", [&] { set.SetOptionenNumber(session, "TEST_NUMBER", 7); });
    record.run("option, written", [&] { set.SetOptionenDouble(session, "TEST_DOUBLE", 1.25); });
    record.run("option, written", [&] { set.SetOptionenText(session, "TEST_TEXT", "Lärche '1'"); });
    record.run("option, written", [&] { set.SetOptionenDate(session, "TEST_DATE", Variant{makeDate(2024, 3, 5)}); });
    record.run("option, read back", [&] { get.GetOptionenText(session, "TEST_TEXT"); });
    record.run("option, read back", [&] { get.GetOptionenDate(session, "TEST_DATE"); });
    record.run("setting of a form", [&] { get.GetKonfNumber(session.db_ADO, "TEST", 3); });
}

void runTimber(Record& record, const TmkVar& session)
{
    const Comm_Get get;
    const Comm_Set set;
    const ado::ConnectionRef& connection = session.db_ADO;
    for (const std::string_view species : {"FI", "TA", "BU", "LA"}) {
        for (const std::string_view diameter : {"12,5", "28", "55,5"}) {
            record.run("bark", [&] {
                set.CalculateRinde(session, "0", species, "cm", diameter, true, "-1", "15.03.2024");
                set.CalculateRinde(session, "0", species, "cm", diameter, true, "0", "15.03.2024");
            });
            record.run("strength class", [&] {
                set.MakeStkl("", diameter, "cm", "1", connection, false, true, false, "");
                set.MakeStkl("", diameter, "cm", "1", connection, true, false, false, "1,2,3");
            });
        }
        for (const std::string_view field : {"ATO_UFA", "LUT_UFA", "RM_UFA", "STK100_UFA"})
            record.run("conversion factor", [&] {
                get.GetHolzTabValue(session, {}, field, 1, species, "BL", "rm", "B", "2a", true, "MR", 4.0);
            });
    }
    record.run("bark key", [&] { get.GetCalculationRinden("MR", connection); });
    record.run("assortment", [&] { get.GetCalculationSTKL("BL", connection); });
    record.run("classes of an assortment", [&] { get.GetCalculationSTKL_ID("BL", connection); });
    record.run("convertible pairs", [&] {
        TmkVar other = session;
        other.strCustomer = "SACHSEN";
        Variant cache;
        set.MengeCalc(other, cache, "1", "1");
    });
    for (const std::string_view unit : {"1", "2", "3", "5"}) {
        const std::string quantity = Comm_CSel{}.MengeSQL(session, false, "R", unit, "0.00");
        record.run("quantities", [&] {
            ado::Recordset rows;
            rows.Open("SELECT LOGS.ID_LOG," + quantity +
                          " AS MENGE FROM LOGS INNER JOIN LOGS_RECH ON LOGS.ID_LOG = LOGS_RECH.ID_LOG",
                      connection);
        });
    }
    record.run("volume classes",
               [&] { set.CalculateKubaturKlasse(connection, "SELECT ID_LOG FROM LOGS WHERE STK > 1", false); });
    record.run("archive", [&] { set.Set_Logs_Archiv("STK > 1", connection, false); });
}

} // namespace

std::vector<FixedStatement> selectionStatements(const ado::ConnectionRef& sample)
{
    TmkVar session;
    session.db_ADO = sample;
    const auto statement = [&](const std::string& key, const std::string& fields) {
        return Comm_Set{}.CreateSQL(session, key, text::replaceAll(fields, "|", "\t"));
    };
    std::map<std::string, std::string> lists;
    const auto rows = tamarok::test::readTable("selection_fields.tsv");
    for (const auto& row : rows)
        lists[row.at(0)] = row.at(1);
    std::vector<FixedStatement> all;
    for (const auto& row : rows) {
        std::string code;
        if (!row.at(2).empty()) code = firstCode(statement(row.at(2), lists.at(row.at(2))), sample);
        all.push_back({row.at(0), statement(row.at(0), text::replaceAll(row.at(1), "{code}", code))});
    }
    return all;
}

std::vector<FixedStatement> listStatements(const ado::ConnectionRef& sample)
{
    TmkVar session;
    session.db_ADO = sample;
    session.strDateFormat = "YYYY-MM-DD";
    session.strLanguage = "GERMAN";
    std::vector<FixedStatement> all;
    std::string type;
    std::string name;
    sample->listen([&](std::string_view text) {
        // What else is sent reads labels and options.
        const std::string base{catalogue::listTypeInfo(type).base};
        if (text.starts_with("SELECT ") && text.find(" FROM " + base) != std::string_view::npos)
            all.push_back({name, std::string{text}});
    });
    for (const std::string_view key : catalogue::listTypeKeys()) {
        if (key == "LOG") continue;
        type = key;
        std::vector<std::vector<std::int16_t>> lists(1);
        for (const catalogue::ColumnInfo& column : catalogue::columnsOf(key)) {
            lists.front().push_back(column.id);
            lists.push_back({column.id});
        }
        for (const std::vector<std::int16_t>& ids : lists) {
            name = type + " " + (ids.size() == 1 ? std::to_string(ids.front()) : "all");
            ListOnForm list{ids};
            // A column that does not bring the tables that the conditions of its list read is the caller's matter.
            try {
                Comm_CSel{}.FillListview(session, "R", key, *list.view, "");
            } catch (const Error&) {
                all.pop_back();
            }
        }
    }
    sample->listen({});
    return all;
}

std::vector<FixedStatement> logStatements(const ado::ConnectionRef& sample)
{
    std::vector<FixedStatement> all;
    std::set<std::string> known;
    const auto add = [&](const std::string& name, const std::string& text) {
        if (known.insert(text).second) all.push_back({name, text});
    };
    const std::vector<std::int16_t> ids = logColumns();
    for (const std::string version : {"R", "A1", "A8"}) {
        const LogLists lists{sessionOf(sample), version};
        for (const std::int16_t id : ids) {
            const std::string name = "LOG " + version + " " + std::to_string(id);
            add(name, lists.detail({id}));
            add(name + " aggregated", lists.aggregated(id));
        }
    }
    return all;
}

std::vector<FixedStatement> operationStatements(const ado::ConnectionRef& sample)
{
    const TmkVar session = sessionOf(sample);
    Record record{sample};
    runLocks(record, session);
    runRights(record, session);
    runOptions(record, session);
    runTimber(record, session);
    return record.take();
}

} // namespace tamarok::database::test
