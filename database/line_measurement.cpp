#include "database/line_measurement.h"

#include <algorithm>
#include <cmath>

namespace tamarok::database {
namespace {

using profile::Kind;
using profile::Measure;
using profile::Species;

constexpr double pi = 3.1416;            // of the timber trade
constexpr double tariffFactor = 0.00088; // cubic metres a square centimetre of mid-diameter

const Species& drawSpecies(const TimberList& list, Random& random)
{
    const std::uint32_t drawn = random.below(100);
    if (drawn < 80) return *list.mainSpecies;
    if (drawn < 95) return *list.secondSpecies;
    return weighted(profile::species, random);
}

std::string_view logAssortment(const TimberList& list, const LogLine& line, double diameter)
{
    if (line.species->softwood && diameter < 17.0) return "ZH";
    if (!line.species->softwood && diameter >= 42.0 && line.quality == "A") return "FU";
    return list.assortment;
}

double logLength(std::string_view assortment, Random& random)
{
    if (assortment == "LA") return static_cast<double>(random.between(80, 190)) / 10.0;
    if (assortment == "FU") return static_cast<double>(random.between(26, 60)) / 10.0;
    return random.pick(profile::sawlogLengths);
}

double barkOf(const TimberList& list, const Species& species, double diameter, Random& random)
{
    if (list.bark.mode == 0) return rounded(species.barkBase + species.barkSlope * diameter, 2);
    if (list.bark.mode == 1) return static_cast<double>(random.between(6, 13));
    return 0.0;
}

void weigh(LogLine& line, Random& random)
{
    line.lorryTare = static_cast<double>(random.between(135, 165)) / 10.0;
    line.quantity = rounded(random.between(17.0, 27.5), 2);
    line.lorryGross = rounded(*line.lorryTare + line.quantity, 2);
    line.dryPercent = static_cast<double>(random.between(46, 64));
    line.volume = rounded(line.quantity * line.species->airDryWeight, 3);
}

void countPoles(LogLine& line, Random& random)
{
    line.pieces = random.between(20, 260);
    line.length = random.chance(500) ? 7.0 : 9.0;
    line.diameter = static_cast<double>(random.between(8, 13));
    line.pieceFactor = *line.length > 7.0 ? 5.6 : 3.2;
    line.quantity = static_cast<double>(*line.pieces);
    line.volume = rounded(line.quantity * *line.pieceFactor / 100.0, 3);
}

} // namespace

double rounded(double value, int decimals)
{
    static constexpr std::array<double, 5> scales{1.0, 10.0, 100.0, 1000.0, 10000.0};
    const double scale = scales[static_cast<std::size_t>(decimals)];
    const double scaled = value * scale;
    const double floor = std::floor(scaled);
    const double rest = scaled - floor;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(floor, 2.0) != 0.0);
    return (floor + (up ? 1.0 : 0.0)) / scale;
}

double logVolume(double diameter, double length, double bark, std::int16_t barkMode)
{
    if (barkMode == 0) return rounded((diameter - bark) * (diameter - bark) * pi * length / 40000.0, 3);
    const double volume = diameter * diameter * pi * length / 40000.0;
    if (barkMode == 1) return rounded(volume - bark * (diameter * diameter * pi * length / 4000000.0), 3);
    return rounded(volume, 3);
}

void LineMeasurement::measure(const Kind& kind, const TimberList& list, LogLine& line, Random& random) const
{
    line.species = &drawSpecies(list, random);
    switch (kind.measure) {
    case Measure::Logs:
    case Measure::Mill:
    case Measure::Lots:
    case Measure::Tariff: measureLog(kind, list, line, random); break;
    case Measure::Stacked:
    case Measure::Firewood:
    case Measure::Weight:
    case Measure::Chips:
    case Measure::Poles: measureStacked(kind, list, line, random); break;
    }
    line.quantityChanged = random.chance(20);
    if (random.chance(15)) line.note = random.chance(500) ? "Wurzelanlauf" : "Zwiesel";
    if (random.chance(60)) line.colour = random.chance(500) ? "rot" : "blau";
}

void LineMeasurement::measureLog(const Kind& kind, const TimberList& list, LogLine& line, Random& random) const
{
    const Species& species = *line.species;
    line.quality = weighted(profile::qualities, random).code;
    const double drawn = species.diameter + list.diameterShift + species.spread * random.bell();
    const double diameter = std::clamp(std::floor(drawn), 11.0, 92.0);
    line.diameter = diameter;
    line.assortment = logAssortment(list, line, diameter);
    line.bark = barkOf(list, species, diameter, random);
    line.stackedFactor = 0.7;
    line.pieces = kind.measure == Measure::Lots ? random.between(4, 40) : 1;
    if (kind.measure == Measure::Tariff) {
        if (random.chance(700)) line.length = 0.0;
        line.volume = rounded(diameter * diameter * tariffFactor, 3);
    } else {
        line.length = logLength(line.assortment, random);
        line.volume = rounded(logVolume(diameter, *line.length, line.bark, list.bark.mode) * *line.pieces, 3);
    }
    line.quantity = line.volume;
    classify(kind, list, line);
}

void LineMeasurement::measureStacked(const Kind& kind, const TimberList& list, LogLine& line, Random& random) const
{
    line.assortment = list.assortment;
    line.stackedFactor = kind.measure == Measure::Chips      ? 0.4
                         : kind.measure == Measure::Firewood ? 0.62
                         : line.species->softwood            ? 0.68
                                                             : 0.63;
    if (kind.measure == Measure::Weight) return weigh(line, random);
    if (kind.measure == Measure::Poles) return countPoles(line, random);
    line.quantity = rounded(kind.measure == Measure::Chips ? random.between(30.0, 92.0) : random.between(3.0, 58.0), 2);
    line.volume = rounded(line.quantity * line.stackedFactor, 3);
    if (kind.measure == Measure::Chips) {
        line.energy = rounded(line.quantity * (line.species->softwood ? 0.75 : 1.0), 3);
        line.length = 0.0;
        line.dryPercent = static_cast<double>(random.between(55, 80));
        return;
    }
    line.length = kind.measure == Measure::Firewood ? 1.0 : (random.chance(700) ? 2.0 : 3.0);
    if (random.chance(400)) line.pieces = random.between(20, 400);
}

void LineMeasurement::classify(const Kind& kind, const TimberList& list, LogLine& line) const
{
    double diameter = *line.diameter;
    if (list.bark.mode == 0) diameter -= line.bark;
    if (list.bark.mode == 1) diameter *= std::sqrt(1.0 - line.bark / 100.0);
    line.strength = keys_.strengthClass(rounded(diameter, 2));
    // Only single measurement in the forest and at the mill has a volume class.
    if ((kind.dsart == 1 || kind.dsart == 5) && *line.pieces > 0)
        line.volumeClass = keys_.volumeClass(line.volume / *line.pieces);
}

} // namespace tamarok::database
