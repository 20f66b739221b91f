#include <cmath>
#include <span>

#include "tamarok_tsql/date_value.h"
#include "test_database.h"

#include "tamarok/comm_conv.h"

/// The same date text means the same as a literal, as the value of a column and as a parameter.
namespace tamarok::embedded::test {
namespace {

/// A text and what the server makes of it as a datetime under the date order mdy.
struct DateText {
    const char* text;
    const char* answer; ///< the stored text, without a time of 00:00:00.000; or "error N"
};

constexpr DateText dateTexts[] = {
    // year, month and day without separators
    {"20240305", "2024-03-05"},
    {"240305", "2024-03-05"},
    {"490305", "2049-03-05"},
    {"500305", "1950-03-05"},
    {"2024", "2024-01-01"},
    {"202403", "error 242"}, // 24 is no month
    {"2024030", "error 241"},
    {"202403055", "error 241"},
    {"24", "error 241"},
    // slashes: the date order
    {"03/05/2024", "2024-03-05"},
    {"3/5/24", "2024-03-05"},
    {"13/05/2024", "error 242"},
    {"2024/03/05", "2024-03-05"},
    {"03/2024/05", "error 241"},
    {"03/05", "error 241"},
    {"03/05/2024/1", "error 241"},
    {"03/05/024", "error 241"},
    // hyphens: a year of four digits in front is ISO, otherwise the date order
    {"2024-03-05", "2024-03-05"},
    {"2024-3-5", "2024-03-05"},
    {"03-05-2024", "2024-03-05"},
    {"5-3-2024", "2024-05-03"},
    {"24-3-5", "error 242"},
    {"2024-03", "error 241"},
    {"2024-03-05-06", "error 241"},
    {"2024-03/05", "error 241"},
    {"2024-13-01", "error 242"},
    {"2024-02-30", "error 242"},
    {"2024-02-29", "2024-02-29"},
    {"2023-02-29", "error 242"},
    {"1900-02-29", "error 242"},
    // points: the date order
    {"03.05.2024", "2024-03-05"},
    {"3.5.24", "2024-03-05"},
    {"12.31.49", "2049-12-31"},
    {"12.31.50", "1950-12-31"},
    {"31.12.50", "error 242"},
    {"3. 5. 2024", "2024-03-05"},
    {"2024.03.05", "2024-03-05"},
    {"02.31.2024", "error 242"},
    {"31.31.2020", "error 242"},
    {"1.0.2020", "error 242"},
    {"1.2", "error 241"},
    {"1.2.3.4", "error 241"},
    {"1.2-2020", "error 241"},
    // names of months
    {"Mar 5 2024", "2024-03-05"},
    {"March 5, 2024", "2024-03-05"},
    {"5 Mar 2024", "2024-03-05"},
    {"5-Mar-24", "2024-03-05"},
    {"2024 MAR 5", "2024-03-05"},
    {"Mar 2024", "2024-03-01"},
    {"Mar 5", "error 241"},
    {"Foo 5 2024", "error 241"},
    {"5. Maerz 2024", "error 241"},
    // times
    {"10:15", "1900-01-01 10:15:00.000"},
    {"10 PM", "1900-01-01 22:00:00.000"},
    {"10pm", "1900-01-01 22:00:00.000"},
    {"12:00 AM", "1900-01-01"},
    {"12:30 PM", "1900-01-01 12:30:00.000"},
    {"13:30 PM", "1900-01-01 13:30:00.000"},
    {"13:30 AM", "error 241"},
    {"0:30 PM", "error 241"},
    {"24:00", "error 242"},
    {"10:61", "error 242"},
    {"10:15:30.5", "1900-01-01 10:15:30.500"},
    {"10:15:30:5", "1900-01-01 10:15:30.007"},
    {"10:15:30.1234", "error 241"},
    {"10:15:", "error 241"},
    // both
    {"2024-03-05 10:15", "2024-03-05 10:15:00.000"},
    {"2024-03-05   10:15:30", "2024-03-05 10:15:30.000"},
    {"10:15 2024-03-05", "2024-03-05 10:15:00.000"},
    {"2024-03-05 10:15:30.125", "2024-03-05 10:15:30.127"},
    {"2024-03-05 10:15:30.127", "2024-03-05 10:15:30.127"},
    {"2024-03-05 24:00:00.000", "error 242"},
    {"2024-02-30 10:15:30.127", "error 242"},
    {"2024-03-05T10:15:30", "2024-03-05 10:15:30.000"},
    {"2024-03-05T10:15:30.5Z", "2024-03-05 10:15:30.500"},
    {"2024-03-05 10:15:30Z", "error 241"},
    {"2024-03-05t10:15:30", "error 241"},
    {"2024-03-05T", "error 241"},
    {"2024-03-05T 10:15", "error 241"},
    {"20240305 2:05 PM", "2024-03-05 14:05:00.000"},
    {"3.5.2024 14:05", "2024-03-05 14:05:00.000"},
    {"Mar  5 2024 10:15AM", "2024-03-05 10:15:00.000"},
    {"2024-03-05 10:15 10:16", "error 241"},
    {"2024-03-05 2024-03-06", "error 241"},
    {"2024-03-05 x", "error 241"},
    {"2024-03-05x", "error 241"},
    // neither
    {"", "1900-01-01"},
    {"   ", "1900-01-01"},
    {"  2024-03-05  ", "2024-03-05"},
    {"\t2024-03-05", "error 241"},
    {"abc", "error 241"},
    {"-", "error 241"},
    {"0", "error 241"},
    // range and rounding
    {"1752-12-31", "error 242"},
    {"1753-01-01", "1753-01-01"},
    {"9999-12-31 23:59:59.997", "9999-12-31 23:59:59.997"},
    {"9999-12-31 23:59:59.999", "error 242"},
    {"2024-12-31 23:59:59.999", "2025-01-01"},
    {"0000-01-01", "error 242"},
};
static_assert(std::size(dateTexts) >= 60);

/// What differs from datetime in the other types.
struct TypedDateText {
    const char* type;
    const char* text;
    const char* answer;
};

constexpr TypedDateText typedDateTexts[] = {
    {"date", "2024-03-05 10:15", "2024-03-05"},
    {"date", "0001-01-01", "0001-01-01"},
    {"date", "1752-12-31", "1752-12-31"},
    {"date", "2024-02-30", "error 241"},
    {"date", "13/05/2024", "error 241"},
    {"date", "24-3-5", "error 241"},
    {"date", "abc", "error 241"},
    {"date", "2024-03-05 10:15:30.1234567", "2024-03-05"},
    {"date", "2024-03-05 10:15:30.12345678", "error 241"},
    {"time", "2024-03-05 10:15:16", "1900-01-01 10:15:16.000"},
    {"time", "10:15:16.1234567", "1900-01-01 10:15:16.123"},
    {"time", "25:00", "error 241"},
    {"smalldatetime", "2024-05-08 12:35:29.998", "2024-05-08 12:35:00.000"},
    {"smalldatetime", "2024-05-08 12:35:29.999", "2024-05-08 12:36:00.000"},
    {"smalldatetime", "2079-06-06 23:59", "2079-06-06 23:59:00.000"},
    {"smalldatetime", "2079-06-07", "error 242"},
    {"smalldatetime", "1899-12-31", "error 242"},
    {"smalldatetime", "24-3-5", "error 242"},
    {"smalldatetime", "abc", "error 295"},
    {"datetime2", "0001-01-01", "0001-01-01"},
    {"datetime2", "2024-03-05 10:15:30.125", "2024-03-05 10:15:30.125"},
    {"datetime2", "2024-03-05 10:15:30.1234567", "2024-03-05 10:15:30.123"},
    {"datetime2", "2024-02-30", "error 241"},
};

/// The stored text of a Date, also of the years 1 to 99, which toCivil refuses.
std::string storedTextOf(Date date)
{
    CivilTime parts = civilOfDay(static_cast<std::int32_t>(dayOf(date).days));
    const double fraction = std::abs(date.days - dayOf(date).days);
    setTimeOfDay(parts, static_cast<std::int32_t>(std::llround(fraction * millisecondsPerDay)));
    char buffer[tsql::storedLength];
    std::string text{tsql::writeStored(parts, buffer)};
    constexpr std::string_view midnight = " 00:00:00.000";
    if (text.ends_with(midnight)) text.resize(text.size() - midnight.size());
    return text;
}

/// One database with a text column, and a column of the date type.
class DateTexts : public testing::Test {
protected:
    DateTexts()
    {
        run(connection_, "SET DATEFORMAT mdy CREATE TABLE TEXTS (X NVARCHAR(60))");
        for (const char* const type : {"datetime", "date", "time", "smalldatetime", "datetime2"})
            run(connection_, std::string{"CREATE TABLE D_"} + type + " (X " + type + ")");
    }

