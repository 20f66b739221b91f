#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/date.h"

/// The engine's contract: statements of SQL Server with the documented answers. answers.txt holds them, one table for
/// the embedded database and for a server.
namespace tamarok::embedded::contract {

/// A statement and its answer, as answers.txt describes.
struct Case {
    std::string statement;
    std::string answer;
    std::size_t line = 0; ///< of the statement in its file
};

/// The cases of one connection, in their order.
struct Block {
    std::string name;
    std::vector<Case> cases;

    /// Whether the block is for the embedded database alone.
    bool isEmbeddedOnly() const { return name.starts_with("Embedded:") || name.starts_with("Oracle:"); }
};

/// Reads a file of this folder. Throws std::runtime_error with the line for a case without an answer.
std::vector<Block> readBlocks(const std::string& fileName);

/// Statements that make the table WOOD with its rows, on which each block begins.
std::vector<std::string> woodStatements();

/// Values as answers spell them.
std::string spelled(const CivilTime& time);
std::string spelled(double number);
std::string spelled(std::string_view text);

/// Joins values to the rows of an answer; "none" without a row.
class AnswerText {
public:
    void beginRow();
    void add(std::string_view value);
    const std::string& text() const { return text_; }

private:
    std::string text_ = "none";
    bool hasRows_ = false;
    bool hasColumns_ = false;
};

} // namespace tamarok::embedded::contract
