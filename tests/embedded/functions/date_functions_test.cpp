#include <gtest/gtest.h>

#include "embedded/functions/scratch_database.h"

#include "tamarok/platform.h"

namespace tamarok::embedded::functions {
namespace {

TEST(Dates, OutOfTexts)
{
    constexpr Row rows[] = {
        {"tm_datetime('2024-03-05')", "'2024-03-05 00:00:00.000'"},
        {"tm_datetime('2024-03-05 10:15')", "'2024-03-05 10:15:00.000'"},
        {"tm_datetime('2024-03-05T10:15:30')", "'2024-03-05 10:15:30.000'"},
        {"tm_datetime('20240305')", "'2024-03-05 00:00:00.000'"},
        {"tm_datetime('20240305 10:15:30.5')", "'2024-03-05 10:15:30.500'"},
        {"tm_datetime('240305')", "'2024-03-05 00:00:00.000'"},
        {"tm_datetime('05.03.2024')", "'2024-03-05 00:00:00.000'"},
        {"tm_datetime('5.3.24')", "'2024-03-05 00:00:00.000'"},
        {"tm_datetime('31.12.49')", "'2049-12-31 00:00:00.000'"},
        {"tm_datetime('31.12.50')", "'1950-12-31 00:00:00.000'"},
        {"tm_datetime('05/03/2024')", "'2024-03-05 00:00:00.000'"},
        {"tm_datetime('05/13/2024')", "error 242:The conversion of a nvarchar data type to a datetime data type "
                                      "resulted in an out-of-range value. Value: '05/13/2024'."},
        {"tm_datetime('2024/05/03')", "'2024-03-05 00:00:00.000'"},
        {"tm_datetime('05-03-2024')", "'2024-03-05 00:00:00.000'"},
        {"tm_datetime('Mar 5 2024')", "'2024-03-05 00:00:00.000'"},
        {"tm_datetime('March 5, 2024 10:15PM')", "'2024-03-05 22:15:00.000'"},
        {"tm_datetime('5 Mar 2024')", "'2024-03-05 00:00:00.000'"},
        {"tm_datetime('5-Mar-24')", "'2024-03-05 00:00:00.000'"},
        {"tm_datetime('Mar  5 2024 10:15AM')", "'2024-03-05 10:15:00.000'"},
        {"tm_datetime('2024')", "'2024-01-01 00:00:00.000'"},
        {"tm_datetime('10:15')", "'1900-01-01 10:15:00.000'"},
        {"tm_datetime('10 PM')", "'1900-01-01 22:00:00.000'"},
        {"tm_datetime('12:00 AM')", "'1900-01-01 00:00:00.000'"},
        {"tm_datetime('12:30 PM')", "'1900-01-01 12:30:00.000'"},
        {"tm_datetime('')", "'1900-01-01 00:00:00.000'"},
        {"tm_datetime('  2024-03-05  ')", "'2024-03-05 00:00:00.000'"},
        {"tm_datetime('abc')", "error 241:Conversion failed when converting date and/or time from character string. "
                               "Value: 'abc'."},
        {"tm_datetime('2024-02-30')", "error 242"},
        {"tm_datetime('2024-02-29')", "'2024-02-29 00:00:00.000'"},
        {"tm_datetime('2023-02-29')", "error 242"},
        {"tm_datetime('1900-02-29')", "error 242"},
        {"tm_datetime('2024-13-01')", "error 242"},
        {"tm_datetime('1752-12-31')", "error 242"},
        {"tm_datetime('1753-01-01')", "'1753-01-01 00:00:00.000'"},
        {"tm_datetime('9999-12-31 23:59:59.997')", "'9999-12-31 23:59:59.997'"},
        {"tm_datetime('2024-03-05 25:00')", "error 242"},
        {"tm_datetime('2024-03-05 10:61')", "error 242"},
        {"tm_datetime('2024-03-05 x')", "error 241"},
        {"tm_datetime('2024-03')", "error 241"},
        {"tm_datetime('2024-03-05 10:00:00.1234')", "error 241"},
        {"tm_datetime('1.2.3.4')", "error 241"},
        {"tm_datetime('Foo 5 2024')", "error 241"},
        {"tm_datetime(NULL)", "NULL"},
        {"tm_date('2024-03-05 10:15')", "'2024-03-05 00:00:00.000'"},
        {"tm_date('0001-01-01')", "'0001-01-01 00:00:00.000'"},
        {"tm_date('2024-02-30')", "error 241"},
        {"tm_time('2024-03-05 10:15:16')", "'1900-01-01 10:15:16.000'"},
    };
    checkRows(rows);
}

TEST(Dates, OutOfNumbers)
{
    constexpr Row rows[] = {
        {"tm_datetime(0)", "'1900-01-01 00:00:00.000'"},
        {"tm_datetime(1.5)", "'1900-01-02 12:00:00.000'"},
        {"tm_datetime(-1)", "'1899-12-31 00:00:00.000'"},
        {"tm_datetime(-0.25)", "'1899-12-31 18:00:00.000'"},
        {"tm_datetime(45355)", "'2024-03-06 00:00:00.000'"},
        {"tm_datetime(-53690)", "'1753-01-01 00:00:00.000'"},
        {"tm_datetime(-53691)", "error 8115"},
        {"tm_datetime(2958463)", "'9999-12-31 00:00:00.000'"},
        {"tm_datetime(2958464)", "error 8115"},
        {"tm_datetime(1e300)", "error 8115"},
        {"tm_smalldatetime(-1)", "error 8115"},
    };
    checkRows(rows);
}

TEST(Dates, Rounding)
{
    constexpr Row rows[] = {
        {"tm_datetime('2024-01-01 00:00:00.001')", "'2024-01-01 00:00:00.000'"},
        {"tm_datetime('2024-01-01 00:00:00.002')", "'2024-01-01 00:00:00.003'"},
        {"tm_datetime('2024-01-01 00:00:00.004')", "'2024-01-01 00:00:00.003'"},
        {"tm_datetime('2024-01-01 00:00:00.005')", "'2024-01-01 00:00:00.007'"},
        {"tm_datetime('2024-01-01 00:00:00.008')", "'2024-01-01 00:00:00.007'"},
        {"tm_datetime('2024-01-01 00:00:00.009')", "'2024-01-01 00:00:00.010'"},
        {"tm_datetime('2024-12-31 23:59:59.999')", "'2025-01-01 00:00:00.000'"},
        {"tm_smalldatetime('2024-05-08 12:35:29.998')", "'2024-05-08 12:35:00.000'"},
        {"tm_smalldatetime('2024-05-08 12:35:29.999')", "'2024-05-08 12:36:00.000'"},
        {"tm_smalldatetime('2024-05-08 12:35:30')", "'2024-05-08 12:36:00.000'"},
        {"tm_smalldatetime('2024-12-31 23:59:45')", "'2025-01-01 00:00:00.000'"},
        {"tm_smalldatetime('2079-06-06 23:59')", "'2079-06-06 23:59:00.000'"},
        {"tm_smalldatetime('2079-06-07')", "error 242"},
        {"tm_smalldatetime('1899-12-31')", "error 242"},
        {"tm_smalldatetime('abc')", "error 295"},
    };
    checkRows(rows);
}

TEST(Dates, ByTheConnectionsOrder)
{
    ScratchDatabase database;
    const auto read = [&database](tsql::DateOrder order, std::string_view text) {
        database.context().dateOrder = order;
        return database.evaluate("tm_date('" + std::string{text} + "')").substr(1, 10);
    };
    EXPECT_EQ(read(tsql::DateOrder::Mdy, "03/05/2024"), "2024-03-05");
    EXPECT_EQ(read(tsql::DateOrder::Dmy, "03/05/2024"), "2024-05-03");
    EXPECT_EQ(read(tsql::DateOrder::Ymd, "24/03/05"), "2024-03-05");
    EXPECT_EQ(read(tsql::DateOrder::Ydm, "24/03/05"), "2024-05-03");
    EXPECT_EQ(read(tsql::DateOrder::Myd, "03/24/05"), "2024-03-05");
    EXPECT_EQ(read(tsql::DateOrder::Dym, "05/24/03"), "2024-03-05");
    EXPECT_EQ(read(tsql::DateOrder::Dmy, "2024-03-05"), "2024-03-05");
    EXPECT_EQ(read(tsql::DateOrder::Dmy, "03-05-2024"), "2024-05-03");
    EXPECT_EQ(read(tsql::DateOrder::Mdy, "03.05.2024"), "2024-03-05");
    EXPECT_EQ(read(tsql::DateOrder::Dmy, "03.05.2024"), "2024-05-03");
}

TEST(Dates, StylesToText)
{
    constexpr Row rows[] = {
        {"tm_datetext('2024-03-05 10:15:30.127',0,-1)", "'Mar  5 2024 10:15AM'"},
        {"tm_datetext('2024-03-05 00:05:00.000',100,-1)", "'Mar  5 2024 12:05AM'"},
        {"tm_datetext('2024-12-25 14:05:00.000',100,-1)", "'Dec 25 2024  2:05PM'"},
        {"tm_datetext('2024-03-05 10:15:30.127',1,-1)", "'03/05/24'"},
        {"tm_datetext('2024-03-05 10:15:30.127',3,-1)", "'05/03/24'"},
        {"tm_datetext('2024-03-05 10:15:30.127',4,-1)", "'05.03.24'"},
        {"tm_datetext('2024-03-05 10:15:30.127',12,-1)", "'240305'"},
        {"tm_datetext('2024-03-05 10:15:30.127',101,-1)", "'03/05/2024'"},
        {"tm_datetext('2024-03-05 10:15:30.127',102,-1)", "'2024.03.05'"},
        {"tm_datetext('2024-03-05 10:15:30.127',103,-1)", "'05/03/2024'"},
        {"tm_datetext('2024-03-05 10:15:30.127',104,-1)", "'05.03.2024'"},
        {"tm_datetext('2024-03-05 10:15:30.127',105,-1)", "'05-03-2024'"},
        {"tm_datetext('2024-03-05 10:15:30.127',106,-1)", "'05 Mar 2024'"},
        {"tm_datetext('2024-03-05 10:15:30.127',107,-1)", "'Mar 05, 2024'"},
        {"tm_datetext('2024-03-05 10:15:30.127',108,-1)", "'10:15:30'"},
        {"tm_datetext('2024-03-05 10:15:30.127',109,-1)", "'Mar  5 2024 10:15:30:127AM'"},
        {"tm_datetext('2024-03-05 10:15:30.127',110,-1)", "'03-05-2024'"},
        {"tm_datetext('2024-03-05 10:15:30.127',111,-1)", "'2024/03/05'"},
        {"tm_datetext('2024-03-05 10:15:30.127',112,-1)", "'20240305'"},
        {"tm_datetext('2024-03-05 10:15:30.127',113,-1)", "'05 Mar 2024 10:15:30:127'"},
        {"tm_datetext('2024-03-05 10:15:30.127',114,-1)", "'10:15:30:127'"},
        {"tm_datetext('2024-03-05 10:15:30.127',120,-1)", "'2024-03-05 10:15:30'"},
        {"tm_datetext('2024-03-05 10:15:30.127',121,-1)", "'2024-03-05 10:15:30.127'"},
        {"tm_datetext('2024-03-05 10:15:30.127',126,-1)", "'2024-03-05T10:15:30.127'"},
        {"tm_datetext('2024-03-05 10:15:30.000',126,-1)", "'2024-03-05T10:15:30'"},
        {"tm_datetext('2024-03-05 10:15:30.127',120,10)", "'2024-03-05'"},
        {"tm_datetext('2024-03-05 10:15:30.127',104,6)", "'05.03.'"},
        {"tm_datetext('2024-03-05 10:15:30.127',99,-1)", "error 281"},
        {"tm_datetext(NULL,104,10)", "NULL"},
    };
    checkRows(rows);
}

TEST(Dates, StylesFromText)
{
    constexpr Row rows[] = {
        {"tm_datetimestyle('03/05/2024',101)", "'2024-03-05 00:00:00.000'"},
        {"tm_datetimestyle('03/05/2024',103)", "'2024-05-03 00:00:00.000'"},
        {"tm_datetimestyle('05.03.2024',104)", "'2024-03-05 00:00:00.000'"},
        {"tm_datetimestyle('01.01.2050',104)", "'2050-01-01 00:00:00.000'"},
        {"tm_datetimestyle('05-03-2024',105)", "'2024-03-05 00:00:00.000'"},
        {"tm_datetimestyle('05 Mar 2024',106)", "'2024-03-05 00:00:00.000'"},
        {"tm_datetimestyle('05-03-2024',110)", "'2024-05-03 00:00:00.000'"},
        {"tm_datetimestyle('2024.03.05',102)", "'2024-03-05 00:00:00.000'"},
        {"tm_datetimestyle('2024/03/05',111)", "'2024-03-05 00:00:00.000'"},
        {"tm_datetimestyle('20240305',112)", "'2024-03-05 00:00:00.000'"},
        {"tm_datetimestyle('2024-03-05 10:15:30',120)", "'2024-03-05 10:15:30.000'"},
        {"tm_datetimestyle('2024-03-05 10:15:30.123',121)", "'2024-03-05 10:15:30.123'"},
        {"tm_datetimestyle('2024-03-05T10:15:30',126)", "'2024-03-05 10:15:30.000'"},
        {"tm_datetimestyle('03.05.2024',101)", "'2024-03-05 00:00:00.000'"},
        {"tm_datetimestyle('13/05/2024',101)", "error 242"},
        {"tm_datetimestyle('05/13/2024',103)", "error 242"},
        {"tm_datetimestyle('2024-08-15',103)", "error 242"},
        {"tm_datetimestyle('31/12/2024',120)", "error 242"},
        {"tm_datetimestyle('holz',104)", "error 241"},
        {"tm_datetimestyle('05.03.2024',99)", "error 281"},
        {"tm_datetimestyle(NULL,104)", "NULL"},
    };
    checkRows(rows);
}

TEST(Dates, EveryStyleWithADateReturns)
{
    ScratchDatabase database;
    for (const int style : {100, 101, 102, 103, 104, 105, 106, 107, 109, 110, 111, 112, 113, 120, 121, 126}) {
        const std::string number = std::to_string(style);
        const std::string back = database.evaluate("tm_datetimestyle(tm_datetext('2024-03-05 00:00:00.000'," + number +
                                                   ",-1)," + number + ")");
        EXPECT_EQ(back, "'2024-03-05 00:00:00.000'") << style;
    }
}

TEST(Dates, Parts)
{
    constexpr Row rows[] = {
        {"YEAR('2024-03-05')", "2024"},
        {"MONTH('05.03.2024')", "3"},
        {"DAY('2024-03-05 10:15')", "5"},
        {"YEAR(0)", "1900"},
        {"YEAR(NULL)", "NULL"},
        {"YEAR('abc')", "error 241"},
        {"DATEPART('quarter','2024-03-31')", "1"},
        {"DATEPART('qq','2024-04-01')", "2"},
        {"DATEPART('dy','2024-12-31')", "366"},
        {"DATEPART('dw','2024-03-03')", "1"},
        {"DATEPART('weekday','2024-03-09')", "7"},
        {"DATEPART('week','2024-01-06')", "1"},
        {"DATEPART('wk','2024-01-07')", "2"},
        {"DATEPART('ww','2024-12-31')", "53"},
        {"DATEPART('iso_week','2024-12-30')", "1"},
        {"DATEPART('isowk','2021-01-03')", "53"},
        {"DATEPART('isoww','2021-01-04')", "1"},
        {"DATEPART('hh','2024-03-05 10:15:30.127')", "10"},
        {"DATEPART('n','2024-03-05 10:15:30.127')", "15"},
        {"DATEPART('ss','2024-03-05 10:15:30.127')", "30"},
        {"DATEPART('ms','2024-03-05 10:15:30.127')", "127"},
        {"DATEPART('foo','2024-03-05')", "error 155:'foo' is not a recognized datepart option."},
        {"DATENAME('month','2024-03-05')", "'March'"},
        {"DATENAME('dw','2024-03-05')", "'Tuesday'"},
        {"DATENAME('yyyy','2024-03-05')", "'2024'"},
        {"DATENAME('dd','2024-03-05')", "'5'"},
        {"EOMONTH('2024-02-10')", "'2024-02-29 00:00:00.000'"},
        {"EOMONTH('2024-01-31',1)", "'2024-02-29 00:00:00.000'"},
        {"EOMONTH('2024-01-31',-2)", "'2023-11-30 00:00:00.000'"},
        {"EOMONTH(NULL)", "NULL"},
        {"ISDATE('2024-03-05')", "1"},
        {"ISDATE('05.03.2024')", "1"},
        {"ISDATE('2024-02-30')", "0"},
        {"ISDATE('abc')", "0"},
        {"ISDATE('')", "0"},
        {"ISDATE(NULL)", "0"},
        {"ISDATE('1752-01-01')", "0"},
        {"ISDATE('10:15')", "1"},
        {"ISDATE('2024')", "1"},
    };
    checkRows(rows);
}

TEST(Dates, Differences)
{
    constexpr Row rows[] = {
        {"DATEDIFF('year','2023-12-31','2024-01-01')", "1"},
        {"DATEDIFF('yy','2024-01-01','2024-12-31')", "0"},
        {"DATEDIFF('yyyy','2024-01-01','2023-12-31')", "-1"},
        {"DATEDIFF('qq','2024-03-31','2024-04-01')", "1"},
        {"DATEDIFF('q','2023-12-31','2024-12-31')", "4"},
        {"DATEDIFF('month','2024-01-31','2024-02-01')", "1"},
        {"DATEDIFF('mm','2024-01-01','2024-01-31')", "0"},
        {"DATEDIFF('m','2023-01-01','2024-03-01')", "14"},
        {"DATEDIFF('dy','2024-02-28','2024-03-01')", "2"},
        {"DATEDIFF('day','2024-01-01 23:59:59','2024-01-02')", "1"},
        {"DATEDIFF('dd','2024-01-02','2024-01-01 23:59:59')", "-1"},
        {"DATEDIFF('d','2024-01-01','2024-01-01 23:59:59')", "0"},
        {"DATEDIFF('week','2024-03-02','2024-03-03')", "1"},
        {"DATEDIFF('wk','2024-03-03','2024-03-09')", "0"},
        {"DATEDIFF('ww','2024-03-03','2024-03-10')", "1"},
        {"DATEDIFF('weekday','2024-03-03','2024-03-10')", "7"},
        {"DATEDIFF('hour','2024-01-01 10:59','2024-01-01 11:00')", "1"},
        {"DATEDIFF('hh','2024-01-01 10:00','2024-01-01 10:59')", "0"},
        {"DATEDIFF('minute','2024-01-01 10:00:59','2024-01-01 10:01:00')", "1"},
        {"DATEDIFF('mi','1899-12-31 23:59:59','1900-01-01')", "1"},
        {"DATEDIFF('n','2024-01-01','2024-01-02')", "1440"},
        {"DATEDIFF('second','2024-01-01 10:00:00.997','2024-01-01 10:00:01')", "1"},
        {"DATEDIFF('ss','2024-01-01','2024-01-02')", "86400"},
        {"DATEDIFF('s','2024-01-02','2024-01-01')", "-86400"},
        {"DATEDIFF('ms','2024-01-01','2024-01-01 00:00:01.003')", "1003"},
        {"DATEDIFF('millisecond','2024-01-01','2024-02-01')", "error 535"},
        {"DATEDIFF('day',0,'1900-01-02')", "1"},
        {"DATEDIFF('day',NULL,'1900-01-02')", "NULL"},
        {"DATEDIFF('foo','2024-01-01','2024-01-01')", "error 155"},
        {"DATEDIFF('dd','x','2024-01-01')", "error 241"},
    };
    checkRows(rows);
}

TEST(Dates, Additions)
{
    constexpr Row rows[] = {
        {"DATEADD('month',1,'2024-01-31')", "'2024-02-29 00:00:00.000'"},
        {"DATEADD('mm',1,'2023-01-31')", "'2023-02-28 00:00:00.000'"},
        {"DATEADD('month',-1,'2024-03-31')", "'2024-02-29 00:00:00.000'"},
        {"DATEADD('year',1,'2024-02-29')", "'2025-02-28 00:00:00.000'"},
        {"DATEADD('qq',1,'2024-11-30')", "'2025-02-28 00:00:00.000'"},
        {"DATEADD('day',-1,'2024-03-01')", "'2024-02-29 00:00:00.000'"},
        {"DATEADD('dd',1.9,'2024-03-01')", "'2024-03-02 00:00:00.000'"},
        {"DATEADD('wk',2,'2024-03-01')", "'2024-03-15 00:00:00.000'"},
        {"DATEADD('hh',25,'2024-03-01')", "'2024-03-02 01:00:00.000'"},
        {"DATEADD('n',-1,'2024-03-01')", "'2024-02-29 23:59:00.000'"},
        {"DATEADD('ss',90,'2024-03-01')", "'2024-03-01 00:01:30.000'"},
        {"DATEADD('ms',5,'2024-03-01')", "'2024-03-01 00:00:00.007'"},
        {"DATEADD('year',8000,'2024-03-01')", "error 517"},
        {"DATEADD('day',2147483647,'2024-03-01')", "error 517"},
        {"DATEADD('day',2147483648,'2024-03-01')", "error 8115"},
        {"DATEADD('day',NULL,'2024-03-01')", "NULL"},
        {"tm_dateadd_days('2024-03-05 00:00:00.000',1.25)", "'2024-03-06 06:00:00.000'"},
        {"tm_dateadd_days('2024-03-05 00:00:00.000',-5)", "'2024-02-29 00:00:00.000'"},
        {"tm_dateadd_days('2024-03-05 00:00:00.000',1e9)", "error 8115"},
        {"tm_datediff_days('2024-03-05 12:00:00.000','2024-03-01 00:00:00.000')", "4.5"},
    };
    checkRows(rows);
}

TEST(Dates, NowIsThePlatformsClock)
{
    Platform platform;
    platform.clock = std::make_shared<FixedClock>(fromCivil({2024, 3, 5, 10, 15, 30, 126}));
    const PlatformScope scope{platform};
    constexpr Row rows[] = {{"GETDATE()", "'2024-03-05 10:15:30.127'"},
                            {"SYSDATE()", "'2024-03-05 10:15:30.127'"},
                            {"ABS(DATEDIFF('hour',GETUTCDATE(),GETDATE())) <= 14", "1"},
                            {"DATEDIFF('n',GETUTCDATE(),GETDATE()) % 15", "0"}};
    checkRows(rows);
}

} // namespace
} // namespace tamarok::embedded::functions
