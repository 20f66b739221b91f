#include "check/failure_remark.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace tamarok::cli::check {

namespace {

struct Remedy {
    std::int32_t number; ///< the server's own
    std::string_view text;
};

constexpr std::array remedies{
    Remedy{207, "see the missing columns above"},     Remedy{208, "see the missing tables above"},
    Remedy{229, "see the missing rights above"},      Remedy{230, "see the missing rights above"},
    Remedy{2812, "see the missing procedures above"}, Remedy{3906, "the database is set to read only"},
};

constexpr std::string_view waited = "another session holds what it needs: end that session, or run the check again";

} // namespace

std::string failureRemark(const Error& error)
{
    if (error.number == errors::timeout) return error.description + " - " + std::string{waited};
    const auto* const known = std::ranges::find(remedies, error.nativeError, &Remedy::number);
    if (known == remedies.end()) return error.description;
    return error.description + " - " + std::string{known->text};
}

} // namespace tamarok::cli::check
