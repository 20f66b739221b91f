#include "windows/list_window.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QSaveFile>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "list/visible_services.h"
#include "lists/csv_export.h"
#include "tamarok_qt/texts.h"
#include "windows/column_chooser.h"
#include "windows/list_worker.h"
#include "windows/statement_view.h"
#include "windows/tables.h"
#include "windows/texts.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/list_catalogue.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"

namespace tamarok::workbench {

ListWindow::ListWindow(const Workplace& place, ListSetup setup, Actions actions, QWidget* parent) :
    QWidget{parent}, place_{place}, setup_{std::move(setup)}, actions_{std::move(actions)},
    columns_{listColumns(setup_.type, place.session())}, worker_{makeListWorker(place, setup_.type, *this)},
    chartPanel_{place}
{
    model_ = std::make_unique<ListModel>(
        *worker_, place_,
        ListModel::Listener{[this](std::size_t rows) { showProgress(rows); }, [this] { showFirstRows(); },
                            [this] { showLoaded(); }, [this](const std::string& reason) { showFailure(reason); }});
    if (setup_.columns.empty()) {
        for (const QVariant& id : QSettings{}.value(settingsKey("columns")).toList())
            if (column(static_cast<std::int16_t>(id.toInt())) != nullptr)
                setup_.columns.push_back(static_cast<std::int16_t>(id.toInt()));
        if (setup_.columns.empty()) setup_.columns = firstColumns(setup_.type, columns_);
    }
    layOut();
    addTools();
    connectTable();
    retranslate();
    show(setup_);
}

/// The worker ends first, so that no job tells a model that has gone.
ListWindow::~ListWindow()
{
    worker_.reset();
}

void ListWindow::layOut()
{
    table_.setModel(model_.get());
    layOutTable(table_);
    setFocusProxy(&table_);
    table_.setContextMenuPolicy(Qt::CustomContextMenu);
    QHeaderView& heads = *table_.horizontalHeader();
    heads.setSectionsClickable(true);
    heads.setSectionsMovable(false);
    heads.setSortIndicatorShown(true);

    auto tableSide = std::make_unique<QWidget>();
    auto tableLayout = std::make_unique<QVBoxLayout>();
    tableLayout->setContentsMargins(0, 0, 0, 0);
    tableLayout->setSpacing(0);
    tableLayout->addWidget(&table_, 1);
    tableLayout->addWidget(&totals_);
    tableSide->setLayout(tableLayout.release());
    splitter_.addWidget(tableSide.release()); // the splitter takes it over
    splitter_.addWidget(&chartPanel_);
    splitter_.setStretchFactor(0, 3);
    splitter_.setStretchFactor(1, 1);
    chartPanel_.hide();

    auto chips = std::make_unique<QHBoxLayout>();
    chips->setContentsMargins(8, 4, 8, 4);
    filters_.setLayout(chips.release());
    filters_.hide();

    auto bottom = std::make_unique<QHBoxLayout>();
    bottom->setContentsMargins(8, 4, 8, 4);
    state_.setTextInteractionFlags(Qt::TextSelectableByMouse);
    progress_.setRange(0, 0);
    progress_.setMaximumWidth(160);
    progress_.setTextVisible(false);
    bottom->addWidget(&state_, 1);
    bottom->addWidget(&progress_);

    auto layout = std::make_unique<QVBoxLayout>();
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(&tools_);
    layout->addWidget(&filters_);
    layout->addWidget(&splitter_, 1);
    layout->addLayout(bottom.release());
    setLayout(layout.release());
}

QAction* ListWindow::addTool(Text text, Text hint, const QKeySequence& key, const std::function<void()>& action)
{
    QAction* const tool = tools_.addAction(QString{});
    tool->setShortcut(key);
    tool->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    tool->setProperty("textNumber", static_cast<int>(text));
    tool->setProperty("hintNumber", static_cast<int>(hint));
    connect(tool, &QAction::triggered, this, [action] { action(); });
    addAction(tool);
    return tool;
}

void ListWindow::addTools()
{
    tools_.setToolButtonStyle(Qt::ToolButtonTextOnly);
    addTool(Text::Columns, Text::ColumnsHint, QKeySequence{Qt::CTRL | Qt::Key_K}, [this] { chooseColumns(); });
    group_ = addTool(Text::Group, Text::GroupHint, QKeySequence{Qt::CTRL | Qt::Key_G}, [this] { toggleGroup(); });
    group_->setCheckable(true);
    group_->setChecked(setup_.grouped);
    chart_ = addTool(Text::Chart, Text::ChartHint, QKeySequence{Qt::CTRL | Qt::Key_B}, [this] { toggleChart(); });
    chart_->setCheckable(true);
    if (catalogue::listTypeInfo(setup_.type).hasVersions) {
        version_.addItem("R");
        for (int number = 1; number <= 8; ++number)
            version_.addItem("A" + QString::number(number));
        version_.setCurrentText(qt::toQt(setup_.version));
        tools_.addWidget(&version_);
        connect(&version_, &QComboBox::activated, this, [this] {
            ListSetup changed = setup_;
            changed.version = qt::fromQt(version_.currentText());
            show(changed);
        });
    } else {
        version_.hide();
    }
    tools_.addSeparator();
    addTool(Text::Export, Text::ExportHint, QKeySequence::Save, [this] { exportList(); });
    addTool(Text::Statement, Text::StatementHint, QKeySequence{Qt::Key_F8}, [this] { showStatement(); });
    addTool(Text::Refresh, Text::RefreshHint, QKeySequence::Refresh, [this] { refresh(); });
    stop_ = addTool(Text::Stop, Text::StopHint, QKeySequence{Qt::Key_Escape}, [this] { stop(); });
}

void ListWindow::connectTable()
{
    connect(table_.horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) { sortBy(section); });
    connect(table_.horizontalHeader(), &QHeaderView::sectionResized, this, [this](int section, int, int width) {
        if (!fitting_) keepWidth(section, width);
    });
    connect(&table_, &QTableView::customContextMenuRequested, this, [this](const QPoint& point) { showMenu(point); });
    connect(&table_, &QTableView::activated, this, [this](const QModelIndex& index) {
        if (setup_.grouped) showRecords(index);
    });
    auto* const copy = addTool(Text::CopyCell, Text::CopyCell, QKeySequence::Copy, [this] { copyCells(); });
    tools_.removeAction(copy);
    table_.addAction(copy);
}

