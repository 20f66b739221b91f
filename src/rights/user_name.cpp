#include "user_name.h"

#include "ado/first_row.h"

namespace tamarok::rights {

std::string userName(const ado::ConnectionRef& connection, std::string_view id)
{
    return ado::readFirstText(connection, std::string{"SELECT NAME FROM USERS WHERE ID = "}.append(id));
}

} // namespace tamarok::rights
