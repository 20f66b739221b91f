#include "day/show_list.h"

namespace tamarok::cli::day {

/// Game by species: pieces, weight and proceeds of the records that were not cancelled.
void showGameList(const Context& context)
{
    ListRequest list;
    list.type = "BBWILD";
    list.ids = {92, 6, 7, 9};
    list.group = true;
    list.where = "BB_WILDURSPRUNGS.STORNODATUM IS NULL";
    list.orderIds = {92};
    showList(context, list);
}

/// Harvest records: record, date, forest location, species, quality and strength class, pieces and volume of a line.
void showHarvestList(const Context& context)
{
    ListRequest list;
    list.type = "BBHAB";
    list.ids = {1, 2, 101, 134, 146, 150, 116, 118};
    list.orderIds = {118};
    list.descending = true;
    list.limit = 10;
    showList(context, list);
}

} // namespace tamarok::cli::day
