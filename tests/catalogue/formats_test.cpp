#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

#include "list_types.h"
#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/convert.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::Surroundings;

const std::string quantityOption = "SELECT NUMBER_VALUE FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = 'KUBATURPLACE'";

std::set<std::int16_t> idsOf(std::string_view list)
{
    std::set<std::int16_t> ids;
    catalogue::forEachId(list, [&](std::int16_t id) { ids.insert(id); });
    return ids;
}

// The formats of the log list by id; every other id has "0", also one that is no row.
const std::map<std::string, std::set<std::int16_t>>& logFormats()
{
    static const std::map<std::string, std::set<std::int16_t>> formats{
        {"",
         idsOf("1, 3-19, 21-32, 37, 39, 42-66, 68-92, 100-117, 121-126, 132-149, 152-166, 182-191, 210-218, 237, 292, "
               "303-317, 357-363, 365-372, 392-394, 396-484, 486-499, 509-528, 567, 582, 583, 586-589, 700-702, 965, "
               "967-970, 975, 976, 1017, 1018, 1030, 1031, 1040, 1041")},
        {"dd.mm.yyyy", idsOf("2, 67, 177-181, 289-291, 321-356, 580, 581, 584, 600-608, 964")},
        {"0.0", idsOf("33")},
        {"0.000", idsOf("36, 40, 41, 127-131, 203, 220-224, 364, 391")},
        {"0.00",
         idsOf("38, 120, 167-176, 192-200, 202, 205, 250-258, 261-268, 270-278, 280-288, 293-302, 318-320, 395, "
               "500-508, 570-579, 610-619, 966, 977, 980")},
        {"0.0000", idsOf("591-599")},
    };
    return formats;
}

// The columns of the log list that are compared as texts.
const std::set<std::int16_t>& logTexts()
{
    static const std::set<std::int16_t> ids = idsOf(
        "1, 3-19, 21-32, 37, 39, 42-66, 68-92, 100-117, 121-126, 132-149, 152-166, 182-191, 210-218, 237, 292, "
        "303-317, 357-363, 365-390, 392-394, 396, 398-484, 486-499, 509-528, 567, 582, 583, 586-589, 700-702, 965, "
        "967-970, 975, 976, 1018, 1030, 1031, 1040, 1041");
    return ids;
}

bool isRow(std::int16_t id)
{
    return catalogue::logList().column(id) != nullptr;
}

class Formats : public ::testing::Test {
protected:
    Formats() { with.session.strDateFormat = "DD.MM.YYYY"; }

    std::string format(std::string_view type, int id) const
    {
        return csel.GetFormat(type, static_cast<std::int16_t>(id), with.session);
    }
    std::string condition(std::string_view type, int id, const Variant& value) const
    {
        return csel.IsStr(type, static_cast<std::int16_t>(id), value, with.session);
    }

    Surroundings with;
    Comm_CSel csel;
};

TEST_F(Formats, OfTheLogListFollowTheirSets)
{
    std::map<std::int16_t, std::string> expected;
    for (const auto& [text, ids] : logFormats())
        for (const std::int16_t id : ids)
            EXPECT_TRUE(!isRow(id) || expected.emplace(id, text).second) << id;
    for (std::int16_t id = -2; id <= 1050; ++id) {
        if (id >= 240 && id <= 248) continue;
        EXPECT_EQ(format("LOG", id), expected.contains(id) ? expected[id] : "0") << id;
        EXPECT_EQ(format("log", id), format("LOG", id));
    }
    EXPECT_TRUE(with.database.opened.empty());
}

TEST_F(Formats, OfQuantitiesTakeTheirDecimalsFromAnOption)
{
    for (const auto& [places, text] :
         std::map<double, std::string>{{0, "0.00"}, {1, "0.0"}, {3, "0.000"}, {6, "0.000000"}}) {
        with.database.answer(quantityOption, places, "NUMBER_VALUE");
        for (int id = 240; id <= 248; ++id)
            EXPECT_EQ(format("LOG", id), text) << id;
        EXPECT_EQ(format("LOG", 36), "0.000") << "volumes keep theirs";
    }
}

