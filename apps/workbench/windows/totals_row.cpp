#include "windows/totals_row.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>

#include "windows/texts.h"

namespace tamarok::workbench {

namespace {

constexpr int margin = 7; ///< beside a text, as in the cells of the table
constexpr int above = 4;

} // namespace

TotalsRow::TotalsRow(QTableView& table, QWidget* parent) : QWidget{parent}, table_{table}
{
    const auto redraw = [this] { update(); };
    connect(table.horizontalHeader(), &QHeaderView::sectionResized, this, redraw);
    connect(table.horizontalHeader(), &QHeaderView::sectionMoved, this, redraw);
    connect(table.horizontalScrollBar(), &QScrollBar::valueChanged, this, redraw);
    hide();
}

void TotalsRow::show(const std::vector<QString>& totals)
{
    totals_ = totals;
    const bool hasTotal = std::ranges::any_of(totals, [](const QString& total) { return !total.isEmpty(); });
    setVisible(hasTotal);
    QStringList spoken;
    for (std::size_t column = 0; column < totals.size(); ++column) {
        if (totals[column].isEmpty()) continue;
        const QString head = table_.model()->headerData(static_cast<int>(column), Qt::Horizontal).toString();
        spoken += head + " " + totals[column];
    }
    setAccessibleName(textOf(Text::Total) + ": " + spoken.join(", "));
    update();
}

QSize TotalsRow::sizeHint() const
{
    return {0, fontMetrics().height() + 2 * above};
}

void TotalsRow::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter{this};
    painter.fillRect(rect(), palette().alternateBase());
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(rect().topLeft(), rect().topRight());
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(palette().color(QPalette::Text));
    const QHeaderView* const header = table_.horizontalHeader();
    const int left = table_.verticalHeader()->isVisible() ? table_.verticalHeader()->width() : 0;
    bool labelled = false;
    for (int column = 0; column < static_cast<int>(totals_.size()); ++column) {
        const QRect cell{left + header->sectionViewportPosition(column) + margin, 0,
                         header->sectionSize(column) - 2 * margin, height()};
        const QString& total = totals_[static_cast<std::size_t>(column)];
        if (!total.isEmpty()) {
            painter.drawText(cell, Qt::AlignRight | Qt::AlignVCenter, total);
        } else if (!labelled) {
            painter.drawText(cell, Qt::AlignLeft | Qt::AlignVCenter, textOf(Text::Total));
            labelled = true;
        }
    }
}

} // namespace tamarok::workbench
