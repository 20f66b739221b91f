#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "tamarok/dialog_windows.h"
#include "tamarok/tmkvar.h"

namespace tamarok::dialogs {

/// The tree dialog: shows budget titles with their levels and lets the user choose a leaf.
class TreeLookup final : public DialogEvents {
public:
    TreeLookup(const TmkVar& session, TreeWindow& window) : session_{session}, window_{window} {}

    /// Shows the dialog. See Grid_Help::TreeviewHelp.
    std::string run(std::string_view mode, std::string_view caption, std::string_view defaultKey);

    void clicked(std::string_view button) override;
    void closeAsked() override { window_.close(); }

private:
    void buildBudgetTree(std::string_view master, std::string_view caption, std::string_view defaultKey);
    std::string addNodes(const VariantArray& rows, std::string_view defaultKey);
    void addNode(std::string_view parent, std::string_view key, std::string_view text);
    void takeSelected(const std::string& key);

    TmkVar session_;
    TreeWindow& window_;
    bool choosesLeaf_ = false; ///< whether OK takes a node, rather than merely close
    std::string result_;
    std::unordered_set<std::string> parents_; ///< keys of the nodes that have children
};

} // namespace tamarok::dialogs
