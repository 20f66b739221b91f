#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "selections/selection_database.h"

namespace tamarok::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

/// Two owners with charts of their own.
constexpr const char* forestOffice = "176";
constexpr const char* estate = "177";

class SelectionRules : public SelectionDatabase {};

TEST_F(SelectionRules, AnAssortmentAllowsTheKeysOfItsLists)
{
    EXPECT_THAT(codes("GUETEKLASSE_HS", "BL"), UnorderedElementsAre("A", "B", "C", "CX", "D"));
    EXPECT_THAT(codes("HOLZART_HS", "FU"), ElementsAre("AH", "BU", "EI", "ES", "TE"));
    EXPECT_THAT(codes("RINDENKENNZ_HS", "IF"), UnorderedElementsAre("OR", "IR"));
    EXPECT_THAT(codes("STKL_HS", "ZH"), ElementsAre("0", "1a", "1b", "2a"));
    EXPECT_THAT(codes("MENGEN_HS", "HG"), UnorderedElementsAre("srm", "t atro"));
}

TEST_F(SelectionRules, AnEmptyListAllowsAllAndSoDoesAnUnknownAssortment)
{
    const std::vector<std::string> all = codes("GUETEKLASSE", "", 1);
    EXPECT_EQ(all.size(), 8U);
    EXPECT_EQ(codes("GUETEKLASSE_HS", "LA"), all);
    EXPECT_EQ(codes("GUETEKLASSE_HS", "no such assortment"), all);
    EXPECT_EQ(codes("HOLZART_HS", "BL").size(), codes("HOLZART").size());
}

TEST_F(SelectionRules, AListIsComparedByWholeKeys)
{
    // The list "10,12,13,15,16" of veneer holds the digits of 1, 2 and 3, but not those keys.
    EXPECT_THAT(codes("HOLZART_HS_LOGS_VALID", "FU|fi"), IsEmpty());
    EXPECT_THAT(codes("HOLZART_HS_LOGS_VALID", "FU|ei"), ElementsAre("EI"));
    EXPECT_THAT(codes("GUETEKLASSE_HS_LOGS_VALID", "BL|cx"), ElementsAre("CX"));
    EXPECT_THAT(codes("STKL_HS_LOGS_VALID", "ZH|2a"), ElementsAre("2a"));
    EXPECT_THAT(codes("STKL_HS_LOGS_VALID", "ZH|3a"), IsEmpty());
    EXPECT_THAT(codes("MENGEN_HS_LOGS_VALID", "HG|fm"), IsEmpty());
}

TEST_F(SelectionRules, ARelationKeepsTheRowsOfItsMaster)
{
    EXPECT_THAT(codes("HOLZART_LEISTUNGSART_GRID", "1"), UnorderedElementsAre("FI", "TA"));
    EXPECT_THAT(codes("HOLZART_LEISTUNGSART_GRID", "2"), ElementsAre("BU"));
    EXPECT_THAT(codes("HOLZART_LEISTUNGSART_VALID", "FI|1"), ElementsAre("1"));
    EXPECT_THAT(codes("HOLZART_LEISTUNGSART_VALID", "FI|2"), IsEmpty());
}

TEST_F(SelectionRules, AnEmptyOrOddMasterGivesNoRowsAndNoError)
{
    for (const char* const master : {"", "FI", "99"})
        EXPECT_THAT(codes("HOLZART_LEISTUNGSART_GRID", master), IsEmpty()) << master;
}

