#include "windows/chart_panel.h"

#include <QFormLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "lists/list_statements.h"
#include "lists/record_list.h"
#include "tamarok_qt/texts.h"
#include "windows/texts.h"

#include "tamarok/convert.h"

namespace tamarok::workbench {

namespace {

constexpr std::size_t mostBars = 24; ///< the rest goes into one

/// What the picture of the log list shows at first: volume by species. That of another type shows the first columns.
constexpr const char* logs = "LOG";
constexpr std::int16_t speciesOfLogs = 22;
constexpr std::int16_t volumeOfLogs = 36;

/// Returns the longest bars, and the sum of the rest as the last one.
std::vector<Bar> barsOf(const std::vector<Row>& rows, const ListColumn& by, const ListColumn& measure,
                        const QString& others)
{
    std::vector<Bar> bars;
    for (const Row& row : rows) {
        const double value = row.at(1).isNull() ? 0.0 : convert::toDouble(row.at(1));
        const QString label = qt::toQt(cellText(row.at(0), by));
        bars.push_back({label.isEmpty() ? QStringLiteral("–") : label, value, {}, false});
    }
    std::ranges::stable_sort(bars, [](const Bar& a, const Bar& b) { return std::abs(a.value) > std::abs(b.value); });
    if (bars.size() > mostBars) {
        double rest = 0;
        for (std::size_t index = mostBars - 1; index < bars.size(); ++index)
            rest += bars[index].value;
        bars.resize(mostBars - 1);
        bars.push_back({others, rest, {}, true});
    }
    for (Bar& bar : bars)
        bar.text = qt::toQt(cellText(Variant{bar.value}, measure));
    return bars;
}

} // namespace

ChartPanel::ChartPanel(const Workplace& place, QWidget* parent) : QWidget{parent}, place_{place}
{
    auto layout = std::make_unique<QVBoxLayout>();
    auto form = std::make_unique<QFormLayout>();
    form->addRow(&measureLabel_, &measure_);
    form->addRow(&byLabel_, &by_);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    layout->addLayout(form.release());
    layout->addWidget(&scroll_, 1);
    measureLabel_.setBuddy(&measure_);
    byLabel_.setBuddy(&by_);
    auto bars = std::make_unique<BarChart>();
    bars_ = bars.get();
    scroll_.setWidget(bars.release()); // the scroll area takes it over
    scroll_.setWidgetResizable(true);
    scroll_.setFrameShape(QFrame::NoFrame);
    scroll_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the bars take the room that is left
    setLayout(layout.release());
    for (QComboBox* const box : {&measure_, &by_}) {
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(12);
        connect(box, &QComboBox::activated, this, [this] { draw(); });
    }
    retranslate();
}

void ChartPanel::retranslate()
{
    measureLabel_.setText(textOf(Text::Measure));
    byLabel_.setText(textOf(Text::By));
    scroll_.setAccessibleName(textOf(Text::Chart));
}

void ChartPanel::show(Worker& worker, const ListSetup& setup, const std::vector<ListColumn>& columns)
{
    worker_ = &worker;
    setup_ = setup;
    columns_ = columns;
    const auto chosen = [&](const QComboBox& box, std::int16_t ofLogs) {
        if (box.count() == 0 && setup.type == logs) return ofLogs;
        return static_cast<std::int16_t>(box.currentData().toInt());
    };
    offer(measure_, true, chosen(measure_, volumeOfLogs));
    offer(by_, false, chosen(by_, speciesOfLogs));
    draw();
}

/// Fills a box with the columns of the type. The one that was chosen stays; else the first one that the list shows.
void ChartPanel::offer(QComboBox& box, bool measures, std::int16_t preferred)
{
    const QSignalBlocker quiet{box};
    box.clear();
    int chosen = -1;
    int shown = -1;
    for (const ListColumn& column : columns_) {
        if (column.isMeasure != measures) continue;
        const int place = box.count();
        box.addItem(qt::toQt(column.label), column.id);
        if (column.id == preferred) chosen = place;
        const bool isShown = std::ranges::find(setup_.columns, column.id) != setup_.columns.end();
        if (shown < 0 && isShown) shown = place;
    }
    box.setCurrentIndex(chosen >= 0 ? chosen : std::max(shown, 0));
}

void ChartPanel::draw()
{
    if (!isVisible() || worker_ == nullptr || measure_.count() == 0 || by_.count() == 0) return;
    const auto id = [](const QComboBox& box) { return static_cast<std::int16_t>(box.currentData().toInt()); };
    ListSetup wanted = setup_;
    wanted.grouped = true;
    wanted.columns = {id(by_), id(measure_)};
    wanted.order.clear();
    const auto columnOf = [this](std::int16_t column) { return *std::ranges::find(columns_, column, &ListColumn::id); };
    const std::size_t generation = ++generation_;
    worker_->post(
        [this, generation, wanted, session = place_.sessionOver({}), by = columnOf(id(by_)),
         measure = columnOf(id(measure_)), others = textOf(Text::Others)](
            const ado::ConnectionRef& connection, const std::stop_token& stop, const Worker::Tell& tell) {
            TmkVar own = session;
            own.db_ADO = connection;
            std::vector<Row> rows;
            readAllRows(connection, ListStatements(wanted, own).rows(), stop,
                        [&](Row row) { rows.push_back(std::move(row)); });
            auto bars = std::make_shared<std::vector<Bar>>(barsOf(rows, by, measure, others));
            tell([this, generation, bars] { take(generation, std::move(*bars)); });
        },
        [this, generation](const std::string& reason) {
            if (generation == generation_) bars_->show(qt::toQt(reason), {});
        });
}

void ChartPanel::take(std::size_t generation, std::vector<Bar> bars)
{
    if (generation != generation_) return;
    const auto measure =
        std::ranges::find(columns_, static_cast<std::int16_t>(measure_.currentData().toInt()), &ListColumn::id);
    const QString title = measure == columns_.end() ? measure_.currentText() : qt::toQt(measure->header); // with unit
    bars_->show(title + " " + textOf(Text::By) + " " + by_.currentText(), std::move(bars));
}

} // namespace tamarok::workbench
