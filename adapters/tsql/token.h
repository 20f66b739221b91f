#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "keyword.h"
#include "tamarok_tsql/source_text.h"
#include "tamarok_tsql/token_kind.h"

namespace tamarok::tsql {

/// A token as a part of the batch's text. The tokens of a batch are kept in one vector, so it holds no copies of the
/// text.
struct Token {
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
    TokenKind kind = TokenKind::End;
    Keyword keyword = Keyword::None;
};

/// Splits a text into tokens; the last one is End. Throws Error 0x80040E14 with line and column for unclosed quotes,
/// brackets and comments and for characters that begin no token.
std::vector<Token> tokenize(const SourceText& source);

} // namespace tamarok::tsql
