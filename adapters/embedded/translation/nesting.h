#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "tamarok_tsql/ast.h"

/// Where the deeply nested constructs of a statement stand in its SQLite text. SQLite's parser tells only at which byte
/// it gave up; the message to the caller names the construct with its place in the statement.
namespace tamarok::embedded {

/// A construct inside at least `Nesting::deep` others.
struct NestedConstruct {
    std::size_t begin = 0; ///< in the SQLite text
    std::size_t end = 0;
    std::uint32_t offset = 0;   ///< in the statement's text
    std::string_view name;      ///< "CASE", "the function ISNULL"
    std::string_view qualifier; ///< of a function: its name
};

/// The innermost construct that spans a byte of the SQLite text; nullptr if none is known.
const NestedConstruct* innermostAt(std::span<const NestedConstruct> constructs, std::size_t position);

namespace translation {

/// Counts the levels while a text is written, and records the constructs of the deep ones. An ordinary statement has
/// none, so that this costs it nothing but the count.
struct Nesting {
    /// A level takes at most 12 of the 100 symbols of SQLite's parser, so that it never gives up before this one.
    static constexpr int deep = 6;

    int level = 0;
    std::vector<NestedConstruct> constructs;
};

/// One level, while the object lives.
class NestingLevel {
public:
    NestingLevel(Nesting& nesting, const std::string& text, std::uint32_t offset, std::string_view name,
                 std::string_view qualifier = {}) :
        nesting_(nesting),
        text_(text)
    {
        if (++nesting_.level < Nesting::deep || name.empty()) return;
        index_ = nesting_.constructs.size();
        nesting_.constructs.push_back({text.size(), npos, offset, name, qualifier});
    }
    NestingLevel(const NestingLevel&) = delete;
    NestingLevel& operator=(const NestingLevel&) = delete;
    ~NestingLevel()
    {
        --nesting_.level;
        if (index_ != npos) nesting_.constructs[index_].end = text_.size();
    }

private:
    static constexpr auto npos = static_cast<std::size_t>(-1);

    Nesting& nesting_;
    const std::string& text_;
    std::size_t index_ = npos;
};

/// What messages call an expression of this kind; empty for one that is better named by what stands around it, such as
/// a column or a comparison.
std::string_view constructName(tsql::ExprKind kind);

} // namespace translation
} // namespace tamarok::embedded
