#include "day/show_list.h"

namespace tamarok::cli::day {

/// The lines of greatest volume: list and its date, buyer, species, assortment, quality and strength
/// class, length, diameter, pieces, volume, price per volume.
void showDetailList(const Context& context)
{
    ListRequest list;
    list.ids = {1, 2, 238, 23, 26, 29, 32, 33, 34, 35, 36, 280};
    list.where = measuredWithinPeriod(context.session);
    list.orderIds = {36};
    list.descending = true;
    list.limit = 15;
    showList(context, list);
}

} // namespace tamarok::cli::day
