#include "tamarok/ado_backend.h"

#include "ado_failure.h"

// What a cursor answers that offers read-only rows.

namespace tamarok::ado {

namespace {

// A back end overrides these operations together, or none of them: Cursor::updatable() tells which, and the
// recordset asks it first.
[[noreturn]] void refuse(std::string_view what)
{
    fail(errors::readOnlyRecordset, recordsetSource, "The rows of this statement cannot be " + std::string{what} + ".");
}

} // namespace

std::int64_t Cursor::rowKey() const
{
    refuse("named by a key");
}

void Cursor::lockRow(std::int64_t)
{
    refuse("locked");
}

void Cursor::unlockRow()
{
    refuse("unlocked");
}

void Cursor::updateRow(std::int64_t, std::span<const Assignment>)
{
    refuse("changed");
}

std::int64_t Cursor::insertRow(std::span<const Assignment>)
{
    refuse("added to");
}

void Cursor::deleteRow(std::int64_t)
{
    refuse("deleted");
}

bool Cursor::readRow(std::int64_t, std::vector<Variant>&)
{
    refuse("read by a key");
}

} // namespace tamarok::ado
