#include "tamarok_embedded/procedures.h"

#include "procedures/models_ins.h"
#include "procedures/node_visible.h"
#include "procedures/optionen_ins.h"
#include "tamarok_tsql/names.h"

namespace tamarok::embedded {

namespace {

/// The last part of a name of several parts, without brackets or quotes.
std::string_view lastPart(std::string_view name) noexcept
{
    if (name.size() >= 2 && (name.ends_with(']') || name.ends_with('"'))) {
        const char opening = name.back() == ']' ? '[' : '"';
        name.remove_suffix(1);
        const std::size_t begin = name.rfind(opening);
        return begin == std::string_view::npos ? name : name.substr(begin + 1);
    }
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos ? name : name.substr(point + 1);
}

} // namespace

/// As in all names of statements.
bool CompareNames::operator()(std::string_view a, std::string_view b) const noexcept
{
    return tsql::nameLess(a, b);
}

/// A procedure of the same name is replaced, so that a program may bring another version of a built-in one.
void ProcedureRegistry::add(Procedure procedure)
{
    std::string name = procedure.name;
    procedures_.insert_or_assign(std::move(name), std::move(procedure));
}

const Procedure* ProcedureRegistry::find(std::string_view name) const
{
    const auto found = procedures_.find(lastPart(name));
    return found == procedures_.end() ? nullptr : &found->second;
}

ProcedureRegistry builtInProcedures()
{
    ProcedureRegistry registry;
    registry.add(modelsIns());
    registry.add(nodeVisible());
    registry.add(optionenIns());
    return registry;
}

} // namespace tamarok::embedded
