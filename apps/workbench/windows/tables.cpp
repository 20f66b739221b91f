#include "windows/tables.h"

#include <QHeaderView>
#include <QTableView>
#include <algorithm>

#include "tamarok_qt/texts.h"
#include "windows/list_model.h"

namespace tamarok::workbench {

namespace {

constexpr int widestColumn = 320;
constexpr int narrowestColumn = 60;
constexpr int cellMargin = 34;                            ///< margins of a cell, and the sign of the order in a head
const QString usualTotal = QStringLiteral("0000000,000"); ///< has room before it is known, so that columns stay

} // namespace

void layOutTable(QTableView& table)
{
    table.setAlternatingRowColors(true);
    table.setShowGrid(false);
    table.setWordWrap(false);
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table.setFrameShape(QFrame::NoFrame);
    table.setTabKeyNavigation(false);
    table.horizontalHeader()->setHighlightSections(false);
    table.horizontalHeader()->setMinimumSectionSize(narrowestColumn);
    QHeaderView& numbers = *table.verticalHeader();
    numbers.setVisible(false);
    numbers.setDefaultSectionSize(table.fontMetrics().height() + 8);
    numbers.setSectionResizeMode(QHeaderView::Fixed);
}

void fitColumns(QTableView& table, const ListModel& model, const QVariantMap& chosen)
{
    const QFontMetrics metrics = table.fontMetrics();
    QFont headFont = table.font();
    headFont.setWeight(QFont::DemiBold); // as the style sheet has it
    const QFontMetrics headMetrics{headFont};
    for (std::size_t place = 0; place < model.columns().size(); ++place) {
        const ListColumn& shown = model.columns()[place];
        const auto kept = chosen.find(QString::number(shown.id));
        const int total = shown.isMeasure ? metrics.horizontalAdvance(usualTotal) : 0;
        const int usual = std::max(model.widestText(place, metrics), total) + cellMargin;
        const int head = headMetrics.horizontalAdvance(qt::toQt(shown.header)) + cellMargin;
        const int width =
            kept != chosen.end() ? kept->toInt() : std::clamp(std::max(usual, head), narrowestColumn, widestColumn);
        table.setColumnWidth(static_cast<int>(place), width);
    }
}

} // namespace tamarok::workbench
