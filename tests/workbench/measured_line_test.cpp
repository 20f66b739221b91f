#include <gtest/gtest.h>
#include <string>

#include "session.h"
#include "support/errors.h"
#include "support/platforms.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"
#include "work/measured_line.h"

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::workbench {
namespace {

class MeasuredLineTest : public testing::Test {
protected:
    MeasuredLineTest() { database::createReferenceDatabase(*session.db_ADO, {.logs = 60, .records = 10}); }

    static Platform platform()
    {
        Platform platform = test::platformOf("de-AT");
        platform.makeLocService = loc::makeLocService;
        return platform;
    }
    std::string valueOf(const std::string& column, std::int32_t number) const
    {
        return Comm_Get{}.Get_FieldValue(session, column, "LOGS",
                                         "LISTE = 'L22-000001' AND BLNR = " + std::to_string(number));
    }
    double rows(const std::string& table) const { return Comm_Get{}.Get_FieldValueN(session, "COUNT(*)", table, ""); }

    PlatformScope scope{platform()};
    TmkVar session = cli::commandSession(embedded::connectInMemory());
    MeasuredLine spruce{"FI", "BL", "B", "MR", "32,5", "4,1", "2"};
};

TEST_F(MeasuredLineTest, FiguresFollowFromTheNumbers)
{
    const LineFigures figures = figuresOf(spruce, session);
    EXPECT_FALSE(figures.bark.empty());
    EXPECT_EQ(figures.strengthClass, "3a");
    MeasuredLine one = spruce;
    one.pieces = "1";
    const auto number = [](const std::string& text) { return convert::toDouble(Variant{text}); };
    EXPECT_NEAR(number(figures.volume), 2 * number(figuresOf(one, session).volume), 1e-9);
    one.barkKey = "OR";
    EXPECT_EQ(figuresOf(one, session).volume, "0,340") << "32.5² · 3.1416 · 4.1 / 40000";
}

TEST_F(MeasuredLineTest, LineWithoutDiameterOrLengthHasNoFigures)
{
    spruce.diameter.clear();
    EXPECT_EQ(figuresOf(spruce, session).volume, "");
    EXPECT_EQ(test::errorNumber([this] { addLine("L22-000001", spruce, session); }), errors::invalidArgument);
}

TEST_F(MeasuredLineTest, AddedLineHasTheNextNumberAndASettlement)
{
    const double logs = rows("LOGS");
    const std::int32_t number = addLine("L22-000001", spruce, session);
    EXPECT_EQ(rows("LOGS"), logs + 1);
    EXPECT_EQ(rows("LOGS_RECH"), logs + 1);
    EXPECT_EQ(Comm_Get{}.Get_FieldValueN(session, "MAX(BLNR)", "LOGS", "LISTE = 'L22-000001'"), number);
    EXPECT_EQ(valueOf("HA", number), "FI");
    EXPECT_EQ(valueOf("DURCH", number), "32,5");
    EXPECT_EQ(valueOf("STK", number), "2");
    EXPECT_EQ(valueOf("KUBATUR", number), figuresOf(spruce, session).volume);
    EXPECT_EQ(addLine("L22-000001", spruce, session), number + 1);
}

TEST_F(MeasuredLineTest, FailureLeavesNothing)
{
    session.db_ADO->Execute("DROP TABLE LOGS_RECH");
    const double logs = rows("LOGS");
    EXPECT_THROW(addLine("L22-000001", spruce, session), Error);
    EXPECT_EQ(rows("LOGS"), logs);
}

TEST_F(MeasuredLineTest, CodesAreCheckedOfferedAndSpelled)
{
    spruce.species = "fi";
    EXPECT_EQ(spelledCode("species", spruce, session), "FI");
    spruce.species = "o'x";
    EXPECT_EQ(spelledCode("species", spruce, session), "o'x");
    for (const char* field : {"species", "assortment", "quality", "barkKey"}) {
        ado::Recordset rows;
        rows.Open(choiceOf(field, spruce, session), session.db_ADO);
        EXPECT_FALSE(rows.AtEOF()) << field;
    }
    EXPECT_EQ(checkOf("nothing", spruce, session), "");
}

} // namespace
} // namespace tamarok::workbench
