#include "embedded/translation/test_database.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sqlite3.h>
#include <stdexcept>

#include "tamarok_tsql/names.h"

namespace tamarok::embedded::translation {

void TestDatabase::Close::operator()(sqlite3* database) const
{
    sqlite3_close(database);
}

TestDatabase::TestDatabase()
{
    sqlite3* opened = nullptr;
    const int result = sqlite3_open(":memory:", &opened);
    database_.reset(opened);
    if (result != SQLITE_OK) throw std::runtime_error("sqlite3_open failed");
    registerFunctions(database_.get(), context_);
    run(readText("schema.sql"));
}

const Table* TestDatabase::table(std::string_view name) const
{
    const auto found = std::ranges::find_if(tables_, [&](const Table& table) { return sameName(table.name, name); });
    return found == tables_.end() ? nullptr : &*found;
}

std::vector<std::string> TestDatabase::runStep(const std::string& text)
{
    std::vector<std::string> rows;
    const char* rest = text.c_str();
    while (*rest != '\0') {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database_.get(), rest, -1, &statement, &rest) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(database_.get()));
        }
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(statement, sqlite3_finalize);
        int result = SQLITE_DONE;
        while (statement != nullptr && (result = sqlite3_step(statement)) == SQLITE_ROW) {
            std::string row;
            for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                const bool null = sqlite3_column_type(statement, i) == SQLITE_NULL;
                const auto* bytes = null ? nullptr : sqlite3_column_text(statement, i);
                if (i != 0) row += "|";
                row += null ? "NULL" : std::string(bytes, bytes + sqlite3_column_bytes(statement, i));
            }
            rows.push_back(row);
        }
        if (result != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(database_.get()));
    }
    return rows;
}

std::string TestDatabase::prepareError(const std::string& text) const
{
    const char* rest = text.c_str();
    while (*rest != '\0') {
        sqlite3_stmt* statement = nullptr;
        const int result = sqlite3_prepare_v2(database_.get(), rest, -1, &statement, &rest);
        sqlite3_finalize(statement);
        if (result != SQLITE_OK) return sqlite3_errmsg(database_.get());
    }
    return {};
}

std::vector<std::string> TestDatabase::run(std::string_view text)
{
    std::vector<std::string> rows;
    const ParsedBatch batch(text);
    for (std::size_t i = 0; i < batch.steps().size();) {
        const Step step = translateStep(batch, i, *this, DateOrder::Dmy);
        const std::vector<std::string> given = runStep(step.text);
        ++i;
        if (step.kind == Step::Kind::Query) rows.insert(rows.end(), given.begin(), given.end());
        if (step.kind == Step::Kind::Define) readSchema();
        const bool passes = step.kind == Step::Kind::JumpUnless && given.size() == 1 && given[0] == "1";
        if (step.kind == Step::Kind::Jump || (step.kind == Step::Kind::JumpUnless && !passes)) i = step.jump;
    }
    return rows;
}

void TestDatabase::readSchema()
{
    tables_.clear();
    for (const std::string schema : {"main", "temp"}) {
        const std::string master = schema == "main" ? "sqlite_schema" : "sqlite_temp_schema";
        for (const std::string& name :
             runStep("SELECT name FROM " + master + " WHERE type IN ('table', 'view') AND name NOT LIKE 'sqlite_%'")) {
            readTable(schema, name);
        }
    }
}

void TestDatabase::readTable(const std::string& schema, const std::string& name)
{
    Table& table = tables_.emplace_back();
    table.name = name;
    for (const std::string& row :
         runStep("SELECT name || '|' || type || '|' || (pk = 1 AND type = 'INTEGER') FROM pragma_table_xinfo('" + name +
                 "', '" + schema + "')")) {
        const std::size_t first = row.find('|');
        const std::size_t last = row.rfind('|');
        table.columns.push_back({row.substr(0, first),
                                 parseDeclaredType(std::string_view(row).substr(first + 1, last - first - 1)),
                                 row.back() == '1'});
    }
}

std::string readText(const std::string& file)
{
    std::ifstream stream(std::string(TAMAROK_TRANSLATION_CASES) + "/" + file);
    if (!stream) throw std::runtime_error("cannot read " + file);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::vector<Fixture> readFixtures(const std::string& file)
{
    std::ifstream stream(std::string(TAMAROK_TRANSLATION_CASES) + "/" + file);
    if (!stream) throw std::runtime_error("cannot read " + file);
    std::vector<Fixture> fixtures;
    Fixture current;
    int number = 0;
    const auto finish = [&] {
        if (!current.given.empty()) fixtures.push_back(current);
        current = {};
    };
    for (std::string line; std::getline(stream, line);) {
        ++number;
        if (line.empty()) {
            finish();
        } else if (line.starts_with("=> ")) {
            current.expected.push_back(line.substr(3));
        } else if (!line.starts_with("#")) {
            if (current.given.empty()) current.line = number;
            current.given += (current.given.empty() ? "" : "\n") + line;
        }
    }
    finish();
    return fixtures;
}

std::string repeated(std::string_view part, std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += part;
    return text;
}

std::optional<Error> refusalOf(const std::string& text)
{
    try {
        const TestDatabase database;
        const ParsedBatch batch(text);
        for (std::size_t i = 0; i < batch.steps().size(); ++i)
            static_cast<void>(translateStep(batch, i, database, DateOrder::Dmy));
    } catch (const Error& error) {
        return error;
    }
    return std::nullopt;
}

} // namespace tamarok::embedded::translation
