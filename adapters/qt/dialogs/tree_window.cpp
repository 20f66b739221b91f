#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <string>
#include <unordered_map>
#include <utility>

#include "dialogs/design_texts.h"
#include "dialogs/dialog_shell.h"
#include "dialogs/windows.h"
#include "owned.h"
#include "tamarok_qt/texts.h"
#include "tamarok_qt/twips.h"

#include "tamarok/error.h"
#include "tamarok/list_view.h"

namespace tamarok::qt {

namespace {

constexpr dialogs::Size windowSize{6000, 7200};
constexpr dialogs::Size button{1395, 420};
constexpr float gap = 120;
constexpr int aroundText = 6; ///< pixels above and below the text of a row together
constexpr int keyRole = Qt::UserRole;

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
    explicit TreeDialog(const std::shared_ptr<Desk>& desk) : Modal{"F_TreeView", desk}
    {
        shell().outerSize(windowSize);
        tree_ = &makeOwned<QTreeWidget>(&shell().content());
        tree_->setHeaderHidden(true);
        tree_->setUniformRowHeights(true);
        tree_->header()->setStretchLastSection(true);
        shell().addControl("TreeView1", *tree_);
        shell().addButton("cmdOk", designText(DesignText::Ok));
        shell().addButton("cmdClose", designText(DesignText::Close));
        shell().escapeButton("cmdClose");
        qobject_cast<QPushButton*>(&shell().control("cmdOk"))->setDefault(true);
        tree_->setFocus();
    }

    void caption(std::string_view text) override
    {
        Modal::caption(text);
        tree_->setAccessibleName(toQt(text));
    }

    void showModal(dialogs::DialogEvents& events) override
    {
        TreeEvents withLayout{events, [this] { layOut(); }};
        Modal::showModal(withLayout);
    }

    void clearTree() override
    {
        items_.clear();
        tree_->clear();
    }
    void indentation(float twips) override { tree_->setIndentation(pixels(twips)); }
    void addNode(std::string_view parent, std::string_view key, std::string_view text) override
    {
        QTreeWidgetItem* const above = parent.empty() ? tree_->invisibleRootItem() : &item(parent);
        auto made = std::make_unique<QTreeWidgetItem>();
        if (!items_.emplace(key, made.get()).second)
            throw Error{errors::keyNotUnique, "The tree has a node with the key \"" + std::string{key} + "\".",
                        "Nodes"};
        made->setText(0, toQt(text));
        made->setData(0, keyRole, toQt(key));
        // All rows are as high as the first one.
        if (items_.size() == 1) made->setSizeHint(0, {0, QFontMetrics{tree_->font()}.height() + aroundText});
        above->addChild(made.release());
    }
    void expandNode(std::string_view key) override { item(key).setExpanded(true); }
    void selectNode(std::string_view key) override
    {
        QTreeWidgetItem& found = item(key);
        tree_->setCurrentItem(&found); // its parents are expanded with it
        tree_->scrollToItem(&found, QAbstractItemView::PositionAtCenter);
    }
    std::optional<std::string> selectedNode() const override
    {
        const QList<QTreeWidgetItem*> selected = tree_->selectedItems();
        if (selected.isEmpty()) return std::nullopt;
        return fromQt(selected.front()->data(0, keyRole).toString());
    }

private:
    QTreeWidgetItem& item(std::string_view key) const
    {
        const auto found = items_.find(std::string{key});
        if (found == items_.end())
            throw Error{errors::elementNotFound, "The tree has no node with the key \"" + std::string{key} + "\".",
                        "Nodes"};
        return *found->second;
    }

    void layOut()
    {
        const dialogs::Size inner = innerSize();
        const float top = inner.height - button.height;
        place("TreeView1", {0, 0, inner.width, top - gap});
        place("cmdClose", {inner.width - button.width, top, button.width, button.height});
        place("cmdOk", {inner.width - 2 * button.width - gap, top, button.width, button.height});
    }

    QTreeWidget* tree_ = nullptr;
    std::unordered_map<std::string, QTreeWidgetItem*> items_;
};

} // namespace

std::unique_ptr<dialogs::TreeWindow> makeTreeWindow(const std::shared_ptr<Desk>& desk)
{
    return std::make_unique<TreeDialog>(desk);
}

} // namespace tamarok::qt
