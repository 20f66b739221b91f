#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "bulk_insert.h"

namespace tamarok::database {

/// A column with the member of a record that holds its value. Null stands for a whole number 0 (such as a key that
/// refers to no row), an empty text, and the date 0.
template <class Record>
struct RecordField {
    using Member = std::variant<std::int32_t Record::*, std::optional<double> Record::*, std::string Record::*,
                                Date Record::*, bool Record::*>;
    std::string_view name;
    Member member;
};

namespace detail {

constexpr ado::DataType typeOf(std::int32_t)
{
    return ado::DataType::Integer;
}
constexpr ado::DataType typeOf(const std::optional<double>&)
{
    return ado::DataType::Double;
}
inline ado::DataType typeOf(const std::string&)
{
    return ado::DataType::VarWChar;
}
constexpr ado::DataType typeOf(Date)
{
    return ado::DataType::Date;
}
constexpr ado::DataType typeOf(bool)
{
    return ado::DataType::Boolean;
}

inline Variant valueOf(std::int32_t value)
{
    return value == 0 ? Variant{Null{}} : Variant{value};
}
inline Variant valueOf(const std::optional<double>& value)
{
    return value ? Variant{*value} : Variant{Null{}};
}
inline Variant valueOf(const std::string& value)
{
    return value.empty() ? Variant{Null{}} : Variant{value};
}
inline Variant valueOf(Date value)
{
    return value == Date{} ? Variant{Null{}} : Variant{value};
}
inline Variant valueOf(bool value)
{
    return Variant{value};
}

} // namespace detail

/// An INSERT statement into one table whose values are the members of a record.
template <class Record>
class RecordInsert {
public:
    using Fields = std::span<const RecordField<Record>>;

    /// @param connection  must outlive the object, as must `fields`
    RecordInsert(ado::Connection& connection, std::string_view table, Fields fields) :
        fields_{fields}, statement_{connection, table, columnsOf(fields)}
    {}

    /// Inserts the row of `record`. Errors: provider failures.
    void insert(const Record& record)
    {
        for (std::size_t column = 0; column < fields_.size(); ++column)
            statement_[column] =
                std::visit([&](auto member) { return detail::valueOf(record.*member); }, fields_[column].member);
        statement_.insert();
    }

private:
    static std::vector<BulkInsert::Column> columnsOf(Fields fields)
    {
        const Record record;
        std::vector<BulkInsert::Column> columns;
        for (const RecordField<Record>& field : fields)
            columns.push_back(
                {field.name, std::visit([&](auto member) { return detail::typeOf(record.*member); }, field.member)});
        return columns;
    }

    Fields fields_;
    BulkInsert statement_;
};

} // namespace tamarok::database
