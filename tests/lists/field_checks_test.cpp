#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_csel.h"
#include "tamarok/controls.h"
#include "tamarok/error.h"
#include "tamarok/form.h"

// What happens when the user leaves a code field.

namespace tamarok {
namespace {

using test::ShownMessage;

constexpr const char* statement = "SELECT ID, HA, NAME FROM HOLZART WHERE HA = 'FI'";
constexpr const char* unknownText = "Der Code ist nicht vorhanden!";

class CodeField : public ::testing::Test {
protected:
    CodeField()
    {
        with.loc.texts[223] = unknownText;
        for (const auto& control : {field, first, second})
            control->Parent(form);
    }

    bool check(bool message)
    {
        return csel.Valid(with.session, message, statement, field, first, "HA", second, "NAME");
    }
    bool checkEach(bool message, std::string_view base = "SELECT ID, NAME FROM HOLZART")
    {
        return csel.ValidMulti(with.session, message, base, field, "HA", first, "NAME");
    }
    void knowCode(const std::string& base, const std::string& code, std::int32_t id, Variant name)
    {
        with.database.addAnswer(base + "HA = '" + code + "'", {"ID", "NAME"}, {{id, std::move(name)}});
    }
    void unknownCode(const std::string& base, const std::string& code)
    {
        with.database.addAnswer(base + "HA = '" + code + "'", {"ID", "NAME"}, {});
    }
    void fillAll()
    {
        field->text("FI");
        field->Tag = "1";
        first->text("old");
        second->text("old");
    }