TEST_F(Formats, OfOtherTypes)
{
    EXPECT_EQ(format("VERTRAG", 14), "dddd");
    for (const int id : {1, 8, 9, 12, 13})
        EXPECT_EQ(format("VERTRAG", id), "dd.mm.yyyy") << id;
    for (const int id : {2, 3, 4, 5, 6, 7, 10, 11, 15, 0})
        EXPECT_EQ(format("VERTRAG", id), "") << id;
    EXPECT_EQ(format("ARTIKEL", 470), "###,###,##0.00");
    EXPECT_EQ(format("artikel", 460), "");
    EXPECT_EQ(format("USERS", 1), "0");
    EXPECT_EQ(format("USERS", 61), "") << "no row";
    EXPECT_EQ(format("NOTHING", 1), "");
    EXPECT_EQ(format("", 1), "");
}

/// Each format of the vocabulary that belongs to a type of its own.
TEST_F(Formats, TellingFormatsOccurInTheirTypes)
{
    const auto has = [&](const char* key, std::string_view text) {
        const catalogue::ListType* type = catalogue::findListType(key);
        return std::ranges::any_of(type->description().columns,
                                   [&](const catalogue::Column& column) { return format(key, column.id) == text; });
    };
    EXPECT_TRUE(has("PERSONAL", "0.00000"));
    EXPECT_TRUE(has("PERSONAL", "0.000000000"));
    EXPECT_TRUE(has("BBUN", "hh:nn:ss"));
    EXPECT_TRUE(has("MVLOSE", "hh:nn"));
    EXPECT_TRUE(has("ARTIKEL", "###,###,##0.00"));
}

TEST_F(Formats, MachineBooksHaveASecondKey)
{
    for (const catalogue::Column& column : catalogue::findListType("MSCH")->description().columns) {
        EXPECT_EQ(format("MBUCH_SCH", column.id), format("MSCH", column.id));
        EXPECT_EQ(format("mbuch_sch", column.id), format("MSCH", column.id));
    }
    EXPECT_EQ(csel.GetFrom("MBUCH_SCH", 1, "", "", with.session), "") << "it has no list";
    EXPECT_EQ(condition("MBUCH_SCH", 1, 5), "");
}

TEST_F(Formats, OfSpreadsheets)
{
    const auto excel = [&](std::string_view type, std::int16_t id) {
        return csel.GetFormatExcel(type, id, with.session);
    };
    EXPECT_EQ(excel("LOG", 0), "@");
    EXPECT_EQ(excel("LOG", 1), "@");
    EXPECT_EQ(excel("LOG", 2), "d/m/yyyy");
    EXPECT_EQ(excel("LOG", 36), "0.000");
    EXPECT_EQ(excel("LOG", 485), "0") << "no row";
    EXPECT_EQ(excel("VERTRAG", 14), "dddd");
    EXPECT_EQ(excel("NOTHING", 1), "@");
}

TEST_F(Formats, ConditionsOfTheLogListFollowTheirSets)
{
    const std::set<std::int16_t>& dates = logFormats().at("dd.mm.yyyy");
    for (std::int16_t id = 0; id <= 1050; ++id) {
        if (isRow(id) && logTexts().contains(id)) {
            EXPECT_EQ(condition("LOG", id, "1,5"), " = '1,5'") << id;
        } else if (isRow(id) && dates.contains(id)) {
            EXPECT_EQ(condition("LOG", id, makeDate(2024, 3, 5)), " = '5.3.2024'") << id;
        } else if (id >= 192 && id <= 200) {
            EXPECT_EQ(condition("LOG", id, "1,5"), " = ROUND(CAST(1.5 as float),2)") << id;
            EXPECT_EQ(condition("LOG", id, "abc"), " IS NULL ") << id;
        } else {
            EXPECT_EQ(condition("LOG", id, "1,5"), " = 1.5") << id;
            EXPECT_EQ(condition("LOG", id, "abc"), " IS NULL ") << id;
        }
        EXPECT_EQ(condition("LOG", id, Null{}), " IS NULL ") << id;
    }
    EXPECT_EQ(condition("LOG", 20, 5), " = 5");
    EXPECT_EQ(condition("log", 1, "O'X"), " = 'O'X'") << "quotes are not doubled";
    EXPECT_EQ(condition("LOG", 36, 1.25), " = 1.25");
}

