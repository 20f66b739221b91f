#include "ado_fixture.h"

namespace tamarok::ado {

using FieldTest = AdoTest;

namespace {

std::string numbered(std::string name, int number)
{
    return name += std::to_string(number);
}

} // namespace

TEST_F(FieldTest, TellsWhatTheColumnIs)
{
    const auto rows = open();
    const Field& name = rows->Fields().Item(1);
    EXPECT_EQ(name.Name(), "Name");
    EXPECT_EQ(name.Type(), DataType::VarWChar);
    EXPECT_EQ(name.DefinedSize(), 40);
    EXPECT_EQ(name.BASECOLUMNNAME(), "NAME");
    EXPECT_EQ(name.BASETABLENAME(), "SPECIES");
    EXPECT_EQ(rows->Fields().Item(2).BASECOLUMNNAME(), "");
    EXPECT_EQ(rows->Fields().Item(2).BASETABLENAME(), "");
}

TEST_F(FieldTest, IsFoundByOrdinalAndByNameInAnyCase)
{
    const auto rows = open();
    const FieldCollection& fields = rows->Fields();
    EXPECT_EQ(fields.Count(), 3);
    EXPECT_EQ(&fields.Item("NAME"), &fields.Item(1));
    EXPECT_EQ(&fields.Item("name"), &fields.Item(1));
    EXPECT_EQ(fields.share("price").get(), fields.share(2).get());
    EXPECT_EQ(errorNumber([&] { fields.Item(3); }), errors::itemNotFound);
    EXPECT_EQ(errorNumber([&] { fields.Item(-1); }), errors::itemNotFound);
    EXPECT_EQ(errorNumber([&] { fields.share(3); }), errors::itemNotFound);
    const Error failure = failureOf([&] { fields.Item("NAMES"); });
    EXPECT_EQ(failure.number, errors::itemNotFound);
    EXPECT_NE(failure.description.find("NAMES"), std::string::npos);
    EXPECT_EQ(errorNumber([&] { fields.Item(""); }), errors::itemNotFound);
}

TEST_F(FieldTest, NamesWithUmlautsUnnamedAndEqualNames)
{
    species->columns = {{"Größe", "", "", DataType::Integer, 4},
                        {"", "", "", DataType::Integer, 4},
                        {"SAME", "", "", DataType::Integer, 4},
                        {"same", "", "", DataType::Integer, 4}};
    species->rows = {{1, {1, 2, 3, 4}}};
    const auto rows = open();
    EXPECT_EQ(rows->Fields().Item("GRÖßE").Value(), Variant{1});
    EXPECT_EQ(rows->Fields().Item("").Value(), Variant{2});
    EXPECT_EQ(rows->Fields().Item("Same").Value(), Variant{3}) << "the first of equal names";
}

TEST_F(FieldTest, ManyColumnsAreAllFound)
{
    species->columns.clear();
    Row row;
    for (int column = 0; column < 700; ++column) {
        species->columns.push_back({numbered("COLUMN_", column), "", "", DataType::Integer, 4});
        row.emplace_back(column);
    }
    species->rows = {{1, row}};
    const auto rows = open();
    for (int column = 0; column < 700; ++column)
        EXPECT_EQ(rows->Fields().Item(numbered("column_", column)).Value(), Variant{column});
}

TEST_F(FieldTest, FollowsTheCurrentRow)
{
    const auto rows = open();
    const FieldRef name = rows->Fields().share("NAME");
    EXPECT_EQ(name->Value(), Variant{"Fichte"});
    rows->MoveNext();
    EXPECT_EQ(name->Value(), Variant{"Tanne"});
    rows->Move(2);
    EXPECT_EQ(errorNumber([&] { name->Value(); }), errors::noCurrentRecord);
}

TEST_F(FieldTest, OutlivesItsRecordsetAsAClosedOne)
{
    auto rows = open();
    const FieldRef kept = rows->Fields().share(0);
    rows->Close();
    const FieldRef reopened = [&] {
        rows->Open(query, connection);
        return rows->Fields().share(0);
    }();
    EXPECT_EQ(errorNumber([&] { kept->Value(); }), errors::objectClosed) << "a new opening brings new fields";
    EXPECT_EQ(reopened->Value(), Variant{1});
    rows.reset();
    for (const auto& member : std::vector<std::function<void()>>{
             [&] { reopened->Value(); }, [&] { reopened->Value(1); }, [&] { reopened->Name(); },
             [&] { reopened->Type(); }, [&] { reopened->DefinedSize(); }, [&] { reopened->BASECOLUMNNAME(); },
             [&] { reopened->BASETABLENAME(); }})
        EXPECT_EQ(errorNumber(member), errors::objectClosed);
    connection.reset();
    EXPECT_EQ(errorNumber([&] { reopened->Value(); }), errors::objectClosed);
}

} // namespace tamarok::ado
