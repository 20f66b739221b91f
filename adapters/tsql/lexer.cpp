#include <array>
#include <string>

#include "tamarok_tsql/names.h"
#include "tamarok_tsql/source_text.h"
#include "token.h"

namespace tamarok::tsql {
namespace {

/// Classes of bytes, as bits. Every byte of a multi-byte character counts as a letter.
enum : std::uint8_t { Blank = 1, Letter = 2, Digit = 4, NamePart = 8 };

consteval std::array<std::uint8_t, 256> classify()
{
    std::array<std::uint8_t, 256> classes{};
    for (const unsigned blank : {0x20U, 0x09U, 0x0AU, 0x0BU, 0x0CU, 0x0DU})
        classes[blank] = Blank;
    for (unsigned c = 0; c < 256; ++c) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '#' || c >= 0x80) {
            classes[c] = Letter | NamePart;
        }
        if (c >= '0' && c <= '9') classes[c] = Digit | NamePart;
    }
    classes['$'] = NamePart;
    classes['@'] = NamePart;
    return classes;
}
constexpr auto classes = classify();

/// Splits the text of a batch into tokens, in one pass. Blanks and comments separate tokens and yield none. A token is
/// a part of the text (offset and length), so that the text must outlive the tokens. `tokenize` is the only user.
class Lexer {
public:
    explicit Lexer(const SourceText& source) : source_(source), text_(source.text())
    {
        tokens_.reserve(text_.size() / 4 + 8);
    }

    /// The encoding is checked before the first token, so that no later function meets a broken character. The last
    /// token is always End: the parser may look at it without a check of the bounds.
    std::vector<Token> run()
    {
        checkEncoding();
        for (skipBlanks(); position_ < text_.size(); skipBlanks())
            next();
        push(TokenKind::End, position_);
        return std::move(tokens_);
    }

private:
    /// A zero byte stands for the end of the text; `checkEncoding` has refused every other one.
    unsigned char at(std::size_t index) const
    {
        return index < text_.size() ? static_cast<unsigned char>(text_[index]) : '\0';
    }
    bool is(std::size_t index, unsigned mask) const { return (classes[at(index)] & mask) != 0; }

    void push(TokenKind kind, std::size_t begin, Keyword keyword = Keyword::None)
    {
        source_.work();
        tokens_.push_back(
            {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(position_ - begin), kind, keyword});
    }

    /// Refuses bytes that are not UTF-8, and zero bytes: back ends take statements as zero-terminated UTF-8.
    void checkEncoding() const
    {
        for (std::size_t i = 0; i < text_.size();) {
            // The lead byte gives the number of following bytes. C0, C1 and F5 to FF begin no character.
            const unsigned char lead = at(i);
            if (lead != 0 && lead < 0x80) {
                ++i;
                continue;
            }
            const std::size_t follow = lead >= 0xF0 && lead < 0xF5   ? 3
                                       : lead >= 0xE0 && lead < 0xF0 ? 2
                                       : lead >= 0xC2 && lead < 0xE0 ? 1
                                                                     : 0;
            if (follow == 0) refuseByte(i);
            for (std::size_t k = 1; k <= follow; ++k) {
                if ((at(i + k) & 0xC0U) != 0x80U) refuseByte(i);
            }
            i += follow + 1;
        }
    }

    [[noreturn]] void refuseByte(std::size_t offset) const
    {
        constexpr std::string_view digits = "0123456789ABCDEF";
        const unsigned char byte = at(offset);
        source_.refuse(offset, messages::syntax,
                       std::string("Incorrect syntax: the text holds the byte 0x") + digits[byte >> 4U] +
                           digits[byte & 15U] + ", which is no character.");
    }

