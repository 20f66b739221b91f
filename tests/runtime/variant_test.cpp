#include "runtime/support.h"

namespace tamarok {
namespace {

using test::errorNumber;
using Kind = Variant::Kind;

TEST(Boolean, IsSixteenBitsWithTrueMinusOne)
{
    EXPECT_EQ(Boolean{true}.number(), -1);
    EXPECT_EQ(Boolean{false}.number(), 0);
    EXPECT_TRUE(static_cast<bool>(Boolean{true}));
}

TEST(Variant, EveryConstructorGivesItsKind)
{
    const std::pair<Variant, Kind> cases[] = {
        {Variant{}, Kind::Empty},      {Null{}, Kind::Null},
        {true, Kind::Boolean},         {std::int16_t{1}, Kind::Integer},
        {std::int32_t{1}, Kind::Long}, {std::int64_t{1}, Kind::LongLong},
        {1.0, Kind::Double},           {Date{1.0}, Kind::Date},
        {"text", Kind::String},        {ObjectRef{}, Kind::Object},
        {VariantArray{}, Kind::Array},
    };
    for (const auto& [value, kind] : cases)
        EXPECT_EQ(value.kind(), kind) << name(kind);
}

TEST(Variant, KindNamesAreThoseOfTheInterface)
{
    EXPECT_EQ(name(Kind::Empty), "Empty");
    EXPECT_EQ(name(Kind::Null), "Null");
    EXPECT_EQ(name(Kind::LongLong), "LongLong");
    EXPECT_EQ(name(Kind::Array), "Array");
}

TEST(Variant, AccessUnderAnotherKindIsATypeMismatchThatNamesBoth)
{
    const Variant value{"5"};
    EXPECT_EQ(errorNumber([&] { value.asLong(); }), errors::typeMismatch);
    EXPECT_EQ(test::errorText([&] { value.asLong(); }),
              "Type mismatch: a value of kind String stands where Long is needed.");
    EXPECT_EQ(errorNumber([&] { Variant{std::int32_t{1}}.asInteger(); }), errors::typeMismatch);
}

TEST(Variant, EqualityNeedsTheSameKind)
{
    EXPECT_EQ(Variant{Null{}}, Variant{Null{}});
    EXPECT_FALSE(Variant{Null{}} == Variant{});
    EXPECT_FALSE(Variant{std::int16_t{1}} == Variant{std::int32_t{1}});
    EXPECT_EQ(Variant{"a"}, Variant{std::string{"a"}});
    EXPECT_EQ(Variant{VariantArray{{Variant{1.0}}}}, Variant{VariantArray{{Variant{1.0}}}});
    EXPECT_FALSE(Variant{VariantArray({Variant{1.0}}, 0)} == Variant{VariantArray({Variant{1.0}}, 1)});
}

TEST(Variant, CopiesOfAnArrayAreIndependent)
{
    Variant first{VariantArray{{Variant{"a"}}}};
    Variant second = first;
    second.asArray().at(0) = "b";
    EXPECT_EQ(first.asArray().at(0).asString(), "a");
    EXPECT_EQ(second.asArray().at(0).asString(), "b");
}

TEST(VariantArray, KeepsAnyLowerBound)
{
    const VariantArray array{{Variant{"a"}, Variant{"b"}}, -1};
    EXPECT_EQ(array.bounds(), (VariantArray::Bounds{-1, 0}));
    EXPECT_EQ(array.at(-1).asString(), "a");
    EXPECT_EQ(array.at(0).asString(), "b");
    EXPECT_EQ(errorNumber([&] { array.at(1); }), errors::subscriptOutOfRange);
    EXPECT_EQ(errorNumber([&] { array.at(-2); }), errors::subscriptOutOfRange);
    EXPECT_EQ(errorNumber([&] { array.at(0, 0); }), errors::subscriptOutOfRange);
}

TEST(VariantArray, EmptyArrayHasNoElement)
{
    const VariantArray array;
    EXPECT_EQ(array.dimensions(), 1);
    EXPECT_EQ(array.bounds(), (VariantArray::Bounds{0, -1}));
    EXPECT_EQ(errorNumber([&] { array.at(0); }), errors::subscriptOutOfRange);
}

TEST(VariantArray, FirstOfTwoIndicesRunsFastest)
{
    std::vector<Variant> elements;
    for (std::int32_t i = 0; i < 6; ++i)
        elements.emplace_back(i);
    const VariantArray array{{0, 1}, {1, 3}, elements};
    EXPECT_EQ(array.dimensions(), 2);
    EXPECT_EQ(array.at(1, 1).asLong(), 1);
    EXPECT_EQ(array.at(0, 2).asLong(), 2);
    EXPECT_EQ(array.at(1, 3).asLong(), 5);
    EXPECT_EQ(array.bounds(2), (VariantArray::Bounds{1, 3}));
    EXPECT_EQ(errorNumber([&] { array.at(0, 0); }), errors::subscriptOutOfRange);
    EXPECT_EQ(errorNumber([&] { array.at(2, 1); }), errors::subscriptOutOfRange);
    EXPECT_EQ(errorNumber([&] { array.at(1); }), errors::subscriptOutOfRange);
    EXPECT_EQ(errorNumber([&] { array.bounds(3); }), errors::subscriptOutOfRange);
    EXPECT_EQ(errorNumber([&] { array.bounds(0); }), errors::subscriptOutOfRange);
}

TEST(VariantArray, ElementsMustFillTheBounds)
{
    EXPECT_EQ(errorNumber([] { VariantArray({0, 1}, {0, 1}, std::vector<Variant>(3)); }), errors::invalidArgument);
    EXPECT_EQ(errorNumber([] { VariantArray({0, -3}, {0, -3}, std::vector<Variant>(4)); }), errors::invalidArgument);
}

} // namespace
} // namespace tamarok
