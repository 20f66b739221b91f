#include "database/master_keys.h"

#include "database/resources.h"
#include "database/tsv.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

constexpr std::string_view source = "MasterKeys";

/// The relation lists of a timber list are numbered from here in RELTABLE.RELTABLE_ID.
constexpr std::int32_t firstRelationList = 11;

std::vector<std::string_view> texts(std::string_view table, std::string_view column)
{
    const TsvTable rows = masterTable(table);
    std::vector<std::string_view> values;
    for (std::size_t row = 0; row < rows.rows(); ++row)
        values.push_back(rows.cell(row, rows.column(column)));
    return values;
}

template <class Map, class Key>
const auto& find(const Map& map, const Key& key, std::string_view what)
{
    const auto found = map.find(key);
    if (found == map.end())
        throw Error{errors::itemNotFound, "The master data has no " + std::string{what} + ".", std::string{source}};
    return found->second;
}

} // namespace

std::string_view masterTableName(std::string_view file) noexcept
{
    const std::string_view table = file.substr(file.find('_') + 1);
    return table.substr(0, table.find('.'));
}

TsvTable masterTable(std::string_view table)
{
    for (const Resource& file : resources("masterdata"))
        if (masterTableName(file.name) == table) return TsvTable{file.name, file.text};
    throw Error{errors::fileNotFound, "The master data has no table " + std::string{table} + ".", std::string{source}};
}

MasterKeys::MasterKeys() : fellings_{texts("NUTZUNGSART", "NA")}, calamities_{texts("KALAMITAET", "KA")}
{
    const TsvTable strength = masterTable("STKL");
    for (std::size_t row = 0; row < strength.rows(); ++row)
        strengthClasses_.push_back({strength.cell(row, strength.column("STKL")),
                                    strength.number(row, strength.column("DM_VON")),
                                    strength.number(row, strength.column("DM_BIS"))});
    const TsvTable volume = masterTable("KUBATURKLASSE");
    for (std::size_t row = 0; row < volume.rows(); ++row)
        volumeClasses_.push_back({volume.cell(row, volume.column("KKLASSE")),
                                  volume.number(row, volume.column("VOLUME_FROM")),
                                  volume.number(row, volume.column("VOLUME_TO"))});
    const TsvTable partners = masterTable("PERSONAL");
    for (std::size_t row = 0; row < partners.rows(); ++row)
        partners_[partners.cell(row, partners.column("GRUPPE"))].push_back(
            partners.whole(row, partners.column("ID_PERSONAL")));
    const TsvTable contracts = masterTable("VERTRAEGE");
    for (std::size_t row = 0; row < contracts.rows(); ++row)
        contracts_[contracts.whole(row, contracts.column("ID_FAKTART"))].push_back(
            {contracts.cell(row, contracts.column("VERTRAG_NAME")),
             contracts.whole(row, contracts.column("ID_PERSONAL"))});
    const TsvTable relations = masterTable("RELTABLE");
    for (std::size_t row = 0; row < relations.rows(); ++row)
        relations_[relations.whole(row, relations.column("RELTABLE_ID")) - firstRelationList + 1].push_back(
            relations.whole(row, relations.column("ID")));
    const TsvTable places = masterTable("WALDORT");
    for (std::size_t row = 0; row < places.rows(); ++row)
        places_.push_back(
            {places.whole(row, places.column("ID_WALDORT")), places.whole(row, places.column("ID_ACCESS_LEVELS"))});
    const TsvTable users = masterTable("USERS");
    for (std::size_t row = 0; row < users.rows(); ++row)
        users_.push_back(users.whole(row, users.column("ID")));
    for (const Resource& file : resources("masterdata"))
        counts_[masterTableName(file.name)] = static_cast<std::int32_t>(TsvTable{file.name, file.text}.rows());
}

std::size_t MasterKeys::strengthClass(double diameter) const noexcept
{
    for (std::size_t i = 0; i < strengthClasses_.size(); ++i)
        if (diameter <= strengthClasses_[i].to) return i;
    return strengthClasses_.size() - 1;
}

std::string_view MasterKeys::volumeClass(double volume) const noexcept
{
    // Of overlapping classes the one with the greatest lower bound wins.
    for (std::size_t i = volumeClasses_.size(); i-- > 0;)
        if (volumeClasses_[i].from <= volume && volume <= volumeClasses_[i].to) return volumeClasses_[i].code;
    return {};
}

const std::vector<std::int32_t>& MasterKeys::partners(std::string_view group) const
{
    return find(partners_, group, "partners of group " + std::string{group});
}

const std::vector<MasterKeys::Contract>& MasterKeys::contracts(std::int32_t settlement) const
{
    return find(contracts_, settlement, "contracts of settlement " + std::to_string(settlement));
}

const std::vector<std::int32_t>& MasterKeys::relations(std::int32_t list) const
{
    return find(relations_, list, "relation list " + std::to_string(list));
}

std::int32_t MasterKeys::count(std::string_view table) const
{
    return find(counts_, table, "table " + std::string{table});
}

} // namespace tamarok::database
