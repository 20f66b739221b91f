#include <gtest/gtest.h>

#include "key_parts.h"

namespace tamarok::selections {
namespace {

struct KeyCase {
    std::string_view key;
    std::string_view expected;
};

TEST(GroupOf, CutsTheSuffixOfEveryForm)
{
    constexpr KeyCase cases[] = {
        {"MENGEN_GRID", "MENGEN"},
        {"KUN_GR0_GRID", "KUN_GR0"},
        {"EST_ID_VALID", "EST"},
        {"ZUGANG_LOGS_VALID", "ZUGANG"},
        {"ABGANG_ID_LOGS_VALID", "ABGANG"},
        {"MENGEN_HS_LOGS_GRID", "MENGEN"},
        {"MENGEN_HS_LOGS_VALID", "MENGEN"},
        {"MEFVERF_LOGS_VALID", "MEFVERF"},
        {"RUCKE_ID_VALID", "RUCKE"},
        {"KUN_LIEF_ID_VALID", "KUN_LIEF"},
        {"MENGEN", "MENGEN"},
    };
    for (const KeyCase& key : cases)
        EXPECT_EQ(groupOf(key.key), key.expected) << key.key;
}

TEST(GroupOf, OfAPlainCheckKeepsTheUnderscore)
{
    EXPECT_EQ(groupOf("MENGEN_VALID"), "MENGEN_");
    EXPECT_EQ(groupOf("KUN_GR8_VALID"), "KUN_GR8_");
}

TEST(PartOf, NamesListsContractsAndRoles)
{
    constexpr KeyCase cases[] = {
        {"RELTABLE1", "1"},
        {"RELTABLE10", "10"},
        {"RELTABLE10_KURZ_GRID", "10"},
        {"RELTABLE3_GRID", "3"},
        {"VERTRAG0", "0"},
        {"VERTRAG_GRID10", "10"},
        {"VERTRAG_VALID_WAGGON8", "8"},
        {"VERTRAEGE_VALID7", "7"},
        {"PERSONAL_GRID_LIEFERANT", "LIEFERANT"},
        {"PERSONAL_VALID_ABRECH3", "ABRECH3"},
        {"PERSONAL_BESTEUERUNGSART_VALID_LIEFERANT", "LIEFERANT"},
        {"PERSONAL_VALID", ""},
        {"HOLZART_GRID", ""},
    };
    for (const KeyCase& key : cases)
        EXPECT_EQ(partOf(key.key), key.expected) << key.key;
}

} // namespace
} // namespace tamarok::selections
