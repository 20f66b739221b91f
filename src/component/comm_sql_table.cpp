#include "binder.h"
#include "class_tables.h"

#include "tamarok/comm_sql.h"

namespace tamarok::component {

namespace {

using C = Comm_SQL;

// clang-format off
constexpr std::array operations{
    operation<&C::ACL>(1, "ACL", "&TmkVar", "Code of the session's access level."),
    operation<&C::ACL_str>(2, "ACL_str", "&TmkVar, Typ, ID_ACL", "Statement about one access level."),
    operation<&C::ACL_USERS_str>(3, "ACL_USERS_str", "&TmkVar, Typ, strName, intMode, strAL", "Statement about the access levels of a user and of those he stands in for."),
    operation<&C::ACL_USERS>(4, "ACL_USERS", "&TmkVar, strName, &AL", "First access level of a named user."),
    operation<&C::OPTIONEN_glbModel>(5, "OPTIONEN_glbModel", "&TmkVar", "Whether models may be changed globally: 1 by default."),
    operation<&C::USERS>(6, "USERS", "&TmkVar, strName", "Whether a user exists and has no password."),
    operation<&C::USERS_NAME>(7, "USERS_NAME", "&TmkVar", "Name of the session's user."),
    operation<&C::ONETOMANY_USERS_ACL_cnt>(8, "ONETOMANY_USERS_ACL_cnt", "&TmkVar", "Number of access levels of the session's user."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo commSQL{"Comm_SQL", "Answers that one fixed statement gives.", operations, makeClass<C>};

} // namespace tamarok::component
