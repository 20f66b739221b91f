#include "parser.h"

#include "reserved_words.h"

namespace tamarok::tsql {

namespace {
constexpr int deepestNesting = 200;
}

Parser::Level::Level(Parser& parser, std::string_view construct) : parser_(parser)
{
    if (++parser_.depth_ > deepestNesting) {
        parser_.source_.refuse(parser_.current().offset, messages::tooDeep,
                               "Some part of the SQL statement is nested too deeply: at most 200 levels are allowed, "
                               "and " +
                                   std::string(construct) + " is one more.");
    }
}

/// Reads statements up to the end of the text. Semicolons between them are optional, as on the server. GO becomes a
/// step without effect, since the client tools of the server send the parts of a script one after the other.
std::vector<ParsedStep> Parser::parse()
{
    while (!at(TokenKind::End)) {
        if (accept(TokenKind::Semicolon)) continue;
        if (at(TokenKind::Go)) {
            add(StepKind::Nothing, current().offset);
            ++position_;
            continue;
        }
        statement();
    }
    return std::move(steps_);
}

/// Words such as ROWS or APPLY mean something at one place of the grammar only; elsewhere they are plain names. They
/// are compared by text and are no keywords.
bool Parser::atWord(std::string_view word) const
{
    return at(TokenKind::Name) && sameName(text(current()), word);
}

bool Parser::accept(TokenKind kind)
{
    if (!at(kind)) return false;
    ++position_;
    return true;
}

bool Parser::accept(Keyword keyword)
{
    if (!at(keyword)) return false;
    ++position_;
    return true;
}

bool Parser::acceptWord(std::string_view word)
{
    if (!atWord(word)) return false;
    ++position_;
    return true;
}

void Parser::expect(TokenKind kind, std::string_view shown)
{
    if (!accept(kind)) refuseWithout(shown);
}

/// At the end of the text there is no token to show, so the message says that the statement ends. Shown tokens are cut
/// to 40 characters: a text literal may be long.
void Parser::refuseWithout(std::string_view expected) const
{
    if (at(TokenKind::End)) {
        source_.refuse(current().offset, messages::syntax,
                       "Incorrect syntax: the statement ends where '" + std::string(expected) + "' is expected.");
    }
    source_.refuse(current().offset, messages::syntax,
                   "Incorrect syntax near '" + std::string(text(current()).substr(0, 40)) + "': '" +
                       std::string(expected) + "' is expected.");
}

void Parser::expect(Keyword keyword)
{
    if (!accept(keyword)) refuseWithout(keywordText(keyword));
}

void Parser::expectWord(std::string_view word)
{
    if (!acceptWord(word)) refuseWithout(word);
}

void Parser::refuseHere() const
{
    if (at(TokenKind::End)) {
        source_.refuse(current().offset, messages::syntax, "Incorrect syntax: the statement ends too early.");
    }
    source_.refuse(current().offset, messages::syntax,
                   "Incorrect syntax near '" + std::string(text(current()).substr(0, 40)) + "'.");
}

void Parser::unsupportedHere(std::string_view construct) const
{
    source_.unsupported(current().offset, construct);
}

bool Parser::atName() const
{
    return at(TokenKind::QuotedName) || (at(TokenKind::Name) && !isReserved(current().keyword));
}

/// Takes the quotes off a quoted name or a text literal. The name is a part of the batch's text, unless it has doubled
/// quotes: then it is a copy in the arena.
Name Parser::nameOf(const Token& token)
{
    std::string_view word = text(token);
    if (token.kind == TokenKind::Name) return {word, token.offset};
    // A name in brackets doubles its closing bracket only.
    const char quote = token.kind == TokenKind::Text ? '\'' : word.front() == '[' ? ']' : '"';
    word = word.substr(word.find_first_of("['\"") + 1);
    word.remove_suffix(1);
    if (word.find(quote) != std::string_view::npos) {
        std::string plain;
        for (std::size_t i = 0; i < word.size(); ++i) {
            plain += word[i];
            if (word[i] == quote) ++i;
        }
        word = arena_.text(plain);
    }
    return {word, token.offset};
}

Name Parser::name()
{
    if (!atName()) refuseHere();
    return nameOf(tokens_[position_++]);
}

/// The last part of server.database.schema.name: one file is one database with one schema.
Name Parser::qualifiedName()
{
    Name result = name();
    while (at(TokenKind::Dot)) {
        // The schema may be left out: server.database..name
        while (accept(TokenKind::Dot)) {}
        result = name();
    }
    return result;
}

std::span<Name> Parser::nameList()
{
    ArenaList<Name> names(arena_);
    expect(TokenKind::LeftParen, "(");
    do {
        names.push(name());
    } while (accept(TokenKind::Comma));
    expect(TokenKind::RightParen, ")");
    return names.span();
}

/// The server takes a text literal as alias too, with and without AS. Without AS an alias must not be a reserved word,
/// or the next clause would be read as one.
Name Parser::optionalAlias()
{
    const std::size_t word = at(Keyword::As) ? 1 : 0;
    if (ahead(word).kind == TokenKind::Name && !isReserved(ahead(word).keyword) && isReservedWord(text(ahead(word)))) {
        source_.refuse(ahead(word).offset, 156,
                       "Incorrect syntax near the keyword '" + std::string(text(ahead(word))) + "'.");
    }
    if (accept(Keyword::As)) {
        if (at(TokenKind::Text)) return nameOf(tokens_[position_++]);
        return name();
    }
    if (atName() || at(TokenKind::Text)) return nameOf(tokens_[position_++]);
    return {};
}

} // namespace tamarok::tsql
