#include <gtest/gtest.h>

#include "tamarok_database/schema.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/platform.h"

/// A date option that is written and read under the regional settings of a machine keeps its day, whatever the date
/// order of the connection.
namespace tamarok::loc {
namespace {

/// Short dates of the world's regional settings that have four digits for the year.
constexpr const char* shortDates[] = {
    "d.M.yyyy",      "dd.MM.yyyy", "d. M. yyyy", "d.M.yyyy.",  "dd.MM.yyyy.", "d/M/yyyy",     "dd/MM/yyyy",
    "d-M-yyyy",      "dd-MM-yyyy", "M/d/yyyy",   "MM/dd/yyyy", "M-d-yyyy",    "MM-dd-yyyy",   "MM.dd.yyyy",
    "yyyy-MM-dd",    "yyyy/MM/dd", "yyyy/M/d",   "yyyy.MM.dd", "yyyy.M.d",    "yyyy-M-d",     "yyyy. M. d",
    "yyyy. MM. dd.", "yyyy-dd-MM", "yyyy/dd/MM", "d MMM yyyy", "dd-MMM-yyyy", "d. MMMM yyyy", "MMM d, yyyy",
};

class OptionDates : public testing::Test {
protected:
    OptionDates()
    {
        session_.db_ADO = embedded::connectInMemory();
        database::createTables(*session_.db_ADO);
    }

    void expectKept(const Regional& regional)
    {
        Platform platform;
        platform.regional = regional;
        platform.makeLocService = &makeLocService;
        const PlatformScope scope{platform};
        for (std::int32_t month = 1; month <= 12; ++month) {
            for (const std::int32_t day : {1, 2, 5, 11, 12, 13, 28}) {
                const Date date = makeDate(2024, month, day);
                Comm_Set{}.SetOptionenDate(session_, "DATE_TO", date);
                EXPECT_EQ(Comm_Get{}.GetOptionenDate(session_, "DATE_TO"), date)
                    << regional.shortDate << " " << convert::toText(date);
            }
        }
        const Date withTime{makeDate(2024, 3, 5).days + 0.59375}; // 14:15
        Comm_Set{}.SetOptionenDate(session_, "DATE_TO", withTime);
        EXPECT_EQ(Comm_Get{}.GetOptionenDate(session_, "DATE_TO"), withTime) << regional.shortDate;
    }

    TmkVar session_;
};

TEST_F(OptionDates, SurviveEveryShortDate)
{
    for (const char* const order : {"dmy", "mdy", "ymd"}) {
        session_.db_ADO->Execute(std::string{"SET DATEFORMAT "} + order);
        for (const char* const shortDate : shortDates) {
            Regional regional = Regional::named("de-AT");
            regional.shortDate = shortDate;
            expectKept(regional);
        }
    }
}

TEST_F(OptionDates, SurviveTheBuiltInSettings)
{
    for (const std::string_view name : Regional::builtInNames())
        expectKept(Regional::named(name));
}

/// Reading a date under another case makes a row for that name and leaves the stored date.
TEST_F(OptionDates, AMissUnderAnotherNameDestroysNothing)
{
    Platform platform;
    platform.makeLocService = &makeLocService;
    const PlatformScope scope{platform};
    const Date stored = makeDate(2024, 3, 5);
    Comm_Set{}.SetOptionenDate(session_, "DATE_TO", stored);
    for (const char* const name : {"date_to", "Date_To", " DATE_TO", "DATE_TO "})
        Comm_Get{}.GetOptionenDate(session_, name);
    EXPECT_EQ(Comm_Get{}.GetOptionenDate(session_, "DATE_TO"), stored);
}

/// Required by the contract: the reader of texts finds exact names only, and writes the upper-case one after a miss.
TEST_F(OptionDates, ATextReadUnderALowerCaseNameIsCleared)
{
    Platform platform;
    platform.makeLocService = &makeLocService;
    const PlatformScope scope{platform};
    Comm_Set{}.SetOptionenText(session_, "ABC", "x");
    EXPECT_EQ(Comm_Get{}.GetOptionenText(session_, "abc"), "");
    EXPECT_EQ(Comm_Get{}.GetOptionenText(session_, "ABC"), "");
}

} // namespace
} // namespace tamarok::loc
