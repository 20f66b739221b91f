#pragma once

#include <span>
#include <string_view>

#include "connections.h"
#include "print/output.h"

#include "tamarok/tmkvar.h"

/// The steps of the working day that `tamarok day` shows.
namespace tamarok::cli::day {

struct Context {
    const TmkVar& session;
    Output& output;
    const DatabaseChoice& database; ///< where further connections and processes are opened
};

struct Step {
    std::string_view title;
    void (*run)(const Context&);
};

/// All steps, in the order of the day.
std::span<const Step> steps() noexcept;

void showLogIn(const Context& context);
void showOpenRecord(const Context& context);
void showCodeField(const Context& context);
void showDetailList(const Context& context);
void showAggregatedList(const Context& context);
void typeALine(const Context& context);
void measureLogs(const Context& context);
void showGameList(const Context& context);
void showHarvestList(const Context& context);
void showScreenLists(const Context& context);
void showFieldChecks(const Context& context);
void showPaperWork(const Context& context);
void showLookUps(const Context& context);

} // namespace tamarok::cli::day
