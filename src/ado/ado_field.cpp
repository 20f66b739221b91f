#include <utility>

#include "recordset_state.h"

#include "tamarok/convert.h"
#include "tamarok/members.h"
#include "tamarok/spelling.h"

// The field and its late binding. A field holds no value: it asks the shared state of its recordset.

namespace tamarok::ado {

Field::Field(std::shared_ptr<Source> source, std::size_t ordinal) : source_{std::move(source)}, ordinal_{ordinal} {}

Field::~Field() = default;

const std::string& Field::Name() const
{
    return source_->column(ordinal_).name;
}

Variant Field::Value() const
{
    return source_->value(ordinal_);
}

void Field::Value(const Variant& value)
{
    source_->setValue(ordinal_, value);
}

DataType Field::Type() const
{
    return source_->column(ordinal_).type;
}

std::int32_t Field::DefinedSize() const
{
    return source_->column(ordinal_).definedSize;
}

// The name in the table; it differs from Name where the statement gives an alias, and is empty for an expression.
const std::string& Field::BASECOLUMNNAME() const
{
    return source_->columnWithBase(ordinal_).baseColumn;
}

const std::string& Field::BASETABLENAME() const
{
    return source_->columnWithBase(ordinal_).baseTable;
}

// Late binding of the field itself, of its properties and of their collection.
namespace {

using ReadArguments = std::span<const Variant>;

/// One provider property of a field, such as `Properties("BASECOLUMNNAME")`.
class FieldProperty final : public Object {
public:
    FieldProperty(std::string_view name, std::string value) : name_{name}, value_{std::move(value)} {}

    std::string_view typeName() const override { return "Property"; }
    Variant defaultValue() const override { return value_; }
    bool hasDefaultValue() const noexcept override { return true; }
    Variant get(std::string_view member, ReadArguments) const override
    {
        if (text::equalsNoCase(member, "Value")) return value_;
        if (text::equalsNoCase(member, "Name")) return name_;
        noSuchMember(member);
    }
    std::vector<std::string_view> memberNames() const override { return {"Value", "Name"}; }

private:
    std::string_view name_;
    std::string value_;
};

struct PropertyRow {
    std::string_view name;
    const std::string& (Field::*read)() const;
};

constexpr PropertyRow propertyRows[]{
    {"BASECOLUMNNAME", &Field::BASECOLUMNNAME},
    {"BASETABLENAME", &Field::BASETABLENAME},
};

/// The collection `Properties`.
// Both properties belong to every field; the rows above give their order.
class FieldProperties final : public Object {
public:
    // The values are copied, so that the collection stays readable after the recordset is closed.
    explicit FieldProperties(const Field& field)
    {
        for (const PropertyRow& row : propertyRows)
            items_.push_back(std::make_shared<FieldProperty>(row.name, (field.*row.read)()));
    }

    Variant item(const Variant& key) const
    {
        std::size_t index = 0;
        for (; index < items_.size(); ++index) {
            // A text is a name and anything else an ordinal, as in the collection of fields.
            if (key.isString() ? text::equalsNoCase(propertyRows[index].name, key.asString())
                               : static_cast<std::int64_t>(index) == convert::toLongLong(key))
                return items_[index];
        }
        const std::string name = convert::toText(key);
        fail(errors::itemNotFound, fieldSource,
             "A field has no property \"" + name + '"' +
                 spelling::suggestionOrPoint(name, spelling::namesOf(propertyRows)));
    }

    std::string_view typeName() const override { return "Properties"; }
    Variant get(std::string_view member, ReadArguments arguments) const override
    {
        if (text::equalsNoCase(member, "Count")) return static_cast<std::int32_t>(items_.size());
        if (!text::equalsNoCase(member, "Item")) noSuchMember(member);
        checkArgumentCount(arguments.size(), 1, 1, "Item", adodb);
        return item(arguments[0]);
    }
    Variant call(std::string_view member, std::span<Variant> arguments) override { return get(member, arguments); }
    std::vector<std::string_view> memberNames() const override { return {"Count", "Item"}; }

private:
    std::vector<std::shared_ptr<FieldProperty>> items_;
};

/// Answers `Properties` with the collection, and `Properties(key)` with one of its items.
Variant readProperties(const Field& field, ReadArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 1, "Properties", adodb);
    const auto properties = std::make_shared<FieldProperties>(field);
    return arguments.empty() ? Variant{properties} : properties->item(arguments[0]);
}

// Value comes first: the look-up is linear, and loops read hardly anything else.
constexpr Member<Field> members[]{
    {.name = "Value",
     .get = [](const Field& f, ReadArguments) { return f.Value(); },
     .put = [](Field& f, const Variant& value) { f.Value(value); }},
    {.name = "Name", .get = [](const Field& f, ReadArguments) -> Variant { return f.Name(); }},
    {.name = "Type",
     .get = [](const Field& f, ReadArguments) -> Variant { return static_cast<std::int32_t>(f.Type()); }},
    {.name = "DefinedSize", .get = [](const Field& f, ReadArguments) -> Variant { return f.DefinedSize(); }},
    {.name = "BASECOLUMNNAME", .get = [](const Field& f, ReadArguments) -> Variant { return f.BASECOLUMNNAME(); }},
    {.name = "BASETABLENAME", .get = [](const Field& f, ReadArguments) -> Variant { return f.BASETABLENAME(); }},
    {.name = "Properties", .get = readProperties},
};

constexpr std::span<const Member<Field>> table{members};

} // namespace

std::string_view Field::typeName() const
{
    return "Field";
}

Variant Field::get(std::string_view name, std::span<const Variant> args) const
{
    if (const auto getter = findGetter(table, name)) return getter(*this, args);
    noSuchMember(name);
}

void Field::put(std::string_view name, const Variant& value)
{
    if (const auto setter = findSetter(table, name)) return setter(*this, value);
    noSuchMember(name);
}

Variant Field::call(std::string_view name, std::span<Variant> args)
{
    return get(name, args);
}

std::vector<std::string_view> Field::memberNames() const
{
    return spelling::namesOf(table);
}

// Makes a field stand for its value wherever a value is expected.
Variant Field::defaultValue() const
{
    return source_->value(ordinal_);
}

} // namespace tamarok::ado
