#include "embedded/functions/scratch_database.h"

#include <array>
#include <charconv>
#include <gtest/gtest.h>
#include <stdexcept>

namespace tamarok::embedded::functions {

namespace {

sqlite3* openMemory()
{
    sqlite3* database = nullptr;
    if (sqlite3_open(":memory:", &database) != SQLITE_OK) throw std::runtime_error{"no database in memory"};
    return database;
}

std::string realText(double number)
{
    std::array<char, 40> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    std::string text{buffer.data(), written.ptr};
    if (text.find_first_of(".en") == std::string::npos) text += ".0";
    return text;
}

std::string columnText(sqlite3_stmt* statement)
{
    switch (sqlite3_column_type(statement, 0)) {
    case SQLITE_NULL: return "NULL";
    case SQLITE_INTEGER: return std::to_string(sqlite3_column_int64(statement, 0));
    case SQLITE_FLOAT: return realText(sqlite3_column_double(statement, 0));
    default: {
        const void* bytes = sqlite3_column_text(statement, 0);
        std::string text = "'";
        text.append(static_cast<const char*>(bytes), static_cast<std::size_t>(sqlite3_column_bytes(statement, 0)));
        return text + "'";
    }
    }
}

} // namespace

ScratchDatabase::ScratchDatabase() : database_{openMemory(), &sqlite3_close}
{
    registerFunctions(database_.get(), context_);
}

std::string ScratchDatabase::evaluate(std::string_view expression)
{
    return rows("SELECT " + std::string{expression});
}

std::string ScratchDatabase::rows(std::string_view text)
{
    sqlite3_stmt* raw = nullptr;
    const int prepared = sqlite3_prepare_v2(database_.get(), text.data(), static_cast<int>(text.size()), &raw, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement{raw, &sqlite3_finalize};
    if (prepared != SQLITE_OK) return std::string{"refused: "} + sqlite3_errmsg(database_.get());
    std::string values;
    int code = sqlite3_step(statement.get());
    for (bool first = true; code == SQLITE_ROW; first = false, code = sqlite3_step(statement.get())) {
        if (!first) values += '|';
        values += columnText(statement.get());
    }
    if (code != SQLITE_DONE) return std::string{"error "} + sqlite3_errmsg(database_.get());
    return values;
}

void ScratchDatabase::run(std::string_view statements)
{
    const std::string text{statements};
    if (sqlite3_exec(database_.get(), text.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error{sqlite3_errmsg(database_.get())};
    }
}

void checkRows(ScratchDatabase& database, std::span<const Row> rows)
{
    ASSERT_FALSE(rows.empty());
    for (const Row& row : rows) {
        std::string value = database.evaluate(row.expression);
        if (row.answer.starts_with("error ") && row.answer.find(':') == std::string_view::npos) {
            value = value.substr(0, value.find(':'));
        }
        EXPECT_EQ(value, row.answer) << row.expression;
    }
}

void checkRows(std::span<const Row> rows)
{
    ScratchDatabase database;
    checkRows(database, rows);
}

} // namespace tamarok::embedded::functions
