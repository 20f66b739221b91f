#pragma once

#include "database/delivery.h"
#include "database/master_keys.h"
#include "database/random.h"

namespace tamarok::database {

/// Measures the lines of timber lists: draws what the forester finds and computes what the trade
/// derives from it.
class LineMeasurement {
public:
    explicit LineMeasurement(const MasterKeys& keys) : keys_{keys} {}

    /// Fills a new line of the list, prices excepted.
    void measure(const profile::Kind& kind, const TimberList& list, LogLine& line, Random& random) const;

private:
    void measureLog(const profile::Kind& kind, const TimberList& list, LogLine& line, Random& random) const;
    void measureStacked(const profile::Kind& kind, const TimberList& list, LogLine& line, Random& random) const;
    void classify(const profile::Kind& kind, const TimberList& list, LogLine& line) const;

    const MasterKeys& keys_;
};

/// Volume of one log in cubic metres, rounded half-even to three decimals: diameter squared times
/// 3.1416 times length over 40000, less the bark (Huber's formula with the trade's constant for pi).
/// @param diameter  mid-diameter in centimetres
/// @param length    metres
/// @param bark      centimetres (mode 0) or percent (mode 1)
double logVolume(double diameter, double length, double bark, std::int16_t barkMode);

/// Rounds half-even to that many decimals, on the scaled number.
double rounded(double value, int decimals);

} // namespace tamarok::database
