#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

#include "ado_failure.h"

#include "tamarok/text.h"
#include "tamarok/variant.h"

/// Late binding by tables: one row per member of a class.
namespace tamarok::ado {

template <class T>
struct Member {
    std::string_view name;
    Variant (*get)(const T&, std::span<const Variant>) = nullptr;
    void (*put)(T&, const Variant&) = nullptr;
    Variant (*call)(T&, std::span<Variant>) = nullptr;
};

/// The member of that name, without regard to case, or nothing.
template <class T>
const Member<T>* findMember(std::span<const Member<T>> members, std::string_view name) noexcept
{
    const auto found = std::ranges::find_if(
        members, [name](const Member<T>& member) { return text::equalsNoCase(member.name, name); });
    return found == members.end() ? nullptr : &*found;
}

/// Handler of a late-bound read, write and call; null where there is none. A property may be called
/// like a method, as collections are (`Fields("NAME")`).
template <class T>
auto findGetter(std::span<const Member<T>> members, std::string_view name) noexcept
{
    const Member<T>* member = findMember(members, name);
    return member ? member->get : nullptr;
}

template <class T>
auto findSetter(std::span<const Member<T>> members, std::string_view name) noexcept
{
    const Member<T>* member = findMember(members, name);
    return member ? member->put : nullptr;
}

template <class T>
auto findMethod(std::span<const Member<T>> members, std::string_view name) noexcept
{
    const Member<T>* member = findMember(members, name);
    return member ? member->call : nullptr;
}

/// Error 450 unless there are `least` to `most` arguments.
inline void checkArguments(std::size_t count, std::size_t least, std::size_t most, std::string_view member)
{
    if (count >= least && count <= most) return;
    fail(errors::wrongArgumentCount, "ADODB",
         std::string{member} + " takes " + std::to_string(least) +
             (least == most ? "" : " to " + std::to_string(most)) + " arguments, not " + std::to_string(count) + ".");
}

/// The argument at `index`, or null where it is left out or Empty.
inline const Variant* argument(std::span<const Variant> arguments, std::size_t index) noexcept
{
    return index < arguments.size() && !arguments[index].isEmpty() ? &arguments[index] : nullptr;
}

} // namespace tamarok::ado
