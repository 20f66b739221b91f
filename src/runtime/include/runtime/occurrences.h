#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace tamarok::text {

/// Finds the occurrences of a text while another one is read once, character by character (the method of Knuth,
/// Morris and Pratt). All reading takes time linear in the two texts, whatever they hold; the search of the standard
/// library takes their product for a text such as "aaaa" in "aaaaaaaa".
template <class Character>
class Occurrences {
public:
    /// @param wanted  not empty; must outlive this object
    explicit Occurrences(std::basic_string_view<Character> wanted) : wanted_{wanted}, borders_(wanted.size() + 1, 0)
    {
        // Each beginning of the wanted text is read by the rules for the shorter ones.
        for (std::size_t length = 1; length < wanted.size(); ++length)
            borders_[length + 1] = after(borders_[length], wanted[length]);
    }

    /// Reads one more character.
    /// @param matched  how many characters of the wanted text stood at the end of what was read before; 0 at first
    /// @return the number that stands there now; `isFound` tells whether it is the whole text
    std::size_t after(std::size_t matched, Character character) const
    {
        // The longest beginning that still fits.
        while (matched > 0 && (isFound(matched) || wanted_[matched] != character))
            matched = borders_[matched];
        return wanted_[matched] == character ? matched + 1 : 0;
    }
    bool isFound(std::size_t matched) const noexcept { return matched == wanted_.size(); }

private:
    std::basic_string_view<Character> wanted_;
    /// By the length of a beginning of the wanted text: the longest shorter beginning that it ends with.
    std::vector<std::size_t> borders_;
};

} // namespace tamarok::text