TEST_F(Formats, ConditionsOfArticlesReportAnUnknownColumn)
{
    EXPECT_EQ(condition("ARTIKEL", 460, "X"), " = 'X'");
    EXPECT_EQ(condition("ARTIKEL", 465, "2,5"), " = 2.5");
    EXPECT_EQ(condition("ARTIKEL", 465, "many"), " IS NULL ");
    EXPECT_TRUE(with.messages->shown.empty());
    EXPECT_EQ(condition("ARTIKEL", 32000, Null{}), " IS NULL ");
    EXPECT_TRUE(with.messages->shown.empty());
    EXPECT_EQ(condition("ARTIKEL", 32000, 1), "");
    ASSERT_EQ(with.messages->shown.size(), 1U);
    EXPECT_EQ(with.messages->shown[0].text, "For Column '32000' Typ 'ARTIKEL' is not define - in function Instr");
    EXPECT_EQ(with.messages->shown[0].flags, 0);
    EXPECT_EQ(with.messages->shown[0].title, "Tamarok");
}

TEST_F(Formats, ConditionsOfWorkOrdersFollowTheirSets)
{
    const std::set<std::int16_t> dates = idsOf("23, 28, 38, 80-82");
    const std::set<std::int16_t> texts =
        idsOf("1, 2, 4, 7-10, 14-18, 20, 22, 25-27, 29-31, 33, 35, 37, 40, 43-48, 61-64, 74-79");
    for (const char* type : {"BBF", "BBF_PLANN", "bbf"}) {
        for (std::int16_t id = 0; id <= 400; ++id) {
            const std::string expected = dates.contains(id)   ? " = '5.3.2024'"
                                         : texts.contains(id) ? " = '05.03.2024'"
                                                              : " = 05.03.2024";
            EXPECT_EQ(condition(type, id, makeDate(2024, 3, 5)), expected) << type << " " << id;
        }
        EXPECT_EQ(condition(type, 3, "abc"), " = abc") << "numbers are not checked";
    }
}

TEST_F(Formats, ConditionsOfOtherTypesFollowTheirFormats)
{
    EXPECT_EQ(condition("ACL", 1, "10"), " = '10'");
    EXPECT_EQ(condition("ACL", 99, "10"), " = '10'") << "no row: no format";
    EXPECT_EQ(condition("USERS", 1, 1), " = 1");
    EXPECT_EQ(condition("USERS", 1, "1,5"), " = 1.5");
    EXPECT_EQ(condition("users", 1, "x"), " = x") << "numbers are not checked";
    for (const char* type : {"VERTRAG", "WAREN", "RJ", "NOTHING", ""}) {
        EXPECT_EQ(condition(type, 1, "X"), "") << type;
        EXPECT_EQ(condition(type, 1, Null{}), " IS NULL ") << type;
    }
    EXPECT_TRUE(with.messages->shown.empty());
}

TEST_F(Formats, AValueAsText)
{
    EXPECT_EQ(csel.GetValue(Null{}, "-"), "-");
    EXPECT_EQ(csel.GetValue("", "-"), "");
    EXPECT_EQ(csel.GetValue(1.5, "-"), "1,5");
    EXPECT_EQ(csel.GetValue(makeDate(2024, 3, 5), "-"), "05.03.2024");
}

