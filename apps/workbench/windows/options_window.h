#pragma once

#include <QLabel>
#include <QTableWidget>
#include <QWidget>
#include <vector>

#include "work/option_rows.h"
#include "work/workplace.h"

namespace tamarok::workbench {

/// The options of the installation, to be changed by users with that right.
class OptionsWindow final : public QWidget {
public:
    /// @param place  outlives the window
    explicit OptionsWindow(const Workplace& place, QWidget* parent = nullptr);

    QTableWidget& table() noexcept { return table_; }
    void retranslate();

private:
    void showOptions();
    void write(int row, int column);

    const Workplace& place_;
    std::vector<OptionRow> options_;
    QLabel heading_;
    QLabel hint_;
    QTableWidget table_;
    QLabel state_;
};

} // namespace tamarok::workbench
