#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "tamarok/object.h"
#include "tamarok/spelling.h"
#include "tamarok/text.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

/// Late binding by tables: one row for each member of a class. `Object::get`, `put` and `call` of a class
/// look the member up and run its handler; a class that extends another one passes unknown names on to it.
namespace tamarok {

/// A property or method of the class `T`. A handler that is null means that the member cannot be read,
/// written or called.
template <class T>
struct Member {
    std::string_view name;
    Variant (*get)(const T&, std::span<const Variant> index) = nullptr;
    void (*put)(T&, const Variant&) = nullptr;
    Variant (*call)(T&, std::span<Variant> arguments) = nullptr;
    void (*putIndexed)(T&, std::span<const Variant> index, const Variant& value) = nullptr;
};

/// Returns the row of that name, compared without regard to case, or nullptr. `Row` is any type with a member `name`.
/// The search is linear: tables have at most some thirty rows, the most used ones first. A name in the table's own
/// spelling is found without folding its case, which makes filling a list by name 1.2 times as fast (bench:
/// fillByName).
template <class Row>
const Row* findByName(std::span<const Row> rows, std::string_view name) noexcept
{
    const auto found = std::ranges::find_if(
        rows, [name](const Row& row) { return row.name == name || text::equalsNoCase(row.name, name); });
    return found == rows.end() ? nullptr : &*found;
}

/// Returns the handler that reads, writes or calls the member of that name, or nullptr.
template <class T>
auto findGetter(std::span<const Member<T>> members, std::string_view name) noexcept
{
    const Member<T>* member = findByName(members, name);
    return member ? member->get : nullptr;
}

template <class T>
auto findSetter(std::span<const Member<T>> members, std::string_view name) noexcept
{
    const Member<T>* member = findByName(members, name);
    return member ? member->put : nullptr;
}

template <class T>
auto findIndexedSetter(std::span<const Member<T>> members, std::string_view name) noexcept
{
    const Member<T>* member = findByName(members, name);
    return member ? member->putIndexed : nullptr;
}

template <class T>
auto findMethod(std::span<const Member<T>> members, std::string_view name) noexcept
{
    const Member<T>* member = findByName(members, name);
    return member ? member->call : nullptr;
}

/// Late binding of the class `T` by its table, which the static function `T::members` returns. A member that the table
/// lacks is looked up in `Base`.
template <class T, class Base = Object>
class WithMembers : public Base {
public:
    Variant get(std::string_view name, std::span<const Variant> args) const override
    {
        if (const auto getter = findGetter(T::members(), name)) return getter(static_cast<const T&>(*this), args);
        return Base::get(name, args);
    }
    void put(std::string_view name, const Variant& value) override
    {
        if (const auto setter = findSetter(T::members(), name)) return setter(static_cast<T&>(*this), value);
        Base::put(name, value);
    }
    void putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value) override
    {
        if (const auto setter = findIndexedSetter(T::members(), name))
            return setter(static_cast<T&>(*this), index, value);
        Base::putIndexed(name, index, value);
    }
    Variant call(std::string_view name, std::span<Variant> args) override
    {
        if (const auto method = findMethod(T::members(), name)) return method(static_cast<T&>(*this), args);
        return Base::call(name, args);
    }
    std::vector<std::string_view> memberNames() const override
    {
        return spelling::namesOf(T::members(), Base::memberNames());
    }
};

/// Throws Error 450 unless `least` <= `count` <= `most`.
/// @param count   number of arguments given
/// @param member  name of the member, for the message
/// @param source  source of the error, such as "ComboBox"
void checkArgumentCount(std::size_t count, std::size_t least, std::size_t most, std::string_view member,
                        std::string_view source);

/// Returns the argument at `index`, or nullptr if it is left out or Empty.
inline const Variant* optionalArgument(std::span<const Variant> arguments, std::size_t index) noexcept
{
    return index < arguments.size() && !arguments[index].isEmpty() ? &arguments[index] : nullptr;
}

} // namespace tamarok

#pragma GCC visibility pop