// The deduction list.

const std::set<std::int16_t>& deductionTexts()
{
    static const std::set<std::int16_t> ids = idsOf("1, 2, 4, 30-32, 101-117");
    return ids;
}

TEST_F(Formats, DeductionsQuoteTheirTexts)
{
    for (std::int16_t id = 0; id <= 120; ++id) {
        EXPECT_EQ(csel.IsStrAbs(id, "X"), deductionTexts().contains(id) ? "'X'" : "X") << id;
        EXPECT_EQ(csel.IsStr2Abs(id, "X"), deductionTexts().contains(id) ? " = 'X'" : "") << id;
        EXPECT_EQ(csel.IsStr2Abs(id, Null{}), " IS NULL ") << id;
        EXPECT_EQ(csel.GetFormatAbs(id), id == 3 || id == 5 ? "0.00" : "") << id;
    }
    EXPECT_EQ(csel.IsStrAbs(3, 1.5), "1,5");
    EXPECT_EQ(errorNumber([&] { csel.IsStrAbs(1, Null{}); }), errors::invalidUseOfNull);
}

TEST_F(Formats, DeductionsShowTheDateOfTheirInvoice)
{
    const std::string statement = "SELECT INVDATE FROM HEADERRECH WHERE R_NAME = 'R1'";
    with.database.answer(statement, makeDate(2024, 3, 5), "INVDATE");
    EXPECT_EQ(csel.GetNameAbs(32, "R1", "-", with.session.db_ADO), Variant{"05.03.2024"});
    with.database.answer(statement, Null{}, "INVDATE");
    EXPECT_EQ(csel.GetNameAbs(32, "R1", "-", with.session.db_ADO), Variant{"-"});
    with.database.answerNoRow(statement, "INVDATE");
    EXPECT_EQ(csel.GetNameAbs(32, "R1", "-", with.session.db_ADO), Variant{"-"});
    EXPECT_EQ(with.database.openCursors, 0);
    with.database.clearRecord();
    EXPECT_EQ(csel.GetNameAbs(32, Null{}, "-", with.session.db_ADO), Variant{"-"});
    EXPECT_EQ(csel.GetNameAbs(31, Null{}, "-", with.session.db_ADO), Variant{"-"});
    EXPECT_EQ(csel.GetNameAbs(5, 1.5, "-", with.session.db_ADO), Variant{1.5}) << "a number stays a number";
    EXPECT_TRUE(with.database.opened.empty());
}

// Labels of fields.

TEST_F(Formats, FieldsHaveLabels)
{
    for (int number = 1; number <= 7000; ++number)
        with.loc.texts[number] = std::to_string(number);
    const Comm_Get get;
    const auto label = [&](std::string_view field) { return get.GetColName(field, with.session); };
    for (const char* name : {"RINDENKENNZ", "MEFVERF"})
        EXPECT_EQ(label(name), "1127") << name;
    for (const char* name : {"GKL", "STKL", "NA", "KA", "HS", "KKLASSE", "BZT_SHORT", "SHORT"})
        EXPECT_EQ(label(name), "1176") << name;
    for (const char* name : {"GKL_LANG", "HA_LANG", "NA_LANG", "KA_LANG", "RINDENKZ_LANG", "HS_LANG", "RECHNUNGSART",
                             "BUCHUNGSTEXT", "BZT_LANG", "LONG"})
        EXPECT_EQ(label(name), "1177") << name;
    for (const char* name : {"SHOW_ORDER", "ORDERBY"})
        EXPECT_EQ(label(name), "1328") << name;
    for (const char* name : {"NA_GROUP", "GRUPPE", "GRUPPE_ID"})
        EXPECT_EQ(label(name), "3045") << name;
    for (int digit = 1; digit <= 5; ++digit)
        for (const char* name : {"GKL_GRUPPE", "HAGR", "HSGR"})
            EXPECT_EQ(label(name + std::to_string(digit)), "3045 " + std::to_string(digit)) << name;
    for (int digit = 1; digit <= 8; ++digit)
        EXPECT_EQ(label("ABR" + std::to_string(digit)), std::to_string(125 + digit));
    for (int digit = 1; digit <= 10; ++digit)
        EXPECT_EQ(label("CHK" + std::to_string(digit)), std::to_string(4744 + digit));
    EXPECT_EQ(label("tfield12"), "4312");
    EXPECT_EQ(label("NFIELD3"), "4353");
    EXPECT_EQ(label("TFIELD"), "4300");
    for (const char* name : {"RM_UFA", "ATO_UFA", "LUT_UFA", "STK100_UFA", "gkl"})
        EXPECT_NE(label(name), "") << name;
    for (const char* name : {"", "GKL_GRUPPE6", "HAGR0", "HAGR12", "NOTHING", "ABR9", "GKL STKL", " GKL"})
        EXPECT_EQ(label(name), "") << name;
    EXPECT_EQ(errorNumber([&] { label("TFIELD99999"); }), errors::overflow);
}

