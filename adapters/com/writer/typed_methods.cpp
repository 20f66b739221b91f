#include <array>
#include <ostream>
#include <string>

#include "writers.h"

#include "tamarok/tmkvar.h"

// The C++ classes of the dual interfaces.

namespace tamarok::com {

namespace {

using component::OperationInfo;
using component::ValueType;

/// The C++ types of the interface description, in the order of ValueType.
constexpr std::array<std::string_view, 16> typeNames{
    "void",    "VARIANT_BOOL", "unsigned char", "SHORT",      "LONG",       "DOUBLE",     "DATE",       "BSTR",
    "VARIANT", "SAFEARRAY*",   "SAFEARRAY*",    "IDispatch*", "IDispatch*", "IDispatch*", "IDispatch*", "::TmkVar"};
static_assert(typeNames.size() == static_cast<std::size_t>(ValueType::Record) + 1);

std::string_view typeName(ValueType type)
{
    return typeNames[static_cast<std::size_t>(type)];
}

/// An identifier as the initialiser of a GUID: 8-4-4-4-12 digits become a number of 32, two of 16 and eight of 8 bits.
std::string initialiser(std::string_view id)
{
    std::string text = "{0x" + std::string{id.substr(0, 8)} + ", 0x" + std::string{id.substr(9, 4)} + ", 0x" +
                       std::string{id.substr(14, 4)} + ", {";
    std::string bytes{id.substr(19, 4)};
    bytes += id.substr(24, 12);
    for (std::size_t place = 0; place < bytes.size(); place += 2)
        text += (place == 0 ? "0x" : ", 0x") + bytes.substr(place, 2);
    return text + "}}";
}

void writeMethod(std::ostream& out, const OperationInfo& operation, std::size_t index)
{
    constexpr std::array<std::string_view, 3> prefixes{"", "get_", "put_"};
    std::string declared;
    std::string passed;
    std::size_t number = 0;
    for (const component::ParameterInfo& parameter : operation.parameters()) {
        const std::string name = "a" + std::to_string(++number);
        declared += (declared.empty() ? "" : ", ") + std::string{typeName(parameter.type)} +
                    (parameter.byReference ? "* " : " ") + name;
        passed += ", " + name;
    }
    const bool hasResult = operation.result != ValueType::None;
    if (hasResult) declared += (declared.empty() ? "" : ", ") + std::string{typeName(operation.result)} + "* returned";
    out << "    HRESULT STDMETHODCALLTYPE " << prefixes[static_cast<std::size_t>(operation.kind)] << operation.name
        << '(' << declared << ") override\n    {\n        return callTyped(" << index
        << (hasResult ? ", returned" : ", nullptr") << passed << ");\n    }\n";
}

void writeClass(std::ostream& out, const OfferedRow& row, std::size_t place)
{
    out << "class " << row.info.name << "Object final : public ClassObject<" << row.info.name << "Object, _"
        << row.info.name << "> {\npublic:\n    static constexpr std::size_t place = " << place << ";\n\n";
    std::size_t index = 0;
    for (const OperationInfo& operation : row.info.operations)
        writeMethod(out, operation, index++);
    out << "};\n\n";
}

void writeTables(std::ostream& out, std::span<const OfferedRow> classes)
{
    out << "constexpr std::array offeredClasses{\n";
    for (const OfferedRow& row : classes)
        out << "    OfferedClass{" << initialiser(row.identifiers.classId) << ", \"Tamarok_Comm." << row.info.name
            << "\", \"" << row.info.help << "\", &makeUnknown<" << row.info.name << "Object>},\n";
    out << "};\n\nconstexpr std::array offeredInterfaces{\n";
    for (const OfferedRow& row : classes)
        out << "    OfferedInterface{" << initialiser(row.identifiers.interfaceId) << ", \"_" << row.info.name
            << "\"},\n";
    out << "};\n\nconstexpr TypeLibrary library{" << initialiser(libraryId) << ", \"2.0\", \"Tamarok_Comm 2.0\"};\n\n";
}

void writeLayout(std::ostream& out)
{
    // In the order of TmkVarField::Type.
    constexpr std::array<std::string_view, 7> types{"VT_DISPATCH", "VT_DISPATCH", "VT_BSTR", "VT_I2",
                                                    "VT_I4",       "VT_BOOL",     "VT_DATE"};
    out << "constexpr std::array layout{\n";
    for (const TmkVarField& field : tmkVarFields())
        out << "    FieldPlace{offsetof(::TmkVar, " << field.name << "), "
            << types[static_cast<std::size_t>(field.type)] << "},\n";
    out << "};\n\n";
}

} // namespace

void writeTypedMethods(std::ostream& out, std::span<const OfferedRow> classes)
{
    out << "// Written by tamarok_com_writer from the class map.\n#include \"class_object.h\"\n#include "
           "\"component_server.h\"\n#include \"record_layout.h\"\n\n"
        << "namespace tamarok::com {\n\nnamespace {\n\n";
    std::size_t place = 0;
    for (const OfferedRow& row : classes)
        writeClass(out, row, place++);
    writeTables(out, classes);
    writeLayout(out);
    out << "} // namespace\n\nconst Server& componentServer() noexcept\n{\n"
        << "    static constexpr Server server{offeredClasses, &library, offeredInterfaces};\n    return server;\n}\n\n"
        << "std::span<const FieldPlace> recordLayout() noexcept\n{\n    return layout;\n}\n\n"
        << "} // namespace tamarok::com\n";
}

} // namespace tamarok::com
