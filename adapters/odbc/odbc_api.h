#pragma once

/// The C interface of the driver manager. Every file of this folder takes it from here.

#include <cstddef>
#include <cstdint>

#include "system_odbc.h"

namespace tamarok::odbc {

static_assert(sizeof(SQLWCHAR) == 2, "The driver manager must have wide characters of 16 bits.");

/// The types of SQL Server beyond the standard.
inline constexpr SQLSMALLINT sqlServerVariant = -150;
inline constexpr SQLSMALLINT sqlServerXml = -152;
inline constexpr SQLSMALLINT sqlServerTime = -154;
inline constexpr SQLSMALLINT sqlServerDateTimeOffset = -155;

/// A number as the interface takes it where it expects a pointer.
inline SQLPOINTER asPointer(std::uintptr_t number) noexcept
{
    return reinterpret_cast<SQLPOINTER>(number); // NOLINT(performance-no-int-to-ptr): the interface is made so
}

inline bool succeeded(SQLRETURN code) noexcept
{
    return code == SQL_SUCCESS || code == SQL_SUCCESS_WITH_INFO;
}

} // namespace tamarok::odbc