    /// Skips blanks and both kinds of comments until something else stands there.
    void skipBlanks()
    {
        for (;;) {
            while (is(position_, Blank))
                ++position_;
            if (at(position_) == '-' && at(position_ + 1) == '-') {
                const std::size_t end = text_.find('\n', position_);
                position_ = end == std::string_view::npos ? text_.size() : end;
            } else if (at(position_) == '/' && at(position_ + 1) == '*') {
                skipBlockComment();
            } else {
                return;
            }
        }
    }

    /// Block comments nest.
    void skipBlockComment()
    {
        const std::size_t begin = position_;
        std::size_t depth = 0;
        do {
            if (position_ + 1 >= text_.size()) {
                source_.refuse(begin, 113, "Missing end comment mark '*/'.");
            }
            if (at(position_) == '/' && at(position_ + 1) == '*') {
                ++depth;
                position_ += 2;
            } else if (at(position_) == '*' && at(position_ + 1) == '/') {
                --depth;
                position_ += 2;
            } else {
                ++position_;
            }
        } while (depth != 0);
    }

    /// Reads one token; its first one or two characters tell which kind. N'...' comes before names, since N is a
    /// letter. A number may begin with its point (.5).
    void next()
    {
        const std::size_t begin = position_;
        const unsigned char c = at(begin);
        if ((c == 'N' || c == 'n') && at(begin + 1) == '\'') {
            ++position_;
            quoted(TokenKind::Text, begin, '\'');
        } else if (is(begin, Letter)) {
            name(begin);
        } else if (is(begin, Digit) || (c == '.' && is(begin + 1, Digit))) {
            number(begin);
        } else if (c == '\'') {
            quoted(TokenKind::Text, begin, '\'');
        } else if (c == '"') {
            quoted(TokenKind::QuotedName, begin, '"');
        } else if (c == '[') {
            quoted(TokenKind::QuotedName, begin, ']');
        } else if (c == '@') {
            variable(begin);
        } else {
            symbol(begin, c);
        }
    }

    /// A text or name in quotes; inside, a doubled quote is an escaped quote.
    void quoted(TokenKind kind, std::size_t begin, char quote)
    {
        // A closing quote that is followed by another one does not close: both are skipped.
        for (++position_;; ++position_) {
            position_ = text_.find(quote, position_);
            if (position_ == std::string_view::npos) {
                source_.refuse(begin, messages::unclosedQuote,
                               "Unclosed quotation mark after the character string '" +
                                   std::string(text_.substr(begin + 1, 40)) + "'.");
            }
            if (at(position_ + 1) != static_cast<unsigned char>(quote)) break;
            ++position_;
        }
        ++position_;
        // [] and "" name nothing; '' is the empty text.
        if (kind == TokenKind::QuotedName && position_ - begin == 2) {
            source_.refuse(begin, 1038, "An object or column name is missing or empty.");
        }
        push(kind, begin);
    }

    /// A name or keyword. Whether a keyword is meant as a name is for the parser to decide.
    void name(std::size_t begin)
    {
        while (is(position_, NamePart))
            ++position_;
        const std::string_view text = text_.substr(begin, position_ - begin);
        const Keyword keyword = findKeyword(text);
        push(keyword == Keyword::Go && aloneOnLine(begin) ? TokenKind::Go : TokenKind::Name, begin, keyword);
    }

    /// GO is a separator only on a line of its own.
    bool aloneOnLine(std::size_t begin) const
    {
        for (std::size_t i = begin; i > 0 && at(i - 1) != '\n'; --i) {
            if (!is(i - 1, Blank)) return false;
        }
        for (std::size_t i = position_; i < text_.size() && at(i) != '\n'; ++i) {
            if (!is(i, Blank)) return false;
        }
        return true;
    }

