#include "table_loader.h"

#include <cstddef>
#include <string>
#include <vector>

#include "bulk_insert.h"
#include "languages.h"
#include "master_tables.h"
#include "resources.h"
#include "table_parts.h"
#include "tamarok_database/labels.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

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

/// INSERT into STRINGS: the number, then text, short form and long form of each language. The columns CUSTOM_
/// stay Null: they hold the customer's own wording.
BulkInsert insertTexts(ado::Connection& connection)
{
    std::vector<std::string> names;
    for (const std::string_view language : languages)
        for (const std::string_view prefix : {"", "SHORT_", "LONG_"})
            names.push_back(std::string{prefix} + std::string{language});
    std::vector<BulkInsert::Column> columns{{"ID_STRING", ado::DataType::Integer}};
    for (const std::string& name : names)
        columns.push_back({name, ado::DataType::VarWChar});
    return BulkInsert{connection, "STRINGS", columns};
}

/// Inserts the texts of one file. The long form is the text itself.
/// @param idColumn  column of the file that is added to `firstId` to give ID_STRING
void loadTextFile(BulkInsert& texts, const Resource& file, std::string_view idColumn, std::int32_t firstId)
{
    const TsvTable table{file.name, file.text};
    const std::size_t id = table.column(idColumn);
    const bool hasShortForms = table.columns().size() > languages.size() + 1;
    for (std::size_t row = 0; row < table.rows(); ++row) {
        std::size_t column = 0;
        texts[column++] = firstId + table.whole(row, id);
        for (const std::string_view language : languages) {
            const Variant text = table.value(row, table.column(language));
            const std::string shortColumn = "SHORT_" + std::string{language};
            texts[column++] = text;
            texts[column++] = hasShortForms ? table.value(row, table.column(shortColumn)) : Variant{Null{}};
            texts[column++] = text;
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
    BulkInsert texts = insertTexts(connection);
    loadTextFile(texts, resource("texts", "strings.tsv"), "ID_STRING", 0);
    loadTextFile(texts, resource("texts", "log_columns.tsv"), "ID", firstColumnLabel);
    for (const Resource& file : resources("columns")) {
        try {
            loadTextFile(texts, file, "ID_STRING", 0);
        } catch (Error& error) {
            throw error.addContext("Labels " + std::string{file.name});
        }
    }
}

void loadMasterData(ado::Connection& connection)
{
    for (const Resource& file : resources("master")) {
        try {
            loadTable(connection, masterTableName(file.name), TsvTable{file.name, file.text});
        } catch (Error& error) {
            throw error.addContext("Master data " + std::string{file.name});
        }
    }
}

void loadSelectionKeys(ado::Connection& connection)
{
    for (const Resource& file : resources("selections")) {
        for (const TablePart& part : tableParts(file.name, file.text)) {
            try {
                loadTable(connection, part.table, TsvTable{part.table, part.text});
            } catch (Error& error) {
                throw error.addContext(std::string{file.name} + ", table " + std::string{part.table});
            }
        }
    }
}

} // namespace tamarok::database
