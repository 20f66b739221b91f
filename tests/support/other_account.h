#pragma once

#include <functional>
#include <string>

namespace tamarok::test {

/// True if this process may take another account, which only root may, and not in every container.
bool canChangeAccount();

/// Runs `work` in a child process under an account without rights of its own (user and group 65534).
/// @return what `work` returned, or the text of the exception that it threw
std::string asOtherAccount(const std::function<std::string()>& work);

} // namespace tamarok::test