TEST_F(SelectionRules, APlannedOrderKeepsToItsOwnRows)
{
    const std::string office = forestOffice;
    EXPECT_THAT(codes("BB_T_AUFTRAGS_PLANUNG_OBJEKT_GRID", office + "|2"), ElementsAre("201"));
    EXPECT_EQ(codes("BB_T_AUFTRAGS_PLANUNG_OBJEKT_GRID", office + "|3").size(), 8U);
    EXPECT_THAT(codes("BB_T_AUFTRAGS_PLANUNG_OBJEKT_VALID", office + "|2|200"), IsEmpty());
    EXPECT_EQ(codes("BB_T_AUFTRAGS_PLANUNG_OBJEKT_VALID", office + "|3|200").size(), 1U);
    EXPECT_THAT(codes("BB_T_AUFTRAGS_PLANUNG_LEISTUNGSART_GRID", office + "|2"), ElementsAre("1110", "1120"));
    EXPECT_THAT(codes("BB_T_AUFTRAGS_PLANUNG_MASCHINE_GRID", "4|2"), ElementsAre("M-01"));
    EXPECT_THAT(codes("BB_T_AUFTRAGS_PLANUNG_BEZOGENAUF_GRID", "4|2"), ElementsAre("M-02"));
    EXPECT_THAT(codes("BB_T_AUFTRAGS_PLANUNG_BEZOGENAUF_GRID", "4|5"), ElementsAre("M-01", "M-02", "M-03"));
}

TEST_F(SelectionRules, AProductThatIsNoNumberFitsNoPlannedOrder)
{
    const std::string office = forestOffice;
    EXPECT_EQ(codes("BB_T_AUFTRAGS_PLANUNG_PRODUKT_VALID", office + "|3|101").size(), 1U);
    EXPECT_THAT(codes("BB_T_AUFTRAGS_PLANUNG_PRODUKT_VALID", office + "|3|Holz"), IsEmpty());
}

TEST_F(SelectionRules, AnOwnerSeesTheChartHeUses)
{
    EXPECT_EQ(codes("PRODUKT_GRID", forestOffice).size(), 6U);
    EXPECT_THAT(codes("PRODUKT_GRID", estate), ElementsAre("701", "709"));
    EXPECT_THAT(codes("PRODUKT_GRID", "1"), IsEmpty()) << "a partner without a chart";
    EXPECT_THAT(codes("KOSTENART_GRID", estate), ElementsAre("8000", "9000"));
    EXPECT_THAT(codes("KOSTENART_VALID", std::string{estate} + "|4000"), IsEmpty());
    EXPECT_THAT(codes("HH_KAPITEL_GRID", estate), ElementsAre("7001"));
    EXPECT_THAT(codes("LEISTUNGSART_GRID", estate), ElementsAre("2110", "2120"));
    EXPECT_THAT(codes("KOSTENSTELLE_GRID", estate), ElementsAre("7001"));
}

TEST_F(SelectionRules, ACostCentreIsProposedWhereItIsTheOnlyOne)
{
    const std::string office = forestOffice;
    EXPECT_THAT(codes("KOSTENSTELLE_ACCESSLEVELS_GRID", office + "|5|1111"), ElementsAre("1"));
    EXPECT_THAT(codes("KOSTENSTELLE_ACCESSLEVELS_GRID", office + "|5|1112"), IsEmpty());
}

TEST_F(SelectionRules, NumberedKeysKeepToTheirList)
{
    EXPECT_THAT(codes("RELTABLE3_KURZ_GRID"), ElementsAre("BA", "LK")) << "the disabled row is left out";
    EXPECT_THAT(codes("RELTABLE4_KURZ_GRID"), ElementsAre("S1", "S2"));
    EXPECT_THAT(codes("RELTABLE4_GRID", "KURZNAME = 'S2'"), ElementsAre("Saison Sommer"));
    EXPECT_THAT(codes("VERTRAG10"), ElementsAre("101", "103"));
}

TEST_F(SelectionRules, ClosedContractsAreFoundAmongAll)
{
    EXPECT_EQ(codes("VERTRAG_VALID10", "W2024-0001|").size(), 1U);
    EXPECT_THAT(codes("VERTRAG_VALID10", "W2023-0002|"), IsEmpty());
    EXPECT_EQ(codes("VERTRAG_VALID_ALL10", "W2023-0002|").size(), 1U);
}

