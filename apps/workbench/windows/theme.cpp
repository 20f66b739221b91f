#include "windows/theme.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QProxyStyle>
#include <QSettings>
#include <QStyleFactory>
#include <QStyleHints>
#include <QStyleOption>
#include <array>
#include <memory>

namespace tamarok::workbench {

namespace {

constexpr const char* coloursKey = "colours";

/// The colours of one appearance.
struct Tones {
    QRgb window, base, alternate, text, button, mid, accent, accentText, muted, warning;
};
constexpr Tones light{0xfff6f7f4, 0xffffffff, 0xfff3f6f0, 0xff1d2a21, 0xffeceee8,
                      0xffc9cfc3, 0xff2f6b3f, 0xffffffff, 0xff6f7a70, 0xffb3402a};
constexpr Tones dark{0xff22272b, 0xff1a1e21, 0xff20262a, 0xffe6ebe4, 0xff2c3338,
                     0xff47525a, 0xff5fa873, 0xff10160f, 0xff93a098, 0xffe07a5f};

QPalette paletteOf(const Tones& tones)
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor::fromRgb(tones.window));
    palette.setColor(QPalette::WindowText, QColor::fromRgb(tones.text));
    palette.setColor(QPalette::Base, QColor::fromRgb(tones.base));
    palette.setColor(QPalette::AlternateBase, QColor::fromRgb(tones.alternate));
    palette.setColor(QPalette::Text, QColor::fromRgb(tones.text));
    palette.setColor(QPalette::Button, QColor::fromRgb(tones.button));
    palette.setColor(QPalette::ButtonText, QColor::fromRgb(tones.text));
    palette.setColor(QPalette::BrightText, QColor::fromRgb(tones.warning));
    palette.setColor(QPalette::Mid, QColor::fromRgb(tones.mid));
    palette.setColor(QPalette::Light, QColor::fromRgb(tones.base));
    palette.setColor(QPalette::Midlight, QColor::fromRgb(tones.button));
    palette.setColor(QPalette::Dark, QColor::fromRgb(tones.mid));
    palette.setColor(QPalette::Highlight, QColor::fromRgb(tones.accent));
    palette.setColor(QPalette::HighlightedText, QColor::fromRgb(tones.accentText));
    palette.setColor(QPalette::Link, QColor::fromRgb(tones.accent));
    palette.setColor(QPalette::ToolTipBase, QColor::fromRgb(tones.base));
    palette.setColor(QPalette::ToolTipText, QColor::fromRgb(tones.text));
    palette.setColor(QPalette::PlaceholderText, QColor::fromRgb(tones.muted));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(tones.muted));
    return palette;
}

/// The system's own palette tells whether its windows are dark.
bool isSystemDark()
{
    return QApplication::style()->standardPalette().color(QPalette::Window).lightness() < 128;
}

/// Spacing and lines that the palette does not give. %1 is the muted colour, which a style sheet cannot name.
constexpr const char* styleSheet = R"(
QToolBar { border: none; border-bottom: 1px solid palette(mid); padding: 4px 6px; spacing: 4px; }
QToolBar QToolButton { border: 1px solid transparent; border-radius: 4px; padding: 4px 9px; }
QToolBar QToolButton:hover, QToolButton#chip:hover { background: palette(button); border-color: palette(mid); }
QToolBar QToolButton:checked { background: palette(highlight); color: palette(highlighted-text); }
QToolBar QToolButton:focus { border-color: palette(highlight); }
QToolButton#chip { border: 1px solid palette(mid); border-radius: 9px; padding: 2px 10px; }
QHeaderView::section { background: palette(window); border: none; border-bottom: 1px solid palette(mid);
    border-right: 1px solid palette(button); padding: 5px 7px; font-weight: 600; }
QTableView { selection-background-color: palette(highlight); selection-color: palette(highlighted-text); }
QTreeView { border: none; background: palette(window); }
QTreeView::item { padding: 4px 2px; }
QLineEdit { padding: 3px 4px; }
QTabBar { qproperty-drawBase: 0; }
QTabBar::tab { padding: 7px 14px; border: none; border-bottom: 2px solid transparent; }
QTabBar::tab:selected { border-bottom-color: palette(highlight); }
QTabWidget::pane { border: none; border-top: 1px solid palette(mid); }
QLabel#heading { font-size: 18pt; font-weight: 600; }
QLabel#figure { font-size: 15pt; font-weight: 600; }
QLabel#hint { color: %1; }
QFrame#card { border: 1px solid palette(mid); border-radius: 6px; background: palette(base); }
QLabel#key { border: 1px solid palette(mid); border-radius: 4px; padding: 1px 7px; background: palette(base); }
)";

void drawLogs(QPainter& painter, double size)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = size * 0.19;
    const std::array<QPointF, 6> centres{
        {{0.21, 0.79}, {0.5, 0.79}, {0.79, 0.79}, {0.355, 0.5}, {0.645, 0.5}, {0.5, 0.21}}};
    for (const QPointF& centre : centres) {
        const QPointF at = centre * size;
        painter.setPen(QPen{QColor{0x5b, 0x3a, 0x1e}, size * 0.045});
        painter.setBrush(QColor{0xe3, 0xb8, 0x7f});
        painter.drawEllipse(at, radius * 0.74, radius * 0.74);
        painter.setPen(QPen{QColor{0xb5, 0x83, 0x4c}, size * 0.02});
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(at, radius * 0.38, radius * 0.38);
    }
}

/// Fusion with room beside the texts of buttons and cells, without pictures on the buttons of dialogs, which would be
/// those of another program, and with a plain cross on the tabs.
class PlainButtons final : public QProxyStyle {
public:
    PlainButtons() : QProxyStyle{QStyleFactory::create("Fusion")} {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override
    {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
        return QProxyStyle::styleHint(hint, option, widget, data);
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        constexpr int beside = 6;
        if (metric == PM_FocusFrameHMargin) return beside; // of the text in a cell
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override
    {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        switch (type) {
        case CT_PushButton: return size + QSize{20, 4};
        case CT_MenuItem: return size + QSize{12, 6};
        default: return size;
        }
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        if (element != PE_IndicatorTabClose) return QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool isHot = option->state.testFlag(State_MouseOver);
        const QPalette& palette = option->palette;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen{palette.color(isHot ? QPalette::BrightText : QPalette::PlaceholderText), 1.6});
        QRectF cross(0, 0, 8, 8);
        cross.moveCenter(QRectF{option->rect}.center());
        painter->drawLine(cross.topLeft(), cross.bottomRight());
        painter->drawLine(cross.topRight(), cross.bottomLeft());
        painter->restore();
    }
};

} // namespace

void useColours(QApplication& application, Colours colours)
{
    QApplication::setStyle(std::make_unique<PlainButtons>().release()); // the application takes it over
    const bool isDark = colours == Colours::Dark || (colours == Colours::System && isSystemDark());
    const Tones& tones = isDark ? dark : light;
    QApplication::setPalette(paletteOf(tones));
    application.setStyleSheet(QString::fromLatin1(styleSheet).arg(QColor::fromRgb(tones.muted).name()));
}

Colours keptColours()
{
    return static_cast<Colours>(std::clamp(QSettings{}.value(coloursKey, 0).toInt(), 0, 2));
}

void keepColours(Colours colours)
{
    QSettings{}.setValue(coloursKey, static_cast<int>(colours));
}

QIcon programIcon()
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap pixmap{size, size};
        pixmap.fill(Qt::transparent);
        QPainter painter{&pixmap};
        drawLogs(painter, size);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace tamarok::workbench
