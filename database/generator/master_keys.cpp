#include "master_keys.h"

#include "master_tables.h"
#include "resources.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

/// RELTABLE.RELTABLE_ID of the first of the ten relation lists of a timber list.
constexpr std::int32_t firstRelationList = 11;

/// Calls `use(table, row)` for each row of a table of the master data.
template <class Use>
void forEachRow(std::string_view name, Use use)
{
    const TsvTable table = masterTable(name);
    for (std::size_t row = 0; row < table.rows(); ++row)
        use(table, row);
}

std::vector<std::string_view> textsOf(std::string_view table, std::string_view column)
{
    std::vector<std::string_view> values;
    forEachRow(table,
               [&](const TsvTable& rows, std::size_t row) { values.push_back(rows.cell(row, rows.column(column))); });
    return values;
}

/// Returns the value of a key; `what` names it in Error 3265 if the map lacks it.
template <class Map, class Key>
const auto& find(const Map& map, const Key& key, std::string_view what)
{
    const auto found = map.find(key);
    if (found == map.end())
        throw Error{errors::itemNotFound, "The master data has no " + std::string{what} + ".", "MasterKeys"};
    return found->second;
}

} // namespace

MasterKeys::MasterKeys() : fellings_{textsOf("NUTZUNGSART", "NA")}, calamities_{textsOf("KALAMITAET", "KA")}
{
    readClasses();
    readPartners();
    readPlanning();
    for (const Resource& file : resources("master"))
        counts_[masterTableName(file.name)] = static_cast<std::int32_t>(TsvTable{file.name, file.text}.rows());
}

void MasterKeys::readClasses()
{
    forEachRow("STKL", [&](const TsvTable& table, std::size_t row) {
        strengthClasses_.push_back({table.cell(row, table.column("STKL")), table.number(row, table.column("DM_VON")),
                                    table.number(row, table.column("DM_BIS"))});
    });
    forEachRow("KUBATURKLASSE", [&](const TsvTable& table, std::size_t row) {
        volumeClasses_.push_back({table.cell(row, table.column("KKLASSE")),
                                  table.number(row, table.column("VOLUME_FROM")),
                                  table.number(row, table.column("VOLUME_TO"))});
    });
}

void MasterKeys::readPartners()
{
    forEachRow("PERSONAL", [&](const TsvTable& table, std::size_t row) {
        partners_[table.cell(row, table.column("GRUPPE"))].push_back(table.whole(row, table.column("ID_PERSONAL")));
    });
    forEachRow("VERTRAEGE", [&](const TsvTable& table, std::size_t row) {
        contracts_[table.whole(row, table.column("ID_FAKTART"))].push_back(
            {table.cell(row, table.column("VERTRAG_NAME")), table.whole(row, table.column("ID_PERSONAL"))});
    });
    forEachRow("USERS",
               [&](const TsvTable& table, std::size_t row) { users_.push_back(table.whole(row, table.column("ID"))); });
}

void MasterKeys::readPlanning()
{
    forEachRow("RELTABLE", [&](const TsvTable& table, std::size_t row) {
        const std::int32_t list = table.whole(row, table.column("RELTABLE_ID")) - firstRelationList + 1;
        relations_[list].push_back(table.whole(row, table.column("ID")));
    });
    forEachRow("WALDORT", [&](const TsvTable& table, std::size_t row) {
        places_.push_back(
            {table.whole(row, table.column("ID_WALDORT")), table.whole(row, table.column("ID_ACCESS_LEVELS"))});
    });
}

std::size_t MasterKeys::strengthClass(double diameter) const noexcept
{
    for (std::size_t i = 0; i < strengthClasses_.size(); ++i)
        if (diameter <= strengthClasses_[i].to) return i;
    return strengthClasses_.size() - 1;
}

std::string_view MasterKeys::volumeClass(double volume) const noexcept
{
    // Neighbouring classes share their bound. The one with the greater lower bound wins, so search backwards.
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
