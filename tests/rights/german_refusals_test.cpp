#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "support/errors.h"
#include "support/surroundings.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_lock.h"

namespace tamarok {
namespace {

/// The embedded database, except that one statement times out at once. For a live session's row it would do so
/// after five seconds.
class ImpatientSession final : public ado::Session {
public:
    ImpatientSession(ado::ConnectionRef inner, std::string refused) :
        inner_{std::move(inner)}, refused_{std::move(refused)}
    {}

    std::string_view name() const override { return inner_->session().name(); }
    std::unique_ptr<ado::Cursor> open(const ado::Statement& statement) override
    {
        return inner_->session().open(statement);
    }
    std::int64_t execute(const ado::Statement& statement) override
    {
        if (statement.text == refused_) throw Error{errors::timeout, "Timeout expired", std::string{name()}};
        return inner_->session().execute(statement);
    }
    void begin() override { inner_->session().begin(); }
    void commit() override { inner_->session().commit(); }
    void rollback() override { inner_->session().rollback(); }

private:
    ado::ConnectionRef inner_;
    std::string refused_;
};

/// User 2, HUBER, is alive and holds what user 9 asks for, in the reference database.
class GermanRefusals : public ::testing::Test {
protected:
    GermanRefusals() : scope_{platform()}
    {
        database::ReferenceOptions none;
        none.logs = 0;
        database::createReferenceDatabase(*inner_, none);
        inner_->Execute("INSERT INTO LOCK (ID_USERS,LOGIN) VALUES (2,'2024-05-17 08:00:00.000')");
        const std::string id = value("SELECT ID FROM LOCK WHERE LOGIN IS NOT NULL");
        session.db_ADO = std::make_shared<ado::Connection>(
            std::make_unique<ImpatientSession>(inner_, "DELETE FROM LOCK WHERE ID = " + id), "impatient");
        session.ID_User = 9;
        session.bolLan = true;
        session.strLanguage = "GERMAN";
    }

    std::string value(const std::string& statement) const
    {
        ado::Recordset rows;
        rows.Open(statement, inner_);
        const Variant first = rows.Fields().Item(0).Value();
        return first.isString() ? first.asString() : std::to_string(first.asLong());
    }
    /// Inserts a head record and returns its key.
    std::string head(const std::string& table, const std::string& columns, const std::string& values)
    {
        inner_->Execute("INSERT INTO " + table + " (" + columns + ") VALUES (" + values + ")");
        return value("SELECT MAX(ID) FROM " + table);
    }
    /// Returns the message that user 9 sees when he asks for an object that user 2 has locked.
    std::string refusal(const std::string& column, const std::string& key)
    {
        inner_->Execute("INSERT INTO LOCK (ID_USERS," + column + ") VALUES (2," + key + ")");
        messages_->shown.clear();
        EXPECT_FALSE(Comm_Lock{}.LockOn(column, key, session));
        EXPECT_EQ(value("SELECT COUNT(*) FROM LOCK WHERE ID_USERS = 9"), "0");
        return messages_->shown.size() == 1 ? messages_->shown[0].text : "no message";
    }

    TmkVar session;

private:
    Platform platform() const
    {
        Platform made;
        made.regional = Regional::named("de-AT");
        made.makeLocService = loc::makeLocService;
        made.messageBox = messages_;
        return made;
    }

