#pragma once

#include <iosfwd>
#include <memory>
#include <span>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <vector>

#include "functions.h"

namespace tamarok::embedded::functions {

/// A SQLite database in memory with the functions registered, without the engine.
class ScratchDatabase {
public:
    ScratchDatabase();

    /// The value of an expression as the tables below spell it: "NULL", 12, 1.5 (shortest form, always with a
    /// point or exponent), 'text'; or "error 245:..." with the whole message.
    std::string evaluate(std::string_view expression);

    /// Values of the first column of a statement, joined by "|".
    std::string rows(std::string_view statement);

    /// Runs statements without a result.
    void run(std::string_view statements);

    FunctionContext& context() noexcept { return context_; }
    sqlite3* handle() const noexcept { return database_.get(); }

private:
    FunctionContext context_;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> database_;
};

/// One row of a table of expressions: SQLite text, and its value as `evaluate` spells it or
/// "error N" for a failure with that server number.
struct Row {
    std::string_view expression;
    std::string_view answer;
};

/// Checks every row; the failures name expression, answer and value.
void checkRows(std::span<const Row> rows);
void checkRows(ScratchDatabase& database, std::span<const Row> rows);

} // namespace tamarok::embedded::functions
