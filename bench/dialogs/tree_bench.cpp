// Opening the tree dialog with 20,040 nodes on five levels, from the call to the closed window, against reading the
// rows of the same statement and touching each cell: what no dialog can do without. To be at most 300 ms.

#include <array>
#include <benchmark/benchmark.h>
#include <memory>
#include <string>
#include <string_view>

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "turns.h"

#include "tamarok/grid_help.h"
#include "tamarok/platform.h"
#include "tamarok/scripted_windows.h"

namespace tamarok {
namespace {

constexpr int firstId = 100'000;
constexpr int titles = 40;
constexpr std::size_t nodes = 20'040;

struct Level {
    std::string_view table;
    std::string_view parentTable;
    std::string_view parentColumn;
    int children; ///< of each parent
};

constexpr std::array levels{
    Level{"T_EBENE1", "HH_TITEL", "ID_HH_TITEL", 4},
    Level{"T_EBENE2", "T_EBENE1", "ID_T_EBENE1", 4},
    Level{"T_EBENE3", "T_EBENE2", "ID_T_EBENE2", 5},
    Level{"T_EBENE4", "T_EBENE3", "ID_T_EBENE3", 5},
};

/// A reference database with a chapter 77 of 40 titles.
class Budget {
public:
    Budget() : scope_{platform()}
    {
        session.db_ADO = embedded::connectInMemory();
        database::createReferenceDatabase(*session.db_ADO, {.logs = 0});
        session.db_ADO->BeginTrans();
        for (int title = 0; title < titles; ++title) {
            const std::string id = std::to_string(firstId + title);
            run("INSERT INTO HH_TITEL (ID,NUMBER) SELECT ID,CAST(ID AS NVARCHAR(20)) FROM (SELECT " + id + " AS ID) T");
            run("INSERT INTO ONETOMANY (RELATION,ID_MASTER,ID_SLAVE) SELECT 'HH_KAPITEL.HH_TITEL',77," + id);
        }
        for (const Level& level : levels)
            for (int child = 0; child < level.children; ++child)
                addChild(level, child);
        session.db_ADO->CommitTrans();
    }

    /// Shows the dialog and closes it.
    void show() { Grid_Help{}.TreeviewHelp(session, "EBENE77", "Budget", ""); }

    TmkVar session;
    std::shared_ptr<dialogs::ScriptedWindows> windows = std::make_shared<dialogs::ScriptedWindows>();

private:
    Platform platform() const
    {
        Platform made;
        made.dialogWindows = windows;
        return made;
    }

    void run(const std::string& statement) { session.db_ADO->Execute(statement); }

    /// One child for each row of the parent that this class made.
    void addChild(const Level& level, int child)
    {
        const std::string id = std::to_string(firstId) + " + (ID - " + std::to_string(firstId) + ") * " +
                               std::to_string(level.children) + " + " + std::to_string(child);
        run("INSERT INTO " + std::string{level.table} + " (ID," + std::string{level.parentColumn} +
            ",SHORT,LONG) SELECT " + id + ",ID,CAST(" + id + " AS NVARCHAR(20)),'Level' FROM " +
            std::string{level.parentTable} + " WHERE ID >= " + std::to_string(firstId));
    }

    PlatformScope scope_;
};

/// Reads the rows of a statement and touches each cell.
std::size_t readAll(const std::string& statement, const ado::ConnectionRef& connection)
{
    ado::Recordset rows;
    rows.Open(statement, connection);
    const VariantArray cells = rows.GetRows();
    std::size_t nulls = 0;
    for (const Variant& cell : cells.elements())
        nulls += cell.isNull() ? 1U : 0U;
    return cells.elements().size() - nulls;
}

void openTree(benchmark::State& state)
{
    Budget budget;
    std::string statement;
    budget.session.db_ADO->listen([&](std::string_view sent) { statement = sent; });
    budget.windows->scripts().add({{dialogs::StepKind::Read, "TreeView1.Nodes.Count", {}, {}, {}}});
    budget.show();
    // The root comes on top.
    if (budget.windows->scripts().takeReport().read.at(0).asLong() != static_cast<int>(nodes) + 1) {
        state.SkipWithError("the tree has another number of nodes");
        return;
    }
    const std::string text = statement;
    bench::compare(
        state, nodes, [&] { benchmark::DoNotOptimize(readAll(text, budget.session.db_ADO)); }, [&] { budget.show(); });
    state.counters["own_ms"] = bench::secondsOf([&] { budget.show(); }) * 1e3;
}
BENCHMARK(openTree)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tamarok