    std::shared_ptr<test::RecordingMessageBox> messages_ = std::make_shared<test::RecordingMessageBox>();
    ado::ConnectionRef inner_ = embedded::connectInMemory();
    PlatformScope scope_;
};

const std::string held = " wird gerade vom Benutzer HUBER bearbeitet und ist gesperrt.";

TEST_F(GermanRefusals, ListsAndInvoices)
{
    EXPECT_EQ(refusal("LISTE", "'L24-000001'"), "Der Datensatz 'L24-000001'" + held);
    const std::vector<std::pair<std::string, std::string>> types{
        {"R ", "Rechnung"},     {"A1", "Abrechnung 1"}, {"A2", "Abrechnung 2"},
        {"A3", "Abrechnung 3"}, {"A4", "Abrechnung 4"}, {"A5", "Abrechnung 5"},
        {"A6", "Abrechnung 6"}, {"A7", "Abrechnung 7"}, {"A8", "Abrechnung 8"},
    };
    for (const auto& [type, word] : types)
        EXPECT_EQ(refusal("RECHNUNG", "'" + type + "R-24-000001'"), "Der Beleg (" + word + ") 'R-24-000001'" + held);
    EXPECT_EQ(refusal("RECHNUNG", "'B1R-24-000001'"), "no message");
}

TEST_F(GermanRefusals, HeadRecords)
{
    struct Kind {
        std::string column;
        std::string table;
        std::string number;
        bool leadIn;
    };
    for (const Kind& kind : {Kind{"BELEGE", "BB_BELEGE_KOPF", "BELEGNUMMER", true},
                             {"HAB", "BB_HAB_KOPF", "HAB_NUMMER", true},
                             {"FAKTURA", "BB_FAKTURA_KOPF", "FA_NUMMER", false},
                             {"BELEGBUCHUNG", "SCH_BELEGE_KOPF", "BELEGNUMMER", true},
                             {"MASCHINEN", "SCH_MASCHINENBUCH", "NUMMER", false},
                             {"PLANN", "PLAN_KOPF", "PLANNUMMER", true},
                             {"PLAN_BB", "BB_PLAN_KOPF", "PLAN_NUMMER", true},
                             {"ZV_BB", "BB_AUFTRAG_KOPF", "AUFTRAG_NUMMER", true},
                             {"BB_MAP", "BB_MAP_KOPF", "MAP_NUMMER", true},
                             {"WILD_BB", "BB_WILDURSPRUNGS", "WILDMARKENNUMMER", true},
                             {"HUNDE_BB", "BB_JAGDHUNDE", "NUMMER", true},
                             {"STRK_BB", "BB_STRECKE_NIEDER", "NUMMER", true},
                             {"STEH", "STEH_AUFNAHMEPROTOKOLL_KOPF", "NUMMER", false}}) {
        const std::string key = head(kind.table, kind.number, "'N-" + kind.column + "'");
        EXPECT_EQ(refusal(kind.column, key),
                  std::string{kind.leadIn ? "Der Datensatz " : ""} + "'N-" + kind.column + "'" + held);
    }
    EXPECT_EQ(refusal("JAGD_BB", head("BB_ABSCHUSSPLAN_KOPF", "JAGDJAHR", "2024")), "Der Datensatz '2024'" + held);
    EXPECT_EQ(refusal("LOHNERFASSUNG", head("LOHNERFASSUNG_KOPF", "BUCHUNGS_YEAR,BUCHUNGS_MONTH", "2024,3")),
              "'3/2024'" + held);
}

TEST_F(GermanRefusals, WagesOfForestWorkersFailByTheirBrokenLookUp)
{
    const std::string key = head("BB_WALDARBEITERLOHN_KOPF", "ABRECHNUNGSMONAT,JAHR", "3,2024");
    EXPECT_EQ(test::errorNumber([&] { refusal("WAL_BB", key); }), errors::statementRefused)
        << "Required by the contract: the bracket is never closed.";
    EXPECT_EQ(value("SELECT COUNT(*) FROM LOCK WHERE ID_USERS = 9"), "0") << "taken back before";
    EXPECT_EQ(session.db_ADO->CommandTimeout(), 30);
}

TEST_F(GermanRefusals, MissingHeadRecordFails)
{
    EXPECT_EQ(test::errorNumber([&] { refusal("PLAN_BB", "999999"); }), errors::noCurrentRecord)
        << "there is no such plan";
    EXPECT_EQ(value("SELECT COUNT(*) FROM LOCK WHERE ID_USERS = 9"), "0");
}

} // namespace
} // namespace tamarok
