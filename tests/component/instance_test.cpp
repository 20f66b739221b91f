#include <gtest/gtest.h>
#include <vector>

#include "support/errors.h"

#include "tamarok/component.h"
#include "tamarok/error.h"

namespace tamarok::component {
namespace {

using tamarok::test::errorNumber;

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
