#include "list_types.h"

#include "log_catalogue.h"
#include "upper_case.h"

namespace tamarok::catalogue {

namespace {

constexpr Column artikelRows[] = {
#include "data/artikel_columns.inc"
};
static_assert(isSortedAndUnique(artikelRows));
constexpr auto artikelIndex = makeColumnIndex<1017>(artikelRows);
constexpr ColumnTable artikelColumns{artikelRows, artikelIndex};

constexpr Column vertragRows[] = {
#include "data/vertrag_columns.inc"
};
static_assert(isSortedAndUnique(vertragRows));
constexpr auto vertragIndex = makeColumnIndex<14>(vertragRows);
constexpr ColumnTable vertragColumns{vertragRows, vertragIndex};

constexpr Column usersRows[] = {
#include "data/users_columns.inc"
};
static_assert(isSortedAndUnique(usersRows));
constexpr auto usersIndex = makeColumnIndex<1001>(usersRows);
constexpr ColumnTable usersColumns{usersRows, usersIndex};

constexpr Column aclRows[] = {
#include "data/acl_columns.inc"
};
static_assert(isSortedAndUnique(aclRows));
constexpr auto aclIndex = makeColumnIndex<4>(aclRows);
constexpr ColumnTable aclColumns{aclRows, aclIndex};

constexpr Column absRows[] = {
#include "data/abs_columns.inc"
};
static_assert(std::size(absRows) == 22);
static_assert(isSortedAndUnique(absRows));
constexpr auto absIndex = makeColumnIndex<116>(absRows);

constexpr ListType types[] = {
#include "data/list_types.inc"
};
static_assert(std::size(types) == 41);

constexpr bool keysAreUnique()
{
    for (const ListType& type : types) {
        if (std::ranges::count(types, type.key, &ListType::key) != 1) {
            return false;
        }
    }
    return true;
}
static_assert(keysAreUnique());

} // namespace

constinit const ColumnTable absColumns{absRows, absIndex};

std::span<const ListType> listTypes() noexcept
{
    return types;
}

const ListType* findListType(std::string_view key)
{
    std::string buffer;
    const auto found = std::ranges::find(types, upperCase(key, buffer), &ListType::key);
    return found == std::end(types) ? nullptr : found;
}

} // namespace tamarok::catalogue
