#include "database/table_loader.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "database/bulk_insert.h"
#include "database/master_keys.h"
#include "database/resources.h"
#include "tamarok_database/labels.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

constexpr std::array<std::string_view, 3> languages{"GERMAN", "ENGLISH", "FRENCH"};

ado::DataType dataType(CellType type)
{
    switch (type) {
    case CellType::Text: return ado::DataType::VarWChar;
    case CellType::Whole: return ado::DataType::Integer;
    case CellType::Number: return ado::DataType::Double;
    case CellType::Date: return ado::DataType::Date;
    case CellType::Flag: return ado::DataType::Boolean;
    }
    return ado::DataType::VarWChar;
}

/// The columns of STRINGS that the program fills; CUSTOM_ stays the customer's.
std::vector<BulkInsert::Column> textColumns(const std::vector<std::string>& names)
{
    std::vector<BulkInsert::Column> columns{{"ID_STRING", ado::DataType::Integer}};
    for (const std::string& name : names)
        columns.push_back({name, ado::DataType::VarWChar});
    return columns;
}

/// Inserts the texts of one file: the text itself, a short form where the file has one, and the long
/// form, which is the text where there is no other.
void loadTextFile(BulkInsert& texts, std::string_view file, std::string_view idColumn, std::int32_t firstId)
{
    const TsvTable table{file, resource("texts", file).text};
    const std::size_t id = table.column(idColumn);
    const bool hasShort = table.columns().size() > languages.size() + 1;
    for (std::size_t row = 0; row < table.rows(); ++row) {
        texts[0] = firstId + table.whole(row, id);
        for (std::size_t i = 0; i < languages.size(); ++i) {
            const Variant text = table.value(row, table.column(languages[i]));
            texts[1 + 3 * i] = text;
            texts[2 + 3 * i] =
                hasShort ? table.value(row, table.column("SHORT_" + std::string{languages[i]})) : Variant{Null{}};
            texts[3 + 3 * i] = text;
        }
        texts.insert();
    }
}

} // namespace

void loadTable(ado::Connection& connection, std::string_view table, const TsvTable& data)
{
    std::vector<BulkInsert::Column> columns;
    for (const TsvTable::Column& column : data.columns())
        columns.push_back({column.name, dataType(column.type)});
    BulkInsert rows{connection, table, columns};
    for (std::size_t row = 0; row < data.rows(); ++row) {
        for (std::size_t column = 0; column < columns.size(); ++column)
            rows[column] = data.value(row, column);
        rows.insert();
    }
}

void loadTexts(ado::Connection& connection)
{
    std::vector<std::string> names;
    for (const std::string_view language : languages)
        for (const std::string_view prefix : {"", "SHORT_", "LONG_"})
            names.push_back(std::string{prefix} + std::string{language});
    BulkInsert texts{connection, "STRINGS", textColumns(names)};
    loadTextFile(texts, "strings.tsv", "ID_STRING", 0);
    loadTextFile(texts, "log_columns.tsv", "ID", firstColumnLabel);
}

void loadMasterData(ado::Connection& connection)
{
    for (const Resource& file : resources("masterdata")) {
        try {
            loadTable(connection, masterTableName(file.name), TsvTable{file.name, file.text});
        } catch (Error& error) {
            throw error.addContext("Master data " + std::string{file.name});
        }
    }
}

} // namespace tamarok::database
