#pragma once

#include <memory>

#include "tamarok/object.h"
#include "tamarok/variant.h"

namespace tamarok::data {

/// An object of the library that keeps another one alive: fields and their collection keep their recordset open, so
/// that `connection.Execute(statement)(0).Value` finds its row. What its members return keeps it too.
class KeptObject final : public Object {
public:
    KeptObject(ObjectRef object, std::shared_ptr<const void> owner) :
        object_{std::move(object)}, owner_{std::move(owner)}
    {}

    std::string_view typeName() const override { return object_->typeName(); }
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override { object_->put(name, value); }
    void putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value) override
    {
        object_->putIndexed(name, index, value);
    }
    Variant call(std::string_view name, std::span<Variant> args) override;
    Variant defaultValue() const override { return object_->defaultValue(); }
    bool hasDefaultValue() const noexcept override { return object_->hasDefaultValue(); }
    std::vector<std::string_view> memberNames() const override { return object_->memberNames(); }

private:
    ObjectRef object_;
    std::shared_ptr<const void> owner_;
};

/// Returns an object so that it keeps the owner; any other value as it is.
Variant keeping(Variant value, const std::shared_ptr<const void>& owner);

} // namespace tamarok::data
