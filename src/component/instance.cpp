#include "instance.h"

#include <vector>

#include "tamarok/spelling.h"

namespace tamarok::component {

Variant Instance::get(std::string_view name, std::span<const Variant> args) const
{
    const OperationInfo* operation = findOperation(class_, name, args.size());
    if (operation == nullptr || operation->kind == MemberKind::PropertyPut) noSuchMember(name);
    std::vector<Variant> copies{args.begin(), args.end()};
    return invoke(class_, *operation, *this, copies);
}

void Instance::put(std::string_view name, const Variant& value)
{
    const OperationInfo* operation = findOperation(class_, name, 1);
    if (operation == nullptr || operation->kind != MemberKind::PropertyPut) noSuchMember(name);
    Variant argument = value;
    invoke(class_, *operation, *this, {&argument, 1});
}

Variant Instance::call(std::string_view name, std::span<Variant> args)
{
    const OperationInfo* operation = findOperation(class_, name, args.size());
    if (operation == nullptr) noSuchMember(name);
    return invoke(class_, *operation, *this, args);
}

std::vector<std::string_view> Instance::memberNames() const
{
    return spelling::namesOf(class_.operations);
}

ObjectRef makeInstance(const ClassInfo& classInfo)
{
    return classInfo.make(classInfo);
}

ObjectRef makeInstance(std::string_view className)
{
    return makeInstance(requireClass(className));
}

} // namespace tamarok::component
