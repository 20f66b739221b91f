#include "call/object_makers.h"

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "tamarok/ado.h"
#include "tamarok/component.h"
#include "tamarok/controls.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::cli {

namespace {

using errors::cannotCreateObject;

struct Maker {
    std::string_view typeName;
    ObjectRef (*make)();
};

template <class T>
ObjectRef makeAs()
{
    return std::make_shared<T>();
}

/// Types that are neither a control nor a class of the library.
constexpr std::array makers{
    Maker{"ADODB.Command", makeAs<ado::Command>},
    Maker{"ADODB.Recordset", makeAs<ado::Recordset>},
};

std::string knownNames()
{
    std::string list;
    const auto add = [&list](std::string_view name) { list.append(list.empty() ? "" : ", ").append(name); };
    for (const Maker& maker : makers)
        add(maker.typeName);
    for (const std::string_view control : controls::knownTypes())
        add(control);
    for (const component::ClassInfo& classInfo : component::classes())
        add(classInfo.name);
    return list;
}

} // namespace

ObjectRef makeObject(std::string_view typeName)
{
    const auto sameName = [&](std::string_view known) { return text::equalsNoCase(known, typeName); };
    const auto maker = std::ranges::find_if(makers, sameName, &Maker::typeName);
    if (maker != makers.end()) return maker->make();
    if (std::ranges::any_of(controls::knownTypes(), sameName)) return controls::make(typeName);
    if (component::findClass(typeName) != nullptr) return component::makeInstance(typeName);
    throw Error{cannotCreateObject, "there is no type '" + std::string{typeName} + "'; known are " + knownNames()};
}

} // namespace tamarok::cli
