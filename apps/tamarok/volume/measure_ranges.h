#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tamarok/regional.h"

namespace tamarok::cli {

/// What is measured of a line of round timber.
struct Measures {
    std::string_view pieces;   ///< from 0 to below 1,000,000
    std::string_view diameter; ///< in cm, from 0 to below 1000
    std::string_view length;   ///< in m, from 0 to below 10,000
    std::string_view bark;     ///< in % of the volume, from 0 to 100, or in cm, from 0 to the diameter
    std::string_view mode;     ///< unit of the bark: "%", "cm", or "" for none
};

/// A measure that cannot be true, and the range in which it should be.
struct RangeFault {
    std::string_view Measures::*measure;
    std::string_view name;  ///< such as "diameter"
    std::string_view range; ///< such as "from 0 to below 1000 cm"

    /// Returns the message. @param measures  the measures as they were typed
    std::string describe(const Measures& measures) const;
};

/// Returns the first measure out of range. The formulas take any number, so that a sign or a unit typed wrongly would
/// give a volume. A measure that is no number counts as in range: the formula reports it.
std::optional<RangeFault> findRangeFault(const Measures& measures, const Regional& regional);

} // namespace tamarok::cli
