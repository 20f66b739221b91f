#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "timber/small_database.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"

namespace tamarok {
namespace {

using test::expectError;

using Points = std::vector<std::pair<double, double>>; ///< diameter and deduction

class Bark : public test::SmallDatabase {
protected:
    Bark()
    {
        std::string columns = "ID INT, HA NVARCHAR(10), GUELTIG_BIS SMALLDATETIME, RINDENTABELLE INT, RINDEPROZENT BIT";
        for (const std::string prefix : {"SW", "RA"})
            for (int point = 1; point <= 20; ++point)
                columns.append(", ").append(prefix).append(std::to_string(point)).append(" FLOAT");
        table("RINDENABZUG", columns);
    }

    /// A row of species FI. `head` holds GUELTIG_BIS, RINDENTABELLE and RINDEPROZENT.
    void row(int id, const std::string& head, const Points& points)
    {
        std::string columns{"INSERT INTO RINDENABZUG (ID,HA,GUELTIG_BIS,RINDENTABELLE,RINDEPROZENT"};
        std::string values = std::to_string(id);
        values.append(",'FI',").append(head);
        for (std::size_t index = 0; index < points.size(); ++index) {
            const std::string number = std::to_string(index + 1);
            columns.append(",SW").append(number).append(",RA").append(number);
            values.append(",").append(convert::toPlainText(points[index].first));
            values.append(",").append(convert::toPlainText(points[index].second));
        }
        run(columns.append(") VALUES (").append(values).append(")"));
    }

    std::string of(const char* diameter, const char* mode = "cm", const char* date = "", const char* table = "-1",
                   const char* species = "FI")
    {
        return set.CalculateRinde(session, "7", species, mode, diameter, true, table, date);
    }

    /// Point n lies at 10 n cm; the deductions follow no line.
    static Points ladder(int count)
    {
        Points points;
        for (int point = 1; point <= count; ++point)
            points.emplace_back(10.0 * point, 0.01 * point * point + 0.5);
        return points;
    }

