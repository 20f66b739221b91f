#include <string>
#include <string_view>

#include "day/list_window.h"
#include "day/steps.h"

namespace tamarok::cli::day {

namespace {

constexpr std::string_view relation = "TAMAROK_DAY";

/// Removes the widths that the step has saved, so that the database is left as it was.
class SavedWidths {
public:
    explicit SavedWidths(const ado::ConnectionRef& connection) : connection_{connection} { remove(); }
    ~SavedWidths()
    {
        try {
            remove();
        } catch (...) { // NOLINT(bugprone-empty-catch): the step has failed already
        }
    }
    SavedWidths(const SavedWidths&) = delete;
    SavedWidths& operator=(const SavedWidths&) = delete;

private:
    void remove() { connection_->Execute("DELETE FROM MODELS WHERE RELATION = '" + std::string{relation} + "'"); }

    ado::ConnectionRef connection_;
};

void sortByClicks(const Context& context)
{
    ListWindow dogs{context, "BBHUNDE", {1, 3, 6, 11}};
    dogs.fill("BB_JAGDHUNDE", "BB_JAGDHUNDE.STORNODATUM IS NULL");
    context.output.write("Hunting dogs, after two clicks on the date of birth: the youngest first.\n\n");
    dogs.click(3);
    dogs.click(3);
    dogs.print(4);
    context.output.write("A click on the weight:\n\n");
    dogs.click(4);
    dogs.print(4);
}

void followTheView(const Context& context)
{
    ListWindow goods{context, "WAREN", {1, 2, 4, 12}};
    goods.view().SortKey(2);
    goods.view().SortOrder(1);
    goods.view().Sorted(true);
    goods.fill("WARENKATALOG");
    // Filled in the order of the view, so that the view does not sort again.
    goods.view().Sorted(false);
    context.output.write("Articles, filled in the order that the view is sorted by: the price, downwards.\n\n");
    goods.print(4);
}

void readAnItem(const Context& context)
{
    ListWindow records{context, "BBHAB", {1, 2, 5}};
    records.fill("BB_HAB_KOPF");
    const controls::ListItemRef item = records.view().items()->Item(Variant{1});
    std::string tag = item->Tag().asString();
    tag.replace(tag.find('\r'), 1, " and level ");
    context.output.write("Harvest records. The first item has the key " + item->Key() + "; its tag names record " +
                         tag + ".\n\n");
    records.print(4);
}

void keepWidths(const Context& context)
{
    const SavedWidths tidied{context.session.db_ADO};
    ListWindow contracts{context, "VERTRAG", {2, 3, 1, 8, 9}};
    contracts.fill("VERTRAEGE");
    contracts.print(4);
    contracts.widen(2, 2600);
    contracts.widen(4, 900);
    contracts.saveWidths(relation);
    ListWindow opened{context, "VERTRAG", {2, 3, 1, 8, 9}};
    context.output.write("Contracts. Widths of a list that is opened: " + opened.widths() + "\n");
    opened.restoreWidths(relation);
    context.output.write("After the widths of the last one are restored: " + opened.widths() + "\n");
}

} // namespace

/// Lists of four types as the forms fill and sort them, and the widths of their columns.
void showScreenLists(const Context& context)
{
    sortByClicks(context);
    followTheView(context);
    readAnItem(context);
    keepWidths(context);
}

} // namespace tamarok::cli::day
