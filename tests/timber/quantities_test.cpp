#include <gtest/gtest.h>
#include <string>

#include "timber/small_database.h"

#include "tamarok/comm_csel.h"
#include "tamarok/convert.h"

namespace tamarok {
namespace {

class Quantities : public test::SmallDatabase {
protected:
    Quantities()
    {
        table("WARENEINHEIT", "EINHEIT_ID INT, FM BIT, RM BIT, GEWICHT_ATRO BIT, STUCK BIT, HSTUCK BIT, "
                              "GEWICHT_LUTRO BIT, SRM BIT, ENERGIE BIT, MENGE_DECIMAL SMALLINT");
        table("LOGS", "ID_LOG INT, MENGE FLOAT, KUBATUR FLOAT, ENERGIE_MWH FLOAT, STK INT, UFAKT FLOAT, "
                      "UFAKT_RM FLOAT, UFAKT_ATO FLOAT, UFAKT_STK FLOAT, UFAKT_LUT FLOAT, ID_MASSEINHEIT INT, "
                      "HA NVARCHAR(10), HS NVARCHAR(10), STKL NVARCHAR(10)");
        table("LOGS_RECH", "ID_LOG INT, R_NAME NVARCHAR(15), R_MENGE FLOAT");
        // Units 1 to 8 measure one kind each with three decimals, 9 none; 10 to 13 are special.
        insert("WARENEINHEIT",
               {"1,1,0,0,0,0,0,0,0,3", "2,0,1,0,0,0,0,0,0,3", "3,0,0,1,0,0,0,0,0,3", "4,0,0,0,1,0,0,0,0,3",
                "5,0,0,0,0,1,0,0,0,3", "6,0,0,0,0,0,1,0,0,3", "7,0,0,0,0,0,0,1,0,3", "8,0,0,0,0,0,0,0,1,3",
                "9,0,0,0,0,0,0,0,0,3", "10,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL", "11,1,1,1,1,1,1,1,1,1",
                "12,0,1,0,0,0,0,0,0,NULL", "13,0,0,1,1,0,0,0,1,0"});
        insert("LOGS", {"1,4.4444,7.65432,12.3456,25,0.9,0.7,2.5,40,1.6,9,'FI','BL','2a'"});
        insert("LOGS_RECH", {"1,NULL,99.5"});
    }

