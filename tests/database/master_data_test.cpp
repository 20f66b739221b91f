#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "master_keys.h"
#include "master_tables.h"
#include "resources.h"
#include "timber_profile.h"
#include "tsv_table.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

std::set<std::string_view> values(std::string_view table, std::string_view column)
{
    const TsvTable rows = masterTable(table);
    std::set<std::string_view> found;
    for (std::size_t row = 0; row < rows.rows(); ++row) {
        const std::string_view cell = rows.cell(row, rows.column(column));
        if (!cell.empty()) found.insert(cell);
    }
    return found;
}

/// Keys "1" to "count" of a table whose rows the database numbers.
std::set<std::string> numbered(std::string_view table)
{
    std::set<std::string> keys;
    for (std::size_t i = 1; i <= masterTable(table).rows(); ++i)
        keys.insert(std::to_string(i));
    return keys;
}

/// Returns the number of the Error that `action` throws, 0 for none.
template <class Action>
std::int32_t failureOf(Action action)
{
    try {
        action();
    } catch (const Error& error) {
        return error.number;
    }
    return 0;
}

struct Reference {
    std::string_view table, column, toTable, toColumn;
};
constexpr Reference references[]{
    {"USERS", "ID_USERS_VERTRETER", "USERS", "ID"},
    {"USERS", "ID_ACCESS_LEVELS", "ACCESS_LEVELS", "ID"},
    {"USERS_PROPERTY", "ID_USERS", "USERS", "ID"},
    {"ONETOMANY", "ID_MASTER", "USERS", "ID"},
    {"ONETOMANY", "ID_SLAVE", "ACCESS_LEVELS", "ID"},
    {"USERS_TREEVIEW", "ID_USERS", "USERS", "ID"},
    {"USERS_TREEVIEW", "TREEVIEW", "BB_ORGANISATIONS_RECHTE", "ANWENDUNGSOBJEKTE"},
    {"ACCESS_LEVELS", "ID_ACL_0", "ACCESS_LEVELS", "ID"},
    {"ACCESS_LEVELS", "ID_ACL_1", "ACCESS_LEVELS", "ID"},
    {"ACCESS_LEVELS", "ID_ACL_2", "ACCESS_LEVELS", "ID"},
    {"RINDENABZUG", "HA", "HOLZART", "HA"},
    {"U_FAKT", "ID_HA", "HOLZART", "ID"},
    {"U_FAKT", "ID_HS", "HOLZSORTE", "ID"},
    {"U_FAKT", "ID_DSART", "DSART", "ID"},
    {"U_FAKT", "ID_ME", "STAMM_TABELLEN", "ID_STRING"},
    {"TSM_MENGECALC", "ID_HOLZSORTE", "HOLZSORTE", "ID"},
    {"TSM_MENGECALC", "ID_WARENEINHEIT", "WARENEINHEIT", "EINHEIT_ID"},
    {"TSP_UMF", "ID_WARENEINHEIT", "WARENEINHEIT", "EINHEIT_ID"},
    {"D_MSZ", "HA", "HOLZART", "ZUORD_MSZ"},
    {"D_MSZ", "HS", "HOLZSORTE", "ZUORD_MSZ"},
    {"D_MSZ", "STKL", "STKL", "STKL"},
    {"D_MSZ", "DSART", "DSART", "ID"},
    {"WALDORT", "ID_ACCESS_LEVELS", "ACCESS_LEVELS", "ID"},
    {"PERSONAL", "ID_ACCESS_LEVELS", "ACCESS_LEVELS", "ID"},
    {"PERSONAL", "ID_BB_T_EIGENTUMSART", "BB_T_EIGENTUMSART", "ID"},
    {"PERSONAL", "ID_T_MITGLIEDSART", "T_MITGLIEDSART", "ID"},
    {"HH_TITEL", "ID_HH_KAPITEL", "HH_KAPITEL", "ID"},
    {"ARBEITSAUFTRAG_KOPF", "ID_WALDORT", "WALDORT", "ID_WALDORT"},
    {"ARBEITSAUFTRAG", "ARBEITSAUFTRAG_KOPF_ID", "ARBEITSAUFTRAG_KOPF", "ID"},
    {"VERTRAEGE", "ID_PERSONAL", "PERSONAL", "ID_PERSONAL"},
    {"VERTRAEGE", "ID_USER", "USERS", "ID"},
    {"VERTRAG_MENGEN", "ID_VERTRAG", "VERTRAEGE", "ID_VERTRAG"},
    {"VERTRAG_MENGEN", "HA", "HOLZART", "HA"},
    {"VERTRAG_MENGEN", "HS", "HOLZSORTE", "HS"},
};

