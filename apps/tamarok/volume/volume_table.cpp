#include "volume/volume_table.h"

#include <algorithm>
#include <utility>

#include "volume/measure_ranges.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::cli {

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 16;
constexpr std::string_view source = "volume table";

bool isBlankLine(std::string_view line) noexcept
{
    return line.empty() || (line.front() <= ' ' && line.find_first_not_of(" \t") == std::string_view::npos);
}

/// The decimal separator that the first lines of a table use.
char usedSeparator(char fieldSeparator, std::string_view sample) noexcept
{
    if (fieldSeparator == ',') return '.';
    const bool onlyPoints = sample.find(',') == std::string_view::npos && sample.find('.') != std::string_view::npos;
    return onlyPoints ? '.' : ',';
}

} // namespace

std::string VolumeSettings::patternOrPlaces() const
{
    if (!pattern.empty()) return pattern;
    return places > 0 ? std::string{"0."}.append(static_cast<std::size_t>(places), '0') : std::string{"0"};
}

std::string unifiedSeparator(std::string_view number, const Regional& regional)
{
    return text::replaceAll(text::replaceAll(number, ".", regional.decimal), ",", regional.decimal);
}

VolumeTable::VolumeTable(VolumeSettings settings) :
    settings_{std::move(settings)}, pattern_{settings_.patternOrPlaces()}, defaults_{"", "", settings_.pieces,
                                                                                     settings_.bark, settings_.mode}
{}

std::string_view VolumeTable::nameOf(Column column) noexcept
{
    static constexpr std::array<std::string_view, columnCount> names{"d", "l", "pieces", "bark", "mode"};
    return names[column];
}

std::optional<VolumeTable::Column> VolumeTable::columnNamed(std::string_view name)
{
    struct Name {
        std::string_view text;
        Column column;
    };
    static constexpr std::array names{
        Name{"D", Diameter},     Name{"DURCHMESSER", Diameter},
        Name{"L", Length},       Name{"LAENGE", Length},
        Name{"LÄNGE", Length},   Name{"PIECES", Pieces},
        Name{"STUECK", Pieces},  Name{"STÜCK", Pieces},
        Name{"BARK", Bark},      Name{"RINDE", Bark},
        Name{"MODE", Mode},      Name{"MODUS", Mode},
        Name{"DURCH", Diameter}, Name{"STK", Pieces}}; // as the columns of table LOGS are called
    const std::string wanted = text::toUpper(name);
    const auto found =
        std::find_if(names.begin(), names.end(), [&](const Name& known) { return known.text == wanted; });
    if (found == names.end()) return std::nullopt;
    return found->column;
}

void VolumeTable::readHeader(std::string_view line, std::string_view sample)
{
    separator_ = csvSeparator(line);
    regional_ = settings_.locale.empty() ? Platform::current().regional : Regional::named(settings_.locale);
    if (settings_.locale.empty()) regional_.decimal = usedSeparator(separator_, sample);
    regional_.thousands.clear();
    // Such a pattern gives nothing but digits, the decimal separator and a sign.
    const bool plainPattern = pattern_.find_first_not_of("0#.,") == std::string::npos;
    needsNoQuotes_ = plainPattern && regional_.decimal.find(separator_) == std::string::npos;
    CsvFields names{separator_};
    if (!names.split(line)) throw Error{errors::invalidArgument, "line 1: a quote is not closed", std::string{source}};
    width_ = names.size();
    for (std::size_t index = 0; index < width_; ++index) {
        const auto column = columnNamed(names[index]);
        if (!column) continue;
        if (places_[*column])
            throw Error{errors::invalidArgument,
                        "line 1: column " + std::string{nameOf(*column)} + " stands there twice", std::string{source}};
        places_[*column] = index;
    }
    for (const Column needed : {Diameter, Length})
        if (!places_[needed])
            throw Error{errors::invalidArgument, "line 1: there is no column " + std::string{nameOf(needed)},
                        std::string{source}};
}

/// Reads the header, then measures line by line and writes the results in blocks of 64 KiB.
std::int64_t VolumeTable::measure(LineReader& lines, const Sink& output, const Complaint& complain,
                                  const Progress& progress)
{
    std::string_view line;
    if (!lines.next(line) || lines.wasCut() || isBlankLine(line))
        throw Error{errors::invalidArgument, "line 1: there are no column names", std::string{source}};
    readHeader(line, lines.ahead());
    block_.assign(line).append(1, separator_).append("volume\n");

    std::int64_t leftOut = 0;
    CsvFields fields{separator_};
    while (lines.next(line)) {
        if (isBlankLine(line)) continue;
        if (!measureLine(lines.wasCut(), line, fields)) {
            complain(lines.number(), fault_);
            ++leftOut;
            continue;
        }
        if (block_.size() < blockSize) continue;
        output(block_);
        block_.clear();
        progress(lines.number(), lines.position());
    }
    output(block_);
    return leftOut;
}

