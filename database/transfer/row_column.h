#pragma once

#include <string>

#include "tamarok/ado.h"

namespace tamarok::database {

/// A column of the rows to write.
struct RowColumn {
    std::string name;
    ado::DataType type = ado::DataType::VarWChar;
};

} // namespace tamarok::database
