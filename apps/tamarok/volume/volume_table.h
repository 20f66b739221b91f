#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "volume/csv_fields.h"
#include "volume/line_reader.h"

#include "tamarok/platform.h"
#include "tamarok/round_wood.h"

namespace tamarok::cli {

/// How round timber is measured, and the values that replace missing columns and empty fields.
struct VolumeSettings {
    std::string pieces = "1";
    std::string bark = "0";
    std::string mode; ///< "%", "cm" or "" for none
    std::int16_t places = 2;
    std::string pattern; ///< of the volume; as many decimals as places where it is empty
    std::string locale;  ///< its decimal separator is the volume's; the table's own where it is empty

    std::string patternOrPlaces() const;
};

/// Replaces commas and points of a number by the decimal separator of `regional`.
std::string unifiedSeparator(std::string_view number, const Regional& regional);

/// Measures a table of round timber: a header line that names the columns d, l, pieces, bark and mode (or
/// durchmesser or durch, laenge, stueck or stk, rinde, modus) in any order and case, other columns among them, and a
/// line for each log. Fields are divided by commas or semicolons, decimals by a comma or a point, without grouping.
class VolumeTable {
public:
    using Sink = std::function<void(std::string_view)>;
    /// Receives the number and the fault of a line that is left out.
    using Complaint = std::function<void(std::int64_t line, std::string_view fault)>;
    /// Called after each block of output with the number of lines and bytes read.
    using Progress = std::function<void(std::int64_t lines, std::int64_t bytes)>;

    explicit VolumeTable(VolumeSettings settings);

    /// Writes each line with its volume as last field, in blocks of lines.
    /// @return number of lines that were left out
    /// Errors: 5 without header line, for a missing or repeated column, and for places out of range.
    std::int64_t measure(LineReader& lines, const Sink& output, const Complaint& complain, const Progress& progress);

private:
    enum Column : std::uint8_t { Diameter, Length, Pieces, Bark, Mode, columnCount };

    void readHeader(std::string_view line, std::string_view sample);
    // Each of these sets `fault_` where it returns false.
    bool measureLine(bool tooLong, std::string_view line, CsvFields& fields);
    bool measureCells(std::string_view line, const CsvFields& fields);
    bool checkCells();
    bool readNumbers(const CsvFields& fields, timber::RoundWood& wood);
    bool refuse(std::string fault);
    std::string_view cell(Column column, const CsvFields& fields) const;
    bool unifySeparators();
    void write(std::string_view line, std::string_view volume);
    void writeQuoted(std::string_view volume);
    static std::optional<Column> columnNamed(std::string_view name);
    static std::string_view nameOf(Column column) noexcept;

    VolumeSettings settings_;
    std::string pattern_;
    std::array<std::optional<std::size_t>, columnCount> places_;
    std::array<std::string_view, columnCount> defaults_;
    std::size_t width_ = 0;
    char separator_ = ',';
    bool needsNoQuotes_ = false; ///< whatever the volume: nothing in it can be a field separator or a quote
    Regional regional_;          ///< of the volumes; fields are brought to its separator
    std::array<std::string_view, columnCount> cells_; ///< of the line at hand
    std::array<std::string, columnCount> changed_;    ///< fields that had another separator
    bool mixed_ = false;                              ///< such a field was met
    std::string block_;                               ///< lines to be given out
    std::string fault_;                               ///< of the last line that was left out
};

} // namespace tamarok::cli
