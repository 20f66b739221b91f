#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "catalogue/table_file.h"
#include "selections/selection_database.h"
#include "support/errors.h"

#include "tamarok/selection_book.h"

namespace tamarok::test {
namespace {

/// A key with plausible fields. "{code}" stands for the code of a row of the key `codes`.
struct Sample {
    std::string fields;
    std::string codes;
};

std::map<std::string, Sample> readSamples()
{
    std::map<std::string, Sample> samples;
    for (const auto& row : readTable("selection_fields.tsv"))
        samples[row.at(0)] = {row.at(1), row.at(2)};
    return samples;
}

/// The checks of the 21 code groups: their text ends in a literal without its closing quote, so that the
/// server rejects it; callers use the `_ID_VALID` form.
constexpr std::string_view groups[] = {"MENGEN",  "EST",     "MEFVERF", "ZUGANG",   "ABGANG",  "RUCKE",   "KUN_GR0",
                                       "KUN_GR1", "KUN_GR2", "KUN_GR3", "KUN_GR4",  "KUN_GR5", "KUN_GR6", "KUN_GR7",
                                       "KUN_GR8", "KUN_WEI", "KUN_ARB", "KUN_LIEF", "KUN_MAN", "KUN_WAL", "KUN_AP"};

bool isMalformed(const std::string& key)
{
    return std::ranges::any_of(groups, [&](std::string_view group) { return key == std::string{group} + "_VALID"; });
}

/// Checks without a code of their own: their statement is the one of the list.
const std::set<std::string> checksByTheList{
    "BB_T_AUFTRAGSSTATUS_VALID",
    "BB_T_AUFTRAGSTYP_VALID",
    "BB_T_AUFTRAGS_PLANUNG_VERFAHREN_VALID",
    "BB_T_MEHRWERTSTEUER_BB_TSP_MW_HOLZ_AG_VALID",
    "BB_T_MEHRWERTSTEUER_BB_TSP_MW_HOLZ_VALID",
    "BB_T_MEHRWERTSTEUER_BB_TSP_MW_ZARP_AG_VALID",
    "BB_T_MEHRWERTSTEUER_BB_TSP_MW_ZARP_VALID",
    "HOLZSORTE_SORTIERUNG_VALID",
    "KOSTENSTELLE_ACCESSLEVELS_VALID",
    "MASSNAHMETYP_VALID",
    "PLANSTATUS_VALID",
    "PRIORITAT_VALID",
    "VERFAHREN_LEISTUNGSART_VALID",
    "VERFAHREN_VALID",
    "ZEITRAUM_VALID",
};

class EverySelection : public SelectionDatabase, public ::testing::WithParamInterface<bool> {
protected:
    EverySelection() { session.bolOracle = GetParam(); }

    std::vector<std::string> rowsOf(const std::string& key, const std::string& fields)
    {
        try {
            return codes(key, fields);
        } catch (const Error& error) {
            ADD_FAILURE() << key << ": " << error.what() << '\n' << statement(key, fields);
            return {};
        }
    }

    static std::string withCode(std::string fields, const std::string& code)
    {
        constexpr std::string_view mark = "{code}";
        const std::size_t at = fields.find(mark);
        return at == std::string::npos ? fields : fields.replace(at, mark.size(), code);
    }