// Older selection parameters.

TEST_F(Formats, OlderColumnNumbersAreConverted)
{
    const auto converted = [&](std::string_view parameter, int number) {
        return csel.KonvSelektionID(parameter, static_cast<std::int16_t>(number));
    };
    for (const char* parameter : {"HIZ_SELEKTION_", "HIZ_SELEKTION_7", "hiz_selektion_Jahr"}) {
        EXPECT_EQ(converted(parameter, 590), 1) << parameter;
        EXPECT_EQ(converted(parameter, 591), 2);
        EXPECT_EQ(converted(parameter, 592), 0);
        EXPECT_EQ(converted(parameter, 593), 3);
        EXPECT_EQ(converted(parameter, 594), 4);
    }
    EXPECT_EQ(converted("1LV", 6010), 36) << "the number of its label";
    EXPECT_EQ(converted("1LV", 590), 0) << "a number of another parameter";
    EXPECT_EQ(converted("VERTP_3", 6010), 36);
    EXPECT_EQ(converted("ABSCHLAG_SELEKTION_RECHNUNG", 126), 101);
    EXPECT_EQ(converted("BELEGBUCH", 859), 1);
    for (const char* parameter : {"", "NOTHING", "1LV ", "X4ARB"})
        EXPECT_EQ(converted(parameter, 6010), 0) << parameter;
    EXPECT_EQ(converted("1LV", 0), 0);
    EXPECT_EQ(converted("1LV", -1), 0);
}

