#include "list_types.h"

#include <algorithm>
#include <array>
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
    const std::string upperKey = text::toUpper(key);
    const auto found =
        std::ranges::find_if(all, [&](const ListType* type) { return upperKey == type->description().key; });
    return found == all.end() ? nullptr : *found;
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
