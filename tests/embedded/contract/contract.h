#pragma once

#include <span>
#include <string>
#include <string_view>

#include "tamarok/ado.h"

/// The engine's contract: statements of SQL Server, run through the recordset model, with the
/// server's answers.
namespace tamarok::embedded::contract {

/// One row of the contract. Answers: NULL, true, 12, 1.5 (a float or decimal always has a point or exponent),
/// 'text', 2024-03-05 or 2024-03-05 10:15:30.127; columns divided by ", ", rows by " | "; "none" for no row;
/// "error N" for the server's error number.
struct Row {
    std::string_view statement;
    std::string_view answer;
};

/// A database in memory with the table WOOD (see contract.cpp).
ado::ConnectionRef woodDatabase();

/// All rows of a statement, as answers spell them; the number of a failure.
std::string answer(const ado::ConnectionRef& connection, std::string_view statement);

/// Checks "SELECT expression" for each row, or whole statements; failures name the row.
void checkExpressions(std::span<const Row> rows);
void checkStatements(std::span<const Row> rows);

} // namespace tamarok::embedded::contract