    const std::map<std::string, Sample> samples = readSamples();
};

TEST_P(EverySelection, HasFieldsToTryItWith)
{
    EXPECT_EQ(samples.size(), selections::all().size());
    for (const selections::Selection& selection : selections::all())
        EXPECT_EQ(samples.count(std::string{selection.key}), 1U) << selection.key;
}

TEST_P(EverySelection, GivesRows)
{
    std::size_t ran = 0;
    for (const auto& [key, sample] : samples) {
        if (!sample.codes.empty()) continue;
        EXPECT_FALSE(rowsOf(key, sample.fields).empty()) << key << '\n' << statement(key, sample.fields);
        ++ran;
    }
    EXPECT_EQ(ran, 777U - 340U);
}

/// Fields that take the form of a choice which the samples leave out.
constexpr std::pair<const char*, const char*> otherForms[] = {
    {"AFF_GRID", "01"},
    {"BB_AUFTRAG_KOPF_VALID", "A-2024-001|BB_AUFTRAG_KOPF.DATUM > '2020-01-01'"},
    {"BB_TSM_SOGLA_LEISTUNGSART_GRID", "1|LDNR > 10"},
    {"BB_TSM_SOGLA_LEISTUNGSART_STANDART_PLAN", "1|LDNR > 10"},
    {"BB_T_MEHRWERTSTEUER_GRID", "LDNR < 30"},
    {"HOLZSORTE", "|"},
    {"HOLZSORTE_SORTIERUNG_GRID", "1|1"},
    {"HOLZSORTE_SORTIERUNG_VALID", "1|1"},
    {"KZ_MEHRWERTSTEUER_GRID", ""},
    {"OBJEKTE_GRID", "|1=1"},
    {"OBJEKTGRUPPE_TAB_GRID", ""},
    {"OBJEKTGRUPPE_TAB_VALID", "|1"},
    {"OBJEKT_GRID", "176|"},
    {"OBJEKT_VALID", "176||200"},
    {"PERSONAL_GRID_LIEFERANT", ""},
    {"PERSONAL_VALID", "20007|PERSONAL.NATION = 'AT'"},
    {"PERSONAL_VALID_KUNDE", "20007|PERSONAL.NATION = 'AT'"},
    {"VERTRAG_GRID", "|5"},
    {"VERTRAG_GRID10", "VERTRAEGE.ID_ACCESS_LEVELS = 5"},
    {"VERTRAG_VALID10", "W2024-0003|ID_ACCESS_LEVELS = 5"},
    {"VERTRAG_VALID_ALL10", "W2023-0002|INVDATE > '2020-01-01'"},
    {"VERTRAG_VALID_WAGGON10", "W2024-0003|ID_ACCESS_LEVELS = 5"},
    {"WALDORT_VALID", "|5|1"},
    {"WARENEINHEIT_HOLZ_GRID", "4|8|"},
    {"WARENEINHEIT_HOLZ_GRID", "1||121"},
    {"WARENEINHEIT_HOLZ_VALID", "4|t atro|8|"},
    {"WARENEINHEIT_HOLZ_VALID", "1|fm||121"},
    {"ZUGANGSART_GRID", "|"},
    {"ZUGANGSART_VALID", "EI|"},
};

TEST_P(EverySelection, RunsWithTheOtherFormOfItsChoices)
{
    for (const auto& [key, fields] : otherForms)
        EXPECT_FALSE(rowsOf(key, fields).empty()) << key << '\n' << statement(key, fields);
}

TEST_P(EverySelection, ThatChecksACodeAcceptsEveryCodeOfItsList)
{
    std::size_t ran = 0;
    for (const auto& [key, sample] : samples) {
        if (sample.codes.empty() || isMalformed(key)) continue;
        const std::vector<std::string> offered = rowsOf(sample.codes, samples.at(sample.codes).fields);
        EXPECT_FALSE(offered.empty()) << sample.codes;
        for (const std::string& code : offered)
            EXPECT_FALSE(rowsOf(key, withCode(sample.fields, code)).empty())
                << key << " refuses \"" << code << "\"\n"
                << statement(key, withCode(sample.fields, code));
        ++ran;
    }
    EXPECT_EQ(ran, 340U - std::size(groups));
}

TEST_P(EverySelection, ThatChecksACodeRefusesAnother)
{
    for (const auto& [key, sample] : samples) {
        if (sample.codes.empty() || isMalformed(key)) continue;
        const std::string fields = withCode(sample.fields, "97531");
        EXPECT_TRUE(rowsOf(key, fields).empty()) << key << '\n' << statement(key, fields);
    }
}

TEST_P(EverySelection, OfAPairNamesItsPartner)
{
    for (const auto& [key, sample] : samples) {
        constexpr std::string_view suffix = "_VALID";
        if (!key.ends_with(suffix)) continue;
        const std::string list = key.substr(0, key.size() - suffix.size()) + "_GRID";
        if (!samples.contains(list)) continue;
        EXPECT_EQ(sample.codes.empty(), checksByTheList.contains(key)) << key;
        if (!checksByTheList.contains(key)) {
            EXPECT_EQ(sample.codes, list);
        }
    }
    for (const std::string& key : checksByTheList)
        EXPECT_TRUE(samples.contains(key)) << key;
}

TEST_P(EverySelection, WithoutItsClosingQuoteIsRefusedByTheDatabase)
{
    for (const std::string_view group : groups) {
        EXPECT_EQ(test::errorNumber([&] { codes(std::string{group} + "_VALID", "FI"); }), errors::statementRefused)
            << group;
    }
}

INSTANTIATE_TEST_SUITE_P(Dialects, EverySelection, ::testing::Bool(),
                         [](const auto& instance) { return instance.param ? "Oracle" : "SqlServer"; });

} // namespace
} // namespace tamarok::test
