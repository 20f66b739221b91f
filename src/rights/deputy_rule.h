#pragma once

#include <string>
#include <string_view>

/// The deputy rule, which every statement about rights applies: a user also holds what those users hold
/// whose USERS.ID_USERS_VERTRETER names him (his principals) and who lend their rights, which
/// USERS_PROPERTY.B055 = 1 says. The rule covers one step: rights that a principal borrows himself do
/// not pass on.
namespace tamarok::rights {

/// The join to USERS that admits only users who lend their rights to their deputy.
inline constexpr std::string_view lendsRights =
    " INNER JOIN USERS_PROPERTY ON USERS_PROPERTY.ID_USERS = USERS.ID AND USERS_PROPERTY.B055 = 1";

/// Returns the subquery of a user's principals, in brackets.
/// @param deputy  right-hand side of the predicate on the deputy, such as " = 7" or " IN (SELECT ...)"
std::string principalsOf(std::string_view deputy);

} // namespace tamarok::rights
