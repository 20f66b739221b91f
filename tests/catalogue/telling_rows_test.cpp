#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "list_types.h"
#include "support/surroundings.h"

#include "tamarok/comm_csel.h"

// Rows that the contract gives by their text: each stands in its list type.

namespace tamarok {
namespace {

struct TellingRow {
    std::string_view type;
    std::string_view expression;
};

const std::vector<TellingRow>& tellingRows()
{
    static const std::vector<TellingRow> rows{
        {"RJ", "S.NAME"},
        {"RJ",
         "(CASE WHEN A.VER_TYPE IS NULL THEN '' ELSE 'H' END)+(CASE WHEN B.VER_TYPE IS NULL THEN '' ELSE 'A' END)"},
        {"PERSONAL", "(CASE WHEN ACCESS_LEVELS.ACCESS_LEVELS IS NULL OR ACCESS_LEVELS.ACCESS_LEVELS = "
                     "REPLICATE(0,LEN(ACCESS_LEVELS.ACCESS_LEVELS)) THEN 'Z' ELSE 'A' END)"},
        {"PERSONAL", "(CASE WHEN PERSONAL.ERINNERUNGAKTIV = 1 THEN 'Ja' ELSE 'Nein' END)"},
        {"PERSONAL", "AL10.NAME_LANG"},
        {"PERSONAL", "AL11.NAME_LANG"},
        {"PERSONAL", "AL12.NAME_LANG"},
        {"VERTRAG", "(CASE VERTRAEGE.ABGESCHLOSSEN WHEN 1 THEN 'Ja' ELSE 'Nein' END)"},
        {"BBOBJ", "(CASE WHEN BB_T_OBJEKTE.STANDART = 1 THEN 'Standart' ELSE Null END)"},
        {"WAREN", "(CASE WHEN WARENKATALOG.DISABLE = 1 THEN 1 ELSE 0 END)"},
        {"MVLOSE", "(CASE WHEN BB_MV_LOSE.LOS_NUMMER='0' THEN 1 ELSE 2 END)"},
        {"MVLOSE", "ACCESS_LEVELS0.NAME_LANG"},
        {"MVLOSE", "ACCESS_LEVELS1.NAME_LANG"},
        {"MVLOSE", "ACCESS_LEVELS2.NAME_LANG"},
        {"AKAT", "ACCESS_LEVELS0.NAME_LANG"},
        {"AKAT", "ACCESS_LEVELS1.NAME_LANG"},
        {"AKAT", "ACCESS_LEVELS2.NAME_LANG"},
    };
    return rows;
}

class TellingRows : public ::testing::Test {
protected:
    std::vector<std::string> expressions(std::string_view type, bool aggregated, bool inGroupBy)
    {
        std::vector<std::string> all;
        for (const catalogue::Column& column : catalogue::findListType(type)->description().columns)
            all.push_back(csel.GetColumnTyp(type, column.id, aggregated, inGroupBy, with.session));
        return all;
    }
    bool has(std::string_view type, std::string_view expression, bool aggregated = false, bool inGroupBy = false)
    {
        return std::ranges::count(expressions(type, aggregated, inGroupBy), expression) > 0;
    }

    TellingRows()
    {
        with.loc.texts = {{5, "'Nein'"}, {6, "'Ja'"}};
        for (int number = 7; number <= 32767; ++number)
            with.loc.texts[number] = "text";
    }

    test::Surroundings with;
    Comm_CSel csel;
};

TEST_F(TellingRows, StandInTheirTypes)
{
    for (const TellingRow& row : tellingRows())
        EXPECT_TRUE(has(row.type, row.expression)) << row.type << ": " << row.expression;
}

TEST_F(TellingRows, EveryListOfDocumentsHasItsCancelMark)
{
    for (const char* type : {"BBKLR", "BBLTN", "BBHAB", "BBFAK", "BBFB", "BBVS", "BBPLAN", "BBZV", "BBMAP", "BBJAGD",
                             "BBWILD", "BBHUNDE", "BBSTRK", "BBJB", "BBFAHR"}) {
        const std::string base = catalogue::findListType(type)->description().base;
        const std::string table = base.substr(0, base.find(' '));
        EXPECT_TRUE(has(type, "(CASE WHEN " + table + ".STORNODATUM IS NULL THEN ' ' ELSE 'S' END)")) << type;
    }
}

TEST_F(TellingRows, FlagsOfPartnersAreTextsOfTheLanguageAndGroupByTheirColumn)
{
    for (const char* column : {"PERSONAL.ANGEMELDET", "PERSONAL.OPTIERENDERBETRIEB"}) {
        EXPECT_TRUE(
            has("PERSONAL", "(CASE WHEN ISNULL(" + std::string{column} + ",0)=0 THEN ('Nein') ELSE ('Ja') END)"))
            << column;
        EXPECT_TRUE(has("PERSONAL", column, true, true)) << column;
        EXPECT_TRUE(has("PERSONAL", column, false, true)) << column;
    }
}

TEST_F(TellingRows, AlmostEveryTypeHasMeasures)
{
    // Contracts, users, access levels and dogs are lists of keys alone.
    for (const catalogue::ListType* type : catalogue::listTypes()) {
        const std::string key = type->description().key;
        const bool measures = std::ranges::any_of(type->description().columns, [](const catalogue::Column& column) {
            return catalogue::isMeasure(column.aggregate);
        });
        const bool keysAlone = key == "VERTRAG" || key == "USERS" || key == "ACL";
        EXPECT_EQ(measures, !keysAlone) << key;
    }
}

TEST_F(TellingRows, ThereAreWellOverAThousandColumns)
{
    std::size_t count = 0;
    for (const catalogue::ListType* type : catalogue::listTypes())
        if (type != &catalogue::logList()) count += type->description().columns.size();
    EXPECT_GT(count, 2500U);
}

} // namespace
} // namespace tamarok
