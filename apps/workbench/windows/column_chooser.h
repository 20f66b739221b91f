#pragma once

#include <QDialog>
#include <cstdint>
#include <optional>
#include <vector>

#include "lists/list_columns.h"

namespace tamarok::workbench {

/// Lets the user choose the columns of a list and their order.
/// @param shown  ids of the present ones
/// @return the ids, nothing if the user cancels
std::optional<std::vector<std::int16_t>> chooseColumns(QWidget* parent, const std::vector<ListColumn>& all,
                                                       const std::vector<std::int16_t>& shown);

} // namespace tamarok::workbench