    Variant quantity(const char* unit, bool invoicing = true, const char* pattern = "0.00")
    {
        return ask("SELECT " + Comm_CSel{}.MengeSQL(session, invoicing, "R", unit, pattern) +
                   " FROM LOGS_RECH WHERE LOGS_RECH.ID_LOG = 1");
    }
    void expectQuantity(const char* unit, double expected)
    {
        const Variant result = quantity(unit);
        ASSERT_FALSE(result.isNull()) << "unit " << unit;
        EXPECT_DOUBLE_EQ(convert::toDouble(result), expected) << "unit " << unit;
    }
    void change(const std::string& assignment) { run("UPDATE LOGS SET " + assignment); }
};

TEST_F(Quantities, CascadeRowByRow)
{
    expectQuantity("1", 7.654);   // volume
    expectQuantity("2", 10.935);  // 7.65432 / 0.7 = 10.93474...
    expectQuantity("3", 3.062);   // / 2.5 = 3.061728
    expectQuantity("4", 25.0);    // pieces
    expectQuantity("5", 0.191);   // / 40 = 0.191358
    expectQuantity("6", 4.784);   // / 1.6 = 4.78395
    expectQuantity("7", 10.935);  // by the factor of stacked measure
    expectQuantity("8", 12.346);  // energy
    expectQuantity("9", 4.4444);  // no kind: the stored quantity, not rounded
    expectQuantity("10", 4.4444); // neither where all flags are Null
}

TEST_F(Quantities, AMeasuredUnitOfTheSameKindKeepsTheStoredQuantity)
{
    for (const char* unit : {"1", "2", "3", "4", "5", "6", "7"}) {
        change(std::string{"ID_MASSEINHEIT = "} + unit);
        expectQuantity(unit, 4.4444);
    }
    // Energy goes by the energy that the line carries.
    change("ID_MASSEINHEIT = 8");
    expectQuantity("8", 12.346);
    change("ENERGIE_MWH = 0");
    expectQuantity("8", 4.4444);
    change("ENERGIE_MWH = NULL");
    expectQuantity("8", 4.4444);
}

TEST_F(Quantities, FlagsThatAreNullCountAsNotOfTheKind)
{
    change("ID_MASSEINHEIT = 10");
    expectQuantity("1", 7.654);
    expectQuantity("4", 25.0);
}

TEST_F(Quantities, AFactorOfZeroOrNullCountsAsOne)
{
    for (const char* value : {"0", "NULL"}) {
        for (const char* column : {"UFAKT_RM", "UFAKT_ATO", "UFAKT_STK", "UFAKT_LUT"})
            change(std::string{column} + " = " + value);
        for (const char* unit : {"2", "3", "5", "6", "7"})
            expectQuantity(unit, 7.654);
    }
}

TEST_F(Quantities, TheFirstFlagOfTheUnitDecides)
{
    expectQuantity("11", 7.7); // all flags: volume, one decimal
    expectQuantity("13", 3.0); // dry weight before pieces and energy, no decimal
    change("ID_MASSEINHEIT = 3");
    expectQuantity("13", 25.0); // measured in dry weight already: the next row, pieces
    change("ID_MASSEINHEIT = 11");
    expectQuantity("13", 12.0); // of all kinds but energy, which goes by the line
    expectQuantity("11", 12.3);
}

TEST_F(Quantities, DecimalsAreTwoWhereTheUnitNamesNone)
{
    expectQuantity("12", 10.93);
}

TEST_F(Quantities, NullsInTheLineGiveNull)
{
    change("KUBATUR = NULL, STK = NULL");
    for (const char* unit : {"1", "2", "3", "4", "5", "6", "7"})
        EXPECT_TRUE(quantity(unit).isNull()) << unit;
    change("MENGE = NULL");
    EXPECT_TRUE(quantity("9").isNull());
    change("ID_MASSEINHEIT = NULL"); // a line without unit joins nothing
    EXPECT_TRUE(quantity("8").isNull());
}

TEST_F(Quantities, AnUnknownUnitGivesNull)
{
    EXPECT_TRUE(quantity("99").isNull());
    run("DELETE FROM LOGS");
    EXPECT_TRUE(quantity("1").isNull());
    test::expectError(errors::statementRefused, "", [&] { quantity(""); });
    run("DELETE FROM WARENEINHEIT");
    EXPECT_TRUE(quantity("1").isNull());
}

TEST_F(Quantities, AnInvoicingRowWithANameKeepsItsOwn)
{
    EXPECT_DOUBLE_EQ(convert::toDouble(quantity("1", false)), 7.654);
    run("UPDATE LOGS_RECH SET R_NAME = 'R/1'");
    EXPECT_DOUBLE_EQ(convert::toDouble(quantity("1", false)), 99.5);
    EXPECT_DOUBLE_EQ(convert::toDouble(quantity("1", true)), 7.654);
    run("UPDATE LOGS_RECH SET R_MENGE = NULL");
    EXPECT_TRUE(quantity("1", false).isNull());
}

class ConversionTable : public Quantities {
protected:
    ConversionTable()
    {
        session.strCustomer = "SACHSEN";
        table("HOLZART", "HA NVARCHAR(10), ID_BB_TSM_BAGUMF INT");
        table("HOLZSORTE", "HS NVARCHAR(10), ID_TSM_SOG_UMF INT");
        table("STKL", "STKL NVARCHAR(10), ID_TSM_STKLG_UMF INT");
        table("TSP_UMF", "ID_BB_TSM_BAGUMF INT, ID_TSM_SOG_UMF INT, ID_TSM_STKLG_UMF INT, ID_WARENEINHEIT INT, "
                         "UMF_WERT FLOAT");
        insert("HOLZART", {"'FI',1"});
        insert("HOLZSORTE", {"'BL',2"});
        insert("STKL", {"'2a',3"});
        insert("TSP_UMF", {"1,2,3,2,0.7", "1,2,3,9,0.8", "1,2,4,3,0.5", "1,2,3,5,0", "1,2,3,6,NULL"});
    }
};

TEST_F(ConversionTable, MeasuredQuantityTimesTheFactorsQuotient)
{
    expectQuantity("2", 5.71); // 4.4444 * 0.9 / 0.7 = 5.71422...
    EXPECT_DOUBLE_EQ(convert::toDouble(quantity("2", true, "0.000")), 5.714);
    EXPECT_DOUBLE_EQ(convert::toDouble(quantity("2", true, "0.")), 6.0);
}

TEST_F(ConversionTable, NothingIsConvertedWithinTheUnitOrWithoutAValue)
{
    expectQuantity("9", 4.44); // the measured unit itself
    expectQuantity("3", 4.44); // only for another strength class
    expectQuantity("5", 4.44); // value 0
    expectQuantity("6", 4.44); // value Null
    expectQuantity("99", 4.44);
    run("DELETE FROM TSP_UMF");
    expectQuantity("2", 4.44);
}

TEST_F(ConversionTable, NullsInTheLine)
{
    change("UFAKT = NULL");
    expectQuantity("2", 0.0);
    change("MENGE = NULL");
    expectQuantity("9", 0.0);
    for (const char* column : {"HA", "HS", "STKL"}) {
        change("MENGE = 4.4444, UFAKT = 0.9, HA = 'FI', HS = 'BL', STKL = '2a'");
        expectQuantity("2", 5.71);
        change(std::string{column} + " = NULL");
        expectQuantity("2", 4.44);
    }
}

TEST_F(ConversionTable, NullsInTheGroups)
{
    for (const char* column : {"ID_BB_TSM_BAGUMF", "ID_TSM_SOG_UMF", "ID_TSM_STKLG_UMF", "ID_WARENEINHEIT"}) {
        run("DELETE FROM TSP_UMF");
        insert("TSP_UMF", {"1,2,3,2,0.7"});
        expectQuantity("2", 5.71);
        run(std::string{"UPDATE TSP_UMF SET "}.append(column).append(" = NULL"));
        expectQuantity("2", 4.44);
    }
    insert("TSP_UMF", {"1,2,3,2,0.7"});
    run("UPDATE HOLZART SET ID_BB_TSM_BAGUMF = NULL");
    expectQuantity("2", 4.44);
}

TEST_F(ConversionTable, APatternTooShortRoundsLeftOfThePoint)
{
    change("MENGE = 1234.5");
    EXPECT_DOUBLE_EQ(convert::toDouble(quantity("9", true, "0")), 1230.0);
    EXPECT_DOUBLE_EQ(convert::toDouble(quantity("9", true, "")), 1200.0);
}

} // namespace
} // namespace tamarok