TEST_F(SelectionRules, ACallersConditionNarrowsAContract)
{
    EXPECT_THAT(codes("VERTRAG_GRID10", "VERTRAEGE.ID_ACCESS_LEVELS = 5"), ElementsAre("W2024-0003"));
    EXPECT_THAT(codes("VERTRAG_GRID10", ""), ElementsAre("W2024-0001", "W2024-0003"));
}

TEST_F(SelectionRules, StrengthClassesFitTheDiameterBounds)
{
    EXPECT_THAT(codes("BBSTKL_GRID", "20|39.99|1"), ElementsAre("2a", "2b", "3a", "3b"));
    EXPECT_THAT(codes("BBSTKL_GRID", "12|13|1"), ElementsAre("2a")) << "none fits: the default of round wood";
    EXPECT_THAT(codes("BBSTKL_GRID", "12|13|8"), ElementsAre("0")) << "none fits: the default of the other group";
}

TEST_F(SelectionRules, MeasureKindsOfferTheirAssortments)
{
    EXPECT_THAT(codes("HOLZSORTE_GRID", "6|"), ElementsAre("MA"));
    EXPECT_THAT(codes("HOLZSORTE_GRID", "3|"), ElementsAre("ST")) << "the disabled one is left out";
    EXPECT_THAT(codes("HOLZSORTE_GRID", "4|"), ElementsAre("IF", "IS", "IP", "HG"));
    EXPECT_EQ(codes("HOLZSORTE_GRID", "7|").size(), 14U);
    EXPECT_EQ(codes("HOLZSORTE_GRID", "| AND LDNR > 100"), codes("HOLZSORTE_GRID", "9| AND LDNR > 100"));
}

TEST_F(SelectionRules, UnitsFollowAssortmentMeasureAndService)
{
    EXPECT_THAT(codes("WARENEINHEIT_HOLZ_GRID", "1|1|"), ElementsAre("fm", "Stk"));
    EXPECT_THAT(codes("WARENEINHEIT_HOLZ_GRID", "2|8|"), ElementsAre("rm"));
    EXPECT_THAT(codes("WARENEINHEIT_HOLZ_GRID", "4|8|"), ElementsAre("t atro"));
    EXPECT_EQ(codes("WARENEINHEIT_HOLZ_GRID", "1||").size(), 7U) << "no assortment: every unit of timber";
    EXPECT_THAT(codes("WARENEINHEIT_HOLZ_GRID", "1||121"), ElementsAre("fm", "rm")) << "debarking";
    EXPECT_EQ(codes("WARENEINHEIT_HOLZ_GRID", "1||120").size(), 7U) << "another service";
}

TEST_F(SelectionRules, SortingsAreThoseOfTheAssortment)
{
    EXPECT_THAT(codes("SORTIERUNG_GRID", "1"), ElementsAre("Langholz", "Abschnitte"));
    EXPECT_THAT(codes("SORTIERUNG_VALID", "1|Langholz"), ElementsAre("1"));
    EXPECT_THAT(codes("SORTIERUNG_VALID", "1|Stangen"), IsEmpty());
    EXPECT_THAT(codes("HOLZSORTE_SORTIERUNG_GRID", "9"), ElementsAre("FU", "SC"));
    EXPECT_EQ(codes("HOLZSORTE_SORTIERUNG_GRID", "").size(), 14U);
}

TEST_F(SelectionRules, LevelsAreThoseOfTheUser)
{
    EXPECT_THAT(codes("ACCESS_LEVELS00_GRID", "1|5"), UnorderedElementsAre("REV 1111", "REV 1112", "REV 1113"));
    EXPECT_THAT(codes("ACCESS_LEVELS00_GRID", "5|5"), ElementsAre("REV 1111"));
    EXPECT_THAT(codes("ACCESS_LEVELS00_VALID", "5|5|REV 1112"), IsEmpty());
    EXPECT_THAT(codes("ACCESS_LEVELS01_GRID", "5"), ElementsAre("OBF 111"));
}