TEST(MasterData, EveryReferenceFindsItsRow)
{
    for (const Reference& reference : references) {
        const auto targets = values(reference.toTable, reference.toColumn);
        const auto keys = values(reference.table, reference.column);
        EXPECT_FALSE(keys.empty()) << reference.table << '.' << reference.column;
        for (const std::string_view key : keys)
            EXPECT_TRUE(targets.contains(key)) << reference.table << '.' << reference.column << ' ' << key;
    }
}

TEST(MasterData, OrdersBelongToNumberedProjects)
{
    const auto projects = numbered("BB_T_PROJEKT_PLANUNG");
    for (const std::string_view key : values("BB_T_AUFTRAGS_PLANUNG", "ID_BB_T_PROJEKT_PLANUNG"))
        EXPECT_TRUE(projects.contains(std::string{key})) << key;
}

TEST(MasterData, KeysAreUnique)
{
    constexpr std::pair<std::string_view, std::string_view> keys[]{{"ACCESS_LEVELS", "ACCESS_LEVELS"},
                                                                   {"USERS", "NAME"},
                                                                   {"HOLZART", "HA"},
                                                                   {"HOLZSORTE", "HS"},
                                                                   {"GUETEKLASSE", "GKL"},
                                                                   {"STKL", "STKL"},
                                                                   {"WARENEINHEIT", "EINHEIT"},
                                                                   {"NUTZUNGSART", "NA"},
                                                                   {"KALAMITAET", "KA"},
                                                                   {"RINDENKENNZ", "RINDENKENNZ"},
                                                                   {"OPTIONEN", "PROPERTY_ID"},
                                                                   {"VERTRAEGE", "VERTRAG_NAME"},
                                                                   {"PERSONAL", "ID_PERSONAL"},
                                                                   {"WALDORT", "ID_WALDORT"},
                                                                   {"PERSONAL", "KURZBEZEICHNUNG"}};
    for (const auto& [table, column] : keys)
        EXPECT_EQ(values(table, column).size(), masterTable(table).rows()) << table << '.' << column;
}

TEST(MasterData, LevelCodesAreTwoDigitGroupsUnderARoot)
{
    const auto codes = values("ACCESS_LEVELS", "ACCESS_LEVELS");
    EXPECT_TRUE(codes.contains("00000000"));
    for (const std::string_view code : codes) {
        ASSERT_EQ(code.size(), 8U) << code;
        EXPECT_EQ(code.find_first_not_of("0123456789"), std::string_view::npos);
        // Every node above a level exists, and nothing stands below an ended one.
        for (std::size_t groups = 1; groups < 4; ++groups) {
            const std::string parent = std::string{code.substr(0, groups * 2)} + std::string(8 - groups * 2, '0');
            EXPECT_TRUE(codes.contains(parent)) << code << " without " << parent;
        }
    }
}

TEST(MasterData, StrengthClassesFollowOneAnotherWithoutOverlap)
{
    const MasterKeys keys;
    const auto& classes = keys.strengthClasses();
    ASSERT_EQ(classes.size(), profile::softwoodByStrength.size());
    for (std::size_t i = 1; i < classes.size(); ++i) {
        EXPECT_GT(classes[i].from, classes[i - 1].to);
        EXPECT_LT(classes[i].from - classes[i - 1].to, 0.011);
    }
    EXPECT_EQ(classes[keys.strengthClass(14.99)].code, "1a");
    EXPECT_EQ(classes[keys.strengthClass(15.0)].code, "1b");
    EXPECT_EQ(classes[keys.strengthClass(24.99)].code, "2a");
    EXPECT_EQ(classes[keys.strengthClass(60.0)].code, "6");
}

TEST(MasterData, VolumeClassOfAnEdgeIsTheHigherOne)
{
    const MasterKeys keys;
    EXPECT_EQ(keys.volumeClass(0.3), "3");
    EXPECT_EQ(keys.volumeClass(0.29), "2");
    EXPECT_EQ(keys.volumeClass(500.0), "");
}

