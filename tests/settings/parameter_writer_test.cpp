#include "settings/parameter_folder.h"

#include "tamarok/error.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::expectError;

class ParameterWriter : public test::ParameterFolder {};

TEST_F(ParameterWriter, ANewFileHoldsTheEntryAndAnEmptyLine)
{
    act.SaveParam("A", "1", path());
    EXPECT_EQ(content(), "A = 1\r\n\r\n");
    act.SaveParam("B", "two words", path());
    EXPECT_EQ(content(), "A = 1\r\n\r\nB = two words\r\n\r\n");
    EXPECT_EQ(act.GetParam("B", "", path()), "two words");
    EXPECT_EQ(content("params.ini~"), "(none)");
}

TEST_F(ParameterWriter, ChangesTheLineAndKeepsCommentsAndOrder)
{
    EXPECT_EQ(saved("% first\n\nB = 0\nA = 1\n% last\n", "A", "2"), "% first\n\nB = 0\nA = 2\n% last\n");
    EXPECT_EQ(content("params.ini~"), content());
}

TEST_F(ParameterWriter, LeavesAloneACommentThatLooksLikeTheParameter)
{
    EXPECT_EQ(saved("% A = 0\nA = 1\n", "A", "2"), "% A = 0\nA = 2\n");
}

TEST_F(ParameterWriter, SpellsTheKeyAndTheValueAsGiven)
{
    EXPECT_EQ(saved("alpha=1\n", "ALPHA", " 2 "), "ALPHA =  2 \n");
    EXPECT_EQ(saved("alpha=1\n", " Alpha", "2"), " Alpha = 2\n");
    EXPECT_EQ(saved("", "Key", "  v"), "Key =   v\r\n\r\n");
}

TEST_F(ParameterWriter, ARewriteTrimsAllLines)
{
    EXPECT_EQ(saved("  % c  \n   \n  B = 1 \n\tC=2\n A=1", "A", "2"), "% c\n\nB = 1\n\tC=2\nA = 2\n");
}

TEST_F(ParameterWriter, AnAppendChangesNoLine)
{
    EXPECT_EQ(saved("  B = 1  \n", "A", "2"), "  B = 1  \nA = 2\n\n");
    EXPECT_EQ(content("params.ini~"), "(none)");
}

TEST_F(ParameterWriter, LinesEndAsTheFirstLineOfTheFile)
{
    EXPECT_EQ(saved("B = 1\n", "A", "2"), "B = 1\nA = 2\n\n");
    EXPECT_EQ(saved("B = 1\r\n", "A", "2"), "B = 1\r\nA = 2\r\n\r\n");
    EXPECT_EQ(saved("B = 1\nA = 1\r\n", "A", "2"), "B = 1\nA = 2\n");
    EXPECT_EQ(saved("B = 1\r\nA = 1\n", "A", "2"), "B = 1\r\nA = 2\r\n");
    EXPECT_EQ(saved("A = 1", "A", "2"), "A = 2\r\n");
}

TEST_F(ParameterWriter, AnAppendEndsAnUnendedLineFirst)
{
    EXPECT_EQ(saved("B = 1", "A", "2"), "B = 1\r\nA = 2\r\n\r\n");
    EXPECT_EQ(saved("C = 1\nB = 1", "A", "2"), "C = 1\nB = 1\nA = 2\n\n");
    EXPECT_EQ(saved("B = 1\nC =", "C", "2"), "B = 1\nC =\nC = 2\n\n");
}

TEST_F(ParameterWriter, AKeyWithoutValueIsAppended)
{
    EXPECT_EQ(saved("A =\n", "A", "2"), "A =\nA = 2\n\n");
    EXPECT_EQ(act.GetParam("A", "", path()), "2");
}

TEST_F(ParameterWriter, AnEmptyLineOfTheKeyBeforeItsValueIsChangedInItsPlace)
{
    // Required by the contract: the first line of the key is changed, not the one with the value.
    EXPECT_EQ(saved("A =\nA = 5\n", "A", "7"), "A = 7\nA = 5\n");
    EXPECT_EQ(errorNumber([&] { act.GetParam("A", "", path()); }), errors::parameterDuplicate);
}

TEST_F(ParameterWriter, AnEmptyValueIsWritten)
{
    EXPECT_EQ(saved("A = 1\n", "A", ""), "A = \n");
    EXPECT_EQ(act.GetParam("A", "d", path()), "d");
}

TEST_F(ParameterWriter, TheOnlyDatabaseKeepsItsValue)
{
    // Required by the contract: the one line receives the value of the list, which is the old one.
    EXPECT_EQ(saved("DATABASENAME=old\n", "DATABASENAME", "new"), "DATABASENAME = old\n");
    EXPECT_EQ(saved("DATABASENAME=old\n", "databasename", "new"), "databasename = old\n");
    EXPECT_EQ(saved("DATABASENAME=old\n", "Databasename ", "new"), "Databasename  = new\n");
}

