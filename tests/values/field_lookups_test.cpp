#include "runtime/support.h"
#include "values/sample_database.h"

#include "tamarok/comm_get.h"

namespace tamarok {
namespace {

using test::errorNumber;
using Statements = std::vector<std::string>;

class FieldLookups : public ::testing::Test {
protected:
    test::SampleDatabase database;
    Comm_Get get;

private:
    PlatformScope scope_{test::platformFor("de-AT")};
};

TEST_F(FieldLookups, FieldValue)
{
    EXPECT_EQ(get.Get_FieldValue(database.session, "NAME", "SAMPLE", "ID = 1"), "Lärche") << "trimmed";
    EXPECT_EQ(get.Get_FieldValue(database.session, "MASS", "SAMPLE", "ID = 1"), "1234,5");
    EXPECT_EQ(get.Get_FieldValue(database.session, "MASS", "SAMPLE", "ID = 2"), " ") << "Null";
    EXPECT_EQ(get.Get_FieldValue(database.session, "NAME", "SAMPLE", "ID = 9"), "") << "no row";
    EXPECT_EQ(get.Get_FieldValue(database.session, "MEASURED", "SAMPLE", "ID = 2"), "05.03.2024 18:00:00");
    EXPECT_EQ(database.statements(),
              (Statements{"SELECT TOP 1 NAME FROM SAMPLE WHERE ID = 1", "SELECT TOP 1 MASS FROM SAMPLE WHERE ID = 1",
                          "SELECT TOP 1 MASS FROM SAMPLE WHERE ID = 2", "SELECT TOP 1 NAME FROM SAMPLE WHERE ID = 9",
                          "SELECT TOP 1 MEASURED FROM SAMPLE WHERE ID = 2"}));
    EXPECT_EQ(get.Get_FieldValue(database.session, "COUNT(*)", "SAMPLE", ""), "2") << "any expression";
    EXPECT_EQ(database.statements(), Statements{"SELECT TOP 1 COUNT(*) FROM SAMPLE"});
}

TEST_F(FieldLookups, FieldValueN)
{
    EXPECT_EQ(get.Get_FieldValueN(database.session, "MASS", "SAMPLE", "ID = 1"), 1234.5);
    EXPECT_EQ(get.Get_FieldValueN(database.session, "MASS", "SAMPLE", "ID = 2"), 0.0) << "Null";
    EXPECT_EQ(get.Get_FieldValueN(database.session, "MASS", "SAMPLE", "ID = 9"), 0.0) << "no row";
    EXPECT_EQ(get.Get_FieldValueN(database.session, "SUM(PIECES)", "SAMPLE", ""), 7.0);
    EXPECT_EQ(errorNumber([&] { get.Get_FieldValueN(database.session, "NAME", "SAMPLE", "ID = 2"); }),
              errors::typeMismatch);
    EXPECT_EQ(database.statements().front(), "SELECT TOP 1 MASS FROM SAMPLE WHERE ID = 1");
}

TEST_F(FieldLookups, ConditionOfBlanksIsRefusedByOneAndDroppedByTheOther)
{
    EXPECT_EQ(errorNumber([&] { get.Get_FieldValue(database.session, "NAME", "SAMPLE", "  "); }),
              errors::statementRefused);
    EXPECT_EQ(get.Get_FieldValueN(database.session, "PIECES", "SAMPLE", "  "), 7.0);
    EXPECT_EQ(database.statements(),
              (Statements{"SELECT TOP 1 NAME FROM SAMPLE WHERE   ", "SELECT TOP 1 PIECES FROM SAMPLE"}));
}

TEST_F(FieldLookups, OracleTextsRun)
{
    database.session.bolOracle = true;
    EXPECT_EQ(get.Get_FieldValue(database.session, "NAME", "SAMPLE", "ID = 1"), "Lärche");
    EXPECT_EQ(get.Get_FieldValue(database.session, "MASS", "SAMPLE", "ID = 2"), " ");
    EXPECT_EQ(get.Get_FieldValue(database.session, "NAME", "SAMPLE", "ID = 9"), "");
    EXPECT_EQ(get.Get_FieldValue(database.session, "NVL(CODE, 'none')", "SAMPLE", ""), "none");
    EXPECT_EQ(get.Get_FieldValueN(database.session, "MASS", "SAMPLE", "ID = 1"), 1234.5);
    EXPECT_EQ(get.Get_FieldValueN(database.session, "PIECES", "SAMPLE", "  "), 7.0);
    EXPECT_EQ(get.Get_FieldValueN(database.session, "PIECES", "SAMPLE", "ID = 9"), 0.0);
    EXPECT_EQ(errorNumber([&] { get.Get_FieldValue(database.session, "NAME", "SAMPLE", " "); }),
              errors::statementRefused);
    EXPECT_EQ(database.statements(), (Statements{"SELECT NAME FROM SAMPLE WHERE rownum = 1 AND ID = 1",
                                                 "SELECT MASS FROM SAMPLE WHERE rownum = 1 AND ID = 2",
                                                 "SELECT NAME FROM SAMPLE WHERE rownum = 1 AND ID = 9",
                                                 "SELECT NVL(CODE, 'none') FROM SAMPLE WHERE rownum = 1",
                                                 "SELECT MASS FROM SAMPLE WHERE rownum = 1 AND ID = 1",
                                                 "SELECT PIECES FROM SAMPLE WHERE rownum = 1",
                                                 "SELECT PIECES FROM SAMPLE WHERE rownum = 1 AND ID = 9",
                                                 "SELECT NAME FROM SAMPLE WHERE rownum = 1 AND  "}));
}

struct Size {
    const char* column;
    std::int32_t size;
};
constexpr Size sizes[] = {
    {"NAME", 40},  {"CODE", 10}, {"MARK", 3},  {"MASS", 11}, {"PRICE", 0},     {"PIECES", 0},   {"SMALL", 0},
    {"ACTIVE", 0}, {"NOTE", 0},  {"BROAD", 0}, {"ID", 0},    {"MEASURED", 16}, {"PIECES/2", 0}, {"MASS*2", 11},
};

TEST_F(FieldLookups, FieldSizeByTheDeclaredType)
{
    for (const Size& row : sizes)
        EXPECT_EQ(get.Get_FieldSize("SAMPLE", row.column, database.session), row.size) << row.column;
    EXPECT_EQ(database.statements().front(), "SELECT TOP 0 NAME FROM SAMPLE");
}

TEST_F(FieldLookups, FieldSizeOfAnEmptyTableAndOnOracle)
{
    database.connection->Execute("DELETE FROM SAMPLE");
    for (const bool oracle : {false, true}) {
        database.session.bolOracle = oracle;
        for (const Size& row : sizes)
            EXPECT_EQ(get.Get_FieldSize("SAMPLE", row.column, database.session), row.size) << row.column << oracle;
    }
    EXPECT_EQ(database.statements().back(), "SELECT MASS*2 FROM SAMPLE WHERE rownum=1");
}

TEST_F(FieldLookups, FieldSizeIsTheDefinedSizeOfTheField)
{
    for (const char* column : {"MEASURED", "DAY", "PLAIN", "CODE", "MARK", "NAME"}) {
        ado::Recordset rows;
        rows.Open(std::string{"SELECT "} + column + " FROM SAMPLE", database.connection);
        EXPECT_EQ(get.Get_FieldSize("SAMPLE", column, database.session), rows.Fields().Item(0).DefinedSize()) << column;
    }
}

TEST_F(FieldLookups, RelatedText)
{
    ado::Recordset rows;
    rows.Open("SELECT ID, PARTNER, MASS FROM SAMPLE ORDER BY ID", database.connection);
    database.statements();
    EXPECT_EQ(get.Get_RelatedText("PARTNER", "SELECT NAME FROM SAMPLE WHERE ID = ", rows, database.connection),
              "Fichte");
    EXPECT_EQ(get.Get_RelatedText("ID", "SELECT NAME FROM SAMPLE WHERE ID = ", rows, database.connection),
              "  Lärche  ");
    EXPECT_EQ(get.Get_RelatedText("PARTNER", "SELECT MASS FROM SAMPLE WHERE ID = ", rows, database.connection), "")
        << "Null behind the key";
    EXPECT_EQ(get.Get_RelatedText("PARTNER", "SELECT NAME FROM SAMPLE WHERE ID = 7", rows, database.connection), "")
        << "no row";
    EXPECT_EQ(database.statements(),
              (Statements{"SELECT NAME FROM SAMPLE WHERE ID = 2", "SELECT NAME FROM SAMPLE WHERE ID = 1",
                          "SELECT MASS FROM SAMPLE WHERE ID = 2", "SELECT NAME FROM SAMPLE WHERE ID = 72"}));
    EXPECT_EQ(errorNumber([&] {
                  get.Get_RelatedText("MASS", "SELECT NAME FROM SAMPLE WHERE MASS = ", rows, database.connection);
              }),
              errors::statementRefused)
        << "a number goes in under the regional settings";
    EXPECT_EQ(database.statements(), Statements{"SELECT NAME FROM SAMPLE WHERE MASS = 1234,5"});
    rows.MoveNext();
    EXPECT_EQ(get.Get_RelatedText("PARTNER", "no statement at all ", rows, nullptr), "") << "Null key";
    EXPECT_TRUE(database.statements().empty());
    EXPECT_EQ(errorNumber([&] { get.Get_RelatedText("ID", "SELECT 1 WHERE 1 = ", rows, nullptr); }),
              errors::objectNotSet);
    EXPECT_EQ(errorNumber([&] { get.Get_RelatedText("NONE", "x", rows, database.connection); }), errors::itemNotFound);
    rows.MoveNext();
    EXPECT_EQ(errorNumber([&] { get.Get_RelatedText("ID", "x", rows, database.connection); }), errors::noCurrentRecord);
    rows.Close();
    EXPECT_EQ(errorNumber([&] { get.Get_RelatedText("ID", "x", rows, database.connection); }), errors::objectClosed);
}

TEST_F(FieldLookups, TextOfTheCurrentRow)
{
    struct Row {
        const char* stored;
        std::string text;
    };
    const Row rows[] = {
        {"NULL", ""},         {"''", ""},         {"'  '", ""},           {"' x '", " x "},     {"'TRUE'", "TRUE"},
        {"'wahr'", "TRUE"},   {"'Vrai'", "TRUE"}, {"'true'", "TRUE"},     {"'WAHR '", "WAHR "}, {"'falsch'", "falsch"},
        {"'False'", "False"}, {"'yes'", "yes"},   {"'Lärche'", "Lärche"},
    };
    for (const Row& row : rows) {
        database.connection->Execute(std::string{"UPDATE SAMPLE SET NAME = "} + row.stored + " WHERE ID = 1");
        ado::Recordset records;
        records.Open("SELECT NAME, MASS, ACTIVE FROM SAMPLE WHERE ID = 1", database.connection);
        EXPECT_EQ(get.Get_Text("NAME", records), row.text) << row.stored;
        EXPECT_EQ(get.Get_Text("name", records), row.text) << "names have no case";
        EXPECT_EQ(get.Get_Text("MASS", records), "1234,5");
        EXPECT_EQ(get.Get_Text("ACTIVE", records), "TRUE") << "a bit is Wahr here";
        EXPECT_EQ(errorNumber([&] { get.Get_Text("NONE", records); }), errors::itemNotFound);
        records.MoveNext();
        EXPECT_EQ(errorNumber([&] { get.Get_Text("NAME", records); }), errors::noCurrentRecord);
    }
}

TEST_F(FieldLookups, ReadersTakeTheFieldItself)
{
    ado::Recordset rows;
    rows.Open("SELECT NAME, MASS, CODE, MEASURED FROM SAMPLE ORDER BY ID", database.connection);
    EXPECT_EQ(get.Get_String(rows.Fields().share(0)), "Lärche");
    EXPECT_EQ(get.Get_Number(rows.Fields().share(1)), "1234.5");
    EXPECT_EQ(get.Get_Number_N(rows.Fields().share(1)), 1234.5);
    EXPECT_EQ(get.Get_String(rows.Fields().share(2)), " ");
    EXPECT_EQ(get.Get_Val(rows.Fields().share(2)), "");
    EXPECT_EQ(get.Get_Datum(rows.Fields().share(3)), makeDate(2024, 6, 15)) << "today for Null";
    const Variant kept{rows.Fields().share(3)};
    rows.MoveNext();
    EXPECT_EQ(get.Get_Date_N(kept), (Date{makeDate(2024, 3, 5).days + 0.75}));
    rows.Close();
    EXPECT_EQ(errorNumber([&] { get.Get_String(kept); }), errors::objectClosed);
}

TEST_F(FieldLookups, WithoutAConnectionAndOnAClosedOne)
{
    const auto calls = {
        +[](const TmkVar& session) { Comm_Get{}.Get_FieldValue(session, "NAME", "SAMPLE", ""); },
        +[](const TmkVar& session) { Comm_Get{}.Get_FieldValueN(session, "MASS", "SAMPLE", ""); },
        +[](const TmkVar& session) { Comm_Get{}.Get_FieldSize("SAMPLE", "NAME", session); },
    };
    for (const auto call : calls) {
        EXPECT_EQ(errorNumber([&] { call(TmkVar{}); }), errors::objectNotSet);
        database.session.db_ADO = embedded::connectInMemory();
        EXPECT_EQ(errorNumber([&] { call(database.session); }), errors::statementRefused) << "no such table";
        database.session.db_ADO->Close();
        EXPECT_EQ(errorNumber([&] { call(database.session); }), errors::connectionClosed);
    }
}

TEST_F(FieldLookups, FailuresOfTheServerReachTheCaller)
{
    for (const auto& [column, table, where] :
         std::initializer_list<std::array<const char*, 3>>{{"NONE", "SAMPLE", ""},
                                                           {"NAME", "NONE", ""},
                                                           {"NAME", "SAMPLE", "ID = 'O'Neil'"},
                                                           {"", "SAMPLE", ""},
                                                           {"NAME", "SAMPLE", "ID ="}}) {
        EXPECT_EQ(errorNumber([&, c = column, t = table, w = where] { get.Get_FieldValue(database.session, c, t, w); }),
                  errors::statementRefused)
            << column << table << where;
    }
    EXPECT_EQ(get.Get_FieldValue(database.session, "NAME", "SAMPLE", "ID = 2"), "Fichte") << "and nothing stays open";
}

} // namespace
} // namespace tamarok
