#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "tamarok/object.h"
#include "tamarok/variant.h"

namespace tamarok::test {

/// An object of which nothing is known but its members by name, as controls of other libraries are. The objects that
/// its properties hold are wrapped as well.
class ByName final : public Object {
public:
    explicit ByName(ObjectRef object) : object_{std::move(object)} {}

    std::string_view typeName() const override { return object_->typeName(); }
    Variant get(std::string_view name, std::span<const Variant> args) const override
    {
        return wrapped(object_->get(name, args));
    }
    void put(std::string_view name, const Variant& value) override { object_->put(name, value); }
    void putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value) override
    {
        object_->putIndexed(name, index, value);
    }
    Variant call(std::string_view name, std::span<Variant> args) override { return wrapped(object_->call(name, args)); }

private:
    static Variant wrapped(Variant value)
    {
        if (!value.isObject() || !value.asObject()) return value;
        return ObjectRef{std::make_shared<ByName>(value.asObject())};
    }

    ObjectRef object_;
};

} // namespace tamarok::test
