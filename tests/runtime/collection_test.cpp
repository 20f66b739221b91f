#include <gtest/gtest.h>
#include <vector>

#include "support/errors.h"

#include "tamarok/collection.h"
#include "tamarok/error.h"

namespace tamarok {
namespace {

using test::errorNumber;

Variant call(Collection& collection, std::string_view name, std::vector<Variant> arguments)
{
    return collection.call(name, arguments);
}

TEST(Collection, FindsValuesByPositionAndByKey)
{
    Collection items;
    items.Add("a", "Key");
    items.Add(2);
    EXPECT_EQ(items.Count(), 2);
    EXPECT_EQ(items.Item(1), Variant{"a"});
    EXPECT_EQ(items.Item("kEY"), Variant{"a"});
    EXPECT_EQ(items.Item(2.0), Variant{2});
}

TEST(Collection, RefusesWhatItDoesNotHold)
{
    Collection items;
    items.Add("a", "1");
    EXPECT_EQ(errorNumber([&] { items.Item("2"); }), errors::invalidArgument);
    EXPECT_EQ(errorNumber([&] { items.Item(""); }), errors::invalidArgument);
    for (const int position : {-1, 0, 2})
        EXPECT_EQ(errorNumber([&] { items.Item(position); }), errors::subscriptOutOfRange) << position;
    EXPECT_EQ(errorNumber([&] { items.Add("b", "1"); }), errors::duplicateKey);
    EXPECT_EQ(items.Count(), 1);
}

TEST(Collection, RemovesAnEntry)
{
    Collection items;
    items.Add("a", "A");
    items.Add("b", "B");
    items.Remove("a");
    EXPECT_EQ(items.Item(1), Variant{"b"});
    items.Remove(1);
    EXPECT_EQ(items.Count(), 0);
    EXPECT_EQ(errorNumber([&] { items.Remove(1); }), errors::subscriptOutOfRange);
}

TEST(Collection, IsReachedByName)
{
    Collection items;
    call(items, "Add", {"a", "K"});
    call(items, "add", {"b"});
    EXPECT_EQ(items.get("Count", {}), Variant{2});
    const Variant key{"k"};
    EXPECT_EQ(items.get("item", {&key, 1}), Variant{"a"});
    call(items, "Remove", {Variant{1}});
    EXPECT_EQ(call(items, "Item", {Variant{1}}), Variant{"b"});
    EXPECT_EQ(errorNumber([&] { call(items, "Item", {}); }), errors::wrongArgumentCount);
    EXPECT_EQ(errorNumber([&] { call(items, "Add", {}); }), errors::wrongArgumentCount);
    EXPECT_EQ(errorNumber([&] { items.get("Nothing", {}); }), errors::noSuchMember);
}

} // namespace
} // namespace tamarok
