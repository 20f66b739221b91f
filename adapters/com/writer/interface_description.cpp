#include <algorithm>
#include <array>
#include <ostream>
#include <string>

#include "writers.h"

#include "tamarok/tmkvar.h"

// The interface description. Its compiler makes the type library and the C++ header of the dual interfaces.

namespace tamarok::com {

namespace {

using component::MemberKind;
using component::OperationInfo;
using component::ParameterInfo;
using component::ValueType;

/// The types of the description, in the order of ValueType.
constexpr std::array<std::string_view, 16> typeNames{
    "void",        "VARIANT_BOOL", "unsigned char",    "short",           "long",        "double",      "DATE",
    "BSTR",        "VARIANT",      "SAFEARRAY(short)", "SAFEARRAY(BSTR)", "IDispatch *", "IDispatch *", "IDispatch *",
    "IDispatch *", "TmkVar"};
static_assert(typeNames.size() == static_cast<std::size_t>(ValueType::Record) + 1);

/// In the order of TmkVarField::Type.
constexpr std::array<std::string_view, 7> fieldTypes{"IDispatch *", "IDispatch *",  "BSTR", "short",
                                                     "long",        "VARIANT_BOOL", "DATE"};

std::string_view typeName(ValueType type)
{
    return typeNames[static_cast<std::size_t>(type)];
}

std::string quoted(std::string_view text)
{
    std::string literal = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') literal += '\\';
        literal += character;
    }
    return literal + '"';
}

/// What stands for a parameter that is left out, as an attribute. Only a Variant can be marked as missing, and a
/// reference cannot have a text as its default.
std::string_view optionality(const ParameterInfo& parameter)
{
    if (!parameter.optional) return "";
    if (parameter.type == ValueType::Variant || parameter.byReference) return ", optional";
    return parameter.type == ValueType::String ? ", defaultvalue(\"\")" : ", defaultvalue(0)";
}

/// Words of the description's language; it compares names with regard to case, type libraries do not.
constexpr std::array<std::string_view, 8> reservedWords{"boolean", "case", "const", "default",
                                                        "double",  "long", "short", "switch"};

std::string nameOf(const ParameterInfo& parameter)
{
    std::string name{parameter.name};
    if (std::ranges::find(reservedWords, parameter.name) != reservedWords.end())
        name[0] = static_cast<char>(name[0] - 'a' + 'A');
    return name;
}

void writeParameter(std::ostream& out, const ParameterInfo& parameter)
{
    out << '[' << (parameter.byReference ? "in, out" : "in") << optionality(parameter) << "] "
        << typeName(parameter.type) << (parameter.byReference ? " *" : " ") << nameOf(parameter);
}

void writeOperation(std::ostream& out, const component::ClassInfo& info, const OperationInfo& operation)
{
    constexpr std::array<std::string_view, 3> kinds{"", ", propget", ", propput"};
    out << "        [id(" << dispatchId(info, operation) << ')' << kinds[static_cast<std::size_t>(operation.kind)]
        << ", helpstring(" << quoted(operation.help) << ")]\n        HRESULT " << operation.name << '(';
    const char* separator = "";
    for (const ParameterInfo& parameter : operation.parameters()) {
        out << separator;
        writeParameter(out, parameter);
        separator = ", ";
    }
    if (operation.result != ValueType::None)
        out << separator << "[out, retval] " << typeName(operation.result) << " *returned";
    out << ");\n";
}

void writeRecord(std::ostream& out)
{
    // Clients of 32 bits align the fields of records to four bytes.
    out << "    cpp_quote(\"#ifndef _WIN64\")\n    cpp_quote(\"#pragma pack(push, 4)\")\n    cpp_quote(\"#endif\")\n"
        << "    typedef [uuid(" << recordId
        << "), helpstring(\"The session record of the application.\")] struct TmkVar {\n";
    for (const TmkVarField& field : tmkVarFields())
        out << "        " << fieldTypes[static_cast<std::size_t>(field.type)] << ' ' << field.name << ";\n";
    out << "    } TmkVar;\n"
        << "    cpp_quote(\"#ifndef _WIN64\")\n    cpp_quote(\"#pragma pack(pop)\")\n    cpp_quote(\"#endif\")\n";
}

void writeInterface(std::ostream& out, const OfferedRow& row)
{
    out << "\n    [object, oleautomation, dual, nonextensible, uuid(" << row.identifiers.interfaceId << "), helpstring("
        << quoted(row.info.help) << ")]\n    interface _" << row.info.name << " : IDispatch {\n";
    for (const OperationInfo& operation : row.info.operations)
        writeOperation(out, row.info, operation);
    out << "    }\n\n    [uuid(" << row.identifiers.classId << "), helpstring(" << quoted(row.info.help)
        << ")]\n    coclass " << row.info.name << " {\n        [default] interface _" << row.info.name << ";\n    }\n";
}

} // namespace

void writeDescription(std::ostream& out, std::span<const OfferedRow> classes)
{
    out << "import \"automation_base.idl\";\n\n[uuid(" << libraryId
        << "), version(2.0), helpstring(\"Tamarok_Comm 2.0\")]\nlibrary Tamarok_Comm {\n\n";
    writeRecord(out);
    for (const OfferedRow& row : classes)
        writeInterface(out, row);
    out << "}\n";
}

} // namespace tamarok::com