    const std::string centimetres = "NULL,0,0";
    const std::string percent = "NULL,0,1";
    Comm_Set set;
};

TEST_F(Bark, BetweenTwoPointsOnTheLine)
{
    row(1, centimetres, {{10, 1.0}, {20, 2.0}});
    EXPECT_EQ(of("15"), "1,50");
    EXPECT_EQ(of("5"), "0,50");
    EXPECT_EQ(of("10"), "1,00");
    EXPECT_EQ(of("10,5"), "1,05");
    EXPECT_EQ(of("20"), "2,00");
    EXPECT_EQ(of("0,01"), "0,00");
    EXPECT_EQ(of("-10"), "-1,00");
}

TEST_F(Bark, EveryInterval)
{
    row(1, centimetres, ladder(20));
    const auto at = [](double point) { return 0.01 * point * point + 0.5; };
    for (int point = 2; point <= 20; ++point) {
        const std::string middle = std::to_string(10 * point - 5);
        const double expected = (at(point - 1) + at(point)) / 2;
        const double result = convert::toDouble(Variant{of(middle.c_str())});
        EXPECT_NEAR(result, expected, 0.005001) << middle;
        EXPECT_NEAR(convert::toDouble(Variant{of(std::to_string(10 * point).c_str())}), at(point), 0.005001);
    }
    // Above SW20 the last interval goes on, below SW1 the first one.
    EXPECT_EQ(of("210"), "4,89");
    EXPECT_EQ(of("5"), "0,50"); // 0.51 + (0.54 - 0.51) * (-5) / 10 = 0.495
}

TEST_F(Bark, ATableInCentimetresAskedForPercent)
{
    row(1, centimetres, {{10, 1.0}, {20, 2.0}});
    EXPECT_EQ(of("20", "%"), "19,00");
    EXPECT_EQ(of("10", "%"), "19,00");
    // A deduction of the whole diameter is a hundred percent, and beyond it the difference is squared.
    run("UPDATE RINDENABZUG SET RA1 = 10, RA2 = 30");
    EXPECT_EQ(of("10", "%"), "100,00");
    EXPECT_EQ(of("20", "%"), "75,00");
}

TEST_F(Bark, ATableInPercentAskedForCentimetres)
{
    row(1, percent, {{10, 19.0}, {20, 19.0}});
    EXPECT_EQ(of("20", "cm"), "2,00");
    EXPECT_EQ(of("20", "%"), "19,00");
    run("UPDATE RINDENABZUG SET RA1 = 100, RA2 = 100");
    EXPECT_EQ(of("20", "cm"), "20,00");
    run("UPDATE RINDENABZUG SET RA1 = 0, RA2 = 0");
    EXPECT_EQ(of("20", "cm"), "0,00");
}

TEST_F(Bark, MoreThanAHundredPercentIsAnInvalidArgument)
{
    row(1, percent, {{10, 120.0}, {20, 120.0}});
    expectError(errors::invalidArgument, "root", [&] { of("20", "cm"); });
    EXPECT_EQ(of("20", "%"), "120,00"); // where nothing is converted, nothing fails
}

TEST_F(Bark, AnotherModeConvertsNothing)
{
    row(1, centimetres, {{10, 1.0}, {20, 2.0}});
    row(2, "NULL,5,1", {{10, 19.0}, {20, 19.0}});
    for (const char* mode : {"CM", "mm", " %", "percent"}) {
        EXPECT_EQ(of("20", mode, "", "0"), "2,00") << mode;
        EXPECT_EQ(of("20", mode, "", "5"), "19,00") << mode;
    }
}

TEST_F(Bark, ATableWithoutUnitConvertsNothing)
{
    row(1, "NULL,NULL,NULL", {{10, 1.0}, {20, 2.0}});
    EXPECT_EQ(of("15", "cm"), "1,50");
    EXPECT_EQ(of("15", "%"), "1,50");
}

TEST_F(Bark, BeyondATableThatStopsEarlyThereIsNone)
{
    row(1, centimetres, {{10, 1.0}, {20, 2.0}});
    EXPECT_EQ(of("20,01"), "0,00");
    EXPECT_EQ(of("60"), "0,00");
    EXPECT_EQ(of("60", "%"), "0,00");
    run("UPDATE RINDENABZUG SET RINDEPROZENT = 1");
    EXPECT_EQ(of("60", "cm"), "0,00");
}

TEST_F(Bark, NineteenPointsRunAgainstTheZeroPoint)
{
    row(1, centimetres, ladder(19)); // SW19 190 cm, RA19 4.11; SW20 is Null
    EXPECT_EQ(of("190"), "4,11");
    EXPECT_EQ(of("380"), "8,22"); // (0 - 4.11) * (380 - 190) / (0 - 190) + 4.11
    EXPECT_EQ(of("200"), "4,33");
}

TEST_F(Bark, OnePointAloneRunsAgainstTheZeroPointToo)
{
    row(1, centimetres, {{20, 2.0}});
    EXPECT_EQ(of("10"), "1,00"); // R1 = 20, V1 = 2, R2 = V2 = 0
    EXPECT_EQ(of("20"), "2,00");
    EXPECT_EQ(of("20,5"), "0,00");
}

TEST_F(Bark, EqualPointsGiveTheFirstDeduction)
{
    row(1, centimetres, {{10, 1.0}, {10, 3.0}, {20, 4.0}, {20, 9.0}});
    EXPECT_EQ(of("5"), "1,00");
    EXPECT_EQ(of("10"), "1,00");
    EXPECT_EQ(of("15"), "3,50");
    EXPECT_EQ(of("20"), "4,00");
}

TEST_F(Bark, AGapAmongThePointsGivesNone)
{
    row(1, centimetres, {{10, 1.0}, {20, 2.0}, {30, 3.0}, {40, 4.0}});
    run("UPDATE RINDENABZUG SET SW3 = NULL");
    EXPECT_EQ(of("25"), "0,00");
    EXPECT_EQ(of("35"), "0,00");
    EXPECT_EQ(of("15"), "1,50");
    // A deduction that is missing counts as 0.
    run("UPDATE RINDENABZUG SET SW3 = 30, RA3 = NULL");
    EXPECT_EQ(of("25"), "1,00");
}

TEST_F(Bark, PointsOutOfOrderNameTwoIntervalsAndGiveNone)
{
    row(1, centimetres, {{10, 1.0}, {20, 2.0}, {10, 3.0}, {20, 4.0}});
    EXPECT_EQ(of("15"), "0,00");
    EXPECT_EQ(of("10"), "1,00");
}

TEST_F(Bark, TheRowThatExpiresSoonestCounts)
{
    row(1, "NULL,0,0", {{10, 1.0}, {20, 1.0}});
    row(2, "'2024-12-31',0,0", {{10, 2.0}, {20, 2.0}});
    row(3, "'2023-12-31',0,0", {{10, 3.0}, {20, 3.0}});
    row(4, "'2060-12-31',0,0", {{10, 4.0}, {20, 4.0}});
    EXPECT_EQ(of("15", "cm", "01.06.2023"), "3,00");
    EXPECT_EQ(of("15", "cm", "31.12.2023"), "3,00");
    EXPECT_EQ(of("15", "cm", "01.01.2024"), "2,00");
    EXPECT_EQ(of("15", "cm", "31.12.2024"), "2,00");
    // An open end counts as 01.01.2050.
    EXPECT_EQ(of("15", "cm", "01.01.2025"), "1,00");
    EXPECT_EQ(of("15", "cm", "31.12.2055"), "1,00");
    run("DELETE FROM RINDENABZUG WHERE ID = 1");
    EXPECT_EQ(of("15", "cm", "01.01.2025"), "4,00");
    EXPECT_EQ(of("15", "cm", "01.01.2061"), "0,00");
    EXPECT_EQ(of("15", "cm", ""), "2,00"); // the clock stands on 17 May 2024
}

TEST_F(Bark, AmongEqualsTheSmallestKeyCounts)
{
    row(9, "NULL,0,0", {{10, 9.0}, {20, 9.0}});
    row(5, "NULL,0,0", {{10, 5.0}, {20, 5.0}});
    row(7, "NULL,0,0", {{10, 7.0}, {20, 7.0}});
    EXPECT_EQ(of("15"), "5,00");
}

TEST_F(Bark, TheOptionChoosesTheTable)
{
    row(1, "'2024-12-31',2,0", {{10, 2.0}, {20, 2.0}});
    row(2, "'2025-12-31',NULL,0", {{10, 1.0}, {20, 1.0}});
    row(3, "NULL,0,0", {{10, 3.0}, {20, 3.0}});
    EXPECT_EQ(of("15", "cm", "", "-1"), "2,00");
    EXPECT_EQ(of("15", "cm", "", "0"), "1,00");
    EXPECT_EQ(of("15", "cm", "", "2"), "2,00");
    EXPECT_EQ(of("15", "cm", "", "3"), "0,00");
    EXPECT_EQ(of("15", "cm", "01.01.2026", "0"), "3,00");
}

TEST_F(Bark, NoRowGivesZero)
{
    EXPECT_EQ(of("15"), "0,00");
    EXPECT_EQ(of("15", "%"), "0,00");
    row(1, centimetres, {{10, 1.0}, {20, 2.0}});
    EXPECT_EQ(of("15", "cm", "", "-1", "BU"), "0,00");
    run("UPDATE RINDENABZUG SET HA = NULL");
    EXPECT_EQ(of("15"), "0,00");
}

TEST_F(Bark, ARowOfNullsGivesZero)
{
    run("INSERT INTO RINDENABZUG (HA) VALUES ('FI')");
    EXPECT_EQ(of("15"), "0,00");
}

TEST_F(Bark, FailuresOfTheServerAreItsOwn)
{
    row(1, "'2024-12-31',0,0", {{10, 1.0}, {20, 2.0}});
    expectError(errors::statementRefused, "", [&] { of("15", "cm", "", ""); }); // RINDENTABELLE = nothing
    expectError(errors::statementRefused, "yesterday", [&] { of("15", "cm", "yesterday"); });
    expectError(errors::statementRefused, "31.02.2024", [&] { of("15", "cm", "31.02.2024"); });
    expectError(errors::statementRefused, ".5", [&] { of("1.234,5"); }); // the text goes in with two points
    expectError(errors::statementRefused, "quotation mark", [&] { of("15", "cm", "", "-1", "O'Hara"); });
    EXPECT_EQ(of("15"), "1,50");
}

TEST_F(Bark, ArithmeticThatFails)
{
    row(1, centimetres, {{10, 1.0}, {20, 2.0}});
    expectError(errors::divisionByZero, "cross-section", [&] { of("1E-200", "%"); });
    run("UPDATE RINDENABZUG SET RA1 = 1E308, RA2 = -1E308");
    expectError(errors::overflow, "bark", [&] { of("15"); });
    run("UPDATE RINDENABZUG SET RA1 = 1E200, RA2 = 1E200");
    expectError(errors::overflow, "bark", [&] { of("15", "%"); });
    // An infinite width of the interval would give the deduction of its lower end.
    run("UPDATE RINDENABZUG SET RA1 = 1, RA2 = 2, SW1 = -1E308, SW2 = 1E308");
    expectError(errors::overflow, "bark", [&] { of("15"); });
}

TEST_F(Bark, PercentThatOverflowAreNoNegativeRoot)
{
    row(1, percent, {{10, 1E308}, {20, 1E308}});
    expectError(errors::overflow, "area without bark", [&] { of("15"); });
    run("UPDATE RINDENABZUG SET RA1 = 101, RA2 = 101");
    expectError(errors::invalidArgument, "area without bark", [&] { of("15"); });
}

} // namespace
} // namespace tamarok
