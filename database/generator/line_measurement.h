#pragma once

#include "delivery.h"
#include "master_keys.h"
#include "random.h"

namespace tamarok::database {

/// Measures the lines of timber lists: draws the measured values and computes volume, quantity and classes.
class LineMeasurement {
public:
    /// @param keys  must outlive the object
    explicit LineMeasurement(const MasterKeys& keys) : keys_{keys} {}

    /// Fills a new line of the list. Prices are left at 0.
    void measure(const profile::Kind& kind, const TimberList& list, LogLine& line, Random& random) const;

private:
    void measureLog(const profile::Kind& kind, const TimberList& list, LogLine& line, Random& random) const;
    void classify(const profile::Kind& kind, const BarkRule& rule, LogLine& line) const;

    const MasterKeys& keys_;
};

/// Returns the volume of one log in cubic metres, rounded half to even to three decimals, by Huber's formula:
/// mid-diameter squared x pi / 4 x length, with 3.1416 for pi as the timber trade has it.
/// @param diameter  mid-diameter over bark in centimetres
/// @param length    metres
/// @param bark      deduction in `unit`: centimetres of the diameter or percent of the volume
double logVolume(double diameter, double length, double bark, BarkUnit unit);

} // namespace tamarok::database
