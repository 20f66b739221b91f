#include "windows/options_window.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <memory>

#include "tamarok_qt/texts.h"
#include "windows/patience.h"
#include "windows/tables.h"
#include "windows/texts.h"

#include "tamarok/error.h"

namespace tamarok::workbench {

namespace {

/// Numbers and dates stand right, the name and texts left.
Qt::Alignment alignmentOf(int column)
{
    const bool isText = column == 0 || column == 1 + static_cast<int>(OptionKind::Text);
    return (isText ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter;
}

} // namespace

OptionsWindow::OptionsWindow(const Workplace& place, QWidget* parent) : QWidget{parent}, place_{place}
{
    heading_.setObjectName("heading");
    hint_.setObjectName("hint");
    hint_.setWordWrap(true);
    table_.setColumnCount(1 + static_cast<int>(optionKinds));
    layOutTable(table_);
    setFocusProxy(&table_);
    table_.setSelectionBehavior(QAbstractItemView::SelectItems);
    if (!mayWriteOptions(place_.session())) table_.setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto layout = std::make_unique<QVBoxLayout>();
    layout->setContentsMargins(20, 16, 20, 8);
    layout->setSpacing(12);
    layout->addWidget(&heading_);
    layout->addWidget(&hint_);
    layout->addWidget(&table_, 1);
    layout->addWidget(&state_);
    setLayout(layout.release());
    connect(&table_, &QTableWidget::cellChanged, this, [this](int row, int column) { write(row, column); });
    retranslate();
    table_.resizeColumnsToContents();
    for (int column = 0; column < table_.columnCount(); ++column)
        table_.setColumnWidth(column, std::max(table_.columnWidth(column) + 24, 120));
}

void OptionsWindow::retranslate()
{
    heading_.setText(textOf(Text::Options));
    hint_.setText(textOf(mayWriteOptions(place_.session()) ? Text::OptionsHint : Text::ReadOnly));
    table_.setAccessibleName(textOf(Text::Options));
    QStringList heads;
    for (const Text text : {Text::Option, Text::WholeNumber, Text::DecimalNumber, Text::TextWord, Text::DateWord})
        heads += textOf(text);
    table_.setHorizontalHeaderLabels(heads);
    for (int column = 0; column < table_.columnCount(); ++column)
        table_.horizontalHeaderItem(column)->setTextAlignment(alignmentOf(column));
    showOptions();
}

void OptionsWindow::showOptions()
{
    const QSignalBlocker quiet{table_};
    options_ = readOptions(place_.session());
    table_.setRowCount(static_cast<int>(options_.size()));
    for (std::size_t row = 0; row < options_.size(); ++row) {
        const auto put = [&](int column, const std::string& text) {
            auto item = std::make_unique<QTableWidgetItem>(qt::toQt(text));
            if (column == 0) item->setFlags(item->flags() & ~Qt::ItemIsEditable);
            item->setTextAlignment(alignmentOf(column));
            table_.setItem(static_cast<int>(row), column, item.release()); // the table takes it over
        };
        put(0, options_[row].name);
        for (std::size_t kind = 0; kind < optionKinds; ++kind)
            put(static_cast<int>(kind) + 1, options_[row].values.at(kind));
    }
}

/// Writes a changed value. One that is refused gets back what it was.
void OptionsWindow::write(int row, int column)
{
    if (column == 0) return;
    const std::string name = options_.at(static_cast<std::size_t>(row)).name;
    const std::string typed = qt::fromQt(table_.item(row, column)->text());
    try {
        doPatiently(this, textOf(Text::SaveWord),
                    [&] { writeOption(place_.session(), name, static_cast<OptionKind>(column - 1), typed); });
        state_.setText(textOf(Text::OptionSaved).arg(qt::toQt(name)));
    } catch (const Error& error) {
        state_.setText(qt::toQt(error.description));
    }
    showOptions();
    table_.setCurrentCell(row, column);
}

} // namespace tamarok::workbench
