#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "support/errors.h"

#include "tamarok/comm_get.h"

namespace tamarok {
namespace {

using test::errorNumber;

const std::string front = "SELECT EINHEIT.NAME, (CASE WHEN ISNULL(LOHNARTEN.SLA,0)=1 THEN (SELECT TOP 1 RATE FROM "
                          "ONETODATE WHERE TABLE_COLUMN = 'LOHNARTEN.SATZ' AND TABLE_ID = 4 AND "
                          "YEAR(DATUM)*100+MONTH(DATUM) <= 202403 ORDER BY DATUM DESC) ELSE";
const std::string back = " END) AS SATZ FROM LOHNARTEN INNER JOIN EINHEIT ON EINHEIT.ID = LOHNARTEN.EINHEIT WHERE "
                         "EINHEIT.NAME IS NOT NULL AND LOHNARTEN.ID = 4";

TEST(WageRate, OfAPersonIsThatOfTheWageGroup)
{
    EXPECT_EQ(Comm_Get{}.getSatzLohnerfassung(4, 2024, 3, 348, 0),
              front +
                  " (SELECT TOP 1 BETRAG FROM LOHNGRUPPE WHERE NAME IN (SELECT TOP 1 TEXT FROM ONETODATE WHERE "
                  "TABLE_COLUMN = 'PERSONAL.LOHNGRUPPE' AND TABLE_ID = 348 AND YEAR(DATUM)*100+MONTH(DATUM) <= 202403 "
                  "ORDER BY ONETODATE.DATUM DESC) AND YEAR(DATEWHILE)*100+MONTH(DATEWHILE) <= 202403 ORDER BY "
                  "DATEWHILE DESC)" +
                  back);
}

TEST(WageRate, OfAMachineIsThatOfItsBook)
{
    EXPECT_EQ(Comm_Get{}.getSatzLohnerfassung(4, 2024, 3, 348, 17),
              front + " (SELECT SATZ FROM MASCHINENBUCH WHERE ID = 17)" + back);
    EXPECT_NE(Comm_Get{}.getSatzLohnerfassung(4, 2024, 3, 348, -1).find("MASCHINENBUCH WHERE ID = -1)"),
              std::string::npos);
}

TEST(WageRate, AMonthBeyond32BitsIsAnOverflow)
{
    const auto numberFor = [](std::int32_t year, std::int32_t month) {
        return errorNumber([&] { Comm_Get{}.getSatzLohnerfassung(1, year, month, 1, 0); });
    };
    constexpr std::int32_t lastYear = std::numeric_limits<std::int32_t>::max() / 100;
    EXPECT_EQ(numberFor(lastYear, 47), 0);
    EXPECT_EQ(numberFor(lastYear, 48), errors::overflow);
    EXPECT_EQ(numberFor(lastYear + 1, 1), errors::overflow);
    EXPECT_EQ(numberFor(lastYear + 1, -100), errors::overflow) << "the product overflows first";
    EXPECT_EQ(numberFor(-lastYear - 1, 0), errors::overflow);
    EXPECT_EQ(numberFor(0, 0), 0);
}

} // namespace
} // namespace tamarok
