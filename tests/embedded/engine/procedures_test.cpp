#include <array>

#include "child.h"
#include "tamarok_embedded/procedures.h"
#include "test_database.h"

#include "tamarok/platform.h"

namespace tamarok::embedded::test {
namespace {

constexpr std::string_view optionenTable =
    "CREATE TABLE OPTIONEN (PROPERTY_ID NVARCHAR(30) NOT NULL, NUMBER_VALUE INT NULL, DOUBLE_VALUE FLOAT NULL, "
    "TEXT_VALUE NVARCHAR(100) NULL, DATE_VALUE DATETIME NULL)";

class OptionenIns : public testing::Test {
protected:
    OptionenIns() { run(connection_, optionenTable); }

    void call(Variant property, std::int64_t kind, Variant value)
    {
        std::vector<ado::Parameter> parameters(3);
        parameters[0] = {"", ado::DataType::VarChar, ado::ParameterDirection::Input, 30, std::move(property)};
        parameters[1] = {"", ado::DataType::BigInt, ado::ParameterDirection::Input, 0, Variant{kind}};
        parameters[2] = {"", ado::DataType::VarChar, ado::ParameterDirection::Input, 50, std::move(value)};
        ado::Statement wanted = statement("tmk_OPTIONEN_INS");
        wanted.procedure = true;
        wanted.parameters = parameters;
        connection_->session().execute(wanted);
    }
    Variant stored(const std::string& column)
    {
        EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM OPTIONEN"), Variant{1});
        return valueOf(connection_, "SELECT " + column + " FROM OPTIONEN");
    }

