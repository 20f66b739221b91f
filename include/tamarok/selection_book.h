#pragma once

#include <span>
#include <string_view>

#pragma GCC visibility push(default)

namespace tamarok::selections {

/// One base selection: the key that a code field of the application asks for, and its statement. The
/// parts of the statement that vary stand in braces:
///
///   {P0}        a field of the caller's vector, verbatim; {UP0} in capitals; {N0} the field if it is a number
///               by the regional settings, else 0
///   {ACL0}      condition on the access levels of the user {P0}; the digit is the number of groups to go up
///   {ASSORTMENTS}  WHERE of the assortments for the kind of measurement {P0}, 1 to 6
///   {LOCATION}  comparisons with the levels of the forest location path {P0}
///   {Typ}       the key; {GROUP} the key without its suffix; {KEYPART} the number or role in the key
///   {ISNULL} {TOP} {ROWNUM} {LONG} {DUAL} {CONCAT} {NOTEXT}   words of the SQL dialect
///   {P0?a:b}    a choice: a if the value is not empty, else b; {P0=2?a:b}: a if the value is 2, else b
///   {GIVEN1?a:b}  a if the vector has field 1 and it is not empty, else b
///   {ORACLE?a:b}  a for Oracle, b for SQL Server
struct Selection {
    std::string_view key;
    std::string_view statement;
};

/// All selections, sorted by key.
std::span<const Selection> all() noexcept;

/// The selection of that key, or nullptr. Case counts.
const Selection* find(std::string_view key) noexcept;

} // namespace tamarok::selections

#pragma GCC visibility pop
