#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "day/steps.h"
#include "list/list_query.h"

namespace tamarok::cli::day {

/// Composes a list and prints its statement and its rows.
/// @param totals  places of columns to sum, from 0
/// @return the sums, in the order of `totals`
std::vector<double> showList(const Context& context, const ListRequest& request,
                             const std::vector<std::size_t>& totals = {});

/// The condition that limits a list to measured round timber of the working period.
std::string measuredWithinPeriod(const TmkVar& session);

} // namespace tamarok::cli::day