    ado::ConnectionRef connection_ = connectInMemory();
};

TEST_F(OptionenIns, text)
{
    call("NATWAHRUNG", 1, "€ 'x' ");
    EXPECT_EQ(stored("TEXT_VALUE"), Variant{"€ 'x' "});
    EXPECT_EQ(stored("NUMBER_VALUE"), Variant{Null{}});
    EXPECT_EQ(stored("PROPERTY_ID"), Variant{"NATWAHRUNG"});
    call("NATWAHRUNG", 1, "");
    EXPECT_EQ(stored("TEXT_VALUE"), Variant{Null{}});
}

TEST_F(OptionenIns, number)
{
    call("KUBATURPLACE", 2, "3");
    EXPECT_EQ(stored("NUMBER_VALUE"), Variant{3});
    call("KUBATURPLACE", 2, Variant{-4});
    EXPECT_EQ(stored("NUMBER_VALUE"), Variant{-4});
    call("KUBATURPLACE", 2, "");
    EXPECT_EQ(stored("NUMBER_VALUE"), Variant{Null{}});
    call("KUBATURPLACE", 2, Null{});
    EXPECT_EQ(stored("NUMBER_VALUE"), Variant{Null{}});
}

TEST_F(OptionenIns, doubleWithPoint)
{
    call("F", 3, "1234.5");
    EXPECT_EQ(stored("DOUBLE_VALUE"), Variant{1234.5});
}

TEST_F(OptionenIns, oneRowForAllKinds)
{
    call("ORDER_BY", 2, "1");
    call("ORDER_BY", 1, "x");
    call("ORDER_BY", 3, "0.5");
    EXPECT_EQ(stored("NUMBER_VALUE"), Variant{1}) << "the other kinds stay";
    EXPECT_EQ(stored("TEXT_VALUE"), Variant{"x"});
    EXPECT_EQ(stored("DOUBLE_VALUE"), Variant{0.5});
}

/// Under any collation of the column: this one makes all these names equal.
TEST_F(OptionenIns, namesCompareExactly)
{
    const std::vector<std::string> names{"DATE_TO",   "date_to",  "Date_To", "DATE_TO ",
                                         "DATE_TO  ", " DATE_TO", "DATE_TÖ"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        call(names[i], 2, Variant{static_cast<std::int32_t>(i)});
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        call(names[i], 1, names[i]);
    }
    const auto cursor = open(connection_, "SELECT PROPERTY_ID, TEXT_VALUE FROM OPTIONEN ORDER BY NUMBER_VALUE");
    for (const std::string& name : names) {
        ASSERT_TRUE(cursor->next());
        EXPECT_EQ(cursor->value(0), Variant{name});
        EXPECT_EQ(cursor->value(1), Variant{name});
    }
    EXPECT_FALSE(cursor->next());
}

TEST_F(OptionenIns, aMissUnderAnotherCaseLeavesTheStoredDate)
{
    call("DATE_TO", 4, "20240305");
    call("date_to", 4, "");
    EXPECT_EQ(valueOf(connection_, "SELECT MAX(DATE_VALUE) FROM OPTIONEN"), Variant{makeDate(2024, 3, 5)});
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM OPTIONEN"), Variant{2});
}

struct DateCase {
    const char* locale;
    const char* text;
    Date value;
};

/// The order is that of the machine's regional settings, not that of the connection.
TEST_F(OptionenIns, dates)
{
    const Date day = makeDate(2024, 3, 2);
    for (const DateCase& row :
         {DateCase{"de-AT", "02.03.2024", day}, DateCase{"de-AT", "2.3.2024 06:00:00", Date{day.days + 0.25}},
          DateCase{"en-US", "2024-03-02", day}, DateCase{"en-US", "3/2/2024", day},
          DateCase{"en-GB", "02/03/2024", day}, DateCase{"en-US", "20240302", day},
          DateCase{"en-GB", "20240302", day}}) {
        Platform platform;
        platform.regional = Regional::named(row.locale);
        const PlatformScope scope{platform};
        call("DATE_TO", 4, "");
        EXPECT_EQ(stored("DATE_VALUE"), Variant{Null{}});
        call("DATE_TO", 4, row.text);
        EXPECT_EQ(stored("DATE_VALUE"), Variant{row.value}) << row.text;
    }
}

TEST_F(OptionenIns, whatDoesNotConvertIsRefusedAndNothingIsWritten)
{
    struct Bad {
        std::int64_t kind;
        const char* value;
    };
    for (const Bad& row : {Bad{2, "x"}, Bad{2, "1.5"}, Bad{2, "99999999999"}, Bad{3, "1,5x"}, Bad{4, "yesterday"},
                           Bad{4, "31.31.2024"}, Bad{0, "1"}, Bad{5, "1"}}) {
        const Error error = failureOf([&] { call("P", row.kind, row.value); });
        EXPECT_EQ(error.number, errors::statementRefused) << row.value;
        EXPECT_EQ(error.statement, "tmk_OPTIONEN_INS");
        EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM OPTIONEN"), Variant{0}) << row.value;
    }
}

TEST_F(OptionenIns, byExec)
{
    run(connection_, "EXEC tmk_OPTIONEN_INS 'A', 2, '7'");
    EXPECT_EQ(stored("NUMBER_VALUE"), Variant{7});
    run(connection_, "EXEC dbo.TMK_optionen_ins @VALUE = '8', @PROPERTY = 'A', @KIND = 2");
    EXPECT_EQ(stored("NUMBER_VALUE"), Variant{8});
}

TEST_F(OptionenIns, wrongArguments)
{
    EXPECT_EQ(failureOf([&] { run(connection_, "EXEC tmk_OPTIONEN_INS 'A', 2"); }).nativeError, 201);
    EXPECT_EQ(failureOf([&] { run(connection_, "EXEC tmk_OPTIONEN_INS 'A', 2, '3', 4"); }).nativeError, 8144);
    EXPECT_EQ(failureOf([&] { run(connection_, "EXEC tmk_OPTIONEN_INS 'A', 2, @NOTHING = 4"); }).nativeError, 8145);
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM OPTIONEN"), Variant{0});
}

TEST(Optionen, twoProcessesAtOnceLeaveOneRow)
{
    const Folder folder;
    const auto connection = create(folder / "a.db");
    run(connection, optionenTable);
    const std::vector<std::string> work{"repeat", (folder / "a.db").string(), "50 EXEC tmk_OPTIONEN_INS 'P', 2, '1'"};
    runBeside(work);
    EXPECT_EQ(valueOf(connection, "SELECT COUNT(*) FROM OPTIONEN"), Variant{1});
}

constexpr std::string_view modelsTable =
    "CREATE TABLE MODELS (ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY, RELATION NVARCHAR(60) NOT NULL, "
    "NAME NVARCHAR(80) NOT NULL, MODEL NVARCHAR(1000), STANDARD BIT, ID_USER INT, NICHT_ANDERBAR BIT, "
    "ID_ACCESS_LEVELS INT)";

class ModelsIns : public testing::Test {
protected:
    ModelsIns() { run(connection_, modelsTable); }