TEST(MasterData, AssortmentsAllowExistingStrengthClasses)
{
    const auto classes = values("STKL", "ID");
    for (std::string_view list : values("HOLZSORTE", "STKL")) {
        while (!list.empty()) {
            const auto comma = list.find(',');
            EXPECT_TRUE(classes.contains(list.substr(0, comma))) << list;
            list.remove_prefix(comma == std::string_view::npos ? list.size() : comma + 1);
        }
    }
}

TEST(MasterData, TheGeneratorsProfileUsesKeysOfTheMasterData)
{
    const MasterKeys keys;
    const auto species = values("HOLZART", "HA");
    for (const profile::Species& item : profile::species)
        EXPECT_TRUE(species.contains(item.code)) << item.code;
    const auto qualities = values("GUETEKLASSE", "GKL");
    for (const profile::Quality& item : profile::qualities)
        EXPECT_TRUE(qualities.contains(item.code)) << item.code;
    const auto units = values("WARENEINHEIT", "EINHEIT_ID");
    for (const profile::Kind& kind : profile::kinds) {
        EXPECT_TRUE(units.contains(std::to_string(kind.unit)));
        EXPECT_FALSE(keys.partners(kind.customers).empty()) << kind.customers;
    }
    for (const profile::Service& service : profile::services)
        EXPECT_FALSE(keys.partners(service.partners).empty()) << service.partners;
    for (std::int32_t list = 1; list <= 10; ++list)
        EXPECT_FALSE(keys.relations(list).empty()) << list;
    for (std::int32_t version = 0; version < 9; ++version)
        EXPECT_FALSE(keys.contracts(version).empty()) << version;
}

TEST(MasterData, CurrencyOptionsAgreeWithTheGenerator)
{
    const TsvTable options = masterTable("OPTIONEN");
    for (std::size_t row = 0; row < options.rows(); ++row)
        if (options.cell(row, 0) == "UFAKTNAT_EURO") {
            EXPECT_EQ(options.number(row, options.column("DOUBLE_VALUE")), profile::nationalPerEuro);
        }
    EXPECT_TRUE(values("OPTIONEN", "PROPERTY_ID").contains("UFAKTNAT_EURO"));
}

TEST(MasterData, IsOfTheSizeOfARealEnterprise)
{
    EXPECT_EQ(masterTable("WALDORT").rows(), 220U);
    EXPECT_EQ(masterTable("PERSONAL").rows(), 300U);
    EXPECT_EQ(masterTable("HOLZART").rows(), 28U);
    EXPECT_EQ(masterTable("USERS").rows(), 12U);
    EXPECT_EQ(masterTable("VERTRAEGE").rows(), 60U);
}

TEST(MasterData, UnknownTableAndGroupAreErrors)
{
    const MasterKeys keys;
    EXPECT_EQ(failureOf([] { masterTable("NONE"); }), errors::fileNotFound);
    EXPECT_EQ(failureOf([&] { keys.partners("Niemand"); }), errors::itemNotFound);
    EXPECT_EQ(failureOf([&] { keys.contracts(9); }), errors::itemNotFound);
    EXPECT_EQ(failureOf([&] { keys.relations(11); }), errors::itemNotFound);
    EXPECT_EQ(failureOf([&] { keys.count("NONE"); }), errors::itemNotFound);
}

TEST(Resources, EveryGroupHasItsFilesInTheOrderOfTheirNames)
{
    constexpr std::pair<std::string_view, std::size_t> groups[]{{"schema", 22},  {"procedures", 3}, {"texts", 2},
                                                                {"columns", 40}, {"master", 48},    {"selections", 14},
                                                                {"nothing", 0}};
    for (const auto& [group, count] : groups) {
        const auto files = resources(group);
        EXPECT_EQ(files.size(), count) << group;
        EXPECT_TRUE(std::is_sorted(files.begin(), files.end(), [](const Resource& a, const Resource& b) {
            return a.name < b.name;
        })) << group;
        for (const Resource& file : files)
            EXPECT_EQ(file.text.back(), '\n') << group << '/' << file.name;
    }
    EXPECT_EQ(failureOf([] { resource("texts", "none.tsv"); }), errors::fileNotFound);
}

} // namespace
} // namespace tamarok::database
