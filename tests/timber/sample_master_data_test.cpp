#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <string>

#include "tamarok_database/reference_database.h"
#include "timber/small_database.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"
#include "tamarok/convert.h"

// The operations on the master data that the reference database has: strength classes that overlap and leave
// gaps, bark tables in centimetres and percent, dated and open-ended, some of which stop early, factor rules
// with Nulls, units and their conversion.

namespace tamarok {
namespace {

class SampleMasterData : public test::SmallDatabase {
protected:
    SampleMasterData() { database::createReferenceDatabase(*connection, {.logs = 60, .seed = 11, .records = 0}); }

    /// The class of a diameter as the form asks for it.
    std::string classOf(const char* assortment, const char* diameter)
    {
        return set.MakeStkl("typed", diameter, "", "", connection, false, false,
                            get.GetCalculationSTKL(assortment, connection),
                            get.GetCalculationSTKL_ID(assortment, connection));
    }
    std::string classAmong(const char* ids, const char* diameter)
    {
        return set.MakeStkl("typed", diameter, "", "", connection, false, false, false, ids);
    }
    std::string bark(const char* species, const char* mode, const char* diameter, const char* table,
                     const char* date = "")
    {
        return set.CalculateRinde(session, "0", species, mode, diameter, get.GetCalculationRinden("MR", connection),
                                  table, date);
    }
    double factor(const char* species, const char* assortment, double length, const char* field = "RM_UFA",
                  std::int16_t kind = 2, const char* barkKey = "OR")
    {
        return get.GetHolzTabValue(session, {}, field, kind, species, assortment, "rm", "B", "2a", true, barkKey,
                                   length);
    }

