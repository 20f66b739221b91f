#include "settlement_insert.h"

#include <array>
#include <string>
#include <vector>

#include "row_fields.h"

namespace tamarok::database {
namespace {

using ado::DataType;

/// The columns of one version in the order of `versionColumns`.
enum Column : std::size_t { Price, Quantity, Name, Partner, InEuro, GuideFigure, Contract, Unit };

/// Names without the prefix "R_" or "A1_" to "A8_".
constexpr std::array<BulkInsert::Column, 8> versionColumns{{
    {"PREIS", DataType::Double},
    {"MENGE", DataType::Double},
    {"NAME", DataType::VarWChar},
    {"KUNDE", DataType::Integer},
    {"EURO", DataType::SmallInt},
    {"MSZ", DataType::Double},
    {"VERTRAG", DataType::VarWChar},
    {"ID_WARENEINHEIT", DataType::Integer},
}};

/// Place of a version's column in the statement. ID_LOG is at 0.
constexpr std::size_t placeOf(std::size_t version, Column column)
{
    return 1 + version * versionColumns.size() + column;
}

BulkInsert insertStatement(ado::Connection& connection)
{
    std::vector<std::string> names;
    for (const std::string_view version : profile::versions)
        for (const BulkInsert::Column& column : versionColumns)
            names.push_back(std::string{version} + "_" + std::string{column.name});
    std::vector<BulkInsert::Column> columns{{"ID_LOG", DataType::Integer}};
    for (std::size_t i = 0; i < names.size(); ++i)
        columns.push_back({names[i], versionColumns[i % versionColumns.size()].type});
    return BulkInsert{connection, "LOGS_RECH", columns};
}

} // namespace

SettlementInsert::SettlementInsert(ado::Connection& connection) : statement_{insertStatement(connection)} {}

void SettlementInsert::begin(const Delivery& delivery)
{
    statement_.clear();
    for (const Document& document : delivery.documents) {
        const auto set = [&](Column column, Variant value) {
            statement_[placeOf(document.version, column)] = std::move(value);
        };
        set(Name, document.name);
        set(Partner, document.partner);
        set(InEuro, static_cast<std::int16_t>(document.isInEuro ? 1 : 0));
        set(GuideFigure, orNull(document.guideFigure));
        set(Contract, textOrNull(document.contract));
        set(Unit, document.unit);
    }
}

void SettlementInsert::insert(const Delivery& delivery, const LogLine& line, std::int32_t log)
{
    statement_[0] = log;
    for (const Document& document : delivery.documents) {
        statement_[placeOf(document.version, Price)] = line.price[document.version];
        statement_[placeOf(document.version, Quantity)] = line.settledQuantity[document.version];
    }
    statement_.insert();
}

} // namespace tamarok::database
