#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "random.h"

#include "tamarok/ado.h"
#include "tamarok/date.h"

namespace tamarok::database {

/// The rows of a key table that vouchers and harvest records refer to, in the order of their IDs.
class CodeTable {
public:
    /// @param statement  selects code and ID
    CodeTable(ado::Connection& connection, std::string_view statement);

    /// Returns the ID of a code; 0 for an empty code. Error 3265, with the code, if no row has it.
    std::int32_t id(std::string_view code) const;

    /// Returns the ID of any row, 0 if there is none.
    std::int32_t pick(Random& random) const;

private:
    std::map<std::string, std::int32_t, std::less<>> idByCode_;
    std::vector<std::int32_t> ids_;
};

/// A forest location with the level to which it belongs.
struct ForestPlace {
    std::int32_t id = 0;
    std::int32_t level = 0;
    std::string stand; ///< such as "101b2"
    std::string name;
};

/// The keys, places and partners that receipts draw from, read from the database.
class ReceiptKeys {
public:
    /// Errors: provider failures.
    explicit ReceiptKeys(ado::Connection& connection);

    /// Returns the codes of a table. Error 3265 for a table that receipts do not read.
    const CodeTable& table(std::string_view name) const;

    /// Returns the ID of a code in a table; 0 for an empty code. Error 3265 for an unknown table or code.
    std::int32_t id(std::string_view tableName, std::string_view code) const { return table(tableName).id(code); }
    std::int32_t pick(std::string_view tableName, Random& random) const { return table(tableName).pick(random); }

    /// Returns any forest location, and one of the same level.
    const ForestPlace& place(Random& random) const;
    const ForestPlace& placeOfLevel(std::int32_t level, Random& random) const;

    /// Returns the level whose code is that of `level` with its last groups of two digits zeroed.
    /// @param groups  1 for the OBF of a REV, 2 for its AFF
    std::int32_t levelAbove(std::int32_t level, std::size_t groups) const;

    /// Returns the cost centre of a level, or any if the level has none.
    std::int32_t costCentre(std::int32_t level, Random& random) const;

    /// Returns a forest owner of the level, or any if it has none.
    std::int32_t owner(std::int32_t level, Random& random) const;

    /// Returns a contractor: one that belongs to a level in most cases.
    std::int32_t contractor(Random& random) const;

    /// Returns a partner of a group (PERSONAL.GRUPPE). Error 3265 if the group has none.
    std::int32_t partner(std::string_view group, Random& random) const;

private:
    void readPlaces(ado::Connection& connection);
    void readLevels(ado::Connection& connection);
    void readPartners(ado::Connection& connection);

    std::map<std::string, CodeTable, std::less<>> tables_;
    std::vector<ForestPlace> places_;
    std::map<std::int32_t, std::vector<std::size_t>> placesByLevel_;
    std::map<std::int32_t, std::string> codeOfLevel_;
    std::map<std::string, std::int32_t, std::less<>> levelOfCode_;
    std::map<std::int32_t, std::vector<std::int32_t>> costCentresByLevel_;
    std::map<std::int32_t, std::vector<std::int32_t>> ownersByLevel_;
    std::vector<std::int32_t> contractorsOfLevels_;
    std::map<std::string, std::vector<std::int32_t>, std::less<>> partnersByGroup_;
};

/// Returns the date `days` later, or 0 (no date) if it lies behind the last day of the data.
Date laterDay(Date date, std::int32_t days, Date lastDay);

/// Returns the date of the head `index` of `count`: heads are evenly spread over the days of the data and follow
/// each other in time. Days are left free at both ends for the dates that precede or follow a head's own.
Date dateOfHead(std::int32_t index, std::int32_t count, Date lastDay, Random& random);

} // namespace tamarok::database
