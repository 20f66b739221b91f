#include "runtime/support.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::errorText;

TEST(Object, AMemberThatDoesNotExistIsNamedWithTheType)
{
    test::ValueHolder object{"TextBox", 5.0};
    EXPECT_EQ(object.get("VALUE", {}).asDouble(), 5.0);
    EXPECT_EQ(errorNumber([&] { object.get("Locked", {}); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { object.put("Locked", true); }), errors::noSuchMember);
    EXPECT_EQ(errorText([&] { object.call("SetFocus", {}); }),
              "An object of the type TextBox has no property or method \"SetFocus\".");
}

TEST(Object, RequireNamesWhatHoldsNothing)
{
    const ObjectRef nothing;
    EXPECT_EQ(errorNumber([&] { require(nothing, "ActiveControl"); }), errors::objectNotSet);
    EXPECT_EQ(errorText([&] { require(nothing, "ActiveControl"); }), "Object not set: ActiveControl holds nothing.");
    const ObjectRef something = std::make_shared<test::ValueHolder>("Field", 1.0);
    EXPECT_EQ(&require(something, "x"), something.get());
}

TEST(Object, MemberNamesCompareWithoutRegardToCase)
{
    EXPECT_TRUE(isMember("selstart", "SelStart"));
    EXPECT_FALSE(isMember("SelStar", "SelStart"));
}

} // namespace
} // namespace tamarok