TEST_F(ParameterWriter, ADatabaseOfTheListChangesPlacesWithTheFirst)
{
    EXPECT_EQ(saved("DATABASENAME = a\nX = 1\nDATABASENAME = b\n", "DATABASENAME", "b"),
              "DATABASENAME = b\nX = 1\nDATABASENAME = a\n");
    EXPECT_EQ(saved("DATABASENAME = a\nDATABASENAME = b\nDATABASENAME = c\n", "DATABASENAME", "c"),
              "DATABASENAME = c\nDATABASENAME = b\nDATABASENAME = a\n");
    EXPECT_EQ(saved("DATABASENAME = a\nDATABASENAME = b\n", "DATABASENAME", "a"),
              "DATABASENAME = a\nDATABASENAME = b\n");
}

TEST_F(ParameterWriter, DatabasesAreComparedExactly)
{
    EXPECT_EQ(saved("DATABASENAME = a\nDATABASENAME = b\n", "DATABASENAME", "B"),
              "DATABASENAME = B\nDATABASENAME = b\nDATABASENAME = a\n\n");
}

TEST_F(ParameterWriter, ANewDatabaseTakesTheFirstPlaceAndTheOldFirstGoesToTheEnd)
{
    EXPECT_EQ(saved("DATABASENAME = a\n% c\nDATABASENAME = b", "DATABASENAME", "new"),
              "DATABASENAME = new\n% c\nDATABASENAME = b\nDATABASENAME = a\n\n");
    EXPECT_EQ(content("params.ini~"), content());
}

TEST_F(ParameterWriter, LinesOfTheListBeyondItsValuesStay)
{
    // The empty first line is no value, so that there are more lines than values.
    EXPECT_EQ(saved("DATABASENAME =\nDATABASENAME = a\nDATABASENAME = b\n", "DATABASENAME", "c"),
              "DATABASENAME = c\nDATABASENAME = b\nDATABASENAME = a\nDATABASENAME = c\n\n");
}

TEST_F(ParameterWriter, AListUnderALowerCaseKeyIsADuplicate)
{
    make("DATABASENAME = a\nDATABASENAME = b\n");
    EXPECT_EQ(errorNumber([&] { act.SaveParam("databasename", "b", path()); }), errors::parameterDuplicate);
    EXPECT_EQ(content(), "DATABASENAME = a\nDATABASENAME = b\n");
}

TEST_F(ParameterWriter, FaultsOfTheFileChangeNothing)
{
    make("A = 1\nA = 2\n");
    EXPECT_EQ(errorNumber([&] { act.SaveParam("A", "3", path()); }), errors::parameterDuplicate);
    EXPECT_EQ(content(), "A = 1\nA = 2\n");
    make("A = 1\njunk\n");
    EXPECT_EQ(errorNumber([&] { act.SaveParam("A", "3", path()); }), errors::parameterSyntax);
    EXPECT_EQ(errorNumber([&] { act.SaveParam("A", "3", path()); }), errors::fileAlreadyOpen);
    EXPECT_EQ(content(), "A = 1\njunk\n");
    EXPECT_EQ(content("params.ini~"), "(none)");
}

TEST_F(ParameterWriter, ALineEndInKeyOrValueIsRefused)
{
    make("A = 1\n");
    for (const std::string_view text : {"x\ny", "x\r\ny", "x\r"}) {
        expectError(errors::invalidArgument, "value", [&] { act.SaveParam("A", text, path()); });
        expectError(errors::invalidArgument, "key", [&] { act.SaveParam(text, "1", path()); });
        EXPECT_EQ(errorNumber([&] { act.SaveParam("A", text, path("new.ini")); }), errors::invalidArgument);
    }
    EXPECT_EQ(content(), "A = 1\n");
    EXPECT_EQ(content("new.ini"), "(none)");
}

TEST_F(ParameterWriter, NumbersAreFreeAfterwards)
{
    saved("A = 1\n", "A", "2");
    EXPECT_FALSE(Platform::current().fileNumbers.isOpen(1));
    EXPECT_FALSE(Platform::current().fileNumbers.isOpen(2));
}

TEST_F(ParameterWriter, NumberTwoInUseIsAnErrorThatChangesNothing)
{
    make("A = 1\n");
    auto& numbers = Platform::current().fileNumbers;
    numbers.open(2, "other", [&] { return Platform::fileSystem().openInput(path()); });
    EXPECT_EQ(errorNumber([&] { act.SaveParam("A", "2", path()); }), errors::fileAlreadyOpen);
    EXPECT_TRUE(numbers.isOpen(2));
    EXPECT_FALSE(numbers.isOpen(1));
    EXPECT_EQ(content(), "A = 1\n");
}

TEST_F(ParameterWriter, NamesWithBlanksAndUmlauts)
{
    const std::string name = "Förster  Büro ß.ini";
    act.SaveParam("Größe", "süß", path(name));
    act.SaveParam("GRÖßE", "sauer", path(name));
    EXPECT_EQ(content(name), "GRÖßE = sauer\r\n\r\n");
    EXPECT_EQ(content(name + "~"), content(name));
}

} // namespace
} // namespace tamarok
