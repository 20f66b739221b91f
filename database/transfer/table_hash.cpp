#include "table_hash.h"

#include <bit>
#include <cmath>
#include <string>
#include <string_view>

#include "tamarok/date.h"
#include "tamarok/error.h"

namespace tamarok::database {
namespace {

/// FNV-1a, 64 bits, with the finish of a multiplicative mixer: the sums of raw values would cancel each other too
/// easily.
class Hash {
public:
    void byte(std::uint8_t value) { state_ = (state_ ^ value) * 0x100000001B3U; }
    void word(std::uint64_t value)
    {
        for (unsigned shift = 0; shift < 64; shift += 8)
            byte(static_cast<std::uint8_t>(value >> shift));
    }
    void text(std::string_view value)
    {
        word(value.size());
        for (const char c : value)
            byte(static_cast<std::uint8_t>(c));
    }
    std::uint64_t finish() const
    {
        std::uint64_t mixed = state_ ^ (state_ >> 30U);
        mixed *= 0xBF58476D1CE4E5B9U;
        mixed ^= mixed >> 27U;
        mixed *= 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }

private:
    std::uint64_t state_ = 0xCBF29CE484222325U;
};

enum class Tag : std::uint8_t { Null, Truth, Whole, Real, Date, Text };

void addNumber(Hash& hash, Tag tag, double number)
{
    hash.byte(static_cast<std::uint8_t>(tag));
    hash.word(std::bit_cast<std::uint64_t>(number == 0.0 ? 0.0 : number));
}

void addWhole(Hash& hash, Tag tag, std::int64_t number)
{
    hash.byte(static_cast<std::uint8_t>(tag));
    hash.word(static_cast<std::uint64_t>(number));
}

/// A time of day without its day has lost the last bits of its fraction on some ways; its milliseconds are the same.
void addDate(Hash& hash, Date date)
{
    constexpr double millisecondsOfDay = 86'400'000.0;
    addWhole(hash, Tag::Date, std::llround(date.days * millisecondsOfDay));
}

void addValue(Hash& hash, const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null: hash.byte(static_cast<std::uint8_t>(Tag::Null)); return;
    case Variant::Kind::Boolean: addWhole(hash, Tag::Truth, value.asBoolean() ? 1 : 0); return;
    case Variant::Kind::Integer: addWhole(hash, Tag::Whole, value.asInteger()); return;
    case Variant::Kind::Long: addWhole(hash, Tag::Whole, value.asLong()); return;
    case Variant::Kind::LongLong: addWhole(hash, Tag::Whole, value.asLongLong()); return;
    case Variant::Kind::Double: addNumber(hash, Tag::Real, value.asDouble()); return;
    case Variant::Kind::Date: addDate(hash, value.asDate()); return;
    case Variant::Kind::String:
        hash.byte(static_cast<std::uint8_t>(Tag::Text));
        hash.text(value.asString());
        return;
    default: break;
    }
    throw Error{errors::typeMismatch, "A value of kind " + std::string{name(value.kind())} + " is none of a column.",
                "Checksum"};
}

} // namespace

std::uint64_t hashOf(std::span<const Variant> row)
{
    Hash hash;
    for (const Variant& value : row)
        addValue(hash, value);
    return hash.finish();
}

} // namespace tamarok::database
