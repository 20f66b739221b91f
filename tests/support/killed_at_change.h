#pragma once

#include <string>
#include <vector>

namespace tamarok::test {

/// True if processes may be traced here; some containers forbid it.
bool canTrace();

/// Runs a program and kills it just before its n-th change to files (creating, writing but to a standard stream,
/// cutting, renaming, removing, forcing to the disk, changing mode or owner), counted from 1.
/// @return false if the program ended before
/// Throws std::runtime_error where processes cannot be traced.
bool killAtChange(const std::string& program, const std::vector<std::string>& arguments, int n);

} // namespace tamarok::test
