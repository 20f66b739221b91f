#include <string>

#include "day/show_list.h"

#include "tamarok/format.h"
#include "tamarok/platform.h"

namespace tamarok::cli::day {

/// Species with pieces, volume, volume share, weighted price, mean diameter and mean length.
void showAggregatedList(const Context& context)
{
    ListRequest list;
    list.ids = {23, 35, 36, 203, 280, 319, 320};
    list.group = true;
    list.where = measuredWithinPeriod(context.session);
    list.orderIds = {23};
    constexpr std::size_t volume = 2;
    constexpr std::size_t share = 3;
    const auto sums = showList(context, list, {volume, share});
    const Regional& regional = Platform::current().regional;
    context.output.write("\nTotal volume " + format::number(sums[0], "#,##0.00", regional) + ", shares " +
                         format::number(sums[1], "0.00", regional) + " %\n");
}

} // namespace tamarok::cli::day
