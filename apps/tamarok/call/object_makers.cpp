#include "call/object_makers.h"

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "tamarok/ado.h"
#include "tamarok/component.h"
#include "tamarok/controls.h"
#include "tamarok/error.h"
#include "tamarok/spelling.h"
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

std::vector<std::string_view> knownNames()
{
    std::vector<std::string_view> names = controls::knownTypes();
    for (const Maker& maker : makers)
        names.push_back(maker.typeName);
    for (const component::ClassInfo& classInfo : component::classes())
        names.push_back(classInfo.name);
    return names;
}

/// The nearest known type, or all of them where none is near.
[[noreturn]] void refuseType(std::string_view typeName)
{
    const std::vector<std::string_view> known = knownNames();
    std::string help = spelling::suggestion(typeName, known);
    if (help.empty()) {
        for (const std::string_view name : known)
            help.append(help.empty() ? "; known are " : ", ").append(name);
    }
    throw Error{cannotCreateObject, "there is no type '" + std::string{typeName} + "'" + help};
}

} // namespace

ObjectRef makeObject(std::string_view typeName)
{
    const auto sameName = [&](std::string_view known) { return text::equalsNoCase(known, typeName); };
    const auto maker = std::ranges::find_if(makers, sameName, &Maker::typeName);
    if (maker != makers.end()) return maker->make();
    if (std::ranges::any_of(controls::knownTypes(), sameName)) return controls::make(typeName);
    if (component::findClass(typeName) != nullptr) return component::makeInstance(typeName);
    refuseType(typeName);
}

} // namespace tamarok::cli
