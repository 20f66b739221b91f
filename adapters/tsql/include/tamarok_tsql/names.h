#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

/// Names of tables and columns compare without regard to case: ASCII letters and the letters of
/// Latin-1 (ä, ö, ü, ...), which is what names of this system are made of.
namespace tamarok::tsql {

/// Upper case of byte `c` of a UTF-8 text whose byte before is `previous`.
constexpr unsigned char foldByte(unsigned char previous, unsigned char c)
{
    const bool ascii = c >= 'a' && c <= 'z';
    const bool latin = previous == 0xC3 && c >= 0xA0 && c < 0xBF && c != 0xB7;
    return ascii || latin ? static_cast<unsigned char>(c - 0x20) : c;
}

/// Up to eight bytes as one number.
constexpr std::uint64_t loadBytes(const char* bytes, std::size_t count)
{
    std::uint64_t word = 0;
    if (std::is_constant_evaluated()) {
        for (std::size_t i = 0; i < count; ++i) {
            word |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
        }
    } else {
        std::memcpy(&word, bytes, count);
    }
    return word;
}

constexpr std::uint64_t mixWord(std::uint64_t hash, std::uint64_t word)
{
    hash = (hash ^ word) * 0x9E3779B97F4A7C15ULL;
    return hash ^ (hash >> 32U);
}

/// Hash under which equal names meet. Both cases of a folded letter differ in one bit, which is left out.
constexpr std::uint32_t nameHash(std::string_view name)
{
    constexpr std::uint64_t caseless = 0xDFDFDFDFDFDFDFDFULL;
    static_assert(std::endian::native == std::endian::little);
    std::uint64_t hash = name.size();
    const char* at = name.data();
    std::size_t left = name.size();
    for (; left >= 8; left -= 8, at += 8)
        hash = mixWord(hash, loadBytes(at, 8) & caseless);
    return static_cast<std::uint32_t>(mixWord(hash, loadBytes(at, left) & caseless));
}

/// Hash of a text as it stands, carried on from `hash`.
constexpr std::uint64_t textHash(std::uint64_t hash, std::string_view text)
{
    hash = mixWord(hash, text.size());
    const char* at = text.data();
    std::size_t left = text.size();
    for (; left >= 8; left -= 8, at += 8)
        hash = mixWord(hash, loadBytes(at, 8));
    return mixWord(hash, loadBytes(at, left));
}

constexpr bool sameName(std::string_view a, std::string_view b)
{
    if (a.size() != b.size()) return false;
    if (a == b) return true;
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

/// A name as written, with the hash under which it is looked up.
struct Name {
    std::string_view text;
    std::uint32_t hash = 0;
    std::uint32_t offset = 0; ///< in the batch's text

    bool empty() const { return text.empty(); }
    friend bool operator==(const Name& a, const Name& b) { return a.hash == b.hash && sameName(a.text, b.text); }
};

} // namespace tamarok::tsql
