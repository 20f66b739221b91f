#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The alphabetical order of lists. Letters are compared without regard to case. An accented Latin letter stands beside
/// its base letter, ß as "ss", Æ and Œ as two letters; accents count only between texts that are equal otherwise. Any
/// other character goes by its number.
namespace tamarok::controls::text_order {

/// Appends a text that has the place of `text` when compared byte by byte.
void appendKey(std::string& keys, std::string_view text);

std::string keyOf(std::string_view text);

/// The keys of texts to be sorted, one behind the other, made once: keys made in each comparison take more than ten
/// times as long (bench: keysMadeOnce).
class Keys {
public:
    void reserve(std::size_t texts) { ends_.reserve(texts + 1); }
    void add(std::string_view text);

    /// Returns the positions of the texts, from 0 as they were added, in their order. Equal texts keep theirs, in both
    /// directions.
    std::vector<std::uint32_t> stableOrder(bool descending);

    /// Returns the key at a position without the beginning that all keys share; see `skipShared`.
    std::string_view at(std::uint32_t position) const
    {
        const std::size_t begin = ends_[position] + shared_;
        return std::string_view{all_}.substr(begin, ends_[position + 1] - begin);
    }

private:
    /// Finds the beginning that all keys share, such as the blanks of padded numbers: it decides nothing.
    void skipShared();

    std::string all_;
    std::vector<std::size_t> ends_{0};
    std::size_t shared_ = 0; ///< length of the shared beginning
};

} // namespace tamarok::controls::text_order