TEST_F(Formats, EveryParameterConvertsEachLabelOfItsList)
{
    for (const auto& [parameter, key] : std::map<std::string, std::string>{{"1LV", "LOG"},
                                                                           {"2EML", "LOG"},
                                                                           {"NML", "LOG"},
                                                                           {"VERTP", "LOG"},
                                                                           {"VERTM", "LOG"},
                                                                           {"1SERV", "LOG"},
                                                                           {"1EXP", "LOG"},
                                                                           {"1VM", "LOG"},
                                                                           {"2ABR1", "LOG"},
                                                                           {"2ABR8", "LOG"},
                                                                           {"1VM_REVERS", "LOG"},
                                                                           {"4ARB", "LOG"},
                                                                           {"BBF", "BBF"},
                                                                           {"1VM-A", "ARTIKEL"},
                                                                           {"2ABR1-A", "ARTIKEL"},
                                                                           {"2ABR8-A", "ARTIKEL"},
                                                                           {"1VM-A_REVERS", "ARTIKEL"},
                                                                           {"WIZ", "LOG"},
                                                                           {"WAREN", "WAREN"},
                                                                           {"2SERV", "LOG"},
                                                                           {"2PVK", "LOG"},
                                                                           {"2PVALL", "LOG"},
                                                                           {"2PALL", "LOG"},
                                                                           {"2PVA1", "LOG"},
                                                                           {"2PVA8", "LOG"},
                                                                           {"2PVARB", "LOG"},
                                                                           {"2PLIEF", "LOG"},
                                                                           {"2PVS", "LOG"},
                                                                           {"2PVM", "LOG"},
                                                                           {"2PWS", "LOG"},
                                                                           {"2PVAP", "LOG"},
                                                                           {"1WL", "LOG"},
                                                                           {"1VVM", "VERTRAG"},
                                                                           {"2VABR1", "VERTRAG"},
                                                                           {"2VABR8", "VERTRAG"},
                                                                           {"EXP_VER0", "RJ"},
                                                                           {"EXP_VER8", "RJ"},
                                                                           {"BELEG_BB", "BBKLR"},
                                                                           {"1RJ", "RJ"},
                                                                           {"LEISTUNGS_BB", "BBLTN"},
                                                                           {"RECHNUNG_BB", "BBFAK"},
                                                                           {"FAKTURA_BB", "BBFAK"},
                                                                           {"ANGEBOT_BB", "BBFAK"},
                                                                           {"STAMMEINGABE_BB", "BBHAB"},
                                                                           {"LOHNERFASS", "BBFS"},
                                                                           {"BELEGBUCH", "BBFB"},
                                                                           {"HIZBB_SELEKTION_", "BBHAB"},
                                                                           {"LAGER_BB", "BBLAG"},
                                                                           {"VERTSCH_BB", "BBVS"},
                                                                           {"MBUCH_SCH", "MSCH"},
                                                                           {"FI_NUTZERRECHTE", "USERS"},
                                                                           {"1ACL", "ACL"},
                                                                           {"PLAN", "PLAN"},
                                                                           {"BERM", "BERM"},
                                                                           {"SERVICE_BB", "BBPLAN"},
                                                                           {"KLR_UBERNAHME", "BBUN"},
                                                                           {"4PAG", "SAPAGRUPPE"},
                                                                           {"ZIELVEREINBARUNG_BB", "BBZV"},
                                                                           {"BB_T_AUFTRAGS_PLANUNG", "AKAT"},
                                                                           {"MONATSARBEITSPLAN_BB", "BBMAP"},
                                                                           {"AUFTRAGSKATALOG", "AKAT"},
                                                                           {"JAGD_PLAN", "BBJAGD"},
                                                                           {"JAGD_WILD", "BBWILD"},
                                                                           {"JAGD_HUNDE", "BBHUNDE"},
                                                                           {"JAGD_STRECKE", "BBSTRK"},
                                                                           {"VERLOHN", "BBFS"},
                                                                           {"WAL_BB", "BBWAL"},
                                                                           {"DTZB", "BBWAL"},
                                                                           {"BB_JAGDBEZIRKE", "BBJB"},
                                                                           {"BB_MASCH_FAHRT", "BBFAHR"},
                                                                           {"BB_T_OBJEKTE", "BBOBJ"},
                                                                           {"STEHAPR", "STEH"},
                                                                           {"STEHEXPAPR", "STEH"},
                                                                           {"PLAN_BEARBEITUNG_BB", "BBPLAN"},
                                                                           {"PLAN_ABSCHLUSS_BB", "BBPLAN"},
                                                                           {"PLAN_VORBEREITUNG_BB", "BBPLAN"},
                                                                           {"MEISTVERK", "MVLOSE"},
                                                                           {"FHPEXP", "FHPEXP"}}) {
        for (const catalogue::Column& column : catalogue::findListType(key)->description().columns)
            EXPECT_EQ(csel.KonvSelektionID(parameter, column.label), column.id) << parameter << " " << column.label;
    }
}

} // namespace
} // namespace tamarok
