#include "runtime/support.h"

namespace tamarok {
namespace {

using test::errorNumber;
using Kind = Variant::Kind;

/// An array of one dimension, its elements put in one by one.
VariantArray arrayOf(std::initializer_list<std::string_view> texts, std::int32_t lower = 0)
{
    std::vector<Variant> elements;
    for (const std::string_view text : texts)
        elements.emplace_back(text);
    return VariantArray{std::move(elements), lower};
}

TEST(Boolean, IsSixteenBitsWithTrueMinusOne)
{
    EXPECT_EQ(Boolean{true}.number(), -1);
    EXPECT_EQ(Boolean{false}.number(), 0);
    EXPECT_TRUE(static_cast<bool>(Boolean{true}));
}

TEST(Variant, EveryConstructorGivesItsKind)
{
    EXPECT_EQ(Variant{}.kind(), Kind::Empty);
    EXPECT_EQ(Variant{Null{}}.kind(), Kind::Null);
    EXPECT_EQ(Variant{true}.kind(), Kind::Boolean);
    EXPECT_EQ(Variant{std::int16_t{1}}.kind(), Kind::Integer);
    EXPECT_EQ(Variant{std::int32_t{1}}.kind(), Kind::Long);
    EXPECT_EQ(Variant{std::int64_t{1}}.kind(), Kind::LongLong);
    EXPECT_EQ(Variant{1.0}.kind(), Kind::Double);
    EXPECT_EQ(Variant{Date{1.0}}.kind(), Kind::Date);
    EXPECT_EQ(Variant{"text"}.kind(), Kind::String);
    EXPECT_EQ(Variant{ObjectRef{}}.kind(), Kind::Object);
    EXPECT_EQ(Variant{VariantArray{}}.kind(), Kind::Array);
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
    EXPECT_EQ(Variant{arrayOf({"a"})}, Variant{arrayOf({"a"})});
    EXPECT_FALSE(Variant{arrayOf({"a"}, 0)} == Variant{arrayOf({"a"}, 1)});
}

TEST(Variant, CopiesOfAnArrayAreIndependent)
{
    Variant first{arrayOf({"a"})};
    Variant second = first;
    second.asArray().at(0) = "b";
    EXPECT_EQ(first.asArray().at(0).asString(), "a");
    EXPECT_EQ(second.asArray().at(0).asString(), "b");
}

TEST(VariantArray, KeepsAnyLowerBound)
{
    const VariantArray array = arrayOf({"a", "b"}, -1);
    EXPECT_EQ(array.bounds(), (VariantArray::Bounds{-1, 0}));
    EXPECT_EQ(array.at(-1).asString(), "a");
    EXPECT_EQ(array.at(0).asString(), "b");
    EXPECT_EQ(errorNumber([&] { array.at(1); }), errors::subscriptOutOfRange);
    EXPECT_EQ(errorNumber([&] { array.at(-2); }), errors::subscriptOutOfRange);
    EXPECT_EQ(errorNumber([&] { array.at(0, 0); }), errors::subscriptOutOfRange);
}

TEST(Variant, TextOfAValueThatIsGivenUpIsNotCopied)
{
    const std::string text(1000, 'x');
    Variant value{text};
    const char* const place = value.asString().data();
    const std::string taken = std::move(value).asString();
    EXPECT_EQ(taken, text);
    EXPECT_EQ(taken.data(), place);
    EXPECT_EQ(errorNumber([] { Variant{5}.asString(); }), errors::typeMismatch);
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

TEST(VariantArray, HasAnyNumberOfDimensions)
{
    std::vector<Variant> elements;
    for (std::int32_t value = 0; value < 24; ++value)
        elements.emplace_back(value);
    const VariantArray array{std::vector<VariantArray::Bounds>{{1, 2}, {-1, 1}, {5, 8}}, elements};
    EXPECT_EQ(array.dimensions(), 3);
    EXPECT_EQ(array.bounds(3), (VariantArray::Bounds{5, 8}));
    EXPECT_TRUE(array == (VariantArray{std::vector<VariantArray::Bounds>{{1, 2}, {-1, 1}, {5, 8}}, elements}));
    EXPECT_FALSE(array == (VariantArray{std::vector<VariantArray::Bounds>{{1, 2}, {-1, 1}, {4, 7}}, elements}));
    EXPECT_THROW(static_cast<void>(array.bounds(4)), Error);
    EXPECT_THROW(static_cast<void>(array.at(1)), Error);
    EXPECT_THROW(static_cast<void>(array.at(1, 1)), Error);
    using Bounds = std::vector<VariantArray::Bounds>;
    EXPECT_THROW((VariantArray{Bounds{{0, 1}, {0, 1}, {0, 1}}, elements}), Error) << "too many elements";
    EXPECT_THROW((VariantArray{Bounds{{0, 1}, {0, -2}}, {}}), Error) << "a negative extent";
    EXPECT_THROW((VariantArray{Bounds{}, {}}), Error) << "no dimension";
    EXPECT_EQ((VariantArray{Bounds{{0, 3}, {0, -1}}, {}}).elements().size(), 0U);
}

} // namespace
} // namespace tamarok
