#include "column_types.h"

#include <array>
#include <utility>

namespace tamarok::embedded {

namespace {

using ado::DataType;
using tsql::TypeKind;

/// Sizes that the recordset model reports for texts without a limit: 2^31 - 1 bytes, in characters of one byte and of
/// two.
constexpr std::int32_t longText = 2147483647;
constexpr std::int32_t longWideText = 1073741823;

/// How the recordset model describes a type of the server; size 0 means the declared length.
struct TypeRow {
    TypeKind kind;
    DataType type;
    std::int32_t size;
    Reading reading;
    std::string_view conversion; ///< function that converts a value for storage, empty for the texts
};

constexpr std::array typeRows{
    TypeRow{TypeKind::Unknown, DataType::VarWChar, 4000, Reading::ByStorage, ""},
    TypeRow{TypeKind::Null, DataType::Integer, 4, Reading::ByStorage, ""},
    TypeRow{TypeKind::Bit, DataType::Boolean, 2, Reading::Boolean, "tm_bit"},
    TypeRow{TypeKind::TinyInt, DataType::UnsignedTinyInt, 1, Reading::Integer, "tm_tinyint"},
    TypeRow{TypeKind::SmallInt, DataType::SmallInt, 2, Reading::Integer, "tm_smallint"},
    TypeRow{TypeKind::Int, DataType::Integer, 4, Reading::Long, "tm_int"},
    TypeRow{TypeKind::BigInt, DataType::BigInt, 8, Reading::LongLong, "tm_bigint"},
    TypeRow{TypeKind::Decimal, DataType::Numeric, 19, Reading::Double, "tm_decimal"},
    TypeRow{TypeKind::SmallMoney, DataType::Currency, 8, Reading::Double, "tm_smallmoney"},
    TypeRow{TypeKind::Money, DataType::Currency, 8, Reading::Double, "tm_money"},
    TypeRow{TypeKind::Real, DataType::Single, 4, Reading::Double, "tm_real"},
    TypeRow{TypeKind::Float, DataType::Double, 8, Reading::Double, "tm_float"},
    TypeRow{TypeKind::Char, DataType::Char, 0, Reading::Text, ""},
    TypeRow{TypeKind::VarChar, DataType::VarChar, 0, Reading::Text, ""},
    TypeRow{TypeKind::NChar, DataType::WChar, 0, Reading::Text, ""},
    TypeRow{TypeKind::NVarChar, DataType::VarWChar, 0, Reading::Text, ""},
    TypeRow{TypeKind::Text, DataType::LongVarChar, longText, Reading::Text, ""},
    TypeRow{TypeKind::NText, DataType::LongVarWChar, longWideText, Reading::Text, ""},
    TypeRow{TypeKind::Date, DataType::DBDate, 6, Reading::Date, "tm_date"},
    TypeRow{TypeKind::SmallDateTime, DataType::DBTimeStamp, 16, Reading::Date, "tm_smalldatetime"},
    TypeRow{TypeKind::DateTime, DataType::DBTimeStamp, 16, Reading::Date, "tm_datetime"},
    TypeRow{TypeKind::DateTime2, DataType::DBTimeStamp, 16, Reading::Date, "tm_datetime"},
    TypeRow{TypeKind::Time, DataType::DBTime, 6, Reading::TimeOfDay, "tm_time"},
    TypeRow{TypeKind::Binary, DataType::VarBinary, 0, Reading::Binary, ""},
    TypeRow{TypeKind::UniqueIdentifier, DataType::GUID, 16, Reading::Text, ""},
};

constexpr bool inOrder()
{
    for (std::size_t i = 0; i < typeRows.size(); ++i) {
        if (static_cast<std::size_t>(typeRows[i].kind) != i) {
            return false;
        }
    }
    return true;
}
static_assert(inOrder(), "typeRows is indexed by TypeKind");

const TypeRow& rowOf(TypeKind kind)
{
    return typeRows.at(static_cast<std::size_t>(kind));
}

/// A text without limit counts as the long type.
DataType longTypeOf(DataType type)
{
    return type == DataType::VarChar || type == DataType::Char ? DataType::LongVarChar : DataType::LongVarWChar;
}

/// Fills in type and size. A type of variable length without a limit is described as the long type of its kind.
void describe(const tsql::Type& type, ado::ColumnInfo& info)
{
    const TypeRow& row = rowOf(type.kind);
    info.type = row.type;
    info.definedSize = row.size != 0 ? row.size : type.length;
    if (row.size == 0 && type.length < 0) {
        if (type.kind == TypeKind::Binary) {
            info.type = DataType::LongVarBinary;
            info.definedSize = longText;
        } else {
            info.type = longTypeOf(row.type);
            info.definedSize = info.type == DataType::LongVarChar ? longText : longWideText;
        }
    }
}

} // namespace

ResultLayout layoutOf(const std::vector<ResultColumn>& columns)
{
    ResultLayout layout;
    layout.columns.reserve(columns.size());
    layout.readings.reserve(columns.size());
    for (const ResultColumn& column : columns) {
        ado::ColumnInfo info;
        info.name = column.name;
        info.baseTable = column.baseTable;
        info.baseColumn = column.baseColumn;
        describe(column.type, info);
        layout.columns.push_back(std::move(info));
        layout.readings.push_back(rowOf(column.type.kind).reading);
    }
    return layout;
}

std::string quoted(std::string_view name)
{
    std::string text = "\"";
    for (const char letter : name) {
        text.append(letter == '"' ? 2 : 1, letter);
    }
    text.push_back('"');
    return text;
}

/// Editable cursors compose their statements with it, so that a changed value is checked and converted as by an UPDATE
/// of a batch.
std::string storageExpression(const tsql::Type& type)
{
    const std::string length = std::to_string(type.length);
    switch (type.kind) {
    case TypeKind::VarChar:
    case TypeKind::NVarChar: return "tm_store_text(?," + length + ")";
    case TypeKind::Char:
    case TypeKind::NChar: return "tm_nchar(tm_store_text(?," + length + ")," + length + ")";
    case TypeKind::Text:
    case TypeKind::NText:
    case TypeKind::UniqueIdentifier: return "tm_store_text(?,-1)";
    case TypeKind::Decimal:
        return "tm_decimal(?," + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
    default: break;
    }
    const std::string_view conversion = rowOf(type.kind).conversion;
    return conversion.empty() ? "?" : std::string{conversion} + "(?)";
}

} // namespace tamarok::embedded