    /// A number without sign: 0x... , digits, digits with a point, either with an exponent. The server gives these
    /// forms different types (int, decimal, float), hence the token kinds.
    void number(std::size_t begin)
    {
        if (at(begin) == '0' && (at(begin + 1) == 'x' || at(begin + 1) == 'X')) {
            while (is(position_, NamePart))
                ++position_;
            push(TokenKind::Hex, begin);
            return;
        }
        TokenKind kind = TokenKind::Integer;
        while (is(position_, Digit))
            ++position_;
        if (at(position_) == '.') {
            kind = TokenKind::Decimal;
            ++position_;
            while (is(position_, Digit))
                ++position_;
        }
        if (at(position_) == 'e' || at(position_) == 'E') {
            // An E without digits after it is no exponent: 1e is the number 1 with the alias e.
            const bool sign = at(position_ + 1) == '+' || at(position_ + 1) == '-';
            if (is(position_ + (sign ? 2 : 1), Digit)) {
                kind = TokenKind::Float;
                position_ += sign ? 2 : 1;
                while (is(position_, Digit))
                    ++position_;
            }
        }
        push(kind, begin);
    }

    /// @name or @@name. The `@` are part of the token's text.
    void variable(std::size_t begin)
    {
        const bool system = at(begin + 1) == '@';
        position_ += system ? 2 : 1;
        const std::size_t word = position_;
        while (is(position_, NamePart))
            ++position_;
        if (position_ == word) source_.refuse(begin, messages::syntax, "Incorrect syntax near '@'.");
        push(system ? TokenKind::SystemVariable : TokenKind::Variable, begin);
    }

    /// An operator or punctuation mark of one or two characters; the longer one wins. `kind` stays End for a character
    /// that begins no token.
    void symbol(std::size_t begin, unsigned char c)
    {
        const unsigned char following = at(begin + 1);
        TokenKind kind = TokenKind::End;
        position_ = begin + 1;
        const auto pair = [&](unsigned char second, TokenKind two, TokenKind one) {
            kind = following == second ? two : one;
            if (following == second) ++position_;
        };
        switch (c) {
        case '(': kind = TokenKind::LeftParen; break;
        case ')': kind = TokenKind::RightParen; break;
        case ',': kind = TokenKind::Comma; break;
        case '.': kind = TokenKind::Dot; break;
        case ';': kind = TokenKind::Semicolon; break;
        case '?': kind = TokenKind::Parameter; break;
        case '*': kind = TokenKind::Star; break;
        case '+': kind = TokenKind::Plus; break;
        case '-': kind = TokenKind::Minus; break;
        case '/': kind = TokenKind::Slash; break;
        case '%': kind = TokenKind::Percent; break;
        case '&': kind = TokenKind::Ampersand; break;
        case '^': kind = TokenKind::Caret; break;
        case '~': kind = TokenKind::Tilde; break;
        case '=': kind = TokenKind::Equal; break;
        case '|': pair('|', TokenKind::BarBar, TokenKind::Bar); break;
        case '>': pair('=', TokenKind::GreaterEqual, TokenKind::Greater); break;
        case '<':
            pair('=', TokenKind::LessEqual, TokenKind::Less);
            if (following == '>') {
                kind = TokenKind::NotEqual;
                ++position_;
            }
            break;
        case '!': bang(begin, following, kind); break;
        default: break;
        }
        if (kind == TokenKind::End) {
            source_.refuse(begin, messages::syntax, "Incorrect syntax near '" + std::string(1, text_[begin]) + "'.");
        }
        push(kind, begin);
    }

    /// != and the forms !< (not less) and !> (not greater).
    void bang(std::size_t begin, unsigned char following, TokenKind& kind)
    {
        kind = following == '='   ? TokenKind::NotEqual
               : following == '<' ? TokenKind::GreaterEqual
               : following == '>' ? TokenKind::LessEqual
                                  : TokenKind::End;
        if (kind != TokenKind::End) position_ = begin + 2;
    }

    const SourceText& source_;
    std::string_view text_;
    std::size_t position_ = 0;
    std::vector<Token> tokens_;
};

} // namespace

std::vector<Token> tokenize(const SourceText& source)
{
    return Lexer(source).run();
}

} // namespace tamarok::tsql
