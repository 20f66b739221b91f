#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/variant.h"

#pragma GCC visibility push(default)

/// Stored procedures of the embedded database: native code in place of the server's T-SQL.
namespace tamarok::embedded {

/// What a procedure may do with the database. Statements are T-SQL with "?" for parameters; they
/// share the time-out of the call. All that a procedure writes is written together or not at all.
class ProcedureScope {
public:
    virtual ~ProcedureScope() = default;

    /// Runs a statement or batch. @return rows touched, -1 where nothing was counted
    virtual std::int64_t execute(std::string_view statement, std::span<const Variant> parameters) = 0;

    /// All rows of a query.
    virtual std::vector<std::vector<Variant>> query(std::string_view statement,
                                                    std::span<const Variant> parameters) = 0;
};

struct ProcedureParameter {
    std::string name; ///< without "@"
    bool required = true;
};

struct Procedure {
    std::string name;
    std::vector<ProcedureParameter> parameters;
    /// @param arguments  one for each parameter; Empty for one that was left out
    std::function<void(ProcedureScope& scope, std::span<const Variant> arguments)> body;
};

struct CompareNames { ///< without regard to case
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const noexcept;
};

/// The procedures of a connection by name.
class ProcedureRegistry {
public:
    /// Replaces one of the same name.
    void add(Procedure procedure);
    /// Takes "[dbo].[name]" and "dbo.name" as well; nullptr for an unknown one.
    const Procedure* find(std::string_view name) const;

private:
    std::map<std::string, Procedure, CompareNames> procedures_;
};

/// The procedures that come with the system: tmk_MODELS_INS, tmk_NodeVisible, tmk_OPTIONEN_INS.
ProcedureRegistry builtInProcedures();

} // namespace tamarok::embedded

#pragma GCC visibility pop
