#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/error.h"

namespace tamarok::ado {

/// Sources of the errors raised here.
inline constexpr std::string_view adodb = "ADODB"; ///< wrong calls by late binding
inline constexpr std::string_view connectionSource = "ADODB.Connection";
inline constexpr std::string_view recordsetSource = "ADODB.Recordset";
inline constexpr std::string_view fieldSource = "ADODB.Field";
inline constexpr std::string_view fieldsSource = "ADODB.Fields";
inline constexpr std::string_view commandSource = "ADODB.Command";
inline constexpr std::string_view parametersSource = "ADODB.Parameters";

[[noreturn]] inline void fail(std::int32_t number, std::string_view source, std::string description)
{
    throw Error{number, std::move(description), std::string{source}};
}

/// Runs `action`. Adds statement and source to an Error that has none.
template <class Action>
decltype(auto) guarded(std::string_view statement, std::string_view provider, Action&& action)
{
    try {
        return action();
    } catch (Error& error) {
        if (error.statement.empty()) error.statement = statement;
        if (error.source.empty()) error.source = provider;
        throw;
    }
}

} // namespace tamarok::ado
