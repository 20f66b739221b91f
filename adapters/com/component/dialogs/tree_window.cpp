#include <string>
#include <unordered_map>
#include <vector>

#include "design_texts.h"
#include "native_windows.h"
#include "wide_text.h"
#include "window_shell.h"

#include "tamarok/error.h"
#include "tamarok/list_view.h"

namespace tamarok::com {

namespace {

constexpr dialogs::Size windowSize{6000, 7200};
constexpr dialogs::Size button{1395, 420};
constexpr float gap = 120;

/// The presenter of the tree leaves the places of the controls to the window.
class TreeEvents final : public dialogs::DialogEvents {
public:
    TreeEvents(dialogs::DialogEvents& presenter, std::function<void()> layOut) :
        presenter_{presenter}, layOut_{std::move(layOut)}
    {}
    void clicked(std::string_view name) override { presenter_.clicked(name); }
    void closeAsked() override { presenter_.closeAsked(); }
    void resized() override
    {
        layOut_();
        presenter_.resized();
    }

private:
    dialogs::DialogEvents& presenter_;
    std::function<void()> layOut_;
};

class TreeDialog final : public Modal<dialogs::TreeWindow> {
public:
    TreeDialog() : Modal{"F_TreeView"}
    {
        shell().outerSize(windowSize);
        tree_ = shell().addControl("TreeView1",
                                   {WC_TREEVIEWW,
                                    WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS,
                                    WS_EX_CLIENTEDGE});
        shell().addButton("cmdOk", designText(DesignText::Ok));
        shell().addButton("cmdClose", designText(DesignText::Close));
        shell().escapeButton("cmdClose");
        shell().defaultButton("cmdOk");
    }

    void showModal(dialogs::DialogEvents& events) override
    {
        TreeEvents withLayout{events, [this] { layOut(); }};
        Modal::showModal(withLayout);
    }

    void clearTree() override
    {
        items_.clear();
        keys_.clear();
        SendMessageW(tree_, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    }
    void indentation(float twips) override
    {
        SendMessageW(tree_, TVM_SETINDENT, static_cast<WPARAM>(shell().pixels(twips)), 0);
    }
    void addNode(std::string_view parent, std::string_view key, std::string_view text) override
    {
        const HTREEITEM above = parent.empty() ? TVI_ROOT : item(parent);
        if (items_.contains(std::string{key}))
            throw Error{errors::keyNotUnique, "The tree has a node with the key \"" + std::string{key} + "\".",
                        "Nodes"};
        std::wstring shown = toWide(text);
        TVINSERTSTRUCTW insertion{};
        insertion.hParent = above;
        insertion.hInsertAfter = TVI_LAST;
        insertion.item.mask = TVIF_TEXT | TVIF_PARAM;
        insertion.item.pszText = shown.data();
        insertion.item.lParam = static_cast<LPARAM>(keys_.size());
        auto* const made =
            reinterpret_cast<HTREEITEM>(SendMessageW(tree_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insertion)));
        items_.emplace(key, made);
        keys_.emplace_back(key);
    }
    void expandNode(std::string_view key) override
    {
        SendMessageW(tree_, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item(key)));
    }
    void selectNode(std::string_view key) override
    {
        const auto found = reinterpret_cast<LPARAM>(item(key));
        SendMessageW(tree_, TVM_SELECTITEM, TVGN_CARET, found); // its parents are expanded with it
        SendMessageW(tree_, TVM_ENSUREVISIBLE, 0, found);
    }
    std::optional<std::string> selectedNode() const override
    {
        TVITEMW selected{};
        selected.mask = TVIF_PARAM | TVIF_HANDLE;
        selected.hItem = reinterpret_cast<HTREEITEM>(SendMessageW(tree_, TVM_GETNEXTITEM, TVGN_CARET, 0));
        if (selected.hItem == nullptr) return std::nullopt;
        if (SendMessageW(tree_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&selected)) == 0) return std::nullopt;
        return keys_.at(static_cast<std::size_t>(selected.lParam));
    }

private:
    HTREEITEM item(std::string_view key) const
    {
        const auto found = items_.find(std::string{key});
        if (found == items_.end())
            throw Error{errors::elementNotFound, "The tree has no node with the key \"" + std::string{key} + "\".",
                        "Nodes"};
        return found->second;
    }

    void layOut()
    {
        const dialogs::Size inner = innerSize();
        const float top = inner.height - button.height;
        place("TreeView1", {0, 0, inner.width, top - gap});
        place("cmdClose", {inner.width - button.width, top, button.width, button.height});
        place("cmdOk", {inner.width - 2 * button.width - gap, top, button.width, button.height});
    }

    HWND tree_ = nullptr;
    std::unordered_map<std::string, HTREEITEM> items_;
    std::vector<std::string> keys_; ///< by the number that each item carries
};

} // namespace

std::unique_ptr<dialogs::TreeWindow> makeTreeWindow()
{
    return std::make_unique<TreeDialog>();
}

} // namespace tamarok::com
