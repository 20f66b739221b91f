#pragma once

#include <string_view>

namespace tamarok::workbench {

/// What the records of a list type's main table are known by. Several rows of a list may show the same record.
struct RecordKey {
    std::string_view type;
    std::string_view column; ///< such as "LOGS.ID_LOG"
    std::string_view levels; ///< key of Comm_Lock::Access_Levels for what a user may see; "" where levels do not count
    bool isText = false;     ///< the other keys are whole numbers
};

/// Returns the key of a list type's records. Error 5 for an unknown type.
/// @param type  in capitals
const RecordKey& recordKeyOf(std::string_view type);

} // namespace tamarok::workbench
