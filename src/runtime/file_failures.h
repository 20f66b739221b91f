#pragma once

#include <string>
#include <string_view>

#include "tamarok/error.h"

namespace tamarok {

/// Returns the Error for a failure of a file operation.
/// @param path  the path as the system has it
/// @param code  the system's error number (errno)
Error fileFailure(std::string_view path, int code);

/// Returns error 75 for a path that does not lead to what the operation needs.
/// @param reason  what stands there, without a subject: "is a folder"
Error pathFailure(std::string_view path, std::string_view reason);

/// Returns error 70 for a file that the operation must not touch.
Error ownershipFailure(std::string_view path, std::string_view reason);

} // namespace tamarok
