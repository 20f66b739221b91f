#pragma once

#include <string>
#include <string_view>

#include "tamarok/round_wood.h"

namespace tamarok::cli {

/// The measures of a line of round timber as they were typed.
struct MeasureTexts {
    std::string_view pieces;
    std::string_view diameter;
    std::string_view length;
    std::string_view bark;
};

/// A measure that cannot be true, and the range in which it should be.
struct RangeFault {
    std::string_view MeasureTexts::*measure;
    std::string_view name;  ///< such as "diameter"
    std::string_view range; ///< such as "from 0 to below 1000 cm"

    /// Returns the message with the measure's text.
    std::string describe(const MeasureTexts& texts) const;
};

/// Returns the first measure out of range, nullptr where there is none: pieces from 0 to below 1,000,000, diameters to
/// below 1000 cm, lengths to below 10,000 m, bark from 0 to 100 percent or, in cm, to the diameter. The formulas take
/// any number, so that a sign or a unit typed wrongly would give a volume.
const RangeFault* findRangeFault(const timber::RoundWood& wood) noexcept;

} // namespace tamarok::cli