    /// The call of a saved width text: a default that belongs to nobody.
    void call(Variant relation, Variant model, std::array<std::int64_t, 4> numbers = {1, 0, 0, 0})
    {
        using enum ado::ParameterDirection;
        std::vector<ado::Parameter> parameters{{"", ado::DataType::VarChar, Input, 60, std::move(relation)},
                                               {"", ado::DataType::VarChar, Input, 80, "STANDARD"},
                                               {"", ado::DataType::VarChar, Input, 1000, std::move(model)}};
        for (const std::int64_t number : numbers)
            parameters.push_back({"", ado::DataType::BigInt, Input, 0, number});
        ado::Statement wanted = statement("tmk_MODELS_INS");
        wanted.procedure = true;
        wanted.parameters = parameters;
        connection_->session().execute(wanted);
    }
    std::vector<Variant> row(std::string_view relation)
    {
        std::vector<Variant> values;
        for (const std::string column :
             {"ID", "NAME", "MODEL", "STANDARD", "ID_USER", "NICHT_ANDERBAR", "ID_ACCESS_LEVELS"})
            values.push_back(valueOf(connection_, "SELECT " + column + " FROM MODELS WHERE RELATION = '" +
                                                      std::string{relation} + "'"));
        return values;
    }
    Variant count() { return valueOf(connection_, "SELECT COUNT(*) FROM MODELS"); }

