#include "windows/bar_chart.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "windows/texts.h"

namespace tamarok::workbench {

namespace {

constexpr int margin = 12;
constexpr int gap = 8;
constexpr int widestLabel = 160;

} // namespace

BarChart::BarChart(QWidget* parent) : QWidget{parent} {}

void BarChart::show(const QString& title, std::vector<Bar> bars)
{
    title_ = title;
    bars_ = std::move(bars);
    QStringList spoken{title};
    for (const Bar& bar : bars_)
        spoken += bar.label + " " + bar.text;
    setAccessibleName(spoken.join(", "));
    updateGeometry();
    update();
}

int BarChart::rowHeight() const
{
    return fontMetrics().height() + 10;
}

QSize BarChart::sizeHint() const
{
    return {360, minimumSizeHint().height()};
}

QSize BarChart::minimumSizeHint() const
{
    return {240, 2 * margin + rowHeight() * (static_cast<int>(bars_.size()) + 1)};
}

void BarChart::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetrics metrics = fontMetrics();
    const int height = rowHeight();
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.drawText(QRect{margin, margin, width() - 2 * margin, height}, Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(title_, Qt::ElideRight, width() - 2 * margin));
    painter.setFont(font());
    if (bars_.empty()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(rect(), Qt::AlignCenter, textOf(Text::NoRows));
        return;
    }
    int labels = 0;
    int values = 0;
    double longest = 0;
    for (const Bar& bar : bars_) {
        labels = std::max(labels, metrics.horizontalAdvance(bar.label));
        values = std::max(values, metrics.horizontalAdvance(bar.text));
        if (!bar.isRest) longest = std::max(longest, std::abs(bar.value));
    }
    labels = std::min(labels, widestLabel);
    const int room = std::max(width() - 2 * margin - labels - values - 2 * gap, 20);
    for (std::size_t index = 0; index < bars_.size(); ++index) {
        const Bar& bar = bars_[index];
        const int top = margin + height * (static_cast<int>(index) + 1);
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(QRect{margin, top, labels, height}, Qt::AlignLeft | Qt::AlignVCenter,
                         metrics.elidedText(bar.label, Qt::ElideRight, labels));
        const int length =
            longest > 0 && !bar.isRest ? static_cast<int>(std::lround(room * std::abs(bar.value) / longest)) : 0;
        const QRectF body(margin + labels + gap, top + 4, std::max(length, 1), height - 8);
        painter.setPen(Qt::NoPen);
        painter.setBrush(bar.value < 0 ? palette().color(QPalette::BrightText) : palette().color(QPalette::Highlight));
        if (!bar.isRest) painter.drawRoundedRect(body, 2, 2);
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(QRect{margin + labels + gap + length + gap, top, values, height},
                         Qt::AlignLeft | Qt::AlignVCenter, bar.text);
    }
}

} // namespace tamarok::workbench
