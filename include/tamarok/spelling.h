#pragma once

#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

/// Help for misspelt words in error messages.
namespace tamarok::spelling {

/// Returns the known word that takes the fewest edits to make from `word`, or an empty view if none is near: more
/// edits than a third of the letters make another word, not a misspelt one. An edit inserts, removes or changes a
/// letter, or swaps two neighbours. Case does not count. Of several words as near, the first is returned.
std::string_view nearest(std::string_view word, std::span<const std::string_view> known);

/// Returns "; did you mean 'X'?" for the nearest known word, or an empty text if none is near.
std::string suggestion(std::string_view word, std::span<const std::string_view> known);

/// Returns the suggestion, or "." if none is near: the end of a sentence that names an unknown word.
std::string suggestionOrPoint(std::string_view word, std::span<const std::string_view> known);

/// Returns the names of rows with a member `name`, in their order behind `others`.
template <class Rows>
std::vector<std::string_view> namesOf(const Rows& rows, std::vector<std::string_view> others = {})
{
    others.reserve(others.size() + std::size(rows));
    for (const auto& row : rows)
        others.push_back(row.name);
    return others;
}

/// Returns the suggestion from the names of rows with a member `name`.
template <class Rows>
std::string suggestionByName(std::string_view word, const Rows& rows)
{
    return suggestion(word, namesOf(rows));
}

} // namespace tamarok::spelling

#pragma GCC visibility pop