    /// The first value of a statement as a stored text, or "error N".
    std::string answer(std::string_view text, std::span<const ado::Parameter> parameters = {})
    {
        try {
            ado::Statement wanted = statement(text);
            wanted.parameters = parameters;
            const auto cursor = connection_->session().open(wanted);
            if (!cursor->next()) return "no row";
            const Variant value = cursor->value(0);
            // A time comes out as a fraction of a day, day 0 of a Date; the server's day 0 is 1 January 1900.
            if (value.asDate().days >= 0 && value.asDate().days < 1) return storedTextOf({value.asDate().days + 2});
            return storedTextOf(value.asDate());
        } catch (const Error& error) {
            return "error " + std::to_string(error.nativeError);
        }
    }

    /// Runs an INSERT into the table of the type and answers the stored value.
    std::string answerOfInsert(const std::string& type, const std::string& source,
                               std::span<const ado::Parameter> parameters = {})
    {
        run(connection_, "DELETE FROM D_" + type);
        try {
            const std::string text = "INSERT INTO D_" + type + " (X) " + source;
            ado::Statement wanted = statement(text);
            wanted.parameters = parameters;
            connection_->session().execute(wanted);
        } catch (const Error& error) {
            return "error " + std::to_string(error.nativeError);
        }
        return answer("SELECT X FROM D_" + type);
    }

