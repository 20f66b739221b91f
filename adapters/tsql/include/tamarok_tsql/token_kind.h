#pragma once

#include <cstdint>

namespace tamarok::tsql {

enum class TokenKind : std::uint8_t {
    End,
    Name,       ///< plain identifier; its `keyword` is set if it is one
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

} // namespace tamarok::tsql
