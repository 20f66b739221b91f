#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "tamarok/ado.h"
#include "tamarok/date.h"
#include "tamarok/object.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// The session record. The application fills it at login and passes it by reference; the library only reads
/// it. The order of the fields is fixed because the sibling libraries share the record; for the same
/// reason reserved fields remain.
struct TmkVar {
    ado::ConnectionRef db_ADO; ///< every statement that gets the record runs on it
    ObjectRef objReserved;
    std::string strConnection; ///< connection text of db_ADO
    std::string strLanguage;   ///< suffix of SHORT_, CUSTOM_ and LONG_ in table STRINGS
    std::string strReserved1;
    std::string strReserved2;
    std::string strReserved3;
    std::string strDateFormat; ///< date format of the database, for dates in SQL text
    std::string strReserved4;
    std::string strReserved5;
    std::string strReserved6;
    std::string strReserved7;
    std::int32_t ID_User = 0;          ///< USERS.ID of the current user
    std::int32_t ID_Access_Levels = 0; ///< ACCESS_LEVELS.ID of the current level, 0 for none
    Boolean bolLan;                    ///< multi-user operation
    Date DateFrom;                     ///< start of the working period
    Date DateTo;                       ///< end of the working period
    Date DateFromDefault;              ///< the start that means no lower limit
    std::int16_t intDateToDays = 0;    ///< days from today to the end that means no upper limit
    std::string strID_Access_Levels;   ///< comma list of the visible ACCESS_LEVELS.ID
    std::string strEmptyText;          ///< shown in a list's first column for Null
    std::string strCustomer;           ///< BB, WVO, ALF, MA49, SACHSEN or another edition
    std::int32_t lngReserved1 = 0;
    std::string strReserved8;
    std::string strReserved9;
    Boolean bolOracle; ///< SQL text for Oracle instead of SQL Server
};

/// Access to one field of the record by name.
struct TmkVarField {
    enum class Type : std::uint8_t { Connection, Object, String, Integer, Long, Boolean, Date };
    std::string_view name;
    Type type;
    Variant (*get)(const TmkVar&);
    /// Converts the value as an assignment to a variable of that type does. Errors 6, 13, 94.
    void (*set)(TmkVar&, const Variant&);
};

/// Returns all fields in the order of the record.
std::span<const TmkVarField> tmkVarFields() noexcept;

/// Returns the field of that name, compared without regard to case, or nullptr.
const TmkVarField* findTmkVarField(std::string_view name) noexcept;

} // namespace tamarok

#pragma GCC visibility pop
