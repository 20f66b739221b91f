#include "runtime/support.h"

#include "tamarok/members.h"

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

TEST(Object, ACallReadsAProperty)
{
    test::ValueHolder object{"TextBox", 5.0};
    EXPECT_EQ(object.call("Value", {}), Variant{5.0});
}

/// A class that tells its members, by late binding read-only.
class Gauge final : public Object {
public:
    std::string_view typeName() const override { return "Gauge"; }
    Variant get(std::string_view name, std::span<const Variant>) const override
    {
        if (text::equalsNoCase(name, "Caption")) return "Pegel";
        noSuchMember(name);
    }
    std::vector<std::string_view> memberNames() const override { return {"Caption"}; }
};

TEST(Object, AMisspeltMemberIsNamedWithTheNearestOne)
{
    Gauge gauge;
    EXPECT_EQ(errorNumber([&] { gauge.get("Captoin", {}); }), errors::noSuchMember);
    const std::string misspelt = "An object of the type Gauge has no property or method \"Captoin\"";
    const std::string nearest = misspelt + "; did you mean 'Caption'?";
    EXPECT_EQ(errorText([&] { gauge.get("Captoin", {}); }), nearest);
    EXPECT_EQ(errorText([&] { gauge.put("Captoin", "x"); }), nearest);
    EXPECT_EQ(errorText([&] { gauge.call("Captoin", {}); }), nearest);
    EXPECT_EQ(errorText([&] { gauge.get("Width", {}); }),
              "An object of the type Gauge has no property or method \"Width\".");
    // A member that cannot be written is spelt well.
    EXPECT_EQ(errorText([&] { gauge.put("CAPTION", "x"); }),
              "An object of the type Gauge has no property or method \"CAPTION\".");
    EXPECT_TRUE(test::ValueHolder("TextBox", 5.0).memberNames().empty()) << "a form's object need not tell them";
}

TEST(Object, RequireNamesWhatHoldsNothing)
{
    const ObjectRef nothing;
    EXPECT_EQ(errorNumber([&] { require(nothing, "ActiveControl"); }), errors::objectNotSet);
    EXPECT_EQ(errorText([&] { require(nothing, "ActiveControl"); }), "Object not set: ActiveControl holds nothing.");
    const ObjectRef something = std::make_shared<test::ValueHolder>("Field", 1.0);
    EXPECT_EQ(&require(something, "x"), something.get());
}

TEST(Object, OnlyAFieldStandsForItsValue)
{
    EXPECT_TRUE(test::ValueHolder("Field", 2.5).hasDefaultValue());
    EXPECT_EQ(test::ValueHolder("Field", 2.5).defaultValue(), Variant{2.5});
    const test::ValueHolder box{"TextBox", 2.5};
    EXPECT_FALSE(box.hasDefaultValue());
    EXPECT_EQ(errorNumber([&] { box.defaultValue(); }), errors::noSuchMember);
}

struct Counter {
    std::int32_t count = 0;
};

constexpr Member<Counter> counterMembers[]{
    {.name = "Count",
     .get = [](const Counter& c, std::span<const Variant>) -> Variant { return c.count; },
     .put = [](Counter& c, const Variant& value) { c.count = value.asLong(); }},
    {.name = "Clear",
     .call = [](Counter& c, std::span<Variant>) -> Variant {
         c.count = 0;
         return {};
     }},
};
constexpr std::span<const Member<Counter>> counterTable{counterMembers};

TEST(Members, AreFoundWithoutRegardToCaseAndByTheWayOfTheirUse)
{
    Counter counter;
    ASSERT_NE(findSetter(counterTable, "cOUNT"), nullptr);
    findSetter(counterTable, "cOUNT")(counter, std::int32_t{7});
    EXPECT_EQ(findGetter(counterTable, "COUNT")(counter, {}), Variant{std::int32_t{7}});
    findMethod(counterTable, "clear")(counter, {});
    EXPECT_EQ(counter.count, 0);
    EXPECT_EQ(findGetter(counterTable, "Clear"), nullptr) << "a method is no property";
    EXPECT_EQ(findMethod(counterTable, "Count"), nullptr);
    EXPECT_EQ(findByName(counterTable, "Coun"), nullptr);
}

class Scale : public WithMembers<Scale> {
public:
    static std::span<const Member<Scale>> members() noexcept;
    std::string_view typeName() const override { return "Scale"; }
    std::int32_t marks[2] = {0, 0};
};

constexpr Member<Scale> scaleMembers[]{
    {.name = "Mark",
     .get = [](const Scale& scale, std::span<const Variant> index) -> Variant {
         return scale.marks[index[0].asLong()];
     },
     .putIndexed = [](Scale& scale, std::span<const Variant> index,
                      const Variant& value) { scale.marks[index[0].asLong()] = value.asLong(); }},
};

std::span<const Member<Scale>> Scale::members() noexcept
{
    return scaleMembers;
}

class NamedScale final : public WithMembers<NamedScale, Scale> {
public:
    static std::span<const Member<NamedScale>> members() noexcept;
    std::string name;
};

constexpr Member<NamedScale> namedScaleMembers[]{
    {.name = "Name",
     .get = [](const NamedScale& scale, std::span<const Variant>) -> Variant { return scale.name; },
     .put = [](NamedScale& scale, const Variant& value) { scale.name = value.asString(); },
     .call = [](NamedScale& scale, std::span<Variant> arguments) -> Variant {
         scale.name += arguments[0].asString();
         return {};
     }},
};

std::span<const Member<NamedScale>> NamedScale::members() noexcept
{
    return namedScaleMembers;
}

TEST(Members, OfTheBaseAreFoundBehindThoseOfTheClass)
{
    NamedScale scale;
    scale.put("name", "a");
    std::vector<Variant> arguments{"b"};
    scale.call("NAME", arguments);
    EXPECT_EQ(scale.get("Name", {}), Variant{"ab"});
    const Variant index[]{std::int32_t{1}};
    scale.putIndexed("mark", index, std::int32_t{7});
    EXPECT_EQ(scale.get("Mark", index), Variant{std::int32_t{7}});
    EXPECT_EQ(scale.memberNames(), (std::vector<std::string_view>{"Mark", "Name"}));
    EXPECT_EQ(errorNumber([&] { scale.put("Mark", std::int32_t{1}); }), errors::noSuchMember);
    EXPECT_EQ(errorText([&] { scale.get("Nam", {}); }),
              "An object of the type Scale has no property or method \"Nam\"; did you mean 'Name'?");
}

TEST(Members, TheNumberOfArgumentsIsChecked)
{
    EXPECT_EQ(errorNumber([] { checkArgumentCount(2, 1, 2, "Open", "ADODB"); }), 0);
    EXPECT_EQ(errorNumber([] { checkArgumentCount(0, 1, 2, "Open", "ADODB"); }), errors::wrongArgumentCount);
    EXPECT_EQ(errorText([] { checkArgumentCount(3, 1, 2, "Open", "ADODB"); }), "Open takes 1 to 2 arguments, not 3.");
    EXPECT_EQ(errorText([] { checkArgumentCount(1, 0, 0, "Close", "ADODB"); }), "Close takes 0 arguments, not 1.");
}

TEST(Members, AnArgumentMayBeLeftOutOrEmpty)
{
    const std::vector<Variant> arguments{Empty{}, std::int32_t{3}};
    EXPECT_EQ(optionalArgument(arguments, 0), nullptr);
    EXPECT_EQ(optionalArgument(arguments, 1), &arguments[1]);
    EXPECT_EQ(optionalArgument(arguments, 2), nullptr);
}

} // namespace
} // namespace tamarok
