#include "record_object.h"

#include "tamarok/component.h"
#include "tamarok/error.h"
#include "tamarok/spelling.h"

namespace tamarok::component {

Variant RecordObject::get(std::string_view name, std::span<const Variant> args) const
{
    const TmkVarField* field = findTmkVarField(name);
    if (field == nullptr) noSuchMember(name);
    if (!args.empty()) throw Error{errors::wrongArgumentCount, "TmkVar." + std::string{name} + " takes no arguments"};
    return field->get(record_);
}

void RecordObject::put(std::string_view name, const Variant& value)
{
    const TmkVarField* field = findTmkVarField(name);
    if (field == nullptr) noSuchMember(name);
    try {
        field->set(record_, value);
    } catch (Error& error) {
        throw error.addContext("TmkVar." + std::string{field->name});
    }
}

std::vector<std::string_view> RecordObject::memberNames() const
{
    return spelling::namesOf(tmkVarFields());
}

ObjectRef makeRecordObject(TmkVar& record)
{
    return std::make_shared<RecordObject>(record);
}

} // namespace tamarok::component