    Comm_Set set;
    Comm_Get get;
};

TEST_F(SampleMasterData, ClassesOfAnAssortment)
{
    EXPECT_EQ(classOf("BL", "10"), "1a");
    EXPECT_EQ(classOf("BL", "14,994"), "1a");
    EXPECT_EQ(classOf("BL", "14,995"), "1b");
    EXPECT_EQ(classOf("BL", "32,5"), "3a");
    EXPECT_EQ(classOf("BL", "9"), "6");        // below the lowest that it allows
    EXPECT_EQ(classOf("MA", "32,5"), "");      // above, and the highest of all is not allowed
    EXPECT_EQ(classOf("IF", "32,5"), "typed"); // not derived from the diameter
    EXPECT_EQ(classOf("", "32,5"), "typed");
    EXPECT_EQ(classOf("??", "32,5"), "3a");
}

TEST_F(SampleMasterData, ClassesWithAnOverlapAndAGap)
{
    constexpr const char* masts = "11,12,13,14";
    EXPECT_EQ(classAmong(masts, "15,99"), "M1");
    const std::string overlap = classAmong(masts, "17");
    EXPECT_TRUE(overlap == "M1" || overlap == "M2") << overlap;
    EXPECT_EQ(classAmong(masts, "21,99"), "M2");
    EXPECT_EQ(classAmong(masts, "23"), "");       // the gap
    EXPECT_EQ(classAmong("10,11,12", "23"), "6"); // where the highest of all is allowed, it stands in
    EXPECT_EQ(classAmong(masts, "36"), "M3");
    EXPECT_EQ(classAmong(masts, "45"), ""); // the class is switched off
}

TEST_F(SampleMasterData, BarkByTheRowThatIsValid)
{
    // Open-ended: 1.35 at 25 cm and 1.46 at 30 cm; until the end of 2023: 1.43 at 24 cm and 1.52 at 28 cm.
    EXPECT_EQ(bark("FI", "cm", "27,5", "0", "01.01.2024"), "1,41");
    EXPECT_EQ(bark("FI", "cm", "26", "0", "31.12.2023"), "1,48");
    EXPECT_EQ(bark("FI", "cm", "27,5", "0"), "1,41");
    EXPECT_EQ(bark("??", "cm", "27,5", "0"), "0,00");
}

TEST_F(SampleMasterData, BarkBeyondTheLastPoint)
{
    EXPECT_EQ(bark("FI", "cm", "65", "0"), "2,23");
    EXPECT_EQ(bark("FI", "cm", "65,5", "0"), "0,00"); // twelve points only
    // All twenty: (2.75 - 2.66) * (100 - 80) / (84 - 80) + 2.66
    EXPECT_EQ(bark("FI", "cm", "100", "0", "31.12.2023"), "3,11");
}

TEST_F(SampleMasterData, BarkInTheOtherUnit)
{
    EXPECT_EQ(bark("LA", "%", "10", "2"), "19,00");
    EXPECT_EQ(bark("LA", "cm", "10", "2"), "1,00"); // 10 - sqrt(0.81 * 100)
    EXPECT_EQ(bark("FI", "cm", "10", "0"), "1,02");
    EXPECT_EQ(bark("FI", "%", "10", "0"), "19,36"); // (100 - 8.98²) / 100
}

TEST_F(SampleMasterData, FactorsByTheFirstRuleThatHolds)
{
    EXPECT_EQ(factor("FI", "IF", 2.5), 0.68);
    EXPECT_EQ(factor("FI", "IF", 2.51), 0.63);
    EXPECT_EQ(factor("FI", "IF", 2.505), 0.70); // between two bands: the species' rule
    EXPECT_EQ(factor("FI", "IF", 2.5, "ATO_UFA"), 2.33);
    EXPECT_EQ(factor("FI", "BL", 2.5), 0.70);
    EXPECT_EQ(factor("ES", "BR", 1.0), 0.65);                       // no rule: the assortment's own
    EXPECT_EQ(factor("ES", "BR", 1.0, "RM_UFA", 2, "MR"), 0.62);    // a rule for the bark key
    EXPECT_EQ(factor("ES", "BR", 1.0, "STK100_UFA", 2, "MR"), 0.0); // which says nothing of pieces
    EXPECT_EQ(factor("ES", "??", 1.0), 0.0);
}

TEST_F(SampleMasterData, WildcardsOfTheConversion)
{
    session.strCustomer = "SACHSEN";
    Variant pairs;
    const auto converts = [&](const char* assortment, const char* unit) {
        return set.MengeCalc(session, pairs, assortment, unit);
    };
    EXPECT_EQ(converts("8", "2"), 1);
    EXPECT_EQ(converts("12", "5"), 1); // any unit of this assortment
    EXPECT_EQ(converts("5", "1"), 1);  // this unit of any assortment
    EXPECT_EQ(converts("13", "1"), 0); // but not of this one
    EXPECT_EQ(converts("5", "3"), 0);
    EXPECT_EQ(converts("12", "3"), 1); // two wildcards, the greater counts
    EXPECT_EQ(converts("5", "9"), 0);
}

/// A unit's column among the flags and how a line's volume becomes its quantity.
struct UnitKind {
    const char* flag;
    const char* source;
    const char* factor; ///< "" for none
};

constexpr std::array unitKinds{UnitKind{"FM", "KUBATUR", ""},
                               UnitKind{"RM", "KUBATUR", "UFAKT_RM"},
                               UnitKind{"GEWICHT_ATRO", "KUBATUR", "UFAKT_ATO"},
                               UnitKind{"STUCK", "STK", ""},
                               UnitKind{"HSTUCK", "KUBATUR", "UFAKT_STK"},
                               UnitKind{"GEWICHT_LUTRO", "KUBATUR", "UFAKT_LUT"},
                               UnitKind{"SRM", "KUBATUR", "UFAKT_RM"}};

TEST_F(SampleMasterData, EveryLineInEveryUnit)
{
    ado::Recordset units;
    units.Open("SELECT * FROM WARENEINHEIT WHERE ISNULL(ENERGIE,0) = 0", connection);
    int compared = 0;
    for (; !units.AtEOF(); units.MoveNext()) {
        const auto ofUnit = [&](const char* column) { return units.Fields().Item(column).Value(); };
        const std::string unit = convert::toText(ofUnit("EINHEIT_ID"));
        ado::Recordset lines;
        lines.Open("SELECT LOGS.*,WARENEINHEIT.FM,WARENEINHEIT.RM,WARENEINHEIT.GEWICHT_ATRO,WARENEINHEIT.STUCK,"
                   "WARENEINHEIT.HSTUCK,WARENEINHEIT.GEWICHT_LUTRO,WARENEINHEIT.SRM," +
                       Comm_CSel{}.MengeSQL(session, true, "R", unit, "0.00") +
                       " AS QUANTITY FROM LOGS INNER JOIN LOGS_RECH ON LOGS.ID_LOG = LOGS_RECH.ID_LOG INNER JOIN "
                       "WARENEINHEIT ON WARENEINHEIT.EINHEIT_ID = LOGS.ID_MASSEINHEIT",
                   connection);
        for (; !lines.AtEOF(); lines.MoveNext()) {
            const auto number = [&](const char* column) {
                return get.Get_Number_N(lines.Fields().Item(column).Value());
            };
            const UnitKind* kind = nullptr;
            for (const UnitKind& known : unitKinds)
                if (kind == nullptr && get.Get_Number_N(ofUnit(known.flag)) != 0 && number(known.flag) == 0)
                    kind = &known;
            double expected = number("MENGE");
            double tolerance = 1e-9;
            if (kind != nullptr) {
                const double share = *kind->factor == '\0' ? 1.0 : number(kind->factor);
                const Variant decimals = ofUnit("MENGE_DECIMAL");
                expected = number(kind->source) / (share == 0 ? 1.0 : share);
                tolerance += 0.5 * std::pow(10.0, decimals.isNull() ? -2 : -convert::toDouble(decimals));
            }
            EXPECT_NEAR(number("QUANTITY"), expected, tolerance) << "unit " << unit << ", line " << number("ID_LOG");
            ++compared;
        }
    }
    EXPECT_EQ(compared, 60 * 13) << "60 lines in 13 units";
}

TEST_F(SampleMasterData, EveryLineByTheConversionTable)
{
    session.strCustomer = "SACHSEN";
    ado::Recordset lines;
    lines.Open("SELECT LOGS.*," + Comm_CSel{}.MengeSQL(session, true, "R", "2", "0.000") +
                   " AS QUANTITY FROM LOGS INNER JOIN LOGS_RECH ON LOGS.ID_LOG = LOGS_RECH.ID_LOG",
               connection);
    int converted = 0;
    for (; !lines.AtEOF(); lines.MoveNext()) {
        const auto text = [&](const char* column) { return get.Get_String(lines.Fields().Item(column).Value(), true); };
        const auto number = [&](const char* column) { return get.Get_Number_N(lines.Fields().Item(column).Value()); };
        const Variant value = ask("SELECT U.UMF_WERT FROM TSP_UMF U, HOLZART A, HOLZSORTE S, STKL K WHERE A.HA = '" +
                                  text("HA") + "' AND S.HS = '" + text("HS") + "' AND K.STKL = '" + text("STKL") +
                                  "' AND U.ID_BB_TSM_BAGUMF = A.ID_BB_TSM_BAGUMF AND U.ID_TSM_SOG_UMF = "
                                  "S.ID_TSM_SOG_UMF AND U.ID_TSM_STKLG_UMF = K.ID_TSM_STKLG_UMF AND "
                                  "U.ID_WARENEINHEIT = 2");
        const bool converts = value != Variant{"no row"} && number("ID_MASSEINHEIT") != 2;
        converted += converts ? 1 : 0;
        const double expected = number("MENGE") * (converts ? number("UFAKT") / convert::toDouble(value) : 1.0);
        EXPECT_NEAR(number("QUANTITY"), expected, 0.0005 + 1e-9) << "line " << number("ID_LOG");
    }
    EXPECT_EQ(converted, 60) << "every line";
}

} // namespace
} // namespace tamarok
