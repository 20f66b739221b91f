#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/tmkvar.h"

namespace tamarok {

/// Small questions about users, access levels and options, each answered by one statement. The class
/// has no state. Names are pasted into the statements as they stand; failures of the database are
/// passed on. By the deputy rule a user also holds what those hold whose deputy he is and who lend
/// their rights (USERS_PROPERTY.B055 = 1).
class Comm_SQL {
public:
    /// The code of the session's access level, "" where it has none.
    std::string ACL(const TmkVar& tmkVar) const;

    /// A statement text: `Typ` 1 the name of the root level, 2 the code of level `ID_ACL`, any other "".
    std::string ACL_str(const TmkVar& tmkVar, std::int16_t Typ, std::int16_t ID_ACL) const;

    /// A statement text about the levels of a user and of those he stands in for.
    /// @param Typ      1 list for a choice box, 2 the level with code `strAL`, 3 the codes, 4 all levels
    ///        that share six characters with the session's level (whoever the user is), any other ""
    /// @param strName  user's name; with "" no user is meant
    /// @param intMode  1 for the session's user in place of `strName`
    std::string ACL_USERS_str(const TmkVar& tmkVar, std::int16_t Typ, std::string_view strName, std::int16_t intMode,
                              std::string_view strAL) const;

    /// The first level of the user `strName` into `AL`; false, and `AL` as it was, where there is none.
    bool ACL_USERS(const TmkVar& tmkVar, std::string_view strName, std::string& AL) const;

    /// Whether the user exists and has no password.
    bool USERS(const TmkVar& tmkVar, std::string_view strName) const;

    /// The name of the session's user, "" where there is none.
    std::string USERS_NAME(const TmkVar& tmkVar) const;

    /// How many levels the session's user has. Error 6 above 32767.
    std::int16_t ONETOMANY_USERS_ACL_cnt(const TmkVar& tmkVar) const;

    /// Whether models may be changed globally: the number of property CHANGE_MODELS, 1 where the
    /// property has no row or no value. Makes no row.
    /// Errors: 6 for a number beyond 16 bits, failures of the database.
    std::int16_t OPTIONEN_glbModel(const TmkVar& tmkVar) const;
};

} // namespace tamarok