bool VolumeTable::measureLine(bool tooLong, std::string_view line, CsvFields& fields)
{
    if (tooLong) return refuse("the line is too long");
    if (!fields.split(line)) return refuse("a quote is not closed, or text stands behind one");
    if (fields.size() != width_)
        return refuse("there are " + std::to_string(fields.size()) + " fields instead of " + std::to_string(width_));
    for (const Column column : {Diameter, Length, Pieces, Bark, Mode})
        cells_[column] = cell(column, fields);
    if (mixed_) unifySeparators();
    if (measureCells(line, fields)) return true;
    // A number with the other decimal separator does not parse. From the first such line on, fields are
    // converted before they are measured.
    if (mixed_ || !unifySeparators()) return false;
    mixed_ = true;
    return measureCells(line, fields);
}

bool VolumeTable::refuse(std::string fault)
{
    fault_ = std::move(fault);
    return false;
}

/// A field of the line, or its default where the table has no such column or the field is empty.
std::string_view VolumeTable::cell(Column column, const CsvFields& fields) const
{
    if (!places_[column]) return defaults_[column];
    const std::string_view field = fields[*places_[column]];
    return field.empty() ? defaults_[column] : field;
}

/// Gives the numbers of the line the decimal separator of the volumes; false where all had it.
bool VolumeTable::unifySeparators()
{
    const std::string_view other = regional_.decimal == "." ? "," : ".";
    bool changed = false;
    for (const Column column : {Diameter, Length, Pieces, Bark}) {
        if (cells_[column].find(other) == std::string_view::npos) continue;
        changed_[column] = unifiedSeparator(cells_[column], regional_);
        cells_[column] = changed_[column];
        changed = true;
    }
    return changed;
}

bool VolumeTable::measureCells(std::string_view line, const CsvFields& fields)
{
    timber::RoundWood wood;
    wood.mode = timber::barkMode(cells_[Mode]);
    if (!checkCells() || !readNumbers(fields, wood)) return false;
    if (const RangeFault* const fault = findRangeFault(wood))
        return refuse(
            fault->describe({cell(Pieces, fields), cell(Diameter, fields), cell(Length, fields), cell(Bark, fields)}));
    try {
        write(line, timber::roundWoodVolume(wood, pattern_, settings_.places, regional_));
        return true;
    } catch (const Error& error) {
        return refuse(error.description);
    }
}

/// Refuses an empty measure and an unknown mode.
bool VolumeTable::checkCells()
{
    for (const Column column : {Diameter, Length})
        if (cells_[column].empty()) return refuse("column " + std::string{nameOf(column)} + " is empty");
    const std::string_view mode = cells_[Mode];
    return mode.empty() || mode == "%" || mode == "cm" ||
           refuse("mode \"" + std::string{mode} + "\" is neither % nor cm");
}

/// Reads the numbers of the line once, for the check of their ranges and for the formula. Refuses a text that is no
/// number, and bark without a mode.
bool VolumeTable::readNumbers(const CsvFields& fields, timber::RoundWood& wood)
{
    struct Target {
        Column column;
        double timber::RoundWood::*number;
    };
    static constexpr std::array targets{
        Target{Diameter, &timber::RoundWood::diameter}, Target{Length, &timber::RoundWood::length},
        Target{Pieces, &timber::RoundWood::pieces}, Target{Bark, &timber::RoundWood::bark}};
    for (const auto& [column, number] : targets) {
        const auto read = convert::parseNumber(cells_[column], regional_);
        if (!read)
            return refuse("\"" + std::string{cell(column, fields)} + "\" in column " + std::string{nameOf(column)} +
                          " is no number");
        wood.*number = *read;
    }
    return wood.mode != timber::BarkMode::None || wood.bark == 0.0 ||
           refuse("bark \"" + std::string{cell(Bark, fields)} + "\" has no mode");
}

/// Writes a line of the result. The volume may contain the field separator and then needs quotes.
void VolumeTable::write(std::string_view line, std::string_view volume)
{
    block_.append(line) += separator_;
    const std::array<char, 4> special{separator_, '"', '\r', '\n'};
    if (needsNoQuotes_ || volume.find_first_of(special.data(), 0, special.size()) == std::string_view::npos)
        block_.append(volume);
    else
        writeQuoted(volume);
    block_ += '\n';
}

void VolumeTable::writeQuoted(std::string_view volume)
{
    block_ += '"';
    block_.append(text::replaceAll(volume, "\"", "\"\"")) += '"';
}

} // namespace tamarok::cli
