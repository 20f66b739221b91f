#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "list_printer.h"
#include "list_query.h"
#include "output.h"
#include "volume_table.h"

/// The commands behind the command line. Each returns the exit status.
namespace tamarok::cli {

/// A command line that makes no sense; exit status 2.
struct UsageError {
    std::string message;
};

struct InitOptions {
    std::string file;
    std::int64_t logs = 10'000;
    std::uint64_t seed = 1;
    bool force = false;
};

struct ListOptions {
    std::string database = "tamarok.db";
    std::string locale; ///< the machine's where empty
    bool oracle = false;
    ListRequest list;
    ListFormat format = ListFormat::Table;
};

struct ColumnsOptions {
    std::string database = "tamarok.db";
    std::string type;
    std::string version = "R";
};

struct DayOptions {
    std::string database = "tamarok.db";
    std::string locale = "de-AT";
};

struct CallOptions {
    std::optional<std::string> database;
    std::optional<std::string> odbc;
    std::string locale;
};

struct VolumeOptions {
    std::optional<std::string> diameter;
    std::optional<std::string> length;
    std::string csv;
    VolumeSettings settings;
};

int runInit(const InitOptions& options, Output& output);
int runList(const ListOptions& options, Output& output);
int runSql(const ListOptions& options, Output& output);
int runColumns(const ColumnsOptions& options, Output& output);
int runDay(const DayOptions& options, Output& output);
int runCall(const CallOptions& options, Output& output);
int runVolume(const VolumeOptions& options, Output& output);

} // namespace tamarok::cli
