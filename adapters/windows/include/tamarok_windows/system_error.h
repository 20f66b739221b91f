#pragma once

#include <system_error>

namespace tamarok::windows {

/// The code of an error of the system. Its message is UTF-8, in the user's language; it compares with std::errc as the
/// errors of other systems do.
std::error_code systemError(unsigned long number) noexcept;

/// The code of this thread's last error.
std::error_code lastError() noexcept;

} // namespace tamarok::windows
