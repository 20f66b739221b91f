#pragma once

#include <QWidget>
#include <vector>

class QTableView;

namespace tamarok::workbench {

/// The totals under a table, each under its column.
class TotalsRow final : public QWidget {
public:
    /// @param table  outlives the row
    explicit TotalsRow(QTableView& table, QWidget* parent = nullptr);

    /// Shows totals by columns, "" for a column without one. All empty: the row hides.
    void show(const std::vector<QString>& totals);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QTableView& table_;
    std::vector<QString> totals_;
};

} // namespace tamarok::workbench
