#pragma once

#include <string_view>

namespace tamarok::dialogs {

/// What the caller of a lookup asks for besides the rows, from the text `strConfig`: one character for each wish, and a
/// missing one means no.
struct LookupConfig {
    explicit LookupConfig(std::string_view text);

    bool hidesFirstColumn; ///< position 1 is "1"
    bool selectsSeveral;   ///< position 2 is "1"
    bool entersRows;       ///< position 3 is "1": rows can be added and changed
    bool newClosesDialog;  ///< position 3 is "2": the button for a new row closes the dialog
    bool withoutEnter;     ///< position 4 is "1": no Enter is sent to the caller's form

    bool showsNew() const noexcept { return entersRows || newClosesDialog; }
};

} // namespace tamarok::dialogs