    /// Each way of sending the text, and its answer.
    std::vector<std::pair<std::string, std::string>> answers(const std::string& type, const std::string& text)
    {
        const std::vector<ado::Parameter> parameters{
            {"", ado::DataType::VarWChar, ado::ParameterDirection::Input, 60, Variant{text}}};
        run(connection_, "DELETE FROM TEXTS");
        run(connection_, "INSERT INTO TEXTS (X) VALUES ('" + text + "')");
        return {{"literal", answer("SELECT CAST('" + text + "' AS " + type + ")")},
                {"column", answer("SELECT CAST(X AS " + type + ") FROM TEXTS")},
                {"parameter", answer("SELECT CAST(? AS " + type + ")", parameters)},
                {"stored literal", answerOfInsert(type, "VALUES ('" + text + "')")},
                {"stored column", answerOfInsert(type, "SELECT X FROM TEXTS")},
                {"stored parameter", answerOfInsert(type, "VALUES (?)", parameters)}};
    }

    void check(const std::string& type, const std::string& text, const std::string& wanted)
    {
        for (const auto& [way, given] : answers(type, text))
            EXPECT_EQ(given, wanted) << way << " '" << text << "' AS " << type;
    }

    ado::ConnectionRef connection_ = connectInMemory();
};

TEST_F(DateTexts, MeanTheSameAsLiteralColumnAndParameter)
{
    for (const DateText& row : dateTexts)
        check("datetime", row.text, row.answer);
}

TEST_F(DateTexts, MeanTheSameInEveryType)
{
    for (const TypedDateText& row : typedDateTexts)
        check(row.type, row.text, row.answer);
}

TEST_F(DateTexts, MeanTheSameInAComparison)
{
    run(connection_, "CREATE TABLE DAYS (X DATETIME) INSERT INTO DAYS VALUES ('20240305')");
    for (const DateText& row : dateTexts) {
        run(connection_, "DELETE FROM TEXTS");
        run(connection_, "INSERT INTO TEXTS (X) VALUES ('" + std::string{row.text} + "')");
        const auto literal = answer("SELECT X FROM DAYS WHERE X >= '" + std::string{row.text} + "'");
        const auto column = answer("SELECT D.X FROM DAYS D, TEXTS T WHERE D.X >= T.X");
        EXPECT_EQ(literal, column) << "'" << row.text << "'";
    }
}

TEST_F(DateTexts, MeanTheSameInEveryDateOrder)
{
    for (const char* const order : {"dmy", "ymd", "ydm", "myd", "dym", "mdy"}) {
        run(connection_, std::string{"SET DATEFORMAT "} + order);
        for (const DateText& row : dateTexts) {
            const auto given = answers("datetime", row.text);
            for (const auto& [way, answer] : given)
                EXPECT_EQ(answer, given.front().second) << order << ": " << way << " '" << row.text << "'";
        }
    }
}

TEST_F(DateTexts, FollowTheDateOrder)
{
    struct OrderRow {
        const char* order;
        const char* text;
        const char* answer;
    };
    constexpr OrderRow rows[] = {
        {"mdy", "03/05/2024", "2024-03-05"}, {"dmy", "03/05/2024", "2024-05-03"}, {"ymd", "24/03/05", "2024-03-05"},
        {"ydm", "24/03/05", "2024-05-03"},   {"myd", "03/24/05", "2024-03-05"},   {"dym", "05/24/03", "2024-03-05"},
        {"ymd", "24-3-5", "2024-03-05"},     {"dmy", "5-3-2024", "2024-03-05"},   {"dmy", "2024-03-05", "2024-03-05"},
        {"dmy", "20240305", "2024-03-05"},   {"dmy", "31/12/2024", "2024-12-31"}, {"dmy", "12/31/2024", "error 242"},
        {"myd", "03/2024/05", "2024-03-05"}, {"ymd", "03/05/2024", "2024-03-05"}, {"dmy", "5.3.2024", "2024-03-05"},
        {"mdy", "5.3.2024", "2024-05-03"},   {"ymd", "24.3.5", "2024-03-05"},     {"dmy", "31.12.49", "2049-12-31"},
        {"dmy", "2024/03/05", "2024-05-03"}, {"dmy", "2024.03.05", "2024-05-03"}, {"ymd", "2024/03/05", "2024-03-05"},
        {"ydm", "2024-03-05", "2024-03-05"}, {"ydm", "2024.03.05", "2024-05-03"}, {"mdy", "2024.03.05", "2024-03-05"},
    };
    for (const OrderRow& row : rows) {
        run(connection_, std::string{"SET DATEFORMAT "} + row.order);
        check("datetime", row.text, row.answer);
    }
}

TEST_F(DateTexts, AreDayFirstUnlessToldOtherwise)
{
    const auto fresh = connectInMemory();
    for (const char* const text : {"5/3/2024", "5.3.2024", "5-3-2024", "2024-03-05"})
        EXPECT_EQ(valueOf(fresh, "SELECT CAST('" + std::string{text} + "' AS datetime)"), Variant{makeDate(2024, 3, 5)})
            << text;
    EXPECT_EQ(fresh->ConnectionString(), "Provider=Tamarok.Embedded;Data Source=:memory:");
    OpenOptions american;
    american.dateOrder = tsql::DateOrder::Mdy;
    const auto other = connectInMemory(american);
    EXPECT_EQ(valueOf(other, "SELECT CAST('5.3.2024' AS datetime)"), Variant{makeDate(2024, 5, 3)});
    EXPECT_EQ(other->ConnectionString(), "Provider=Tamarok.Embedded;Data Source=:memory:;Date Order=MDY");
}

/// A session writes its dates by TransDate in the format of its record; the connection must have that order.
TEST_F(DateTexts, OfASessionAreReadAsTheyWereMeant)
{
    struct Setting {
        const char* format;
        const char* order;
    };
    for (const Setting& setting :
         {Setting{"DMY", "dmy"}, Setting{"MDY", "mdy"}, Setting{"YMD", "ymd"}, Setting{"YDM", "ydm"},
          Setting{"DD.MM.YYYY", "dmy"}, Setting{"MM.DD.YYYY", "mdy"}, Setting{"YYYY.MM.DD", "ymd"},
          Setting{"DD-MM-YYYY", "dmy"}, Setting{"YYYY-MM-DD", "dmy"}}) {
        run(connection_, std::string{"SET DATEFORMAT "} + setting.order);
        for (std::int32_t month = 1; month <= 12; ++month) {
            for (const std::int32_t day : {1, 5, 12, 13, 28}) {
                const Date date = makeDate(2024, month, day);
                const std::string text = Comm_Conv{}.TransDate(date, setting.format).asString();
                const std::string where = std::string{setting.format} + " " + text;
                EXPECT_EQ(answer("SELECT CAST('" + text + "' AS datetime)"), storedTextOf(date)) << where;
                EXPECT_EQ(answerOfInsert("smalldatetime", "VALUES ('" + text + "')"), storedTextOf(date)) << where;
                EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM D_smalldatetime WHERE X = '" + text + "'"),
                          Variant{1})
                    << where;
            }
        }
    }
}

} // namespace
} // namespace tamarok::embedded::test
