#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tamarok::database {

class TsvTable;

/// The keys of the master data that the generator refers to, read from the same files as the tables.
class MasterKeys {
public:
    struct StrengthClass {
        std::string_view code;
        double from, to; ///< inclusive diameter bounds in cm
    };
    struct VolumeClass {
        std::string_view code;
        double from, to; ///< inclusive bounds of the mean piece volume in cubic metres
    };
    struct Place {
        std::int32_t id;    ///< WALDORT.ID_WALDORT
        std::int32_t level; ///< ACCESS_LEVELS.ID
    };
    struct Contract {
        std::string_view name; ///< VERTRAEGE.VERTRAG_NAME
        std::int32_t partner;  ///< PERSONAL.ID_PERSONAL
    };

    MasterKeys();

    /// Ordinal of the strength class of a diameter in cm; the last one above all bounds.
    std::size_t strengthClass(double diameter) const noexcept;
    const std::vector<StrengthClass>& strengthClasses() const noexcept { return strengthClasses_; }

    /// Volume class of a mean piece volume, empty where none fits.
    std::string_view volumeClass(double volume) const noexcept;

    /// PERSONAL.ID_PERSONAL of a group's partners. Error 3265 for an unknown group.
    const std::vector<std::int32_t>& partners(std::string_view group) const;

    /// Contracts of a kind of settlement (VERTRAEGE.ID_FAKTART: 0 for R, 1 to 8 for A1 to A8).
    const std::vector<Contract>& contracts(std::int32_t settlement) const;

    /// RELTABLE.ID of a list's entries. @param list 1 to 10
    const std::vector<std::int32_t>& relations(std::int32_t list) const;

    const std::vector<Place>& places() const noexcept { return places_; }
    const std::vector<std::string_view>& fellings() const noexcept { return fellings_; }
    const std::vector<std::string_view>& calamities() const noexcept { return calamities_; }
    const std::vector<std::int32_t>& users() const noexcept { return users_; }

    /// Number of rows of a table whose keys run from 1.
    std::int32_t count(std::string_view table) const;

private:
    std::vector<StrengthClass> strengthClasses_;
    std::vector<VolumeClass> volumeClasses_;
    std::map<std::string_view, std::vector<std::int32_t>> partners_;
    std::map<std::int32_t, std::vector<Contract>> contracts_;
    std::map<std::int32_t, std::vector<std::int32_t>> relations_;
    std::vector<Place> places_;
    std::vector<std::string_view> fellings_;
    std::vector<std::string_view> calamities_;
    std::vector<std::int32_t> users_;
    std::map<std::string_view, std::int32_t> counts_;
};

/// The table that a file NN_TABLE.tsv of the master data fills.
std::string_view masterTableName(std::string_view file) noexcept;

/// The rows of a table of the master data. Error 53 where it has none.
TsvTable masterTable(std::string_view table);

} // namespace tamarok::database
