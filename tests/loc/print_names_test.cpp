#include <array>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_get.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"

/// The names of all reports in the three languages of the reference database.
namespace tamarok::loc {
namespace {

/// A row of the library's own table: the code and whether the name is fixed.
struct Report {
    constexpr Report(std::string_view reportCode, int /*text*/, int /*secondText*/ = 0) : code{reportCode} {}
    constexpr Report(std::string_view reportCode, std::string_view /*name*/) : code{reportCode}, isFixed{true} {}
    std::string_view code;
    bool isFixed = false;
};
constexpr Report reports[]{
#include "data/print_names.inc"
};

constexpr std::array languages{"GERMAN", "ENGLISH", "FRENCH"};

class PrintNames : public testing::Test {
protected:
    PrintNames()
    {
        session_.db_ADO = embedded::connectInMemory();
        database::createReferenceDatabase(*session_.db_ADO, {.logs = 0, .records = 0});
        for (const char* language : languages) {
            session_.strLanguage = language;
            Platform platform;
            platform.makeLocService = &makeLocService;
            const PlatformScope scope{platform};
            for (const Report& report : reports)
                names_[language][report.code] = Comm_Get{}.Get_Print_Name(session_, report.code);
        }
    }

    TmkVar session_;
    std::map<std::string_view, std::map<std::string_view, std::string>> names_; ///< by language and code
};

TEST_F(PrintNames, AreThereForAllCodesInAllLanguages)
{
    for (const char* language : languages) {
        EXPECT_EQ(names_[language].size(), 168U);
        std::set<std::string> different;
        for (const auto& [code, name] : names_[language]) {
            EXPECT_EQ(name.find('<'), std::string::npos) << language << " " << code << ": a text is missing: " << name;
            EXPECT_EQ(name.find("   "), std::string::npos) << name;
            EXPECT_FALSE(name.ends_with(' ')) << code;
            different.insert(name);
            if (code.starts_with("STEH_")) continue;
            EXPECT_EQ(name.substr(0, 3), code.substr(0, 3));
            EXPECT_EQ(name.find("  "), code.size()) << "two blanks follow the code: " << name;
            EXPECT_GT(name.size(), code.size() + 2) << code;
        }
        EXPECT_EQ(different.size(), 168U) << "no two reports have the same name";
    }
}

TEST_F(PrintNames, AreTranslatedUnlessTheyAreFixed)
{
    std::size_t fixed = 0;
    for (const Report& report : reports) {
        const std::string& german = names_["GERMAN"][report.code];
        const std::string& english = names_["ENGLISH"][report.code];
        const std::string& french = names_["FRENCH"][report.code];
        fixed += report.isFixed ? 1U : 0U;
        EXPECT_EQ(german == english, report.isFixed) << german << " | " << english;
        EXPECT_EQ(german == french, report.isFixed) << german << " | " << french;
        EXPECT_EQ(english == french, report.isFixed) << report.code;
    }
    EXPECT_EQ(fixed, 26U);
}

TEST_F(PrintNames, SomeNames)
{
    struct Case {
        std::string_view language, code, name;
    };
    for (const Case& c :
         {Case{"GERMAN", "HV 11Z", "HV 11z  Rechnungsverzeichnis"},
          Case{"ENGLISH", "HV 11Z", "HV 11z  List of invoices"}, Case{"FRENCH", "HV 11Z", "HV 11z  Liste des factures"},
          Case{"ENGLISH", "KW 41Z", "KW 41z  Wage statement by month"},
          Case{"FRENCH", "KW 42Z", "KW 42z  Relevé de salaire par type de salaire"},
          Case{"FRENCH", "VJ 210", "VJ 210  Abschussplan"}})
        EXPECT_EQ(names_[c.language][c.code], c.name);
}

} // namespace
} // namespace tamarok::loc
