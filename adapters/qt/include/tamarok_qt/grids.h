#pragma once

#include <QTableView>
#include <memory>
#include <vector>

#include "tamarok_qt/control.h"

#include "tamarok/grids.h"

namespace tamarok::qt {

/// The flex grid over a QTableView, for which it makes a model over a headless FlexGrid. The fixed rows and columns are
/// the heads of the table. What a program changes is shown when it waits for events again.
class FlexGrid final : public WidgetControl {
public:
    explicit FlexGrid(QTableView& view);

    void put(std::string_view name, const Variant& value) override;
    void putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value) override;
    /// Shows changes at once.
    void show();

private:
    class Model;
    FlexGrid(QTableView& view, std::shared_ptr<controls::FlexGrid> grid);

    std::shared_ptr<controls::FlexGrid> grid_;
    QPointer<QObject> model_; ///< owned by the view
};

/// The data grid over a QTableView with a model of the program's own: its Columns are those of the model, with the
/// widths and the visibility of the table.
class DataGrid final : public WidgetControl {
public:
    explicit DataGrid(QTableView& view);
    ~DataGrid() override;

private:
    class Columns;
    DataGrid(QTableView& view, std::shared_ptr<controls::DataGrid> grid);
    void pull() const override;
    void push() override;

    std::unique_ptr<Columns> columns_;
};

} // namespace tamarok::qt
