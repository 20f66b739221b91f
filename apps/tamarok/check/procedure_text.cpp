#include "check/procedure_text.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "tamarok/text.h"

namespace tamarok::cli::check {

namespace {

bool isWordLetter(char letter)
{
    return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_' || letter == '@' || letter == '#' ||
           letter == '$' || static_cast<unsigned char>(letter) >= 0x80;
}

bool isBlank(char letter)
{
    return std::isspace(static_cast<unsigned char>(letter)) != 0;
}

/// The position behind a comment that begins at `at`; `at` itself where none does.
std::size_t behindComment(std::string_view text, std::size_t at)
{
    const std::string_view rest = text.substr(at);
    if (rest.starts_with("--")) return std::min(text.find('\n', at), text.size());
    if (!rest.starts_with("/*")) return at;
    const std::size_t end = text.find("*/", at + 2);
    return end == std::string_view::npos ? text.size() : end + 2;
}

/// The position behind the word, literal or sign at `at`. A doubled quote splits a literal in two, in both texts alike.
std::size_t behindPart(std::string_view text, std::size_t at)
{
    if (text[at] == '\'') {
        const std::size_t end = text.find('\'', at + 1);
        return end == std::string_view::npos ? text.size() : end + 1;
    }
    std::size_t end = at;
    while (end < text.size() && isWordLetter(text[end]))
        ++end;
    return std::max(end, at + 1);
}

std::string canonical(std::string_view part)
{
    if (part.starts_with('\'')) return std::string{part};
    std::string word = text::toUpper(part);
    return word == "LATIN1_GENERAL_BIN2" ? "LATIN1_GENERAL_BIN" : word;
}

/// The words, literals and signs behind the procedure's name.
std::vector<std::string> partsOf(std::string_view name, std::string_view text)
{
    std::vector<std::string> parts;
    const std::string upperName = text::toUpper(name);
    bool named = false;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t behind = behindComment(text, at);
        if (behind != at || isBlank(text[at])) {
            at = std::max(behind, at + 1);
            continue;
        }
        const std::size_t end = behindPart(text, at);
        std::string part = canonical(text.substr(at, end - at));
        at = end;
        if (part == "[" || part == "]" || part == ";") continue;
        if (named)
            parts.push_back(std::move(part));
        else
            named = part == upperName;
    }
    return parts;
}

} // namespace

bool sameProcedure(std::string_view name, std::string_view one, std::string_view other)
{
    return partsOf(name, one) == partsOf(name, other);
}

} // namespace tamarok::cli::check
