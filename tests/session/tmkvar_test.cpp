#include <gtest/gtest.h>

#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

using Type = TmkVarField::Type;

TEST(TmkVarFields, StandInTheOrderOfTheRecord)
{
    const std::vector<std::pair<std::string_view, Type>> expected{
        {"db_ADO", Type::Connection},     {"objReserved", Type::Object},
        {"strConnection", Type::String},  {"strLanguage", Type::String},
        {"strReserved1", Type::String},   {"strReserved2", Type::String},
        {"strReserved3", Type::String},   {"strDateFormat", Type::String},
        {"strReserved4", Type::String},   {"strReserved5", Type::String},
        {"strReserved6", Type::String},   {"strReserved7", Type::String},
        {"ID_User", Type::Long},          {"ID_Access_Levels", Type::Long},
        {"bolLan", Type::Boolean},        {"DateFrom", Type::Date},
        {"DateTo", Type::Date},           {"DateFromDefault", Type::Date},
        {"intDateToDays", Type::Integer}, {"strID_Access_Levels", Type::String},
        {"strEmptyText", Type::String},   {"strCustomer", Type::String},
        {"lngReserved1", Type::Long},     {"strReserved8", Type::String},
        {"strReserved9", Type::String},   {"bolOracle", Type::Boolean},
    };
    const auto fields = tmkVarFields();
    ASSERT_EQ(fields.size(), expected.size());
    for (std::size_t at = 0; at < expected.size(); ++at) {
        EXPECT_EQ(fields[at].name, expected[at].first);
        EXPECT_EQ(fields[at].type, expected[at].second) << fields[at].name;
    }
}

Variant sample(Type type, std::size_t number)
{
    switch (type) {
    case Type::String: return "text " + std::to_string(number);
    case Type::Integer: return static_cast<std::int16_t>(100 + number);
    case Type::Long: return static_cast<std::int32_t>(100000 + number);
    case Type::Boolean: return true;
    case Type::Date: return Date{static_cast<double>(45000 + number)};
    case Type::Connection:
    case Type::Object: break;
    }
    return {};
}

TEST(TmkVarFields, EachSetsItsOwnFieldAndNoOther)
{
    const auto fields = tmkVarFields();
    for (std::size_t at = 0; at < fields.size(); ++at) {
        if (fields[at].type == Type::Connection || fields[at].type == Type::Object) {
            continue;
        }
        TmkVar record;
        const Variant value = sample(fields[at].type, at);
        fields[at].set(record, value);
        for (std::size_t other = 0; other < fields.size(); ++other) {
            if (other == at) {
                EXPECT_EQ(fields[at].get(record), value) << fields[at].name;
            } else {
                EXPECT_EQ(fields[other].get(record), fields[other].get(TmkVar{})) << fields[other].name;
            }
        }
    }
}

TEST(TmkVarFields, NamesLeadToTheMembersTheyName)
{
    TmkVar record;
    const auto set = [&](std::string_view name, const Variant& value) {
        const TmkVarField* field = findTmkVarField(name);
        ASSERT_NE(field, nullptr) << name;
        field->set(record, value);
    };
    set("STRLANGUAGE", "GERMAN");
    set("id_user", "17");
    set("bolOracle", std::int16_t{-1});
    set("intDateToDays", 2.5);
    EXPECT_EQ(record.strLanguage, "GERMAN");
    EXPECT_EQ(record.ID_User, 17);
    EXPECT_EQ(record.bolOracle.number(), -1);
    EXPECT_EQ(record.intDateToDays, 2);
}

TEST(TmkVarFields, ValuesAreConvertedAsAnAssignmentDoes)
{
    const test::Surroundings with{"de-AT"};
    TmkVar record;
    const auto expectError = [&](std::string_view name, const Variant& value, std::int32_t number) {
        EXPECT_EQ(test::errorNumber([&] { findTmkVarField(name)->set(record, value); }), number) << name;
    };
    expectError("intDateToDays", std::int32_t{40000}, errors::overflow);
    expectError("ID_User", "abc", errors::typeMismatch);
    expectError("strLanguage", Null{}, errors::invalidUseOfNull);
    expectError("DateFrom", "no date", errors::typeMismatch);
    findTmkVarField("DateTo")->set(record, "17.05.2024");
    EXPECT_EQ(record.DateTo, makeDate(2024, 5, 17));
    findTmkVarField("strCustomer")->set(record, 1.5);
    EXPECT_EQ(record.strCustomer, "1,5");
}

TEST(TmkVarFields, ConnectionTakesConnectionsOnly)
{
    test::RecordingDatabase database;
    const ado::ConnectionRef connection = database.connect();
    TmkVar record;
    const TmkVarField& field = *findTmkVarField("db_ADO");
    field.set(record, connection);
    EXPECT_EQ(record.db_ADO, connection);
    EXPECT_EQ(field.get(record), Variant{connection});
    EXPECT_EQ(test::errorNumber([&] { field.set(record, std::make_shared<ado::Recordset>()); }), errors::typeMismatch);
    EXPECT_EQ(test::errorNumber([&] { field.set(record, "text"); }), errors::typeMismatch);
    EXPECT_EQ(record.db_ADO, connection);
    field.set(record, Variant{ObjectRef{}});
    EXPECT_EQ(record.db_ADO, nullptr);

    const auto object = std::make_shared<ado::Recordset>();
    findTmkVarField("objReserved")->set(record, object);
    EXPECT_EQ(record.objReserved, object);
}

TEST(TmkVarFields, UnknownNameIsNoField)
{
    EXPECT_EQ(findTmkVarField("ID_USERS"), nullptr);
    EXPECT_EQ(findTmkVarField(""), nullptr);
}

} // namespace
} // namespace tamarok
