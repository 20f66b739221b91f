#pragma once

#include <string_view>

/// The files that mend an installation.
namespace tamarok::cli::check {

/// Scripts for a server. Each may run again: what is there stays.
inline constexpr std::string_view tablesScript = "database/sqlserver/01_tables.sql";
inline constexpr std::string_view proceduresScript = "database/sqlserver/02_procedures.sql";
inline constexpr std::string_view textsScript = "database/sqlserver/03_texts.sql";
inline constexpr std::string_view masterDataScript = "database/sqlserver/04_master_data.sql";

/// The folder of the scripts that make the tables of a file, each under the name that database::scriptOfTable gives.
inline constexpr std::string_view schemaFolder = "database/schema/";

} // namespace tamarok::cli::check
