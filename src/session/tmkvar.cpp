#include "tamarok/tmkvar.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/members.h"

// Access to the fields of the session record by name: one row a field, in the order of the record.

namespace tamarok {

namespace {

using Type = TmkVarField::Type;

// One overload for each type of field. A value is converted as in an assignment to a variable of that type;
// Empty removes a connection or an object.
void assign(ado::ConnectionRef& field, const Variant& value)
{
    const ObjectRef object = value.isEmpty() ? nullptr : value.asObject();
    auto connection = std::dynamic_pointer_cast<ado::Connection>(object);
    if (object && !connection) {
        throw Error{errors::typeMismatch, "A " + std::string{object->typeName()} + " is no Connection.", "TmkVar"};
    }
    field = std::move(connection);
}
void assign(ObjectRef& field, const Variant& value)
{
    field = value.isEmpty() ? nullptr : value.asObject();
}
void assign(std::string& field, const Variant& value)
{
    field = convert::toText(value);
}
void assign(std::int16_t& field, const Variant& value)
{
    field = convert::toInteger(value);
}
void assign(std::int32_t& field, const Variant& value)
{
    field = convert::toLong(value);
}
void assign(Boolean& field, const Variant& value)
{
    field = convert::toBoolean(value);
}
void assign(Date& field, const Variant& value)
{
    field = convert::toDate(value);
}

/// The declared type of a field, as it is reported to callers that bind late.
template <class Value>
constexpr Type typeOf()
{
    if constexpr (std::is_same_v<Value, ado::ConnectionRef>) {
        return Type::Connection;
    } else if constexpr (std::is_same_v<Value, ObjectRef>) {
        return Type::Object;
    } else if constexpr (std::is_same_v<Value, std::string>) {
        return Type::String;
    } else if constexpr (std::is_same_v<Value, std::int16_t>) {
        return Type::Integer;
    } else if constexpr (std::is_same_v<Value, std::int32_t>) {
        return Type::Long;
    } else if constexpr (std::is_same_v<Value, Boolean>) {
        return Type::Boolean;
    } else {
        static_assert(std::is_same_v<Value, Date>);
        return Type::Date;
    }
}

/// Makes the row of a field: name, type, reader and writer. All are known at compile time.
template <auto member>
constexpr TmkVarField field(std::string_view name)
{
    // The record is not evaluated: only the type of its member is needed.
    using Value = std::remove_cvref_t<decltype(TmkVar{}.*member)>;
    return {name, typeOf<Value>(), [](const TmkVar& record) { return Variant{record.*member}; },
            [](TmkVar& record, const Variant& value) { assign(record.*member, value); }};
}

// In the order of the record, which the assertions below compare with the layout.
constexpr TmkVarField fields[] = {
    field<&TmkVar::db_ADO>("db_ADO"),
    field<&TmkVar::objReserved>("objReserved"),
    field<&TmkVar::strConnection>("strConnection"),
    field<&TmkVar::strLanguage>("strLanguage"),
    field<&TmkVar::strReserved1>("strReserved1"),
    field<&TmkVar::strReserved2>("strReserved2"),
    field<&TmkVar::strReserved3>("strReserved3"),
    field<&TmkVar::strDateFormat>("strDateFormat"),
    field<&TmkVar::strReserved4>("strReserved4"),
    field<&TmkVar::strReserved5>("strReserved5"),
    field<&TmkVar::strReserved6>("strReserved6"),
    field<&TmkVar::strReserved7>("strReserved7"),
    field<&TmkVar::ID_User>("ID_User"),
    field<&TmkVar::ID_Access_Levels>("ID_Access_Levels"),
    field<&TmkVar::bolLan>("bolLan"),
    field<&TmkVar::DateFrom>("DateFrom"),
    field<&TmkVar::DateTo>("DateTo"),
    field<&TmkVar::DateFromDefault>("DateFromDefault"),
    field<&TmkVar::intDateToDays>("intDateToDays"),
    field<&TmkVar::strID_Access_Levels>("strID_Access_Levels"),
    field<&TmkVar::strEmptyText>("strEmptyText"),
    field<&TmkVar::strCustomer>("strCustomer"),
    field<&TmkVar::lngReserved1>("lngReserved1"),
    field<&TmkVar::strReserved8>("strReserved8"),
    field<&TmkVar::strReserved9>("strReserved9"),
    field<&TmkVar::bolOracle>("bolOracle"),
};

// Required by the contract: the sibling libraries share the record, so the order of its fields is fixed.
static_assert(std::is_standard_layout_v<TmkVar>);
constexpr std::size_t offsets[] = {
    offsetof(TmkVar, db_ADO),        offsetof(TmkVar, objReserved),
    offsetof(TmkVar, strConnection), offsetof(TmkVar, strLanguage),
    offsetof(TmkVar, strReserved1),  offsetof(TmkVar, strReserved2),
    offsetof(TmkVar, strReserved3),  offsetof(TmkVar, strDateFormat),
    offsetof(TmkVar, strReserved4),  offsetof(TmkVar, strReserved5),
    offsetof(TmkVar, strReserved6),  offsetof(TmkVar, strReserved7),
    offsetof(TmkVar, ID_User),       offsetof(TmkVar, ID_Access_Levels),
    offsetof(TmkVar, bolLan),        offsetof(TmkVar, DateFrom),
    offsetof(TmkVar, DateTo),        offsetof(TmkVar, DateFromDefault),
    offsetof(TmkVar, intDateToDays), offsetof(TmkVar, strID_Access_Levels),
    offsetof(TmkVar, strEmptyText),  offsetof(TmkVar, strCustomer),
    offsetof(TmkVar, lngReserved1),  offsetof(TmkVar, strReserved8),
    offsetof(TmkVar, strReserved9),  offsetof(TmkVar, bolOracle),
};
static_assert(std::size(offsets) == std::size(fields));
static_assert(offsets[0] == 0);
// Offsets that do not increase would mean that a row is missing, doubled or moved.
static_assert(std::ranges::adjacent_find(offsets, std::greater_equal<>{}) == std::end(offsets));

} // namespace

std::span<const TmkVarField> tmkVarFields() noexcept
{
    return fields;
}

const TmkVarField* findTmkVarField(std::string_view name) noexcept
{
    return findByName(tmkVarFields(), name);
}

} // namespace tamarok
