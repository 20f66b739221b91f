#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok_tsql/arena.h"
#include "tamarok_tsql/ast.h"
#include "tamarok_tsql/source_text.h"

namespace tamarok::tsql {

/// A batch of statements as a syntax tree. The tree refers to the text and the arena of this object.
/// A binder writes its results into the tree, so that one thread at a time may work on a batch.
class ParsedBatch {
public:
    /// Parses `text`; keeps a copy of it.
    /// @param watch  ends the work by throwing, also that of a later binding and translation
    /// Errors: 0x80040E14 with line and column for anything that is not understood, and for the limits: 16 MB of text,
    /// 200 levels of nesting, 900 operators in one chain of arithmetic, 5000 conditions in one of AND or OR, 500
    /// SELECTs in one compound query, 256 tables in one FROM, 4096 items in one SELECT list, 200,000 values in the
    /// lists of one statement.
    explicit ParsedBatch(std::string_view text, Watch watch = {});
    ParsedBatch(const ParsedBatch&) = delete;
    ParsedBatch& operator=(const ParsedBatch&) = delete;

    const SourceText& source() const { return source_; }
    /// The steps in order. IF ... ELSE is flattened into jumps; a jump may lead to `steps().size()`, the end.
    std::span<const ParsedStep> steps() const { return steps_; }

private:
    std::string text_;
    SourceText source_;
    Arena arena_;
    std::vector<ParsedStep> steps_;
};

} // namespace tamarok::tsql
