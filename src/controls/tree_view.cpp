#include "tamarok/tree_view.h"

#include "element_keys.h"

#include "tamarok/convert.h"

// The tree and its nodes. Nodes refer to their parents; the tree holds all of them in one list.

namespace tamarok::controls {

namespace {

using Index = std::span<const Variant>;

constexpr Member<TreeNode> nodeMembers[]{
    {.name = "Key", .get = [](const TreeNode& node, Index) -> Variant { return node.Key(); }},
    {.name = "Text",
     .get = [](const TreeNode& node, Index) -> Variant { return node.Text; },
     .put = [](TreeNode& node, const Variant& value) { node.Text = convert::toText(value); }},
    {.name = "Parent", .get = [](const TreeNode& node, Index) -> Variant { return ObjectRef{node.Parent()}; }},
    {.name = "Children", .get = [](const TreeNode& node, Index) -> Variant { return node.Children(); }},
    {.name = "Expanded",
     .get = [](const TreeNode& node, Index) -> Variant { return node.Expanded; },
     .put = [](TreeNode& node, const Variant& value) { node.Expanded = convert::toBoolean(value); }},
};

constexpr Member<TreeNodes> nodesMembers[]{
    {.name = "Count", .get = [](const TreeNodes& nodes, Index) -> Variant { return nodes.Count(); }},
    {.name = "Item",
     .get = [](const TreeNodes& nodes, Index index) -> Variant {
         return ObjectRef{nodes.Item(onlyIndex(index, "Item", "Nodes"))};
     }},
};

constexpr Member<TreeView> treeMembers[]{
    {.name = "Nodes",
     .get = [](const TreeView& tree, Index index) -> Variant {
         return index.empty() ? ObjectRef{tree.Nodes()}
                              : ObjectRef{tree.Nodes()->Item(onlyIndex(index, "Nodes", "TreeView"))};
     }},
    {.name = "SelectedItem",
     .get = [](const TreeView& tree, Index) -> Variant { return ObjectRef{tree.SelectedItem()}; }},
    {.name = "Indentation",
     .get = [](const TreeView& tree, Index) -> Variant { return double{tree.Indentation}; },
     .put = [](TreeView& tree, const Variant& value) { tree.Indentation = toSize(value, "Indentation"); }},
};

} // namespace

TreeNode::TreeNode(TreeNodeRef parent, std::string_view key, std::string_view text) :
    Text{text}, key_{key}, parent_{std::move(parent)}
{
    if (parent_) ++parent_->children_;
}

std::span<const Member<TreeNode>> TreeNode::members() noexcept
{
    return nodeMembers;
}

std::span<const Member<TreeNodes>> TreeNodes::members() noexcept
{
    return nodesMembers;
}

std::span<const Member<TreeView>> TreeView::members() noexcept
{
    return treeMembers;
}

TreeNodeRef TreeNodes::find(std::string_view key) const noexcept
{
    const auto found = byKey_.find(key);
    return found == byKey_.end() ? nullptr : found->second;
}

const TreeNodeRef& TreeNodes::Item(const Variant& index) const
{
    if (!index.isString()) return nodes_[checkedPosition(convert::toLong(index), nodes_.size(), "Nodes")];
    const auto found = byKey_.find(index.asString());
    if (found == byKey_.end()) throwElementNotFound(index.asString(), "Nodes");
    return found->second;
}

void TreeNodes::Add(std::string_view parent, std::string_view key, std::string_view text)
{
    checkKey(key, "Nodes");
    if (byKey_.contains(key)) throwKeyNotUnique(key, "Nodes");
    TreeNodeRef parentNode = find(parent);
    if (!parent.empty() && !parentNode) throwElementNotFound(parent, "Nodes");
    const auto node = std::make_shared<TreeNode>(std::move(parentNode), key, text);
    nodes_.push_back(node);
    byKey_.emplace(node->Key(), node);
}

void TreeNodes::Clear() noexcept
{
    byKey_.clear();
    nodes_.clear();
}

void TreeView::select(const TreeNodeRef& node)
{
    selected_ = node;
    for (TreeNodeRef parent = node->Parent(); parent; parent = parent->Parent())
        parent->Expanded = true;
}

void TreeView::Clear() noexcept
{
    selected_.reset();
    nodes_->Clear();
}

} // namespace tamarok::controls
