#include "dialogs/windows.h"

#include <QApplication>
#include <QTimer>
#include <QTreeWidget>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desk.h"
#include "tamarok_qt/form.h"
#include "tamarok_qt/list_view.h"
#include "turns.h"

// Windows with many rows, drawn into memory: until the first picture is there.

namespace tamarok::qt {
namespace {

constexpr int listRows = 100'000;
constexpr int listColumns = 8;
constexpr int nodes = 20'000;

const std::string& cellText()
{
    static const std::string text = "Fichte 4711";
    return text;
}

/// The list view over a view with a model of its own, filled by names as FillListview does.
void fillListView()
{
    QWidget window;
    QTreeView view{&window};
    const auto form = std::make_shared<Form>(window);
    const auto list = form->add<ListView>(view);
    for (int column = 0; column < listColumns; ++column)
        list->headers()->Add({}, "", "Spalte");
    const std::shared_ptr<Object> items = list->items();
    for (int row = 0; row < listRows; ++row) {
        std::array<Variant, 3> arguments{Variant{}, Variant{std::to_string(row) + "R"}, Variant{cellText()}};
        const ObjectRef item = items->call("Add", arguments).asObject();
        for (int column = 1; column < listColumns; ++column) {
            const Variant index{column};
            item->putIndexed("SubItems", {&index, 1}, Variant{cellText()});
        }
    }
    window.resize(900, 600);
    view.resize(900, 600);
    list->show();
    window.show();
    window.grab();
}

/// The same rows as items of Qt.
void fillTreeWidget()
{
    QWidget window;
    QTreeWidget view{&window};
    view.setColumnCount(listColumns);
    view.setUniformRowHeights(true);
    QList<QTreeWidgetItem*> items;
    for (int row = 0; row < listRows; ++row) {
        auto item = std::make_unique<QTreeWidgetItem>();
        for (int column = 0; column < listColumns; ++column)
            item->setText(column, QString::fromUtf8(cellText().data()));
        items.push_back(item.release());
    }
    view.addTopLevelItems(items);
    window.resize(900, 600);
    view.resize(900, 600);
    window.show();
    window.grab();
}

void listView(benchmark::State& state)
{
    bench::compare(state, listRows, fillTreeWidget, fillListView);
}
BENCHMARK(listView)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

class Rows final : public dialogs::GridRows {
public:
    explicit Rows(std::size_t count) : count_{count} {}
    std::size_t count() const override { return count_; }
    std::size_t columns() const override { return listColumns; }
    std::string text(std::size_t row, std::size_t) const override { return cellText() + std::to_string(row); }

private:
    std::size_t count_;
};

/// Sorts, searches and ends nothing: the window alone.
class NoEvents final : public dialogs::LookupEvents {
public:
    explicit NoEvents(std::function<void()> work) : work_{std::move(work)} {}
    void clicked(std::string_view) override {}
    void closeAsked() override {}
    void activated() override { work_(); }
    void keyPressed(char32_t) override {}
    void headClicked(std::size_t) override {}
    void rowChosen(std::size_t) override {}
    void selectionChanged() override {}
    void columnResized() override {}
    void doubleClicked() override {}
    void monthKeyPressed(char32_t) override {}
    void boxEntered(std::string_view) override {}

private:
    std::function<void()> work_;
};

/// Shows rows, draws the window, goes to the last row and draws it again.
void openGrid(std::size_t count)
{
    const Rows rows{count};
    const auto window = makeLookupWindow(std::make_shared<Desk>());
    const std::vector<std::string> names(listColumns, "Spalte");
    window->showRows(rows, names);
    window->resize({15000, 9000});
    window->place("Frame1", {0, 0, 14000, 8000});
    window->place("DataGrid1", {120, 240, 13700, 7600});
    NoEvents events{[&] {
        QApplication::activeModalWidget()->grab();
        window->currentRow(count - 1);
        QApplication::activeModalWidget()->grab();
        window->close();
    }};
    window->showModal(events);
}

/// The peer shows 100 rows: what remains is the cost of the rows.
void grid(benchmark::State& state)
{
    bench::compare(
        state, 1, [] { openGrid(100); }, [] { openGrid(100'000); });
}
BENCHMARK(grid)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);

void openTree(int count)
{
    const auto window = makeTreeWindow(std::make_shared<Desk>());
    window->addNode("", "Root", "Budget");
    std::string parent = "Root";
    for (int node = 0; node < count; ++node) {
        const std::string key = "|" + std::to_string(node);
        if (node % 100 == 0) parent = "Root";
        window->addNode(parent, key, "Titel " + key);
        if (node % 100 == 0) parent = key;
    }
    window->selectNode("|" + std::to_string(count - 1));
    class Closing final : public dialogs::DialogEvents {
    public:
        explicit Closing(dialogs::TreeWindow& shown) : shown_{shown} {}
        void clicked(std::string_view) override {}
        void closeAsked() override { shown_.close(); }

    private:
        dialogs::TreeWindow& shown_;
    } events{*window};
    QTimer::singleShot(0, [] {
        QWidget* const shown = QApplication::activeModalWidget();
        shown->grab();
        shown->close();
    });
    window->showModal(events);
}

void tree(benchmark::State& state)
{
    bench::compare(
        state, 1, [] { openTree(100); }, [] { openTree(nodes); });
}
BENCHMARK(tree)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tamarok::qt

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application{argc, argv};
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
