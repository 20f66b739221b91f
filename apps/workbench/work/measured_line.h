#pragma once

#include <string>

#include "tamarok/tmkvar.h"

namespace tamarok::workbench {

/// A line of round wood as it is typed: codes, and numbers under the regional settings.
struct MeasuredLine {
    std::string species;
    std::string assortment;
    std::string quality;
    std::string barkKey;
    std::string diameter; ///< cm
    std::string length;   ///< m
    std::string pieces = "1";
};

/// What follows from a line, as the form shows it.
struct LineFigures {
    std::string bark; ///< cm
    std::string strengthClass;
    std::string volume; ///< m³, all pieces
};

/// Returns the figures of a line; empty ones while diameter or length are missing.
/// Errors: those of Comm_Set's operations of timber measurement.
LineFigures figuresOf(const MeasuredLine& line, const TmkVar& session);

/// Returns the condition that a code is valid, as a statement with a row for it, "" for an unknown field.
/// @param field  "species", "assortment", "quality" or "barkKey"
std::string checkOf(std::string_view field, const MeasuredLine& line, const TmkVar& session);
/// Returns a valid code as the key table spells it: "FI" for "fi"; the code itself if it is not valid.
std::string spelledCode(std::string_view field, const MeasuredLine& line, const TmkVar& session);
/// Returns the statement of the codes that such a field offers.
std::string choiceOf(std::string_view field, const MeasuredLine& line, const TmkVar& session);

/// Adds a line to a timber list, under the next number. All of it is written, or nothing.
/// @return its number
/// Errors: those of the database; 13 for a number that is none.
std::int32_t addLine(const std::string& list, const MeasuredLine& line, const TmkVar& session);

} // namespace tamarok::workbench
