#pragma once

#include <QTableView>
#include <functional>
#include <vector>

namespace tamarok::qt {

/// The grid of the lookup: keys go to the presenter, except those that move; the order of the selected rows is kept.
/// What the user has moved and selected is told when the event that did it has ended: first the row, then the
/// selection.
class GridView final : public QTableView {
public:
    explicit GridView(QWidget* parent);

    std::function<void(char32_t)> keyPressed;
    std::function<void(std::size_t)> rowChosen;
    std::function<void()> selectionMoved;
    std::function<void()> doubleClicked;

    /// Selected rows in the order of their selection.
    const std::vector<std::size_t>& selected() const noexcept { return selected_; }
    /// The program's ways to move and to select, which tell nothing.
    void select(const std::vector<std::size_t>& rows);
    void current(int row);
    /// Forgets the rows, before the model shows others.
    void forget();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void type(const QString& text);
    void tell();

    std::vector<std::size_t> selected_;
    bool silent_ = false; ///< the program acts
    bool moved_ = false;
    bool changed_ = false;
};

} // namespace tamarok::qt
