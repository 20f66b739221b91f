#pragma once

#include <span>
#include <string_view>

namespace tamarok::selections {

/// One base selection: the key that a field of the application names, and its statement. What depends
/// on the caller stands in braces:
///
///   {P0}        a field of the vector as it stands; {UP0} in capitals; {N0} if it is a number, else 0
///   {ACL0}      condition on the levels of the user {P0}, the digit being the groups to go up
///   {MEASURE}   the filter on assortments of the measure kind {P0}
///   {PLACE}     comparisons with the levels of the forest location path {P0}
///   {Typ}       the key; {GROUP} the key without its suffix; {KEYPART} the telling part of a key
///   {ISNULL} {TOP} {ROWNUM} {LONG} {DUAL} {CONCAT} {NOTEXT}   words of the dialect
///   {P0?a:b}    a where the field is not empty, else b; also with KEYPART, P0=2 (the field is that
///               text), GIVEN1 (the vector has the field and it is not empty) and ORACLE
struct Selection {
    std::string_view key;
    std::string_view statement;
};

/// All selections, sorted by key.
std::span<const Selection> all() noexcept;

/// The selection of that key, compared exactly, or nullptr.
const Selection* find(std::string_view key) noexcept;

} // namespace tamarok::selections
