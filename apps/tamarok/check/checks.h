#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "check/installation.h"
#include "check/reference.h"
#include "check/report.h"

/// The checks of an installation. Each adds its lines to the report and changes nothing in the database.
namespace tamarok::cli::check {

struct Context {
    Installation& installation;
    const Reference& reference;
    Report& report;
};

enum class Concerns : std::uint8_t { Server, File, Both };

struct Check {
    std::string_view name;
    Concerns concerns;
    void (*run)(Context&);
};

/// All checks in their order; the first ones tell what the others need.
std::span<const Check> checks() noexcept;

void checkServer(Context& context);
void checkLogin(Context& context);
void checkFile(Context& context);
void checkDates(Context& context);
void checkTables(Context& context);
void checkProcedures(Context& context);
void checkTexts(Context& context);
void checkKeyRows(Context& context);
void checkCollation(Context& context);
void checkRights(Context& context);
void checkReading(Context& context);
void checkLists(Context& context);
void checkSelections(Context& context);
void checkOptions(Context& context);
void checkLocks(Context& context);
void checkRowLock(Context& context);

} // namespace tamarok::cli::check