    ado::ConnectionRef connection_ = connectInMemory();
};

TEST_F(ModelsIns, aSecondCallReplacesTheRowAndNoOther)
{
    run(connection_, "INSERT INTO MODELS (RELATION,NAME,MODEL,ID_USER) VALUES ('BBF','Meine','7',3)");
    call("BBF", "100,200");
    call("LOG", "50");
    const std::vector<Variant> other = row("LOG");
    EXPECT_EQ(other, (std::vector<Variant>{3, "STANDARD", "50", true, Null{}, false, Null{}}));
    call("BBF", "300");
    EXPECT_EQ(columnOf(connection_, "SELECT MODEL FROM MODELS WHERE RELATION = 'BBF' ORDER BY ID"),
              (std::vector<Variant>{"7", "300"}));
    EXPECT_EQ(valueOf(connection_, "SELECT ID FROM MODELS WHERE MODEL = '300'"), Variant{2}) << "the same row";
    EXPECT_EQ(row("LOG"), other);
    EXPECT_EQ(count(), Variant{3});
}

TEST_F(ModelsIns, namesCompareAsTheColumnDoes)
{
    call("GH_HolzartHAHA", "1");
    call("GH_HOLZARTHAHA ", "2");
    EXPECT_EQ(count(), Variant{1});
    EXPECT_EQ(valueOf(connection_, "SELECT MODEL FROM MODELS"), Variant{"2"});
}

TEST_F(ModelsIns, numbersAreDefaultOwnerFixedAndLevel)
{
    call("A", "1", {0, 7, 1, 5});
    EXPECT_EQ(row("A"), (std::vector<Variant>{1, "STANDARD", "1", false, 7, true, 5}));
    call("A", Null{});
    EXPECT_EQ(row("A"), (std::vector<Variant>{1, "STANDARD", Null{}, true, Null{}, false, Null{}}));
}

TEST_F(ModelsIns, aTextBeyondTheParameterKeepsWholeNumbers)
{
    std::string widths;
    for (int column = 0; column < 300; ++column)
        widths += "1234,";
    struct Case {
        std::string given;
        std::size_t kept;
    };
    for (const Case& c : {Case{widths, 999}, Case{"7," + widths, 996}, Case{widths.substr(0, 999), 999},
                          Case{widths.substr(0, 998) + "56", 994}, Case{std::string(1200, '7'), 1000}}) {
        run(connection_, "EXEC tmk_MODELS_INS 'A','STANDARD','" + c.given + "',1,0,0,0");
        EXPECT_EQ(valueOf(connection_, "SELECT MODEL FROM MODELS"), Variant{c.given.substr(0, c.kept)});
    }
    run(connection_, "EXEC tmk_MODELS_INS '" + std::string(70, 'R') + "','STANDARD','1',1,0,0,0");
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM MODELS WHERE LEN(RELATION) = 60"), Variant{1});
}

TEST_F(ModelsIns, whatHasNoKeyOrDoesNotFitIsRefusedAndNothingIsWritten)
{
    for (const char* arguments : {"'','STANDARD','1',1,0,0,0", "NULL,'STANDARD','1',1,0,0,0", "'A',' ','1',1,0,0,0"})
        EXPECT_EQ(failureOf([&] { run(connection_, std::string{"EXEC tmk_MODELS_INS "} + arguments); }).nativeError,
                  50000)
            << arguments;
    EXPECT_EQ(failureOf([&] { call("A", "1", {1, 99999999999, 0, 0}); }).nativeError, 8115);
    EXPECT_EQ(count(), Variant{0});
}

TEST(Models, twoProcessesAtOnceLeaveOneRow)
{
    const Folder folder;
    const auto connection = create(folder / "a.db");
    run(connection, modelsTable);
    const std::vector<std::string> work{"repeat", (folder / "a.db").string(),
                                        "50 EXEC tmk_MODELS_INS 'P','STANDARD','1,2',1,0,0,0"};
    runBeside(work);
    EXPECT_EQ(valueOf(connection, "SELECT COUNT(*) FROM MODELS"), Variant{1});
}

TEST(OwnProcedures, areReachedByNameAndShareTheCallersTransaction)
{
    OpenOptions options;
    options.procedures.add({"addTwo", {{"N"}, {"FAIL", false}}, [](ProcedureScope& scope, auto arguments) {
                                scope.execute("INSERT INTO T (N) VALUES (?)", arguments.first(1));
                                const auto rows = scope.query("SELECT N FROM T WHERE N = ?", arguments.first(1));
                                if (!arguments[1].isEmpty()) {
                                    throw Error{5, "as asked"};
                                }
                                scope.execute("INSERT INTO T (N) VALUES (?)", rows.back());
                            }});
    const auto connection = connectInMemory(options);
    run(connection, "CREATE TABLE T (N INT) EXEC addTwo 4");
    EXPECT_EQ(columnOf(connection, "SELECT N FROM T"), (std::vector<Variant>{4, 4}));
    EXPECT_EQ(failureOf([&] { run(connection, "EXEC addTwo 5, 1"); }).description, "as asked");
    EXPECT_EQ(columnOf(connection, "SELECT N FROM T"), (std::vector<Variant>{4, 4}));
    connection->session().begin();
    run(connection, "DELETE FROM T");
    failureOf([&] { run(connection, "EXEC addTwo 5, 1"); });
    run(connection, "EXEC addTwo 6");
    connection->session().commit();
    EXPECT_EQ(columnOf(connection, "SELECT N FROM T"), (std::vector<Variant>{6, 6}));
}

TEST(OwnProcedures, waitForRowLocksWithoutTheWriteLock)
{
    const Folder folder;
    const auto connection = create(folder / "a.db");
    run(connection, optionenTable);
    run(connection, "INSERT INTO OPTIONEN (PROPERTY_ID) VALUES ('P') INSERT INTO OPTIONEN (PROPERTY_ID) VALUES ('Q')");
    Child holder{{"hold", (folder / "a.db").string(), "SELECT * FROM OPTIONEN WHERE PROPERTY_ID = 'P'"}};
    ASSERT_EQ(holder.line(), "held");
    EXPECT_EQ(failureOf([&] { run(connection, "EXEC tmk_OPTIONEN_INS 'P', 2, '1'", 1); }).number, errors::timeout);
    Child waiter{{"repeat", (folder / "a.db").string(), "1 EXEC tmk_OPTIONEN_INS 'P', 2, '2'"}};
    ASSERT_EQ(waiter.line(), "ready");
    waiter.tell("go");
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(run(connection, "UPDATE OPTIONEN SET NUMBER_VALUE = 9 WHERE PROPERTY_ID = 'Q'", 1), 1);
    }
    holder.kill();
    EXPECT_EQ(waiter.line(), "done");
    EXPECT_EQ(valueOf(connection, "SELECT NUMBER_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'P'"), Variant{2});
}

} // namespace
} // namespace tamarok::embedded::test
