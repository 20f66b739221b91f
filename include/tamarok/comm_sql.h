#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/tmkvar.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// Look-ups about users, access levels and options, each one query. The class has no state. Names are inserted
/// into SQL verbatim, without escaping. By the deputy rule a user also holds what those users hold whose
/// deputy he is and who lend their rights (USERS_PROPERTY.B055 = 1).
/// Errors of all operations that send a query: 91 without a connection, failures of the database.
class Comm_SQL {
public:
    /// Returns the code of the session's access level; "" if there is none.
    std::string ACL(const TmkVar& tmkVar) const;

    /// Returns the text of a query: `Typ` 1 of the root level's name, 2 of the code of level `ID_ACL`; "" for any
    /// other `Typ`.
    std::string ACL_str(const TmkVar& tmkVar, std::int16_t Typ, std::int16_t ID_ACL) const;

    /// Returns the text of a query of the levels of a user and of his principals.
    /// @param Typ      1 for a choice list, 2 the level with the code `strAL`, 3 the codes, 4 all levels that share
    ///        the first six characters with the session's level (the user does not matter); "" for any other
    /// @param strName  name of the user; "" stands for user 0, whatever `intMode` is
    /// @param intMode  1 for the session's user in place of `strName`
    std::string ACL_USERS_str(const TmkVar& tmkVar, std::int16_t Typ, std::string_view strName, std::int16_t intMode,
                              std::string_view strAL) const;

    /// Writes the code of the first level of a user or of his principals to `AL`. Which one comes first is up to
    /// the database.
    /// @return false, and `AL` unchanged, if there is none
    bool ACL_USERS(const TmkVar& tmkVar, std::string_view strName, std::string& AL) const;

    /// Tells whether a user exists and has no password. An empty password counts as none on SQL Server only.
    bool USERS(const TmkVar& tmkVar, std::string_view strName) const;

    /// Returns the name of the session's user; "" if there is none.
    std::string USERS_NAME(const TmkVar& tmkVar) const;

    /// Returns the number of levels of the session's user and of his principals. Error 6 above 32767.
    std::int16_t ONETOMANY_USERS_ACL_cnt(const TmkVar& tmkVar) const;

    /// Returns whether models may be changed globally: the number of the property CHANGE_MODELS, 1 if the property
    /// has no row or no value. Makes no row. Error 6 for a number beyond 16 bits.
    std::int16_t OPTIONEN_glbModel(const TmkVar& tmkVar) const;
};

} // namespace tamarok

#pragma GCC visibility pop
