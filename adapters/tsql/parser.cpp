#include "parser.h"

namespace tamarok::tsql {

namespace {
constexpr int deepestNesting = 200;
}

Parser::Level::Level(Parser& parser) : parser_(parser)
{
    if (++parser_.depth_ > deepestNesting) {
        parser_.source_.refuse(parser_.current().offset, messages::tooDeep,
                               "Some part of the SQL statement is nested too deeply; at most 200 levels are allowed.");
    }
}

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

Name Parser::nameOf(const Token& token)
{
    std::string_view word = text(token);
    if (token.kind == TokenKind::Name) return {word, token.offset};
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

Name Parser::optionalAlias()
{
    if (accept(Keyword::As)) {
        if (at(TokenKind::Text)) return nameOf(tokens_[position_++]);
        return name();
    }
    if (atName() || at(TokenKind::Text)) return nameOf(tokens_[position_++]);
    return {};
}

} // namespace tamarok::tsql
