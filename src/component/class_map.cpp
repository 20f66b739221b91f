#include <algorithm>
#include <string>

#include "class_tables.h"

#include "tamarok/component.h"
#include "tamarok/error.h"
#include "tamarok/spelling.h"
#include "tamarok/text.h"

namespace tamarok::component {

namespace {

using errors::cannotCreateObject;

/// In the order of ValueType.
constexpr std::array<std::string_view, 16> typeNames{
    "None",          "Boolean", "Byte",      "Integer",  "Long",   "Double",           "Date",
    "String",        "Variant", "Integer()", "String()", "Object", "ADODB.Connection", "ADODB.Recordset",
    "ADODB.Command", "TmkVar"};
static_assert(typeNames.size() == static_cast<std::size_t>(ValueType::Record) + 1);

/// In the order of MemberKind.
constexpr std::array<std::string_view, 3> kindNames{"method", "get", "put"};

} // namespace

std::string_view name(ValueType type) noexcept
{
    return typeNames[static_cast<std::size_t>(type)];
}

std::string_view name(MemberKind kind) noexcept
{
    return kindNames[static_cast<std::size_t>(kind)];
}

std::span<const ClassInfo> classes() noexcept
{
    static const std::array all{commFind, gridHelp, cVersion,   commForms, commAct, commCSel,   commConv,
                                commLock, commSQL,  commModels, commGet,   commSet, locService, mCommModule};
    return all;
}

const ClassInfo* findClass(std::string_view name) noexcept
{
    // Names of classes and operations have no case.
    const auto all = classes();
    const auto found =
        std::ranges::find_if(all, [&](const ClassInfo& classInfo) { return text::equalsNoCase(classInfo.name, name); });
    return found == all.end() ? nullptr : &*found;
}

const ClassInfo& requireClass(std::string_view name)
{
    const ClassInfo* found = findClass(name);
    if (found == nullptr)
        throw Error{cannotCreateObject,
                    "There is no class '" + std::string{name} + "'" + spelling::suggestionByName(name, classes())};
    return *found;
}

const OperationInfo* findOperation(const ClassInfo& classInfo, std::string_view name, std::size_t arguments) noexcept
{
    // A property stands twice, for reading and for writing; the number of arguments tells which is meant.
    const OperationInfo* byName = nullptr;
    for (const OperationInfo& operation : classInfo.operations) {
        if (!text::equalsNoCase(operation.name, name)) continue;
        // If no number fits, the first of the name is taken: its check then reports the wrong number.
        if (operation.kind == MemberKind::Method || operation.parameterCount == arguments) return &operation;
        if (byName == nullptr) byName = &operation;
    }
    return byName;
}

const OperationInfo& requireOperation(const ClassInfo& classInfo, std::string_view name, std::size_t arguments)
{
    const OperationInfo* found = findOperation(classInfo, name, arguments);
    if (found == nullptr) {
        throw Error{errors::noSuchMember, "Class " + std::string{classInfo.name} + " has no operation '" +
                                              std::string{name} + "'" +
                                              spelling::suggestionByName(name, classInfo.operations)};
    }
    return *found;
}

} // namespace tamarok::component
