#pragma once

#include <string>
#include <string_view>

#include "tamarok/tmkvar.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// The look-up dialogs behind code fields. By name the class is "GridHelp", which in C++ would be the name of its
/// constructor. The class has no state. Error 91 if the platform has no dialog windows.
class Grid_Help {
public:
    /// Lets the user choose a row of a SELECT, or a date.
    /// @param strSQL        a SELECT, whose first field is returned, or "DATUM" for a date. It runs on a connection of
    ///        its own, opened by `TmkVar.strConnection`; with "#", a temporary table, on `TmkVar.db_ADO`
    /// @param strCaption    title of the dialog
    /// @param DefaultValue  value of the field so far: its row is the current one; without it that of which the table
    ///        says STANDART = 1
    /// @param strConfig     a character for each wish. 1st "1": the first column is hidden, and a date that is not
    ///        chosen gives "". 2nd "1": several rows can be selected, and are returned with "," between. 3rd "1": rows
    ///        can be added and changed; "2": the button for a new row gives "&New". 4th "1": no Enter is sent after OK
    /// @return the chosen value, `DefaultValue` if the user cancels or there is nothing to choose
    /// Errors: 5 for a SELECT with so many columns that no room is left for the relation of their widths; 91 if the
    /// platform opens no connections; those of the database.
    std::string GridHelp(const TmkVar& tmkVar, std::string_view strSQL, std::string_view strCaption,
                         std::string_view DefaultValue, std::string_view strConfig) const;

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

#pragma GCC visibility pop
