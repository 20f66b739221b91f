#include "kept_object.h"

namespace tamarok::data {

Variant KeptObject::get(std::string_view name, std::span<const Variant> args) const
{
    return keeping(object_->get(name, args), owner_);
}

Variant KeptObject::call(std::string_view name, std::span<Variant> args)
{
    return keeping(object_->call(name, args), owner_);
}

Variant keeping(Variant value, const std::shared_ptr<const void>& owner)
{
    if (!value.isObject() || !value.asObject()) return value;
    return std::make_shared<KeptObject>(value.asObject(), owner);
}

} // namespace tamarok::data
