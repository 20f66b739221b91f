#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace tamarok::embedded::sql {

enum class TokenKind : std::uint8_t {
    End,
    Name,       ///< plain identifier; `keyword` tells which keyword it is, if any
    QuotedName, ///< [name] or "name"
    Text,       ///< 'text' or N'text'
    Integer,
    Decimal,
    Float,
    Hex,
    Variable,       ///< @name
    SystemVariable, ///< @@name
    Parameter,      ///< ?
    Go,             ///< GO on a line of its own
    LeftParen,
    RightParen,
    Comma,
    Dot,
    Semicolon,
    Star,
    Plus,
    Minus,
    Slash,
    Percent,
    Ampersand,
    Bar,
    BarBar,
    Caret,
    Tilde,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual
};

enum class Keyword : std::uint8_t {
    None,
#define KEYWORD(id, text, use) id,
#include "tamarok_tsql/keywords.inc"
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

} // namespace tamarok::embedded::sql
