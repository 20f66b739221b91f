#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tamarok/controls.h"

#pragma GCC visibility push(default)

/// A tree without a window, as the tree dialog has it.
namespace tamarok::controls {

/// A node of a tree. Its default value is its text.
class TreeNode final : public WithMembers<TreeNode> {
public:
    /// @param parent  empty for the root
    TreeNode(std::shared_ptr<TreeNode> parent, std::string_view key, std::string_view text);
    static std::span<const Member<TreeNode>> members() noexcept;
    std::string_view typeName() const override { return "Node"; }
    Variant defaultValue() const override { return Text; }
    bool hasDefaultValue() const noexcept override { return true; }

    const std::string& Key() const noexcept { return key_; }
    const std::shared_ptr<TreeNode>& Parent() const noexcept { return parent_; }
    std::int32_t Children() const noexcept { return children_; }

    std::string Text;
    bool Expanded = false;

private:
    std::string key_;
    std::shared_ptr<TreeNode> parent_;
    std::int32_t children_ = 0;
};
using TreeNodeRef = std::shared_ptr<TreeNode>;

/// The nodes of a tree in the order in which they were added. Positions begin at 1.
class TreeNodes final : public WithMembers<TreeNodes> {
public:
    static std::span<const Member<TreeNodes>> members() noexcept;
    std::string_view typeName() const override { return "Nodes"; }

    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(nodes_.size()); }
    /// Returns a node by its position or, for a text, by its key. Error 35600 or 35601 if there is none.
    const TreeNodeRef& Item(const Variant& index) const;
    /// Returns the node of that key, an empty reference if there is none.
    TreeNodeRef find(std::string_view key) const noexcept;
    /// Adds a node. @param parent  key of the parent, empty for the root
    /// Errors: 35602 for a key that a node has, 35601 for an unknown parent.
    void Add(std::string_view parent, std::string_view key, std::string_view text);
    void Clear() noexcept;

private:
    std::vector<TreeNodeRef> nodes_;
    std::unordered_map<std::string_view, TreeNodeRef> byKey_; ///< the keys lie in the nodes
};

/// The tree control. It can have the focus.
class TreeView final : public WithMembers<TreeView, Control> {
public:
    static std::span<const Member<TreeView>> members() noexcept;
    std::string_view typeName() const override { return "TreeView"; }

    const std::shared_ptr<TreeNodes>& Nodes() const noexcept { return nodes_; }

    /// Returns the selected node, an empty reference if none is.
    const TreeNodeRef& SelectedItem() const noexcept { return selected_; }
    /// Selects a node and expands its parents.
    void select(const TreeNodeRef& node);
    /// Removes all nodes.
    void Clear() noexcept;

    float Indentation = 0;

private:
    TreeNodeRef selected_;
    std::shared_ptr<TreeNodes> nodes_ = std::make_shared<TreeNodes>();
};

} // namespace tamarok::controls

#pragma GCC visibility pop
