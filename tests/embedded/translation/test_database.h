#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "functions.h"
#include "translation/step.h"

#include "tamarok/error.h"

struct sqlite3;

namespace tamarok::embedded::translation {

using namespace tsql;

/// A database in memory with the tables of schema.sql, made by the translations themselves; its
/// catalog reads the declared types back from SQLite.
class TestDatabase final : public Schema {
public:
    TestDatabase();

    const Table* table(std::string_view name) const override;

    /// Translates and runs a batch; the rows of its queries, columns separated by "|", Null as "NULL".
    /// An SQL error is thrown as std::runtime_error with SQLite's text.
    std::vector<std::string> run(std::string_view batch);
    /// Runs SQLite text.
    std::vector<std::string> runStep(const std::string& text);
    /// Empty if SQLite accepts the text.
    std::string prepareError(const std::string& text) const;
    void readSchema();

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };

    void readTable(const std::string& schema, const std::string& name);

    FunctionContext context_;
    std::unique_ptr<sqlite3, Close> database_;
    std::vector<Table> tables_;
};

/// A block of a fixture file: the input, and the expected lines.
struct Fixture {
    std::string given;
    std::vector<std::string> expected;
    int line = 0;
};

/// Blocks are separated by blank lines; "#" begins a comment line, "=> " an expected line.
std::vector<Fixture> readFixtures(const std::string& file);

std::string readText(const std::string& file);

std::string repeated(std::string_view part, std::size_t count);

/// Translates every step of a batch on a database of its own. @return the error, or nothing if all were translated
std::optional<Error> refusalOf(const std::string& text);

} // namespace tamarok::embedded::translation
