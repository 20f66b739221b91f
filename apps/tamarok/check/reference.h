#pragma once

#include <string>

#include "check/table_shapes.h"

#include "tamarok/ado.h"

namespace tamarok::cli::check {

/// What an installation is compared with: a reference database in memory, with tables, texts and master data but
/// without business records.
struct Reference {
    Reference();

    ado::ConnectionRef database;
    TableShapes tables; ///< their key columns are those of the primary key
};

} // namespace tamarok::cli::check
