#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/checks.h"
#include "check/failure_remark.h"
#include "check/rows.h"
#include "list/list_query.h"

#include "tamarok/comm_set.h"
#include "tamarok/error.h"
#include "tamarok/transaction.h"

namespace tamarok::cli::check {

namespace {

struct ListTrial {
    const char* what;
    const char* type;
    std::array<std::int16_t, 4> ids;
    bool group;
};

/// A log list with an order, a grouped one, and lists of other types.
constexpr std::array listTrials{
    ListTrial{"list LOG", "LOG", {1, 2, 23, 36}, false},
    ListTrial{"list LOG, grouped", "LOG", {22, 32, 36, 280}, true},
    ListTrial{"list BBHAB", "BBHAB", {1, 2, 3, 4}, false},
    ListTrial{"list PERSONAL, grouped", "PERSONAL", {1, 2, 3, 4}, true},
};

struct SelectionTrial {
    const char* key;
    const char* fields; ///< divided by tabs
};

/// One selection of each form: a list of ids, the rows of a code field, the check of a typed code, one that depends on
/// another code; a group of labelled keys, a kind of measurement, a number, a level, a role, a path of forest places.
constexpr std::array selectionTrials{
    SelectionTrial{"HOLZART", ""},
    SelectionTrial{"HOLZART_GRID", ""},
    SelectionTrial{"HOLZART_VALID", "FI"},
    SelectionTrial{"GUETEKLASSE_HS_LOGS_VALID", "BL\tB"},
    SelectionTrial{"ABGANG_GRID", ""},
    SelectionTrial{"HOLZSORTE_GRID", "1\t"},
    SelectionTrial{"ARBEITSVERFAHEREN_LEISTUNGSART_GRID", "1"},
    SelectionTrial{"ACCESS_LEVELS01_GRID", "1"},
    SelectionTrial{"PERSONAL_GRID_LIEFERANT", ""},
    SelectionTrial{"WALDORT_VALID", "01/ 01/ 01/ 101\t5,6\t"},
};

/// Runs a trial. Its failure is a line of its own, so that the others run. A list may read an option that has no row
/// and so make one: on a server each trial has a transaction of its own, since a failure may end it.
template <class Trial>
void tryOut(Context& context, const std::string& what, Trial&& trial)
{
    try {
        std::optional<ado::Transaction> scope;
        if (!context.installation.isFile()) scope.emplace(*context.installation.connection());
        context.report.add(State::Ok, what, std::to_string(trial()) + " rows");
    } catch (const Error& error) {
        if (!context.installation.answers()) throw;
        context.report.add(State::Failed, what, failureRemark(error));
    }
}

} // namespace

void checkLists(Context& context)
{
    constexpr std::int64_t rows = 5;
    const TmkVar& session = context.installation.session;
    for (const ListTrial& trial : listTrials)
        tryOut(context, trial.what, [&] {
            ListRequest request;
            request.type = trial.type;
            request.ids = {trial.ids.begin(), trial.ids.end()};
            request.group = trial.group;
            request.orderIds = {trial.ids.front()};
            return countRows(session.db_ADO, composeList(request, session).statement(session, rows));
        });
}

void checkSelections(Context& context)
{
    const TmkVar& session = context.installation.session;
    for (const SelectionTrial& trial : selectionTrials)
        tryOut(context, "selection " + std::string{trial.key},
               [&] { return countRows(session.db_ADO, Comm_Set{}.CreateSQL(session, trial.key, trial.fields)); });
}

} // namespace tamarok::cli::check
