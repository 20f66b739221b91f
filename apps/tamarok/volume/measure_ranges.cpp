#include "volume/measure_ranges.h"

namespace tamarok::cli {
namespace {

using timber::RoundWood;

struct Range {
    double RoundWood::*measure;
    double limit; ///< values are from 0 to below it
    RangeFault fault;
};

constexpr Range ranges[] = {
    {&RoundWood::pieces, 1e6, {&MeasureTexts::pieces, "pieces", "from 0 to below 1000000"}},
    {&RoundWood::diameter, 1e3, {&MeasureTexts::diameter, "diameter", "from 0 to below 1000 cm"}},
    {&RoundWood::length, 1e4, {&MeasureTexts::length, "length", "from 0 to below 10000 m"}},
};
constexpr RangeFault barkOfVolume{&MeasureTexts::bark, "bark", "from 0 to 100 %"};
constexpr RangeFault barkOfDiameter{&MeasureTexts::bark, "bark", "from 0 cm to the diameter"};

} // namespace

std::string RangeFault::describe(const MeasureTexts& texts) const
{
    return std::string{name}.append(" ").append(texts.*measure).append(" is not ").append(range);
}

const RangeFault* findRangeFault(const RoundWood& wood) noexcept
{
    for (const Range& range : ranges) {
        const double value = wood.*range.measure;
        if (value < 0.0 || value >= range.limit) return &range.fault;
    }
    const bool inCentimetres = wood.mode == timber::BarkMode::Centimetres;
    const double most = inCentimetres ? wood.diameter : 100.0;
    if (wood.bark >= 0.0 && wood.bark <= most) return nullptr;
    return inCentimetres ? &barkOfDiameter : &barkOfVolume;
}

} // namespace tamarok::cli
