#pragma once

#include <utility>

#include "odbc_api.h"

namespace tamarok::odbc {

/// Owns a handle of the driver manager. Each handle is made below the one that it belongs to, which must outlive it.
template <SQLSMALLINT type>
class Handle {
public:
    Handle() = default;
    /// Allocates a handle. Error 0x80004005 where that fails.
    explicit Handle(SQLHANDLE parent) : handle_{allocate(parent)} {}
    Handle(Handle&& other) noexcept : handle_{std::exchange(other.handle_, nullptr)} {}
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle()
    {
        if (handle_ != SQL_NULL_HANDLE) SQLFreeHandle(type, handle_);
    }

    SQLHANDLE get() const noexcept { return handle_; }
    explicit operator bool() const noexcept { return handle_ != SQL_NULL_HANDLE; }

private:
    static SQLHANDLE allocate(SQLHANDLE parent);

    SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

using EnvironmentHandle = Handle<SQL_HANDLE_ENV>;
using ConnectionHandle = Handle<SQL_HANDLE_DBC>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

/// An environment of version 3 of the interface.
EnvironmentHandle makeEnvironment();

} // namespace tamarok::odbc
