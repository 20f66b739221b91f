#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace tamarok {

class Variant;

/// Anything that is reached by late binding: a control, a recordset, a field. Members are named;
/// names compare without regard to case. A member that does not exist is Error 438 and names the
/// type and the member.
class Object {
public:
    virtual ~Object() = default;

    /// The type's name as a form would ask for it, such as "TextBox".
    virtual std::string_view typeName() const = 0;

    /// Reads a property. `args` are index arguments (`ColumnHeaders(1)`), as a rule none.
    virtual Variant get(std::string_view name, std::span<const Variant> args) const;

    /// Writes a property.
    virtual void put(std::string_view name, const Variant& value);

    /// Calls a method. Arguments that the method takes by reference may change.
    virtual Variant call(std::string_view name, std::span<Variant> args);

protected:
    Object() = default;
    Object(const Object&) = default;
    Object& operator=(const Object&) = default;

    /// Throws Error 438 for `name`.
    [[noreturn]] void noSuchMember(std::string_view name) const;
};

using ObjectRef = std::shared_ptr<Object>;

/// `*object` by reference, or Error 91 with `what` named where it holds nothing.
Object& require(const ObjectRef& object, std::string_view what);

/// True if `name`, as a caller wrote it, names `member`: the same letters without regard to case.
bool isMember(std::string_view name, std::string_view member) noexcept;

} // namespace tamarok
