#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "dialect/dialect.h"

#include "tamarok/error.h"

/// SQL templates: statement texts in which everything that varies stands in braces.
///
///   {NAME}          a value: a word of the dialect, or a value of the caller
///   {NAME arg}      the same with an argument; the blank may be left out before a digit ({P0})
///   {NAME?a:b}      a choice: template `a` if the value is not empty, else template `b`
///   {NAME=text?a:b} a choice: template `a` if the value is equal to `text`, else template `b`
///   {ORACLE?a:b}    a choice by the dialect
///
/// A name consists of letters, or is "+". Choices may be nested. Values are inserted verbatim: they are
/// neither escaped nor searched for placeholders.
namespace tamarok::dialect {

/// The words of the dialect that templates may name.
struct Word {
    std::string_view name;
    std::string_view Dialect::*text;
};
inline constexpr Word words[] = {
    {"ISNULL", &Dialect::nullFunction},
    {"CONCAT", &Dialect::concatenation},
    {"+", &Dialect::spacedConcatenation},
    {"CR", &Dialect::carriageReturn},
    {"NOTEXT", &Dialect::emptyText},
    {"LONG", &Dialect::longTextColumn},
    {"DUAL", &Dialect::fromDual},
    {"ZEROS", &Dialect::zeros},
    {"TOP", &Dialect::top},
    {"ROWNUM", &Dialect::andFirstRow},
    {"SELECTFIRST", &Dialect::selectFirst},
    {"WHEREFIRST", &Dialect::whereFirst},
    {"SELECTNONE", &Dialect::selectNone},
    {"WHERENONE", &Dialect::whereNone},
};

/// The condition on the dialect; it has no text of its own.
inline constexpr std::string_view oracleCondition = "ORACLE";

/// What stands in braces: {ROW 240} has the name ROW and the argument "240".
struct Placeholder {
    std::string_view name;
    std::string_view argument;
};

/// The values that a subsystem adds to the words of the dialect.
class PlaceholderValues {
public:
    /// Appends the value of `placeholder` to `out`. Returns false, and appends nothing, if there is no
    /// value of that name.
    virtual bool appendValue(std::string& out, const Placeholder& placeholder) = 0;

protected:
    ~PlaceholderValues() = default;
};

/// Appends `sqlTemplate`, filled, to `out`.
/// Errors: 5 for a template that is malformed or names an unknown value; those of `values`.
void appendFilled(std::string& out, std::string_view sqlTemplate, const Dialect& dialect, PlaceholderValues& values);

/// One value by its name, for templates whose values are at hand as texts.
struct NamedValue {
    std::string_view name;
    std::string_view text;
};

/// Returns `sqlTemplate`, filled with `values` and the words of the dialect:
///   fill("SELECT {ISNULL}(NAME,'') FROM USERS WHERE ID = {USER}", dialect::of(tmkVar), {{"USER", "12"}})
/// Errors: 5 for a template that is malformed or names an unknown value.
std::string fill(std::string_view sqlTemplate, const Dialect& dialect, std::initializer_list<NamedValue> values = {});

/// The front of a template: verbatim text and, unless the template ends, the placeholder that follows.
struct Piece {
    /// The two templates of a choice.
    struct Choice {
        std::optional<std::string_view> comparedTo;
        std::string_view whenTrue;
        std::string_view whenFalse;
    };
    std::string_view text;
    std::optional<Placeholder> placeholder;
    std::optional<Choice> choice;
};

/// Position of the first `end` at or after `begin` that stands outside nested braces.
/// Error 5 if there is none.
constexpr std::size_t findOutsideBraces(std::string_view text, char end, std::size_t begin)
{
    std::size_t depth = 0;
    for (std::size_t at = begin; at < text.size(); ++at) {
        if (depth == 0 && text[at] == end) return at;
        if (text[at] == '{') ++depth;
        if (text[at] == '}' && depth > 0) --depth;
    }
    throw Error{errors::invalidArgument, "A placeholder has no end in \"" + std::string{text} + "\"."};
}

/// Divides "ROW 240" and "P0" into name and argument.
constexpr Placeholder placeholderOf(std::string_view text)
{
    const auto isNameCharacter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '+'; };
    const auto nameEnd = static_cast<std::size_t>(std::ranges::find_if_not(text, isNameCharacter) - text.begin());
    std::string_view argument = text.substr(nameEnd);
    if (argument.starts_with(' ')) argument.remove_prefix(1);
    return {text.substr(0, nameEnd), argument};
}

/// Takes the front piece off `rest`. Error 5 if a placeholder or a choice has no end.
constexpr Piece takePiece(std::string_view& rest)
{
    Piece piece;
    const std::size_t open = rest.find('{');
    piece.text = rest.substr(0, open);
    if (open == std::string_view::npos) {
        rest = {};
        return piece;
    }
    rest.remove_prefix(open + 1);
    const std::size_t headEnd = std::min(rest.find_first_of("?}"), rest.size());
    std::string_view head = rest.substr(0, headEnd);
    std::size_t close = headEnd;
    if (headEnd < rest.size() && rest[headEnd] == '?') {
        const std::size_t colon = findOutsideBraces(rest, ':', headEnd + 1);
        close = findOutsideBraces(rest, '}', colon + 1);
        piece.choice = {std::nullopt, rest.substr(headEnd + 1, colon - headEnd - 1),
                        rest.substr(colon + 1, close - colon - 1)};
        if (const std::size_t equals = head.find('='); equals != std::string_view::npos) {
            piece.choice->comparedTo = head.substr(equals + 1);
            head = head.substr(0, equals);
        }
    }
    piece.placeholder = placeholderOf(head);
    rest.remove_prefix(findOutsideBraces(rest, '}', close) + 1);
    return piece;
}

/// Whether every placeholder of a template is a word of the dialect or satisfies `isValue`: for tables of
/// templates that are checked at compile time. A malformed template fails the evaluation.
template <class IsValue>
constexpr bool namesOnly(std::string_view sqlTemplate, const IsValue& isValue)
{
    while (!sqlTemplate.empty()) {
        const Piece piece = takePiece(sqlTemplate);
        if (!piece.placeholder) continue;
        const std::string_view name = piece.placeholder->name;
        const bool isWord = std::ranges::find(words, name, &Word::name) != std::end(words);
        if (!isValue(name) && !isWord && !(piece.choice && name == oracleCondition)) return false;
        if (piece.choice &&
            !(namesOnly(piece.choice->whenTrue, isValue) && namesOnly(piece.choice->whenFalse, isValue)))
            return false;
    }
    return true;
}

} // namespace tamarok::dialect
