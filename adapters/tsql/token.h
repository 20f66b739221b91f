#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "tamarok_tsql/token_kind.h"

namespace tamarok::tsql {

enum class Keyword : std::uint8_t {
    None,
#define KEYWORD(id, text, use) id,
#include "keywords.inc"
#undef KEYWORD
    Count
};

struct Token {
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
    std::uint32_t hash = 0; ///< of a Name
    TokenKind kind = TokenKind::End;
    Keyword keyword = Keyword::None;
};

/// Keyword of that hash and text; None for a plain name.
Keyword findKeyword(std::uint32_t hash, std::string_view text);

/// Whether the word can only be a name between brackets or quotes.
bool isReserved(Keyword keyword);

/// Cuts `text` into tokens, the last one End. Throws Error 0x80040E14 with line and column for
/// unclosed quotes, brackets and comments and for characters that begin nothing.
std::vector<Token> tokenize(std::string_view text);

} // namespace tamarok::tsql
