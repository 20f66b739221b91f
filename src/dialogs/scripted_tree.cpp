#include "script_player.h"

#include "tamarok/error.h"
#include "tamarok/tree_view.h"

namespace tamarok::dialogs {

namespace {

/// Steps of its own: `SelectNode`.
class ScriptedTree final : public Scripted<TreeWindow> {
public:
    explicit ScriptedTree(std::shared_ptr<DialogScripts> scripts) : Scripted{"F_TreeView", std::move(scripts)}
    {
        controls().resize({6000, 6500});
        tree_ = controls().add(std::make_shared<controls::TreeView>(), "TreeView1", {0, 0, 6000, 5500});
        controls().addButton("cmdOk", {3300, 5800, buttonWidth, buttonHeight});
        controls().addButton("cmdClose", {4650, 5800, buttonWidth, buttonHeight});
    }

    void clearTree() override { tree_->Clear(); }
    void indentation(float twips) override { tree_->Indentation = twips; }
    void addNode(std::string_view parent, std::string_view key, std::string_view text) override
    {
        tree_->Nodes()->Add(parent, key, text);
    }
    void expandNode(std::string_view key) override { tree_->Nodes()->Item(key)->Expanded = true; }
    void selectNode(std::string_view key) override { tree_->select(tree_->Nodes()->Item(key)); }
    std::optional<std::string> selectedNode() const override
    {
        return tree_->SelectedItem() ? std::optional{tree_->SelectedItem()->Key()} : std::nullopt;
    }

private:
    bool takeStep(const DialogStep& step) override
    {
        if (step.kind != StepKind::SelectNode) return false;
        const controls::TreeNodeRef node = tree_->Nodes()->find(step.text);
        if (!node) refuse(step, "the tree has no node \"" + step.text + "\".");
        tree_->select(node);
        return true;
    }

    std::shared_ptr<controls::TreeView> tree_;
};

} // namespace

std::unique_ptr<TreeWindow> ScriptedWindows::makeTree()
{
    return std::make_unique<ScriptedTree>(scripts_);
}

} // namespace tamarok::dialogs
