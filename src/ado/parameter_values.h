#pragma once

#include <span>
#include <string>
#include <vector>

#include "tamarok/ado.h"

namespace tamarok::ado {

/// Parameters as they are sent: values of their parameter's type, texts cut to its size. Copies the parameters
/// only if one of them must be converted.
class ParameterValues {
public:
    /// Errors: 13 or 6 for a value that does not fit its type, 3251 for a parameter that is not input.
    explicit ParameterValues(std::span<const Parameter> parameters);

    std::span<const Parameter> get() const noexcept { return values_; }

private:
    std::vector<Parameter> fitted_;
    std::span<const Parameter> values_;
};

/// Returns a procedure call as a connection's listener gets it: EXEC name 'text', 2
std::string describeCall(const std::string& procedure, std::span<const Parameter> parameters);

} // namespace tamarok::ado
