#include "list_types.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "types/all_types.h"
#include "word_list.h"

#include "tamarok/error.h"
#include "tamarok/list_catalogue.h"
#include "tamarok/spelling.h"
#include "tamarok/text.h"

namespace tamarok::catalogue {

namespace {

// One line for each list type, by name. Each checks its rows where it is defined.
constexpr std::array<const ListType*, 41> all{
    &types::acl,    &types::akat,      &types::artikel,  &types::bbf,     &types::bbf_plann, &types::bbfahr,
    &types::bbfak,  &types::bbfb,      &types::bbfs,     &types::bbhab,   &types::bbhunde,   &types::bbjagd,
    &types::bbjb,   &types::bbklr,     &types::bblag,    &types::bbltn,   &types::bbmap,     &types::bbobj,
    &types::bbplan, &types::bbstrk,    &types::bbtalk,   &types::bbun,    &types::bbvs,      &types::bbwal,
    &types::bbwild, &types::bbzv,      &types::berm,     &types::fhpexp,  &types::kiz,       &types::log,
    &types::msch,   &types::mvlose,    &types::personal, &types::plan,    &types::rj,        &types::sapagruppe,
    &types::steh,   &types::transport, &types::users,    &types::vertrag, &types::waren,
};

// Look-ups by key. Forms ask for each column of a list by the key of its type, so the look-up has to cost little beside
// the copy of a text: comparing the upper-case key with each type in turn takes ten times as long as this table
// (bench: getColumnTypOfPlainRow).

/// A key of at most 16 ASCII characters in upper case, as two numbers.
using PackedKey = std::array<std::uint64_t, 2>;

/// The byte in each of the eight places.
constexpr std::uint64_t eightTimes(std::uint64_t byte) noexcept
{
    return byte * 0x0101010101010101U;
}

/// Eight ASCII characters in upper case at once: 0x20 less where a byte lies between 'a' and 'z'.
constexpr std::uint64_t upperCase(std::uint64_t characters) noexcept
{
    const std::uint64_t fromA = characters + eightTimes(0x80U - 'a');
    const std::uint64_t beyondZ = characters + eightTimes(0x7FU - 'z');
    return characters - (((fromA ^ beyondZ) & eightTimes(0x80U)) >> 2U);
}

/// Up to eight characters as a number, the first in its lowest byte. Character by character in a register: a copy to
/// memory that is read back as a number waits for the copy to arrive, which takes longer.
constexpr std::uint64_t packEight(std::string_view characters) noexcept
{
    std::uint64_t packed = 0;
    unsigned shift = 0;
    for (const char character : characters) {
        packed |= static_cast<std::uint64_t>(static_cast<unsigned char>(character)) << shift;
        shift += 8U;
    }
    return packed;
}

/// What a key that is longer or holds other characters packs to.
constexpr PackedKey unpackable{UINT64_MAX, UINT64_MAX};

constexpr PackedKey pack(std::string_view key) noexcept
{
    constexpr std::size_t half = 8;
    PackedKey packed{};
    if (key.size() <= half) {
        packed[0] = packEight(key);
    } else if (key.size() <= 2 * half) {
        packed = {packEight(key.substr(0, half)), packEight(key.substr(half))};
    } else {
        return unpackable;
    }
    if (((packed[0] | packed[1]) & eightTimes(0x80U)) != 0) return unpackable;
    return {upperCase(packed[0]), upperCase(packed[1])};
}

/// The list types by packed key: open addressing, with at most a third of the places taken.
class KeyTable {
public:
    constexpr explicit KeyTable(std::span<const std::string_view> keys)
    {
        std::uint8_t position = 0;
        for (const std::string_view key : keys) {
            const PackedKey packed = pack(key);
            std::size_t place = placeOf(packed);
            while (places_[place].position != 0)
                place = (place + 1) % places_.size();
            places_[place] = {packed, ++position};
        }
    }

    /// The position of a key plus 1, 0 for an unknown one.
    constexpr std::size_t find(const PackedKey& key) const noexcept
    {
        for (std::size_t place = placeOf(key);; place = (place + 1) % places_.size()) {
            const Place& found = places_[place];
            if (found.key == key || found.position == 0) return found.position;
        }
    }

private:
    struct Place {
        PackedKey key{};
        std::uint8_t position = 0;
    };
    static constexpr std::size_t placeOf(const PackedKey& key) noexcept
    {
        // Multiplicative hashing: the upper bits of the product depend on every character.
        return static_cast<std::size_t>(((key[0] ^ (key[1] << 1U)) * 0x9E3779B97F4A7C15U) >> 57U);
    }

    std::array<Place, 128> places_{};
};

constexpr std::array<std::string_view, all.size()> keysInOrder{
    "ACL",    "AKAT",      "ARTIKEL", "BBF",     "BBF_PLANN", "BBFAHR",   "BBFAK",  "BBFB",  "BBFS",
    "BBHAB",  "BBHUNDE",   "BBJAGD",  "BBJB",    "BBKLR",     "BBLAG",    "BBLTN",  "BBMAP", "BBOBJ",
    "BBPLAN", "BBSTRK",    "BBTALK",  "BBUN",    "BBVS",      "BBWAL",    "BBWILD", "BBZV",  "BERM",
    "FHPEXP", "KIZ",       "LOG",     "MSCH",    "MVLOSE",    "PERSONAL", "PLAN",   "RJ",    "SAPAGRUPPE",
    "STEH",   "TRANSPORT", "USERS",   "VERTRAG", "WAREN",
};
constexpr KeyTable keyTable{keysInOrder};

} // namespace

std::span<const ListType* const> listTypes() noexcept
{
    return all;
}

std::vector<std::string_view> listTypeKeys()
{
    std::vector<std::string_view> keys;
    keys.reserve(all.size());
    for (const ListType* type : all)
        keys.push_back(type->description().key);
    return keys;
}

namespace {

const ListType& requireListType(std::string_view key)
{
    if (const ListType* type = findListType(key)) return *type;
    throw Error{errors::invalidArgument,
                "there is no list type '" + std::string{key} + "'" + spelling::suggestion(key, listTypeKeys()),
                "List catalogue"};
}

std::string_view measureOf(Aggregate aggregate)
{
    if (!isMeasure(aggregate)) return {};
    return aggregate == Aggregate::sum ? "SUM" : "MAX";
}

} // namespace

ListTypeInfo listTypeInfo(std::string_view key)
{
    const ListDescription& type = requireListType(key).description();
    return {type.key, type.base, type.label, type.columns.size(), type.dependsOnVersion, type.composesSelect};
}

std::vector<ColumnInfo> columnsOf(std::string_view key)
{
    std::vector<ColumnInfo> columns;
    for (const Column& column : requireListType(key).description().columns)
        columns.push_back({column.id, column.label, measureOf(column.aggregate)});
    return columns;
}

const ListType* findListType(std::string_view key)
{
    PackedKey packed = pack(key);
    // A letter beyond ASCII may have one of ASCII as its upper case.
    if (packed == unpackable) packed = pack(text::toUpper(key));
    const std::size_t position = keyTable.find(packed);
    return position == 0 ? nullptr : all[position - 1];
}

const ListType& logList() noexcept
{
    return types::log;
}

const ListType& deductionList() noexcept
{
    return types::deductions;
}

bool namesKey(const Choice& choice, std::string_view key) noexcept
{
    return isWordOf(choice.keys, key);
}

} // namespace tamarok::catalogue
