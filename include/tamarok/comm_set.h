#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/ado.h"
#include "tamarok/object.h"
#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

namespace tamarok {

/// Writing of values: SQL fragments, single columns, options of the installation. The class has no
/// state.
class Comm_Set {
public:
    // Fragments of SQL text. None doubles a quote.

    /// The value in single quotes, NULL for "".
    std::string Set_StrVal(std::string_view value) const;
    /// The value as it stands, NULL for "".
    std::string Set_NumVal(std::string_view value) const;
    /// A condition: `wald` (a column's name) and " = '...'", or " IS NULL" for "".
    std::string Set_StrVal2(std::string_view value, std::string_view wald = {}) const;

    // Writers of one column: each runs one UPDATE with the condition `sqlWhere` as it stands; how many
    // rows it touches is not looked at. Errors: 91 without connection, 13 for a value without a text
    // form, failures of the database. `par_strThousantSep_dll` is the thousands mark to drop.

    /// A number text; "", blanks and exactly "0" write NULL.
    void Set_Number(std::string_view column, std::string_view value, std::string_view table, std::string_view sqlWhere,
                    const ado::ConnectionRef& db_ADO_dll, std::string_view par_strThousantSep_dll) const;
    /// A number of any kind, through its regional text; Null writes NULL.
    void Set_Number2(const std::string& column, const Variant& value, std::string_view table, std::string_view sqlWhere,
                     const ado::ConnectionRef& db_ADO_dll, std::string_view par_strThousantSep_dll) const;
    /// A text, quotes doubled; "" writes NULL.
    void Set_Text(std::string_view column, std::string_view value, std::string_view table, std::string_view sqlWhere,
                  const ado::ConnectionRef& db_ADO_dll) const;
    /// A number's text in a text column: comma to point, thousands mark out, quotes not doubled; Null
    /// writes NULL.
    void Set_Text2(std::string_view column, const Variant& value, std::string_view table, std::string_view sqlWhere,
                   const ado::ConnectionRef& db_ADO_dll, std::string_view par_strThousantSep_dll) const;
    /// A value's regional text as it stands, quotes not doubled; Null writes NULL. The thousands mark
    /// is not used.
    void Set_Text3(std::string_view column, const Variant& value, std::string_view table, std::string_view sqlWhere,
                   const ado::ConnectionRef& db_ADO_dll, std::string_view par_strThousantSep_dll) const;
    /// 1 or 0.
    void Set_Boolean(std::string_view column, bool value, std::string_view table, std::string_view sqlWhere,
                     const ado::ConnectionRef& db_ADO_dll) const;

    /// Makes a number text follow the decimal separator `glDecSep`: the first occurrence of the other
    /// one of "." and "," is replaced. With any other `glDecSep` the first character is.
    std::string Set_Separator(std::string_view value, std::string_view glDecSep) const;

    /// Selects the whole content of a ComboBox or TextBox; leaves any other control, or none, alone.
    void Select_Text(const ObjectRef& ControlActive = {}) const;

    // Access levels.

    /// The tail of a condition, to be put behind a column that holds a level's id: the levels at the
    /// node `Level` groups above.
    /// @param ID_Access_Levels  a number (0 gives "IS NULL"), the text "@ID_ACCESS_LEVELS" in any case,
    ///        or a text with "SELECT"; pasted as it stands
    /// @param Level    number of two-digit groups to cut from the end of the code
    /// @param Exactly  text read as a Boolean: the node itself, or everything on that depth below it
    /// Error 13 for texts that cannot be read so.
    std::string CreateSQL_ACCESS_LEVELS(const TmkVar& tmkVar, std::string_view ID_Access_Levels, std::uint8_t Level,
                                        std::string_view Exactly) const;

    // Options, table OPTIONEN, written by the procedure tmk_OPTIONEN_INS, which makes the row where
    // there is none. The procedure takes the value as text; an empty text means no value.
    // Errors: 91 without a language service, failures of the procedure, 13 for a value without a
    // text form.

    /// A whole number; Null writes no value.
    void SetOptionenNumber(const TmkVar& tmkVar, std::string_view property, const Variant& value) const;
    /// A number, written with a point whatever the regional settings are.
    void SetOptionenDouble(const TmkVar& tmkVar, std::string_view property, double value) const;
    /// A text of at most 100 characters; Null writes no value.
    void SetOptionenText(const TmkVar& tmkVar, std::string_view property, const Variant& value) const;
    /// A date in the regional short form; Null writes no value.
    void SetOptionenDate(const TmkVar& tmkVar, std::string_view property, const Variant& value) const;
};

} // namespace tamarok
