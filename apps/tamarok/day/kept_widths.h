#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/ado.h"

namespace tamarok::cli::day {

/// The column widths under some relations, as the users have left them: the destructor brings them back, also where
/// there were none.
class KeptWidths {
public:
    /// Reads the present widths. Errors: those of the database.
    KeptWidths(ado::ConnectionRef connection, std::initializer_list<std::string_view> relations);
    ~KeptWidths();
    KeptWidths(const KeptWidths&) = delete;
    KeptWidths& operator=(const KeptWidths&) = delete;

private:
    ado::ConnectionRef connection_;
    std::vector<std::string> returns_; ///< the statements that bring the widths back
};

} // namespace tamarok::cli::day
