#pragma once

#include "error_list.h"

#include "tamarok/object.h"

namespace tamarok::data {

/// An object whose members are those of another one, besides its own. Failures of the database are entered into a list.
class ForwardingObject : public Object {
public:
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    void putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;
    std::vector<std::string_view> memberNames() const override;

protected:
    /// The object behind this one.
    virtual Object& target() const = 0;
    /// The list for failures; may be null.
    virtual std::shared_ptr<ErrorList> failures() const = 0;
};

/// A forwarding object with the members of the table `T::members` before those of its target. Scripts read properties
/// by a call too, so that a property of the table is found before a method of the target.
template <class T>
class WithForwarding : public WithMembers<T, ForwardingObject> {
public:
    Variant call(std::string_view name, std::span<Variant> args) override
    {
        const Member<T>* const member = findByName(T::members(), name);
        if (member != nullptr && member->call == nullptr && member->get != nullptr) return this->get(name, args);
        return WithMembers<T, ForwardingObject>::call(name, args);
    }
};

} // namespace tamarok::data
