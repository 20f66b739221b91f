#include <cstdlib>
#include <map>
#include <set>

#include "runtime/support.h"

namespace tamarok {
namespace {

TEST(Regional, BuiltInLocalesAreSortedAndComplete)
{
    const std::vector<std::string_view> expected{"cs-CZ", "de-AT", "de-CH", "de-DE",
                                                 "en-GB", "en-US", "fr-FR", "sv-SE"};
    EXPECT_EQ(Regional::builtInNames(), expected);
}

TEST(Regional, EverySettingIsFilled)
{
    for (const std::string_view name : Regional::builtInNames()) {
        const Regional regional = Regional::named(name);
        EXPECT_EQ(regional.name, name);
        EXPECT_FALSE(regional.decimal.empty()) << name;
        EXPECT_FALSE(regional.thousands.empty()) << name;
        EXPECT_NE(regional.decimal, regional.thousands) << name;
        for (const std::string& word : regional.months)
            EXPECT_FALSE(word.empty()) << name;
        for (const std::string& word : regional.shortMonths)
            EXPECT_FALSE(word.empty()) << name;
        for (const std::string& word : regional.days)
            EXPECT_FALSE(word.empty()) << name;
        for (const std::string& word : regional.shortDays)
            EXPECT_FALSE(word.empty()) << name;
        EXPECT_EQ(std::set<std::string>(regional.months.begin(), regional.months.end()).size(), 12U) << name;
        EXPECT_EQ(std::set<std::string>(regional.shortMonths.begin(), regional.shortMonths.end()).size(), 12U) << name;
    }
}

struct Settings {
    const char* name;
    const char* decimal;
    const char* thousands;
    const char* shortDate;
    const char* trueText;
    const char* falseText;
    const char* january;
};

TEST(Regional, SettingsByLocale)
{
    const Settings table[] = {
        {"cs-CZ", ",", "\u00A0", "dd.MM.yyyy", "Pravda", "Nepravda", "leden"},
        {"de-AT", ",", ".", "dd.MM.yyyy", "Wahr", "Falsch", "Jänner"},
        {"de-CH", ".", "\u2019", "dd.MM.yyyy", "Wahr", "Falsch", "Januar"},
        {"de-DE", ",", ".", "dd.MM.yyyy", "Wahr", "Falsch", "Januar"},
        {"en-GB", ".", ",", "dd/MM/yyyy", "True", "False", "January"},
        {"en-US", ".", ",", "M/d/yyyy", "True", "False", "January"},
        {"fr-FR", ",", "\u202F", "dd/MM/yyyy", "Vrai", "Faux", "janvier"},
        {"sv-SE", ",", "\u00A0", "yyyy-MM-dd", "Sant", "Falskt", "januari"},
    };
    for (const Settings& row : table) {
        const Regional regional = Regional::named(row.name);
        EXPECT_EQ(regional.decimal, row.decimal) << row.name;
        EXPECT_EQ(regional.thousands, row.thousands) << row.name;
        EXPECT_EQ(regional.shortDate, row.shortDate) << row.name;
        EXPECT_EQ(regional.trueText, row.trueText) << row.name;
        EXPECT_EQ(regional.falseText, row.falseText) << row.name;
        EXPECT_EQ(regional.months[0], row.january) << row.name;
    }
}

TEST(Regional, NamesCompareWithoutRegardToCase)
{
    EXPECT_EQ(Regional::named("DE-at").name, "de-AT");
    EXPECT_FALSE(Regional::find("xx-XX").has_value());
}

TEST(Regional, UnknownNameListsTheKnownOnes)
{
    EXPECT_EQ(test::errorNumber([] { Regional::named("xx"); }), errors::invalidArgument);
    EXPECT_EQ(test::errorText([] { Regional::named("xx"); }),
              "Invalid argument: no regional settings \"xx\"; known are cs-CZ, de-AT, de-CH, de-DE, en-GB, en-US, "
              "fr-FR, sv-SE.");
}

/// Sets the locale variables and puts the old ones back.
class MachineLocale : public testing::Test {
protected:
    void SetUp() override
    {
        for (const char* name : names)
            if (const char* value = std::getenv(name)) saved_[name] = value;
        for (const char* name : names)
            unsetenv(name);
    }
    void TearDown() override
    {
        for (const char* name : names)
            unsetenv(name);
        for (const auto& [name, value] : saved_)
            setenv(name.c_str(), value.c_str(), 1);
    }

private:
    static constexpr const char* names[] = {"LC_ALL", "LC_NUMERIC", "LC_TIME", "LANG"};
    std::map<std::string, std::string> saved_;
};

TEST_F(MachineLocale, IsReadFromTheVariables)
{
    const std::pair<const char*, const char*> table[] = {
        {"de_AT.UTF-8", "de-AT"}, {"de_AT@euro", "de-AT"}, {"de_LI.UTF-8", "de-DE"},
        {"fr_CA", "fr-FR"},       {"en_AU", "en-US"},      {"sv", "sv-SE"},
        {"C", "en-US"},           {"POSIX", "en-US"},      {"C.UTF-8", "en-US"},
        {"ja_JP", "en-US"},       {"", "en-US"},
    };
    for (const auto& [variable, expected] : table) {
        setenv("LANG", variable, 1);
        EXPECT_EQ(Regional::ofMachine().name, expected) << variable;
    }
}

TEST_F(MachineLocale, CategoriesMayDifferAndLcAllRulesThem)
{
    setenv("LANG", "en_GB", 1);
    setenv("LC_NUMERIC", "de_DE", 1);
    const Regional mixed = Regional::ofMachine();
    EXPECT_EQ(mixed.shortDate, "dd/MM/yyyy");
    EXPECT_EQ(mixed.decimal, ",");
    setenv("LC_TIME", "sv_SE", 1);
    EXPECT_EQ(Regional::ofMachine().shortDate, "yyyy-MM-dd");
    setenv("LC_ALL", "cs_CZ.UTF-8", 1);
    EXPECT_EQ(Regional::ofMachine().shortDate, "dd.MM.yyyy");
    EXPECT_EQ(Regional::ofMachine().thousands, "\u00A0");
}

} // namespace
} // namespace tamarok
