#include "session_record.h"

#include <string>

#include "automation_object.h"
#include "record_layout.h"
#include "record_value.h"
#include "values.h"

#include "tamarok/error.h"

namespace tamarok::com {

namespace {

using Connect = std::function<ado::ConnectionRef(const ObjectRef&)>;

void setField(TmkVar& record, const TmkVarField& field, const Variant& value, const Connect& connect)
{
    try {
        const bool isConnection = field.type == TmkVarField::Type::Connection;
        if (isConnection && value.isObject() && dynamic_cast<AutomationObject*>(value.asObject().get()) != nullptr)
            record.db_ADO = connect(value.asObject());
        else if (!(isConnection && (value.isEmpty() || value.isNull())))
            field.set(record, value);
    } catch (Error& error) {
        throw error.addContext("TmkVar." + std::string{field.name});
    }
}

void readStructure(const void* structure, TmkVar& record, const Connect& connect)
{
    const auto fields = tmkVarFields();
    const auto places = recordLayout();
    const auto* const bytes = static_cast<const char*>(structure);
    for (std::size_t index = 0; index < places.size(); ++index) {
        VARIANT reference;
        VariantInit(&reference);
        V_VT(&reference) = static_cast<VARTYPE>(places[index].type | VT_BYREF);
        // A reference has no const; it is read only.
        V_BYREF(&reference) = const_cast<char*>(bytes + places[index].offset);
        setField(record, fields[index], fromVariant(reference), connect);
    }
}

void readObject(const Object& object, TmkVar& record, const Connect& connect)
{
    for (const TmkVarField& field : tmkVarFields()) {
        if (field.name.find("Reserved") != std::string_view::npos) continue; // the library does not read it
        Variant value;
        try {
            value = object.get(field.name, {});
        } catch (const Error& error) {
            if (error.number == errors::noSuchMember) continue;
            throw;
        }
        setField(record, field, value, connect);
    }
}

} // namespace

bool isNothing(const VARIANT& value) noexcept
{
    const VARTYPE type = V_VT(&value) & static_cast<VARTYPE>(~VT_BYREF);
    if (type == VT_RECORD) return V_RECORD(&value) == nullptr;
    if (type != VT_DISPATCH && type != VT_UNKNOWN) return true;
    return (V_VT(&value) & VT_BYREF) != 0 ? *V_UNKNOWNREF(&value) == nullptr : V_UNKNOWN(&value) == nullptr;
}

void readSessionRecord(const VARIANT& value, TmkVar& record, const Connect& connect)
{
    const bool isRecord = (V_VT(&value) & VT_TYPEMASK) == VT_RECORD;
    // A call through the dual interface gives the record itself, without description.
    if (isRecord && V_RECORDINFO(&value) == nullptr) return readStructure(V_RECORD(&value), record, connect);
    const Variant object = isRecord ? makeRecordValue(value) : fromVariant(value);
    readObject(*object.asObject(), record, connect);
}

} // namespace tamarok::com
