#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tamarok/tmkvar.h"

/// The statements that add and change rows of the master tables which a lookup knows. The table and what else a
/// statement needs is read out of the lookup's SELECT. Values are inserted verbatim, without escaping: a quote in one
/// makes the statement fail.
namespace tamarok::dialogs {

/// The tables that have statements of their own; rows of any other one are added through the recordset.
enum class MasterTable : std::uint8_t { FreeList, StandingFreeList, Order, Contract, Object, Project, Other };

/// Returns the table of a SELECT by the pattern that it contains; blanks in the patterns count.
MasterTable masterTableOf(std::string_view select);

/// Returns whether a new row's first value must differ from those of all rows.
bool hasUniqueFirstField(std::string_view select);

/// Returns whether the SELECT names the free list whose rows it reads.
bool namesFreeList(std::string_view select);

/// What the user typed, and the first two fields of the row before: the row is found again by them.
struct MasterRow {
    std::string first;
    std::string second;
    std::string third;
};
struct FormerRow {
    std::optional<std::string> first; ///< nothing for Null
    std::optional<std::string> second;
};

std::string newFreeListRow(std::string_view select, const MasterRow& row);
std::string changedFreeListRow(std::string_view select, const MasterRow& row, const FormerRow& former,
                               std::int32_t level);

std::string newStandingFreeListRow(std::string_view select, const MasterRow& row);
std::string changedStandingFreeListRow(std::string_view select, const MasterRow& row, const FormerRow& former);

/// @param row  cut to the widths of the columns, the hours in regional form
std::string newOrder(const MasterRow& row, const TmkVar& session);
std::string changedOrder(std::string_view select, const MasterRow& row, const FormerRow& former);

std::string newProject(const MasterRow& row, std::int32_t level);
std::string changedProject(std::string_view select, const MasterRow& row, const FormerRow& former);

std::string newObject(std::string_view select, const MasterRow& row);

/// Returns the statement that reads contracts of a number within the levels that the user sees.
std::string contractsOfNumber(std::string_view number, const TmkVar& session);

/// Returns the values cut to the widths of the table's columns.
MasterRow cutToWidths(MasterTable table, const MasterRow& row);

} // namespace tamarok::dialogs
