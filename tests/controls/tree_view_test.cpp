#include <gtest/gtest.h>

#include "support/errors.h"

#include "tamarok/error.h"
#include "tamarok/list_view.h"
#include "tamarok/object_path.h"
#include "tamarok/tree_view.h"

namespace tamarok::controls {
namespace {

using tamarok::test::errorNumber;

class TreeViewTest : public ::testing::Test {
protected:
    TreeViewTest()
    {
        nodes.Add("", "Root", "Budget");
        nodes.Add("Root", "|1", "Title");
        nodes.Add("|1", "|1|2", "Level");
    }

    std::shared_ptr<TreeView> tree = std::make_shared<TreeView>();
    TreeNodes& nodes = *tree->Nodes();
};

TEST_F(TreeViewTest, NodesAreReachedByPositionAndByKey)
{
    EXPECT_EQ(getPath(tree, "Nodes.Count").asLong(), 3);
    EXPECT_EQ(getPath(tree, "Nodes(2).Key").asString(), "|1");
    EXPECT_EQ(getPath(tree, "Nodes(\"|1|2\").Text").asString(), "Level");
    EXPECT_EQ(getPath(tree, "Nodes.Item(3).Parent.Text").asString(), "Title");
    EXPECT_EQ(getPath(tree, "Nodes(\"Root\").Children").asLong(), 1);
    EXPECT_EQ(getPath(tree, "Nodes(\"|1|2\").Children").asLong(), 0);
    EXPECT_FALSE(getPath(tree, "Nodes(1).Parent").asObject());
}

TEST_F(TreeViewTest, ANodeStandsForItsText)
{
    EXPECT_TRUE(nodes.Item(Variant{"|1"})->hasDefaultValue());
    EXPECT_EQ(nodes.Item(Variant{"|1"})->defaultValue().asString(), "Title");
}

TEST_F(TreeViewTest, WrongKeysAndPositionsAreErrors)
{
    EXPECT_EQ(errorNumber([&] { nodes.Add("Root", "|1", "Again"); }), errors::keyNotUnique);
    EXPECT_EQ(errorNumber([&] { nodes.Add("|9", "|9|1", "Orphan"); }), errors::elementNotFound);
    EXPECT_EQ(errorNumber([&] { nodes.Add("Root", "12", "Number"); }), errors::invalidKey);
    EXPECT_EQ(errorNumber([&] { nodes.Item(Variant{"|9"}); }), errors::elementNotFound);
    EXPECT_EQ(errorNumber([&] { nodes.Item(std::int32_t{4}); }), errors::elementIndexOutOfBounds);
    EXPECT_EQ(errorNumber([&] { nodes.Item(std::int32_t{0}); }), errors::elementIndexOutOfBounds);
    EXPECT_EQ(nodes.Count(), 3);
    EXPECT_EQ(getPath(tree, "Nodes(\"Root\").Children").asLong(), 1);
}

TEST_F(TreeViewTest, SelectingANodeExpandsItsParents)
{
    EXPECT_FALSE(getPath(tree, "SelectedItem").asObject());
    tree->select(nodes.find("|1|2"));
    EXPECT_EQ(getPath(tree, "SelectedItem.Key").asString(), "|1|2");
    EXPECT_TRUE(getPath(tree, "Nodes(\"Root\").Expanded").asBoolean());
    EXPECT_TRUE(getPath(tree, "Nodes(\"|1\").Expanded").asBoolean());
    EXPECT_FALSE(getPath(tree, "Nodes(\"|1|2\").Expanded").asBoolean());
}

TEST_F(TreeViewTest, AClearedTreeHasNoNodesAndNoSelection)
{
    tree->select(nodes.find("|1"));
    tree->Clear();
    EXPECT_EQ(nodes.Count(), 0);
    EXPECT_EQ(nodes.find("|1"), nullptr);
    EXPECT_FALSE(tree->SelectedItem());
    EXPECT_NO_THROW(nodes.Add("", "|1", "Title"));
}

} // namespace
} // namespace tamarok::controls
