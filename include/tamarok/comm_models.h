#pragma once

#include <string_view>

#include "tamarok/object.h"
#include "tamarok/tmkvar.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// Saves and restores the widths of the columns of a control, in table MODELS under the name STANDARD. The class has no
/// state. A relation of widths should have no other models: their row is a default of the relation that no user sees,
/// but Comm_Get::GetStandardModel finds it where it is told to look at any owner.
/// The widths are whole numbers in the unit of the control, separated by ",":
///
/// - ListView: all of ColumnHeaders, from 1;
/// - MSFlexGrid: all of Cols, by ColWidth(i) from 0;
/// - any other control, such as DataGrid: the visible ones of Columns, from 0. Of a DataGrid on the form frmViewGrid
///   the width and height of the form follow. The control must have a Parent with a Name.
class Comm_Models {
public:
    /// Restores the widths that were saved for a relation. Without a saved row, and for a number that is missing or not
    /// numeric, a column keeps its width. Surplus numbers are ignored, but for the size of the form frmViewGrid, which
    /// two of them give. What was restored before a failure stays.
    /// @param model  the relation; inserted into SQL verbatim
    /// @param DG     the control
    /// Errors: those of the database and of the control.
    void ColWidth_Get(const TmkVar& tmkVar, std::string_view model, Object& DG) const;

    /// Saves the widths for a relation, by the procedure tmk_MODELS_INS, rounded to whole numbers, halves to the even
    /// one. There is room for 1000 characters; the procedure drops the widths of the columns beyond.
    /// @param relation  "" saves nothing
    /// Errors: 6 for a width above 32767, 438 for a control without the members, 91 without a language service, those
    /// of the database.
    void ColWidth_Set(const TmkVar& tmkVar, std::string_view relation, Object& DG) const;
};

} // namespace tamarok

#pragma GCC visibility pop
