#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#pragma GCC visibility push(default)

/// Names of tables and columns compare without regard to case: ASCII letters and the letters of
/// Latin-1 (ä, ö, ü, ...), which are all letters that names of this system contain.
namespace tamarok::tsql {

/// Upper case of byte `c` of a UTF-8 text; `previous` is the byte before it. Letters of Latin-1 have two bytes, the
/// first of them 0xC3; ÷ and ß have no upper case.
constexpr unsigned char foldByte(unsigned char previous, unsigned char c)
{
    const bool ascii = c >= 'a' && c <= 'z';
    const bool latin = previous == 0xC3 && c >= 0xA0 && c < 0xBF && c != 0xB7;
    return ascii || latin ? static_cast<unsigned char>(c - 0x20) : c;
}

/// Whether two names are equal without regard to case.
constexpr bool sameName(std::string_view a, std::string_view b)
{
    if (a.size() != b.size()) return false;
    unsigned char previousA = 0;
    unsigned char previousB = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const auto ca = static_cast<unsigned char>(a[i]);
        const auto cb = static_cast<unsigned char>(b[i]);
        if (ca != cb && foldByte(previousA, ca) != foldByte(previousB, cb)) return false;
        previousA = ca;
        previousB = cb;
    }
    return true;
}

/// Orders names without regard to case, so that names which are the same by `sameName` are equivalent.
constexpr bool nameLess(std::string_view a, std::string_view b)
{
    unsigned char previousA = 0;
    unsigned char previousB = 0;
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        const auto ca = static_cast<unsigned char>(a[i]);
        const auto cb = static_cast<unsigned char>(b[i]);
        const unsigned char foldedA = foldByte(previousA, ca);
        const unsigned char foldedB = foldByte(previousB, cb);
        if (foldedA != foldedB) return foldedA < foldedB;
        previousA = ca;
        previousB = cb;
    }
    return a.size() < b.size();
}

/// A name as written.
struct Name {
    std::string_view text;
    std::uint32_t offset = 0; ///< in the batch's text

    bool empty() const { return text.empty(); }
    friend bool operator==(const Name& a, const Name& b) { return sameName(a.text, b.text); }
};

} // namespace tamarok::tsql

#pragma GCC visibility pop
