#include <gtest/gtest.h>
#include <vector>

#include "support/errors.h"

#include "tamarok/component.h"
#include "tamarok/error.h"

namespace tamarok::component {
namespace {

using tamarok::test::errorNumber;
using tamarok::test::errorText;

TEST(Instance, CallsOperationsByName)
{
    const ObjectRef object = makeInstance("comm_csel");
    EXPECT_EQ(object->typeName(), "Comm_CSel");
    std::vector<Variant> args{Variant{"A = 1"}, Variant{"B = 2"}};
    EXPECT_TRUE(object->call("InsertToWhere", args) == Variant{"A = 1 AND B = 2"});
}

TEST(Instance, ReadsAnOperationWithoutArgumentsAsAProperty)
{
    EXPECT_TRUE(makeInstance("C_Version")->get("DLL_Version", {}) == Variant{"2.0"});
}

TEST(Instance, UnknownNamesAreErrors)
{
    EXPECT_EQ(errorNumber([] { makeInstance("Comm_Nothing"); }), 429);
    const ObjectRef object = makeInstance("Comm_CSel");
    EXPECT_EQ(errorNumber([&] { object->call("Nothing", {}); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { object->get("Nothing", {}); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { object->put("InsertToStr", Variant{"x"}); }), errors::noSuchMember);
}

TEST(Instance, MisspeltNamesAreNamedWithTheNearestOperation)
{
    const ObjectRef object = makeInstance("Comm_CSel");
    const std::string message =
        "An object of the type Comm_CSel has no property or method \"InsertToWher\"; did you mean 'InsertToWhere'?";
    EXPECT_EQ(errorText([&] { object->call("InsertToWher", {}); }), message);
    EXPECT_EQ(errorText([&] { object->get("InsertToWher", {}); }), message);
    EXPECT_EQ(errorText([&] { object->put("InsertToWher", Variant{"x"}); }), message);
    EXPECT_EQ(errorText([&] { object->put("InsertToStr", Variant{"x"}); }),
              "An object of the type Comm_CSel has no property or method \"InsertToStr\".");
}

TEST(Record, FieldsAreProperties)
{
    TmkVar session;
    const ObjectRef record = makeRecordObject(session);
    record->put("strcustomer", Variant{"BB"});
    record->put("bolOracle", Variant{true});
    record->put("intDateToDays", Variant{"12"});
    EXPECT_EQ(session.strCustomer, "BB");
    EXPECT_TRUE(static_cast<bool>(session.bolOracle));
    EXPECT_TRUE(record->get("intDateToDays", {}) == Variant{std::int16_t{12}});
    EXPECT_EQ(record->typeName(), "TmkVar");
}

TEST(Record, MisspeltFieldsAreNamedWithTheNearestOne)
{
    TmkVar session;
    const ObjectRef record = makeRecordObject(session);
    const std::string message =
        "An object of the type TmkVar has no property or method \"strCustomr\"; did you mean 'strCustomer'?";
    EXPECT_EQ(errorText([&] { record->get("strCustomr", {}); }), message);
    EXPECT_EQ(errorText([&] { record->put("strCustomr", Variant{"BB"}); }), message);
}

TEST(Record, RefusesWhatItDoesNotHold)
{
    TmkVar session;
    const ObjectRef record = makeRecordObject(session);
    EXPECT_EQ(errorNumber([&] { record->put("strNothing", Variant{"x"}); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { record->get("strNothing", {}); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { record->put("intDateToDays", Variant{std::int32_t{40000}}); }), errors::overflow);
    EXPECT_EQ(errorNumber([&] { record->put("ID_User", Variant{"x"}); }), errors::typeMismatch);
    const std::vector<Variant> index{Variant{std::int32_t{1}}};
    EXPECT_EQ(errorNumber([&] { record->get("ID_User", index); }), errors::wrongArgumentCount);
}

} // namespace
} // namespace tamarok::component
