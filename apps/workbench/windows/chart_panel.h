#pragma once

#include <QComboBox>
#include <QLabel>
#include <QScrollArea>
#include <QWidget>
#include <vector>

#include "lists/list_columns.h"
#include "lists/list_setup.h"
#include "windows/bar_chart.h"
#include "work/worker.h"
#include "work/workplace.h"

namespace tamarok::workbench {

/// The picture of a list: a measure by the values of a column, summed by the database.
class ChartPanel final : public QWidget {
public:
    /// @param place  outlives the panel
    explicit ChartPanel(const Workplace& place, QWidget* parent = nullptr);

    /// Offers the columns of a list and draws it. Nothing is read while the panel is hidden.
    void show(Worker& worker, const ListSetup& setup, const std::vector<ListColumn>& columns);
    void retranslate();

private:
    void offer(QComboBox& box, bool measures, std::int16_t preferred);
    void draw();
    void take(std::size_t generation, std::vector<Bar> bars);

    const Workplace& place_;
    Worker* worker_ = nullptr;
    ListSetup setup_;
    std::vector<ListColumn> columns_;
    QLabel measureLabel_;
    QLabel byLabel_;
    QComboBox measure_;
    QComboBox by_;
    QScrollArea scroll_;
    BarChart* bars_ = nullptr;
    std::size_t generation_ = 0;
};

} // namespace tamarok::workbench
