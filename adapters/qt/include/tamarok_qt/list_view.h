#pragma once

#include <QTreeView>
#include <memory>

#include "tamarok_qt/control.h"

#include "tamarok/list_view.h"

namespace tamarok::qt {

/// The list view over a QTreeView, for which it makes a model over a headless ListView: rows cost no items of Qt, and
/// the view reads the cells that can be seen. What a program changes is shown when it waits for events again; what the
/// user selects and which widths he drags is in the list at once.
class ListView final : public WidgetControl {
public:
    explicit ListView(QTreeView& view);

    const std::shared_ptr<controls::ListItems>& items() const noexcept { return list_->items(); }
    const std::shared_ptr<controls::ColumnHeaders>& headers() const noexcept { return list_->headers(); }
    /// Shows changes at once.
    void show();

private:
    class Model;
    ListView(QTreeView& view, std::shared_ptr<controls::ListView> list);

    std::shared_ptr<controls::ListView> list_;
    QPointer<QObject> model_; ///< owned by the view
};

} // namespace tamarok::qt
