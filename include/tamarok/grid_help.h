#pragma once

#include <string>
#include <string_view>

#include "tamarok/tmkvar.h"

namespace tamarok {

/// The look-up dialogs behind code fields. By name the class is "GridHelp", which in C++ would be the name of its
/// constructor. The class has no state. Error 91 if the platform has no dialog windows.
class Grid_Help {
public:
    /// Lets the user choose a leaf of the tree of budget titles and their up to four levels.
    /// @param strSQL        "EBENE" and the digits behind the 0 of the chapter's id; any other text opens an empty tree
    /// @param strCaption    title of the dialog, and text of the root
    /// @param DefaultValue  key of the node to select: the ids from the title down, "|" before each
    /// @return key of the chosen node, "" if the user cancels
    /// Failures of the database are passed on.
    std::string TreeviewHelp(const TmkVar& tmkVar, std::string_view strSQL, std::string_view strCaption,
                             std::string_view DefaultValue) const;
};

} // namespace tamarok
