#include "deputy_rule.h"

namespace tamarok::rights {

std::string principalsOf(std::string_view deputy)
{
    std::string query{"(SELECT USERS.ID FROM USERS"};
    return query.append(lendsRights).append(" WHERE USERS.ID_USERS_VERTRETER").append(deputy).append(")");
}

} // namespace tamarok::rights
