// The order of the random draws fixes the generated data: a seed must give the same rows in every version.
#include "line_measurement.h"

#include <algorithm>
#include <cmath>

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

using convert::roundHalfEven;
using profile::Kind;
using profile::Measure;
using profile::Species;

constexpr double pi = 3.1416;            // the timber trade's value
constexpr double tariffFactor = 0.00088; // cubic metres per square centimetre of the mid-diameter squared

/// 80 % of the lines are of the list's main species, 15 % of its second one.
const Species& drawSpecies(const TimberList& list, Random& random)
{
    const std::uint32_t drawn = random.below(100);
    if (drawn < 80) return *list.mainSpecies;
    if (drawn < 95) return *list.secondSpecies;
    return random.pickWeighted(profile::species);
}

/// Thin softwood goes to the chipper (ZH), thick hardwood of quality A is veneer (FU).
std::string_view logAssortment(const TimberList& list, const LogLine& line, double diameter)
{
    if (line.species->isSoftwood() && diameter < 17.0) return "ZH";
    if (!line.species->isSoftwood() && diameter >= 42.0 && line.quality == "A") return "FU";
    return list.assortment;
}

/// Draws a length in metres: long logs (LA) and veneer (FU) freely, the others as the mills order them.
double drawLength(std::string_view assortment, Random& random)
{
    if (assortment == "LA") return random.tenths(80, 190);
    if (assortment == "FU") return random.tenths(26, 60);
    return random.pick(profile::sawlogLengths);
}

/// Returns the bark deduction in the unit of the list's rule; a percentage is drawn.
double barkOf(BarkUnit unit, const Species& species, double diameter, Random& random)
{
    switch (unit) {
    case BarkUnit::Centimetres: return roundHalfEven(species.barkBase + species.barkSlope * diameter, 2);
    case BarkUnit::Percent: return static_cast<double>(random.between(6, 13));
    case BarkUnit::None: break;
    }
    return 0.0;
}

/// Cubic metres per measured cubic metre of stacked wood or loose chips.
double stackedFactorOf(Measure measure, const Species& species)
{
    if (measure == Measure::Chips) return 0.4;
    if (measure == Measure::Firewood) return 0.62;
    return species.isSoftwood() ? 0.68 : 0.63;
}

/// A lorry load in tons: tare, net weight as the quantity, gross and dry matter.
void weighLorry(LogLine& line, Random& random)
{
    line.lorryTare = random.tenths(135, 165);
    line.quantity = roundHalfEven(random.between(17.0, 27.5), 2);
    line.lorryGross = roundHalfEven(*line.lorryTare + line.quantity, 2);
    line.dryPercent = static_cast<double>(random.between(46, 64));
    line.volume = roundHalfEven(line.quantity * line.species->airDryWeight, 3);
}

void countPoles(LogLine& line, Random& random)
{
    line.pieces = random.between(20, 260);
    line.length = random.chance(500) ? 7.0 : 9.0;
    line.diameter = static_cast<double>(random.between(8, 13));
    line.pieceFactor = *line.length > 7.0 ? 5.6 : 3.2;
    line.quantity = static_cast<double>(*line.pieces);
    line.volume = roundHalfEven(line.quantity * *line.pieceFactor / 100.0, 3);
}

/// Loose volume in loose cubic metres. Length 0: chips have none.
void measureChips(LogLine& line, Random& random)
{
    line.quantity = roundHalfEven(random.between(30.0, 92.0), 2);
    line.volume = roundHalfEven(line.quantity * line.stackedFactor, 3);
    line.energy = roundHalfEven(line.quantity * (line.species->isSoftwood() ? 0.75 : 1.0), 3);
    line.length = 0.0;
    line.dryPercent = static_cast<double>(random.between(55, 80));
}

/// Stacked volume in stacked cubic metres; the pieces of some stacks are counted.
void measureStack(Measure measure, LogLine& line, Random& random)
{
    line.quantity = roundHalfEven(random.between(3.0, 58.0), 2);
    line.volume = roundHalfEven(line.quantity * line.stackedFactor, 3);
    if (measure == Measure::Firewood)
        line.length = 1.0;
    else
        line.length = random.chance(700) ? 2.0 : 3.0;
    if (random.chance(400)) line.pieces = random.between(20, 400);
}

} // namespace

double logVolume(double diameter, double length, double bark, BarkUnit unit)
{
    // 40000 = 4 from the circle's area x 100 x 100 from square centimetres to square metres.
    if (unit == BarkUnit::Centimetres)
        return roundHalfEven((diameter - bark) * (diameter - bark) * pi * length / 40000.0, 3);
    const double volume = diameter * diameter * pi * length / 40000.0;
    if (unit == BarkUnit::Percent)
        return roundHalfEven(volume - bark * (diameter * diameter * pi * length / 4000000.0), 3);
    return roundHalfEven(volume, 3);
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
    case Measure::Poles:
        line.assortment = list.assortment;
        line.stackedFactor = stackedFactorOf(kind.measure, *line.species);
        if (kind.measure == Measure::Weight)
            weighLorry(line, random);
        else if (kind.measure == Measure::Poles)
            countPoles(line, random);
        else if (kind.measure == Measure::Chips)
            measureChips(line, random);
        else
            measureStack(kind.measure, line, random);
        break;
    }
    line.isQuantityChanged = random.chance(20);
    if (random.chance(15)) line.note = random.chance(500) ? "Wurzelanlauf" : "Zwiesel";
    if (random.chance(60)) line.colour = random.chance(500) ? "rot" : "blau";
}

void LineMeasurement::measureLog(const Kind& kind, const TimberList& list, LogLine& line, Random& random) const
{
    const Species& species = *line.species;
    line.quality = random.pickWeighted(profile::qualities).code;
    const double drawn = species.diameter + list.diameterShift + species.spread * random.normal();
    const double diameter = std::clamp(std::floor(drawn), 11.0, 92.0);
    line.diameter = diameter;
    line.assortment = logAssortment(list, line, diameter);
    line.bark = barkOf(list.bark.unit, species, diameter, random);
    line.stackedFactor = 0.7;
    line.pieces = kind.measure == Measure::Lots ? random.between(4, 40) : 1;
    if (kind.measure == Measure::Tariff) {
        // A tariff needs no length; some lists store 0, the others Null.
        if (random.chance(700)) line.length = 0.0;
        line.volume = roundHalfEven(diameter * diameter * tariffFactor, 3);
    } else {
        line.length = drawLength(line.assortment, random);
        line.volume = roundHalfEven(logVolume(diameter, *line.length, line.bark, list.bark.unit) * *line.pieces, 3);
    }
    line.quantity = line.volume;
    classify(kind, list.bark, line);
}

/// Sets the strength class from the diameter under bark, and the volume class from the mean piece volume.
void LineMeasurement::classify(const Kind& kind, const BarkRule& rule, LogLine& line) const
{
    double diameter = *line.diameter;
    if (rule.unit == BarkUnit::Centimetres) diameter -= line.bark;
    if (rule.unit == BarkUnit::Percent) diameter *= std::sqrt(1.0 - line.bark / 100.0);
    line.strength = keys_.strengthClass(roundHalfEven(diameter, 2));
    // Only single measurement in the forest and at the mill has a volume class.
    if ((kind.dsart == 1 || kind.dsart == 5) && *line.pieces > 0)
        line.volumeClass = keys_.volumeClass(line.volume / *line.pieces);
}

} // namespace tamarok::database