void ListWindow::retranslate()
{
    columns_ = listColumns(setup_.type, place_.session());
    QList<QAction*> all = tools_.actions();
    all += table_.actions();
    for (QAction* const tool : all) {
        if (!tool->property("textNumber").isValid()) continue;
        const QString key = tool->shortcut().toString(QKeySequence::NativeText);
        tool->setText(textOf(static_cast<Text>(tool->property("textNumber").toInt())));
        const QString hint = textOf(static_cast<Text>(tool->property("hintNumber").toInt()));
        tool->setToolTip(key.isEmpty() ? hint : hint + " (" + key + ")");
    }
    version_.setToolTip(textOf(Text::Settlement));
    version_.setAccessibleName(textOf(Text::Settlement));
    table_.setAccessibleName(title());
    chartPanel_.retranslate();
}

QString ListWindow::title() const
{
    const std::int16_t label = catalogue::listTypeInfo(setup_.type).label;
    return qt::toQt(Platform::locService()->GetText(label, place_.session()));
}

/// Returns the title with what tells this list from others of its type: groups, and the values of the filters.
QString ListWindow::fullTitle() const
{
    QString full = setup_.grouped ? textOf(Text::Groups).arg(title()) : title();
    for (const ValueFilter& filter : setup_.filters) {
        const ListColumn* const filtered = column(filter.column);
        const QString value = qt::toQt(cellText(filter.value, filtered == nullptr ? ListColumn{} : *filtered));
        full += " · " + (value.isEmpty() ? textOf(Text::FilterEmpty) : value);
    }
    return full;
}

