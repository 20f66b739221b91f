#pragma once

#include <QWidget>
#include <vector>

namespace tamarok::workbench {

/// One bar: what it stands for, its length, and the length as text.
struct Bar {
    QString label;
    double value = 0;
    QString text;
    bool isRest = false; ///< the sum of all shorter ones: it has no bar, since it would dwarf the others
};

/// Horizontal bars, the longest as long as the room allows.
class BarChart final : public QWidget {
public:
    explicit BarChart(QWidget* parent = nullptr);

    /// Shows bars under a title, from above in their order.
    void show(const QString& title, std::vector<Bar> bars);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int rowHeight() const;

    QString title_;
    std::vector<Bar> bars_;
};

} // namespace tamarok::workbench
