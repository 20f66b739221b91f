#pragma once

#include <QVariantMap>

class QTableView;

namespace tamarok::workbench {

class ListModel;

/// Gives a table the look of all tables: whole rows, no lines, no numbers beside them.
void layOutTable(QTableView& table);

/// Gives each column the width that the user chose for it, or that its head and a usual cell need.
/// @param chosen  widths by the ids of columns
void fitColumns(QTableView& table, const ListModel& model, const QVariantMap& chosen = {});

} // namespace tamarok::workbench
