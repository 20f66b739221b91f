#include "dialogs/search_frame.h"

#include <QPainter>

#include "dialogs/design_texts.h"

namespace tamarok::qt {

namespace {

constexpr int titleLeft = 9;    ///< pixels
constexpr int titleHeight = 16; ///< above the grid
constexpr int corner = 4;

} // namespace

void SearchFrame::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.2F);
    painter.setPen(line);
    painter.drawRoundedRect(QRectF{rect()}.adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);

    const bool isHint = title().isEmpty();
    QColor ink = palette().color(QPalette::WindowText);
    if (isHint) ink.setAlphaF(0.55F);
    painter.setPen(ink);
    QFont letters = font();
    letters.setBold(!isHint);
    painter.setFont(letters);
    painter.drawText(QRect{titleLeft, 0, width() - 2 * titleLeft, titleHeight}, Qt::AlignVCenter | Qt::TextSingleLine,
                     isHint ? designText(DesignText::TypingSearches) : title());
}

} // namespace tamarok::qt