    test::Surroundings with;
    const Comm_CSel csel{};
    std::shared_ptr<controls::Form> form = std::make_shared<controls::Form>();
    std::shared_ptr<controls::TextBox> field = std::make_shared<controls::TextBox>();
    std::shared_ptr<controls::TextBox> first = std::make_shared<controls::TextBox>();
    std::shared_ptr<controls::TextBox> second = std::make_shared<controls::TextBox>();
};

using Valid = CodeField;
using ValidMulti = CodeField;

TEST_F(Valid, RowGivesKeyAndLabels)
{
    fillAll();
    with.database.addAnswer(statement, {"ID", "HA", "NAME"}, {{17, "FI", "Fichte"}, {18, "FI", "Other"}});
    EXPECT_TRUE(check(true));
    EXPECT_EQ(field->Tag, "17");
    EXPECT_EQ(field->text(), "FI");
    EXPECT_EQ(first->text(), "FI");
    EXPECT_EQ(second->text(), "Fichte");
    EXPECT_TRUE(with.messages->shown.empty());
}

TEST_F(Valid, NullInALabelColumnShowsAnEmptyLabel)
{
    fillAll();
    with.database.addAnswer(statement, {"ID", "HA", "NAME"}, {{17, Null{}, 2.5}});
    EXPECT_TRUE(check(true));
    EXPECT_EQ(first->text(), "");
    EXPECT_EQ(second->text(), "2,5");
}

TEST_F(Valid, LabelsWithoutAColumnAreNotNeeded)
{
    with.database.addAnswer(statement, {"ID", "HA", "NAME"}, {{17, "FI", "Fichte"}});
    EXPECT_TRUE(csel.Valid(with.session, true, statement, field, nullptr, "", nullptr, ""));
    EXPECT_EQ(field->Tag, "17");
    EXPECT_EQ(test::errorNumber([&] { csel.Valid(with.session, true, statement, field, nullptr, "HA", nullptr, ""); }),
              errors::objectNotSet);
    EXPECT_EQ(
        test::errorNumber([&] { csel.Valid(with.session, true, statement, field, first, "NOTHING", nullptr, ""); }),
        errors::itemNotFound);
}

TEST_F(Valid, EmptyFieldIsValidAndClearsLabelsAndKey)
{
    fillAll();
    field->text("");
    with.database.addAnswer(statement, {"ID", "HA", "NAME"}, {});
    EXPECT_TRUE(check(true));
    EXPECT_EQ(field->Tag, "");
    EXPECT_EQ(first->text(), "");
    EXPECT_EQ(second->text(), "");
    EXPECT_TRUE(with.messages->shown.empty());
}

TEST_F(Valid, WrongCodeIsWipedWithoutAMessage)
{
    fillAll();
    with.database.addAnswer(statement, {"ID", "HA", "NAME"}, {});
    EXPECT_FALSE(check(false));
    EXPECT_EQ(field->text(), "");
    EXPECT_EQ(field->Tag, "");
    EXPECT_EQ(first->text(), "");
    EXPECT_TRUE(with.messages->shown.empty());
    EXPECT_EQ(form->ActiveControl(), nullptr);
}

TEST_F(Valid, WrongCodeIsKeptAndFocusedAfterTheMessage)
{
    fillAll();
    with.database.addAnswer(statement, {"ID", "HA", "NAME"}, {});
    EXPECT_FALSE(check(true));
    EXPECT_EQ(field->text(), "FI");
    EXPECT_EQ(field->Tag, "1");
    EXPECT_EQ(first->text(), "old");
    EXPECT_EQ(with.messages->shown, (std::vector{ShownMessage{unknownText, 0, "Tamarok"}}));
    EXPECT_EQ(form->ActiveControl(), field);
}

TEST_F(Valid, HiddenFieldDoesNotFailTheCheck)
{
    fillAll();
    field->Visible = false;
    with.database.addAnswer(statement, {"ID", "HA", "NAME"}, {});
    EXPECT_FALSE(check(true));
    EXPECT_EQ(with.messages->shown.size(), 1U);
    EXPECT_EQ(field->text(), "FI");
}

/// A blank is a text.
TEST_F(Valid, BlankFieldIsAWrongCode)
{
    field->text(" ");
    with.database.addAnswer(statement, {"ID", "HA", "NAME"}, {});
    EXPECT_FALSE(check(false));
}

TEST_F(Valid, NoFieldIsFalseWithoutARowAndAnErrorWithOne)
{
    fillAll();
    with.database.addAnswer(statement, {"ID", "HA", "NAME"}, {});
    EXPECT_FALSE(csel.Valid(with.session, true, statement, nullptr, first, "HA", second, "NAME"));
    EXPECT_EQ(first->text(), "old");
    EXPECT_TRUE(with.messages->shown.empty());
    constexpr const char* found = "SELECT 1";
    with.database.addAnswer(found, {"ID"}, {{1}});
    EXPECT_EQ(test::errorNumber([&] { csel.Valid(with.session, true, found, nullptr, nullptr, "", nullptr, ""); }),
              errors::objectNotSet);
}

TEST_F(Valid, FailingStatementReachesTheCaller)
{
    fillAll();
    EXPECT_EQ(test::errorNumber([&] { check(true); }), errors::statementRefused);
    EXPECT_EQ(field->text(), "FI");
}

TEST_F(ValidMulti, EachCodeIsCheckedAndTheListsAreJoined)
{
    field->text("FI,TA");
    knowCode("SELECT ID, NAME FROM HOLZART WHERE ", "FI", 17, "Fichte");
    knowCode("SELECT ID, NAME FROM HOLZART WHERE ", "TA", 18, "Tanne");
    EXPECT_TRUE(checkEach(true));
    EXPECT_EQ(field->text(), "FI,TA");
    EXPECT_EQ(field->Tag, "17,18");
    EXPECT_EQ(first->text(), "Fichte,Tanne");
}

TEST_F(ValidMulti, StatementWithAWhereGetsAnAnd)
{
    field->text("FI");
    const std::string base = "select ID, NAME from HOLZART where AKTIV = 1";
    knowCode(base + " AND ", "FI", 17, Null{});
    EXPECT_TRUE(checkEach(true, base));
    EXPECT_EQ(field->Tag, "17");
    EXPECT_EQ(first->text(), "");
}

/// Blanks around a comma belong to the codes.
TEST_F(ValidMulti, CodesAreNotTrimmed)
{
    field->text("FI, TA");
    knowCode("SELECT ID, NAME FROM HOLZART WHERE ", "FI", 17, "Fichte");
    knowCode("SELECT ID, NAME FROM HOLZART WHERE ", " TA", 18, "Tanne");
    EXPECT_TRUE(checkEach(true));
    EXPECT_EQ(field->text(), "FI, TA");
}

TEST_F(ValidMulti, OneWrongCodeStopsTheLoopAndEmptiesTheLists)
{
    field->text("FI,XX,TA");
    first->text("old");
    knowCode("SELECT ID, NAME FROM HOLZART WHERE ", "FI", 17, "Fichte");
    unknownCode("SELECT ID, NAME FROM HOLZART WHERE ", "XX");
    EXPECT_FALSE(checkEach(true));
    EXPECT_EQ(field->text(), "FI,XX,TA") << "the typed codes stay";
    EXPECT_EQ(field->Tag, "");
    EXPECT_EQ(first->text(), "");
    EXPECT_EQ(with.messages->shown, (std::vector{ShownMessage{unknownText, 0, "Tamarok"}}));
    EXPECT_EQ(form->ActiveControl(), field);
}

TEST_F(ValidMulti, WrongCodeWithoutAMessageEmptiesTheField)
{
    field->text("XX");
    unknownCode("SELECT ID, NAME FROM HOLZART WHERE ", "XX");
    EXPECT_FALSE(checkEach(false));
    EXPECT_EQ(field->text(), "");
    EXPECT_TRUE(with.messages->shown.empty());
}

/// Unlike the check of one code.
TEST_F(ValidMulti, HiddenFieldFailsTheCheck)
{
    field->text("XX");
    field->Visible = false;
    unknownCode("SELECT ID, NAME FROM HOLZART WHERE ", "XX");
    EXPECT_EQ(test::errorNumber([&] { checkEach(true); }), errors::invalidArgument);
    EXPECT_EQ(with.messages->shown.size(), 1U);
    EXPECT_EQ(field->text(), "XX");
}

/// An empty list is one empty code, which is valid in an empty field.
TEST_F(ValidMulti, EmptyFieldIsValid)
{
    field->Tag = "17";
    first->text("old");
    unknownCode("SELECT ID, NAME FROM HOLZART WHERE ", "");
    EXPECT_TRUE(checkEach(true));
    EXPECT_EQ(field->Tag, "");
    EXPECT_EQ(first->text(), "");
    EXPECT_TRUE(with.messages->shown.empty());
}

TEST_F(ValidMulti, WithoutALabel)
{
    field->text("FI");
    knowCode("SELECT ID, NAME FROM HOLZART WHERE ", "FI", 17, "Fichte");
    EXPECT_TRUE(csel.ValidMulti(with.session, true, "SELECT ID, NAME FROM HOLZART", field, "HA", nullptr, ""));
    EXPECT_EQ(field->Tag, "17");
}

} // namespace
} // namespace tamarok
