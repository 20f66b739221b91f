#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tamarok/component.h"
#include "tamarok/error.h"
#include "tamarok/object.h"

namespace tamarok::component {

/// A class of the library as a late-bound object: its operations by name. By itself it holds no C++
/// object, which is enough for a module of free functions.
class Instance : public Object {
public:
    explicit Instance(const ClassInfo& classInfo) : class_{classInfo} {}

    std::string_view typeName() const override { return class_.name; }
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;
    std::vector<std::string_view> memberNames() const override;

private:
    const ClassInfo& class_;
};

/// The same with the C++ object on which the operations run.
template <class C>
class InstanceOf final : public Instance {
public:
    /// @param held  not null
    InstanceOf(const ClassInfo& classInfo, std::shared_ptr<C> held) : Instance{classInfo}, held_{std::move(held)} {}

    C& held() const noexcept { return *held_; }

private:
    std::shared_ptr<C> held_;
};

/// The C++ object in an instance. Error 13 where `object` is an instance of another class.
template <class C>
C& instanceIn(const Object& object)
{
    const auto* const instance = dynamic_cast<const InstanceOf<C>*>(&object);
    if (instance == nullptr) {
        throw Error{errors::typeMismatch,
                    "Type mismatch: the operation belongs to another class than " + std::string{object.typeName()}};
    }
    return instance->held();
}

} // namespace tamarok::component
