#pragma once

#include <string>

#include "tamarok/error.h"

namespace tamarok::cli::check {

/// The remark for a trial that the database refused: what it said, and the remedy where its number tells one.
std::string failureRemark(const Error& error);

} // namespace tamarok::cli::check
