#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

namespace tamarok {

class Variant;

/// An object that is reached by late binding: a control, a recordset, a field. Its members have names,
/// which compare without regard to case.
class Object {
public:
    virtual ~Object() = default;

    /// The name of the type as a form asks for it, such as "TextBox".
    virtual std::string_view typeName() const = 0;

    /// Reads a property.
    /// @param name  name of the property
    /// @param args  index arguments, as in `ColumnHeaders(1)`; mostly none
    /// Errors: 438, naming type and member, for an unknown property; 450 for a wrong number of arguments.
    virtual Variant get(std::string_view name, std::span<const Variant> args) const;

    /// Writes a property. Errors: 438 for an unknown or read-only property, 13 or 6 for a value that does
    /// not convert to the property's type.
    virtual void put(std::string_view name, const Variant& value);

    /// Writes an element of a property that has an index, such as `SubItems(2)`. By default the element must be an
    /// object and its property Value is written, as in `Fields("NAME") = value`.
    /// @param index  at least one argument
    /// Errors: those of `get`; 5 for an element that is no object; 13, 6 and 9 of the value and the index.
    virtual void putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value);

    /// Calls a method and returns its result, Empty for a method without one. The method may change the elements of
    /// `args` that it takes by reference. The name of a property reads it, with `args` as its index.
    /// Errors: 438 for an unknown name, 450 for a wrong number of arguments, those of `get`.
    virtual Variant call(std::string_view name, std::span<Variant> args);

    /// Returns the value that stands for the object where a plain value is needed. A Field returns its Value.
    /// A class that overrides it overrides `hasDefaultValue` too. Returned directly: std::optional<Variant>
    /// makes the reading of a field by Get_String 1.2 times as long (bench: getStringOfField).
    /// Errors: 438 for an object without default value; those of reading the property, such as 3021 for a
    /// field without a current row.
    virtual Variant defaultValue() const;

    /// Returns whether the object has a default value; most have none.
    virtual bool hasDefaultValue() const noexcept;

    /// Returns the names of the properties and methods, for messages; none if a class does not tell them. A class that
    /// extends another one adds its own to those of its base. The names are valid while the object lives.
    virtual std::vector<std::string_view> memberNames() const;

protected:
    Object() = default;
    Object(const Object&) = default;
    Object& operator=(const Object&) = default;

    /// Throws Error 438 that names the type, the member `name` and the nearest of `memberNames`.
    [[noreturn]] void noSuchMember(std::string_view name) const;
};

using ObjectRef = std::shared_ptr<Object>;

/// Returns the object of a reference. Error 91, which names `what`, for an empty reference.
Object& require(const ObjectRef& object, std::string_view what);

} // namespace tamarok

#pragma GCC visibility pop
