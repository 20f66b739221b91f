#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tamarok::database {

/// The keys of the master data that the generator uses, read from the same files as the tables.
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

    /// Reads the keys from the embedded files. Error 5 for a malformed file.
    MasterKeys();

    /// Returns the ordinal of the strength class of a diameter in cm; the last class for a greater diameter.
    std::size_t strengthClass(double diameter) const noexcept;
    const std::vector<StrengthClass>& strengthClasses() const noexcept { return strengthClasses_; }

    /// Returns KUBATURKLASSE.KKLASSE of a mean piece volume in cubic metres; empty if no class fits. On a bound
    /// that two classes share, the higher class.
    std::string_view volumeClass(double volume) const noexcept;

    /// Returns PERSONAL.ID_PERSONAL of the partners of a group (PERSONAL.GRUPPE). Error 3265 for an unknown group.
    const std::vector<std::int32_t>& partners(std::string_view group) const;

    /// Returns the contracts of a version (VERTRAEGE.ID_FAKTART: 0 for R, 1 to 8 for A1 to A8). Error 3265 for
    /// any other number.
    const std::vector<Contract>& contracts(std::int32_t settlement) const;

    /// Returns RELTABLE.ID of a list's entries. @param list 1 to 10, Error 3265 otherwise
    const std::vector<std::int32_t>& relations(std::int32_t list) const;

    /// Each row of the tables WALDORT, NUTZUNGSART, KALAMITAET and USERS, in their order.
    const std::vector<Place>& places() const noexcept { return places_; }
    const std::vector<std::string_view>& fellings() const noexcept { return fellings_; }
    const std::vector<std::string_view>& calamities() const noexcept { return calamities_; }
    const std::vector<std::int32_t>& users() const noexcept { return users_; }

    /// Returns the number of rows of a table whose keys count from 1: its greatest key. Error 3265 for an unknown
    /// table.
    std::int32_t count(std::string_view table) const;

private:
    void readClasses();
    void readPartners();
    void readPlanning();

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

} // namespace tamarok::database
