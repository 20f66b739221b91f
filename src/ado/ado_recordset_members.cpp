
#include "ado_failure.h"

#include "tamarok/ado.h"
#include "tamarok/convert.h"
#include "tamarok/members.h"
#include "tamarok/spelling.h"

// The recordset by late binding.

namespace tamarok::ado {

namespace {

using ReadArguments = std::span<const Variant>;
using CallArguments = std::span<Variant>;

/// Returns a field by name or ordinal.
Variant fieldOf(const FieldCollection& fields, const Variant& key)
{
    return key.isString() ? fields.share(key.asString()) : fields.share(convert::toLong(key));
}

/// The collection `Fields`.
class FieldsObject final : public Object {
public:
    // A copy of the collection shares its fields, and so outlives the recordset.
    explicit FieldsObject(FieldCollection fields) : fields_{std::move(fields)} {}

    std::string_view typeName() const override { return "Fields"; }
    Variant get(std::string_view name, ReadArguments arguments) const override
    {
        if (text::equalsNoCase(name, "Count")) return fields_.Count();
        if (!text::equalsNoCase(name, "Item")) noSuchMember(name);
        checkArgumentCount(arguments.size(), 1, 1, "Item", adodb);
        return fieldOf(fields_, arguments[0]);
    }
    Variant call(std::string_view name, CallArguments arguments) override { return get(name, arguments); }
    std::vector<std::string_view> memberNames() const override { return {"Count", "Item"}; }

private:
    FieldCollection fields_;
};

Variant readFields(const Recordset& recordset, ReadArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 1, "Fields", adodb);
    if (!arguments.empty()) return fieldOf(recordset.Fields(), arguments[0]);
    return std::make_shared<FieldsObject>(recordset.Fields());
}

/// Returns the connection of an argument; none for a missing one, which Open reports as Error 91.
ConnectionRef connectionOf(const Variant* value)
{
    if (!value) return nullptr;
    auto connection = std::dynamic_pointer_cast<Connection>(value->asObject());
    if (!connection) fail(errors::typeMismatch, recordsetSource, "Open: the second argument is no connection.");
    return connection;
}

/// Open(source, connection, [cursor type], [lock type], [options]).
Variant callOpen(Recordset& recordset, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 2, 5, "Open", adodb);
    // -1 stands for "unspecified" in all three arguments.
    const auto number = [&](std::size_t index, std::int32_t otherwise) {
        const Variant* value = optionalArgument(arguments, index);
        return value ? convert::toLong(*value) : otherwise;
    };
    recordset.Open(convert::toText(arguments[0]), connectionOf(optionalArgument(arguments, 1)),
                   static_cast<CursorType>(number(2, -1)), static_cast<LockType>(number(3, -1)), number(4, -1));
    return {};
}

Variant callMove(Recordset& recordset, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 1, "Move", adodb);
    recordset.Move(convert::toLongLong(arguments[0]));
    return {};
}

Variant callGetRows(Recordset& recordset, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 1, "GetRows", adodb);
    const Variant* rows = optionalArgument(arguments, 0);
    return recordset.GetRows(rows ? convert::toLongLong(*rows) : -1);
}

/// Find(criterion, [rows to skip], [direction]).
Variant callFind(Recordset& recordset, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 3, "Find", adodb);
    const Variant* skip = optionalArgument(arguments, 1);
    const Variant* direction = optionalArgument(arguments, 2);
    // The sign alone decides: 1 searches forward, -1 backward.
    const bool backward = direction && convert::toLong(*direction) < 0;
    recordset.Find(convert::toText(arguments[0]), skip ? convert::toLongLong(*skip) : 0,
                   backward ? SearchDirection::Backward : SearchDirection::Forward);
    return {};
}

Variant callClone(Recordset& recordset, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "Clone", adodb);
    return recordset.Clone();
}

Variant callDelete(Recordset& recordset, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 1, "Delete", adodb);
    const Variant* affect = optionalArgument(arguments, 0);
    recordset.Delete(affect ? convert::toLong(*affect) : 1);
    return {};
}

/// A method without arguments and result.
template <void (Recordset::*operation)()>
Variant plain(Recordset& recordset, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "The method", adodb);
    (recordset.*operation)();
    return {};
}

// The members that loops use come first: the look-up is linear.
constexpr Member<Recordset> members[]{
    {.name = "EOF", .get = [](const Recordset& r, ReadArguments) -> Variant { return r.AtEOF(); }},
    {.name = "Fields", .get = readFields},
    {.name = "MoveNext", .call = plain<&Recordset::MoveNext>},
    {.name = "BOF", .get = [](const Recordset& r, ReadArguments) -> Variant { return r.AtBOF(); }},
    {.name = "State",
     .get = [](const Recordset& r, ReadArguments) -> Variant { return static_cast<std::int32_t>(r.State()); }},
    {.name = "Open", .call = callOpen},
    {.name = "Close", .call = plain<&Recordset::Close>},
    {.name = "MoveFirst", .call = plain<&Recordset::MoveFirst>},
    {.name = "MoveLast", .call = plain<&Recordset::MoveLast>},
    {.name = "MovePrevious", .call = plain<&Recordset::MovePrevious>},
    {.name = "Move", .call = callMove},
    {.name = "GetRows", .call = callGetRows},
    {.name = "Find", .call = callFind},
    {.name = "Clone", .call = callClone},
    {.name = "Bookmark",
     .get = [](const Recordset& r, ReadArguments) { return r.Bookmark(); },
     .put = [](Recordset& r, const Variant& mark) { r.Bookmark(mark); }},
    {.name = "AbsolutePosition",
     .get = [](const Recordset& r, ReadArguments) -> Variant { return r.AbsolutePosition(); },
     .put = [](Recordset& r, const Variant& position) { r.AbsolutePosition(convert::toLongLong(position)); }},
    {.name = "RecordCount", .get = [](const Recordset& r, ReadArguments) -> Variant { return r.RecordCount(); }},
    {.name = "AddNew", .call = plain<&Recordset::AddNew>},
    {.name = "Update", .call = plain<&Recordset::Update>},
    {.name = "CancelUpdate", .call = plain<&Recordset::CancelUpdate>},
    {.name = "Delete", .call = callDelete},
};

constexpr std::span<const Member<Recordset>> table{members};

} // namespace

std::string_view Recordset::typeName() const
{
    return "Recordset";
}

Variant Recordset::get(std::string_view name, std::span<const Variant> args) const
{
    if (const auto getter = findGetter(table, name)) return getter(*this, args);
    noSuchMember(name);
}

void Recordset::put(std::string_view name, const Variant& value)
{
    if (const auto setter = findSetter(table, name)) return setter(*this, value);
    noSuchMember(name);
}

Variant Recordset::call(std::string_view name, std::span<Variant> args)
{
    if (const auto found = findMethod(table, name)) return found(*this, args);
    return get(name, args);
}

std::vector<std::string_view> Recordset::memberNames() const
{
    return spelling::namesOf(table);
}

} // namespace tamarok::ado
