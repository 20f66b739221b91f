#include "selection_values.h"

#include "tamarok/comm_set.h"
#include "tamarok/error.h"
#include "tamarok/selection_book.h"

namespace tamarok {

std::string Comm_Set::CreateSQL(const TmkVar& tmkVar, std::string_view Typ, std::string_view strWhere) const
{
    const selections::Selection* const selection = selections::find(Typ);
    if (selection == nullptr) return {};
    try {
        return selections::fillStatement(tmkVar, selection->key, strWhere, selection->statement);
    } catch (Error& error) {
        throw error.addContext("Comm_Set.CreateSQL, " + std::string{Typ});
    }
}

} // namespace tamarok
