#include "embedded/contract/contract.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace tamarok::embedded::contract {

namespace {

std::string padded(std::int32_t number, std::size_t digits)
{
    std::string text = std::to_string(number);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

} // namespace

/// A line is a block's name, a comment, blank, an answer, or a part of a statement.
std::vector<Block> readBlocks(const std::string& fileName)
{
    std::ifstream file{std::string{TAMAROK_CONTRACT_CASES} + "/" + fileName};
    if (!file) throw std::runtime_error{"cannot read " + fileName};
    std::vector<Block> blocks;
    Case next;
    std::size_t number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        constexpr std::string_view answer = "=> ";
        const bool inStatement = !next.statement.empty();
        if (!inStatement && (line.empty() || line.front() == '#')) continue;
        if (!inStatement && line.front() == '[' && line.back() == ']') {
            blocks.push_back({line.substr(1, line.size() - 2), {}});
        } else if (line.starts_with(answer) && inStatement && !blocks.empty()) {
            next.answer = line.substr(answer.size());
            blocks.back().cases.push_back(std::exchange(next, {}));
        } else if (line.empty() || line.starts_with(answer)) {
            throw std::runtime_error{fileName + ":" + std::to_string(number) + ": statement and answer do not match"};
        } else {
            if (!inStatement) next.line = number;
            next.statement += inStatement ? "\n" + line : line;
        }
    }
    if (!next.statement.empty()) throw std::runtime_error{fileName + " ends with a statement without an answer"};
    return blocks;
}

std::vector<std::string> woodStatements()
{
    const std::string insert = "INSERT INTO WOOD VALUES ";
    return {"CREATE TABLE WOOD (ID INT NOT NULL PRIMARY KEY, NAME NVARCHAR(20), CODE VARCHAR(10), "
            "LENGTH_M DECIMAL(10,2), PIECES INT, FELLED SMALLDATETIME, CHECKED BIT, VOLUME FLOAT)",
            insert + "(1,'Fichte','FI',4.50,10,'2024-03-05 10:15',1,1.25)",
            insert + "(2,'fichte ','fi',5.00,7,'2024-03-06',0,2.5)",
            insert + "(3,N'Ärle','AE',NULL,NULL,NULL,1,0.5)",
            insert + "(4,'Arle','AR',3.10,3,'2023-12-31',NULL,NULL)",
            insert + "(5,NULL,'NN',2.00,0,'2024-01-01',0,3.75)"};
}

std::string spelled(const CivilTime& time)
{
    std::string text = padded(time.year, 4) + '-' + padded(time.month, 2) + '-' + padded(time.day, 2);
    if (time.hour + time.minute + time.second + time.millisecond == 0) return text;
    text += ' ' + padded(time.hour, 2) + ':' + padded(time.minute, 2) + ':' + padded(time.second, 2);
    return time.millisecond == 0 ? text : text + '.' + padded(time.millisecond, 3);
}

std::string spelled(double number)
{
    std::array<char, 40> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    std::string text{buffer.data(), written.ptr};
    return text.find_first_of(".e") == std::string::npos ? text + ".0" : text;
}

/// Line ends are escaped, since an answer is one line of its file.
std::string spelled(std::string_view text)
{
    std::string shown = "'";
    for (const char c : text) {
        if (c == '\r') {
            shown += "\\r";
        } else if (c == '\n') {
            shown += "\\n";
        } else {
            shown += c;
        }
    }
    return shown + "'";
}

void AnswerText::beginRow()
{
    if (hasRows_) {
        text_ += " | ";
    } else {
        text_.clear();
    }
    hasRows_ = true;
    hasColumns_ = false;
}

void AnswerText::add(std::string_view value)
{
    if (hasColumns_) text_ += ", ";
    text_ += value;
    hasColumns_ = true;
}

} // namespace tamarok::embedded::contract