TEST_F(SelectionRules, HuntingDistrictsShowForTheirLevelAndItsParents)
{
    EXPECT_THAT(codes("BB_JAGDBEZIRKE_GRID", "5"), ElementsAre("J-101"));
    EXPECT_THAT(codes("BB_JAGDBEZIRKE_GRID", "4"), ElementsAre("J-101", "J-102"));
    EXPECT_THAT(codes("BB_JAGDBEZIRKE_GRID", "3"), ElementsAre("J-101", "J-102", "J-111", "J-201"));
    EXPECT_THAT(codes("BB_JAGDBEZIRKE_VALID", "J-102|5"), IsEmpty());
}

TEST_F(SelectionRules, AForestLocationIsFoundByItsPath)
{
    EXPECT_THAT(codes("WALDORT_VALID", "01/ 01/ 01/ 101/ B/ 2|5|"), ElementsAre("1"));
    EXPECT_THAT(codes("WALDORT_VALID", "01/ 01/ 01/ 101/ b/ 2|5|", 1), ElementsAre("01/ 01/ 01/ 101/ b/ 2"));
    EXPECT_THAT(codes("WALDORT_VALID", "01/01/01/101/b/2|6|"), IsEmpty()) << "another level";
    EXPECT_THAT(codes("WALDORT_VALID", "01/01/01/101|5|1"), ElementsAre("1")) << "at the location";
    EXPECT_THAT(codes("WALDORT_VALID", "01/01/01/101|5|2"), IsEmpty()) << "not below that location";
}

TEST_F(SelectionRules, TheKindsOfContractsAreNine)
{
    EXPECT_EQ(codes("TYPEOFVERTRAG_GRID").size(), 9U);
    EXPECT_THAT(codes("TYPEOFVERTRAG_VALID", "Rechnung"), ElementsAre("0"));
    EXPECT_THAT(codes("TYPEOFVERTRAG_VALID", "Abrechnung 8"), ElementsAre("8"));
}

TEST_F(SelectionRules, APlanBeforeAndAfterItsClosingHasOtherStates)
{
    EXPECT_THAT(codes("PLANSTATUS_GRID", "2022|01"), UnorderedElementsAre("GE", "NA"));
    EXPECT_THAT(codes("PLANSTATUS_GRID", "2024|01"), UnorderedElementsAre("EN", "VO", "GE"));
}

TEST_F(SelectionRules, DistrictsBelongToTheirProvinceByNumber)
{
    EXPECT_THAT(codes("T_BEZIRK_GRID", "1"), UnorderedElementsAre("303", "313"));
    EXPECT_THAT(codes("T_GEMEINDE_GRID", "1"), UnorderedElementsAre("30301", "30312"));
    EXPECT_THAT(codes("T_GEMEINDE_VALID", "1|31303"), IsEmpty());
}

TEST_F(SelectionRules, OwnLabourKeysAreMarked)
{
    EXPECT_THAT(codes("KZ_LEISTUNG_ZV_GRID"), ElementsAre("HE", "KU"));
    EXPECT_THAT(codes("KZ_LEISTUNG_GRID"), ElementsAre("HE", "RU", "KU", "WB"));
    EXPECT_THAT(codes("KZ_LEISTUNG_ZV_STANDART"), ElementsAre("1"));
}

TEST_F(SelectionRules, PartnersByRole)
{
    EXPECT_THAT(codes("PERSONAL_VALID_KUNDE", "20007|"), ElementsAre("1"));
    EXPECT_THAT(codes("PERSONAL_VALID_ARBEITER", "20007|"), IsEmpty());
    EXPECT_THAT(codes("PERSONAL_VALID", "20007|"), ElementsAre("1"));
}

} // namespace
} // namespace tamarok::test
