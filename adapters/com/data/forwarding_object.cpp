#include "forwarding_object.h"

namespace tamarok::data {

Variant ForwardingObject::get(std::string_view name, std::span<const Variant> args) const
{
    return noting(failures(), [&] { return target().get(name, args); });
}

void ForwardingObject::put(std::string_view name, const Variant& value)
{
    noting(failures(), [&] { target().put(name, value); });
}

void ForwardingObject::putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value)
{
    noting(failures(), [&] { target().putIndexed(name, index, value); });
}

Variant ForwardingObject::call(std::string_view name, std::span<Variant> args)
{
    return noting(failures(), [&] { return target().call(name, args); });
}

std::vector<std::string_view> ForwardingObject::memberNames() const
{
    return target().memberNames();
}

} // namespace tamarok::data
