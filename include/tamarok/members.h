#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>

#include "tamarok/text.h"
#include "tamarok/variant.h"

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

/// Returns the row of that name, compared without regard to case, or nullptr. `Row` is any type with a
/// member `name`. The search is linear: tables have at most some thirty rows.
template <class Row>
const Row* findByName(std::span<const Row> rows, std::string_view name) noexcept
{
    const auto found =
        std::ranges::find_if(rows, [name](const Row& row) { return text::equalsNoCase(row.name, name); });
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