/// Reads the list anew. @param setup  of the same type
void ListWindow::show(ListSetup setup)
{
    fitting_ = true; // until the columns have their widths
    setup_ = std::move(setup);
    setWindowTitle(fullTitle());
    QVariantList ids;
    for (const std::int16_t id : setup_.columns)
        ids.push_back(id);
    QSettings{}.setValue(settingsKey("columns"), ids);
    group_->setChecked(setup_.grouped);
    model_->show(setup_, columns_);
    fitWidths();
    const auto order =
        setup_.order.empty() ? setup_.columns.end() : std::ranges::find(setup_.columns, setup_.order.front());
    table_.horizontalHeader()->setSortIndicator(
        order == setup_.columns.end() ? -1 : static_cast<int>(order - setup_.columns.begin()),
        setup_.descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    showFilters();
    showProgress(0);
    totals_.show({});
    if (chart_->isChecked()) chartPanel_.show(*worker_, setup_, columns_);
}

void ListWindow::refresh()
{
    show(setup_);
}

QString ListWindow::rowsText(std::size_t rows) const
{
    if (rows == 1) return textOf(Text::OneRow);
    return textOf(Text::Rows).arg(QLocale{}.toString(static_cast<qulonglong>(rows)));
}

void ListWindow::showProgress(std::size_t rows)
{
    progress_.show();
    stop_->setEnabled(true);
    state_.setText(textOf(Text::Reading).arg(rows == 0 ? QString{} : rowsText(rows)));
}

/// The user can begin to read, while the rest is counted.
void ListWindow::showFirstRows()
{
    fitWidths();
    if (model_->rows() > 0) table_.setCurrentIndex(model_->index(0, 0));
}

void ListWindow::showLoaded()
{
    progress_.hide();
    stop_->setEnabled(false);
    state_.setText(model_->rows() == 0 ? textOf(Text::NoRows) : rowsText(model_->rows()));
    fitWidths();
    totals_.show(model_->totals());
    table_.setAccessibleDescription(state_.text());
}

void ListWindow::showFailure(const std::string& reason)
{
    progress_.hide();
    stop_->setEnabled(false);
    state_.setText(qt::toQt(reason));
}

void ListWindow::stop()
{
    if (!model_->isLoading()) return;
    model_->stop();
    showFailure(qt::fromQt(textOf(Text::Stopped)));
}

/// Shows a chip for each filter; a click on it removes it.
void ListWindow::showFilters()
{
    while (QLayoutItem* const item = filters_.layout()->takeAt(0)) {
        if (item->widget() != nullptr) item->widget()->deleteLater();
        const std::unique_ptr<QLayoutItem> owned{item};
    }
    for (const ValueFilter& filter : setup_.filters) {
        const ListColumn* const filtered = column(filter.column);
        const QString value = qt::toQt(cellText(filter.value, filtered == nullptr ? ListColumn{} : *filtered));
        auto chip = std::make_unique<QToolButton>();
        chip->setText((filtered == nullptr ? QString{} : qt::toQt(filtered->label)) + " = " +
                      (value.isEmpty() ? textOf(Text::FilterEmpty) : value) + "  ✕");
        chip->setToolTip(textOf(Text::Remove));
        chip->setObjectName("chip");
        connect(chip.get(), &QToolButton::clicked, this, [this, filter] {
            ListSetup changed = setup_;
            std::erase(changed.filters, filter);
            show(changed);
        });
        filters_.layout()->addWidget(chip.release()); // its parent is the widget of the layout
    }
    dynamic_cast<QHBoxLayout&>(*filters_.layout()).addStretch();
    filters_.setVisible(!setup_.filters.empty());
}

/// A first click orders upwards, a second one downwards, a third one takes the order off.
void ListWindow::sortBy(int section)
{
    ListSetup changed = setup_;
    const std::int16_t id = setup_.columns.at(static_cast<std::size_t>(section));
    if (changed.order != std::vector{id}) {
        changed.order = {id};
        changed.descending = false;
    } else if (!changed.descending) {
        changed.descending = true;
    } else {
        changed.order.clear();
        changed.descending = false;
    }
    show(changed);
}

void ListWindow::chooseColumns()
{
    const auto chosen = workbench::chooseColumns(this, columns_, setup_.columns);
    if (!chosen || *chosen == setup_.columns) return;
    ListSetup changed = setup_;
    changed.columns = *chosen;
    // A grouped list is ordered by its own columns only.
    std::erase_if(changed.order, [&](std::int16_t id) { return std::ranges::find(*chosen, id) == chosen->end(); });
    show(changed);
}

void ListWindow::toggleGroup()
{
    ListSetup changed = setup_;
    changed.grouped = group_->isChecked();
    // A measure cannot order groups.
    std::erase_if(changed.order, [&](std::int16_t id) {
        const ListColumn* const ordered = column(id);
        return changed.grouped && (ordered == nullptr || ordered->isMeasure);
    });
    show(changed);
}

void ListWindow::toggleChart()
{
    chartPanel_.setVisible(chart_->isChecked());
    if (chart_->isChecked()) chartPanel_.show(*worker_, setup_, columns_);
}

void ListWindow::showMenu(const QPoint& point)
{
    const QModelIndex index = table_.indexAt(point);
    QMenu menu;
    if (index.isValid()) {
        const ListColumn& clicked = model_->columns().at(static_cast<std::size_t>(index.column()));
        if (clicked.canFilter && model_->value(index)) {
            const QString value = index.data().toString();
            menu.addAction(textOf(Text::FilterBy)
                               .arg(qt::toQt(clicked.label), value.isEmpty() ? textOf(Text::FilterEmpty) : value),
                           this, [this, index] { filterBy(index); });
        }
        if (setup_.grouped) menu.addAction(textOf(Text::ShowRecords), this, [this, index] { showRecords(index); });
        menu.addAction(textOf(Text::CopyCell), this, [this] { copyCells(); });
        addMeasuring(menu, index);
    }
    if (!setup_.filters.empty()) {
        menu.addAction(textOf(Text::RemoveFilters), this, [this] {
            ListSetup changed = setup_;
            changed.filters.clear();
            show(changed);
        });
    }
    if (!menu.isEmpty()) menu.exec(table_.viewport()->mapToGlobal(point));
}

/// A row of the log list names its timber list where that column is shown.
void ListWindow::addMeasuring(QMenu& menu, const QModelIndex& index)
{
    constexpr std::int16_t timberList = 1;
    const auto place = std::ranges::find(setup_.columns, timberList);
    if (setup_.type != "LOG" || !actions_.measure || place == setup_.columns.end()) return;
    const QString list = index.siblingAtColumn(static_cast<int>(place - setup_.columns.begin())).data().toString();
    if (list.isEmpty()) return;
    menu.addAction(textOf(Text::MeasureList), this, [this, list] { actions_.measure(qt::fromQt(list)); });
}

void ListWindow::filterBy(const QModelIndex& index)
{
    const std::optional<Variant> value = model_->value(index);
    if (!value) return;
    ListSetup changed = setup_;
    const std::int16_t id = setup_.columns.at(static_cast<std::size_t>(index.column()));
    std::erase_if(changed.filters, [id](const ValueFilter& filter) { return filter.column == id; });
    changed.filters.push_back({id, *value});
    show(changed);
}

/// Copies the current cell, or the selected rows with tabs between their cells.
void ListWindow::copyCells() const
{
    const QModelIndexList rows = table_.selectionModel()->selectedRows();
    if (rows.size() <= 1) return QApplication::clipboard()->setText(table_.currentIndex().data().toString());
    QString text;
    for (const QModelIndex& row : rows) {
        QStringList cells;
        for (int column = 0; column < model_->columnCount(); ++column)
            cells += row.siblingAtColumn(column).data().toString();
        text += cells.join('\t') + '\n';
    }
    QApplication::clipboard()->setText(text);
}

/// Opens the rows of a group: those with its values.
void ListWindow::showRecords(const QModelIndex& index)
{
    ListSetup records = setup_;
    records.grouped = false;
    for (int place = 0; place < model_->columnCount(); ++place) {
        const ListColumn& shown = model_->columns().at(static_cast<std::size_t>(place));
        const std::optional<Variant> value = model_->value(index.siblingAtColumn(place));
        if (shown.isMeasure || !shown.canFilter || !value) continue;
        std::erase_if(records.filters, [&](const ValueFilter& filter) { return filter.column == shown.id; });
        records.filters.push_back({shown.id, *value});
    }
    actions_.openList(records);
}

/// The file appears when it is complete.
void ListWindow::exportList()
{
    const auto list = model_->statements();
    if (!list) return;
    const QString path = QFileDialog::getSaveFileName(this, textOf(Text::Export), title() + ".csv", "CSV (*.csv)");
    if (path.isEmpty()) return;
    showProgress(0);
    worker_->post(
        [this, path, list, columns = model_->columns()](const ado::ConnectionRef& connection,
                                                        const std::stop_token& stop, const Worker::Tell& tell) {
            QSaveFile file{path};
            const auto check = [&file](bool good) {
                if (!good) throw Error{errors::deviceError, qt::fromQt(file.fileName() + ": " + file.errorString())};
            };
            check(file.open(QIODevice::WriteOnly));
            const std::size_t rows = exportCsv(
                connection, *list, columns,
                [&](std::string_view text) {
                    check(file.write(text.data(), static_cast<qint64>(text.size())) ==
                          static_cast<qint64>(text.size()));
                },
                stop, [this, &tell](std::size_t done) { tell([this, done] { showProgress(done); }); });
            check(file.commit());
            tell([this, rows, path] {
                progress_.hide();
                stop_->setEnabled(false);
                state_.setText(textOf(Text::Saved).arg(QLocale{}.toString(static_cast<qulonglong>(rows)), path));
            });
        },
        [this](const std::string& reason) { showFailure(reason); });
}

void ListWindow::showStatement()
{
    workbench::showStatement(this, title(), qt::toQt(model_->statement()));
}

const ListColumn* ListWindow::column(std::int16_t id) const
{
    const auto found = std::ranges::find(columns_, id, &ListColumn::id);
    return found == columns_.end() ? nullptr : &*found;
}

void ListWindow::fitWidths()
{
    fitting_ = true;
    fitColumns(table_, *model_, QSettings{}.value(settingsKey("widths")).toMap());
    fitting_ = false;
}

/// Keeps a width that the user has chosen, by the id of its column.
void ListWindow::keepWidth(int section, int width)
{
    if (section < 0 || section >= static_cast<int>(setup_.columns.size())) return;
    QVariantMap kept = QSettings{}.value(settingsKey("widths")).toMap();
    kept.insert(QString::number(setup_.columns[static_cast<std::size_t>(section)]), width);
    QSettings{}.setValue(settingsKey("widths"), kept);
}

QString ListWindow::settingsKey(const char* what) const
{
    return QStringLiteral("lists/") + qt::toQt(setup_.type) + "/" + what;
}

} // namespace tamarok::workbench
