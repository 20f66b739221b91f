#include "catalogue/list_composer.h"

#include <utility>

#include "from_body.h"
#include "list_types.h"

#include "tamarok/comm_csel.h"

namespace tamarok::catalogue {

ListComposer::ListComposer(std::string_view type, std::string_view version, const TmkVar& session, std::string from) :
    type_{type}, version_{version}, session_{session}, from_{std::move(from)}
{}

void ListComposer::addColumn(std::int16_t id)
{
    const Comm_CSel columns;
    addSelected(columns.GetColumnTyp(type_, id, true, false, session_));
    addJoins(id);
    addGroup(columns.GetColumnTyp(type_, id, true, true, session_));
}

void ListComposer::addSelected(std::string_view expression)
{
    if (!select_.empty() && !expression.empty()) select_ += ", ";
    select_ += expression;
}

void ListComposer::addJoins(std::int16_t id)
{
    growFromBody(from_, findListType(type_), id, version_, session_);
}

} // namespace tamarok::catalogue
