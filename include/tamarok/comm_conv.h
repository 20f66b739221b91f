#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tamarok/ado.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

namespace tamarok {

struct TmkVar;

/// Converts between the texts of forms and of SQL. Dates follow the format of the connected database or the
/// regional date order of the calling thread's platform. Number texts are filtered character by character.
class Comm_Conv {
public:
    /// Returns the text of a date in the format of the database, without leading zeros and without time.
    /// The caller puts it between quotes. A year below 1900 becomes 1900 plus its last two digits.
    /// @param strDate        any value; a value that is no date is returned unchanged
    /// @param strDateFormat  an order code (DMY, MDY, YMD, YDM in any case), which joins the parts by "/"; or
    ///        the tokens DD, MM, YY, YYYY (upper case), separated by "." or "-". An unknown order code returns
    ///        `strDate` unchanged. MON and MONTH append nothing. An unknown token shows the message "Critical
    ///        Error" and appends nothing; a format with "/" is one such token. Required by the contract.
    /// Errors: 91 if a message is due and the platform has no message box.
    Variant TransDate(const Variant& strDate, std::string_view strDateFormat) const;

    /// Returns a number text for SQL: each "," becomes "." and each thousands separator is removed. A thousands
    /// separator "," becomes "." instead. Required by the contract. Do not correct.
    /// @param strThousantSep_dll  one character; a text of any other length removes nothing
    std::string NoComma(std::string_view strVar, std::string_view strThousantSep_dll) const;

    /// Replaces each "," by ".".
    std::string NoComma3(const std::string& strVar) const;

    /// Removes every blank.
    std::string NoSpace(const std::string& strValue) const;

    /// Returns its argument unchanged, in spite of the name. Required by the contract. Do not correct.
    std::string AddBrackets(const std::string& rObjName) const;

    /// Returns `rstring`, left-padded with two blanks per character that it lacks to the length `rnumber`.
    /// Error 5 if it is longer than `rnumber` characters.
    std::string AddSpaces(const std::string& rstring, std::int16_t rnumber) const;

    /// Converts a text "month/day/year" to the regional short date.
    /// Errors: 5 for a text with fewer than two "/", 13 if the parts are no date.
    std::string NationalDate(std::string_view USDate) const;

    /// Converts a regional date text by the option USDATE of the database: 0, Null and a missing row give
    /// "day/month/year", 1 gives "month/day/year", any other value "". In spite of the operation's name
    /// the default has the day first. Required by the contract. Do not correct.
    /// Errors: 13 for a text that is no date, 91 without connection, failures of the database.
    std::string USDate(std::string_view NationalDate, const ado::ConnectionRef& dbAdo) const;

    /// Converts a regional date text, with an English month abbreviation if the regional short date spells the
    /// month and with a time after it, to "month/day/year". If the regional order is unknown, returns the
    /// text after the first separator.
    /// Errors: 5 for a text with fewer than two separators, 13 if a part is no number.
    std::string USDateA(std::string_view NationalDate) const;

    /// Returns the select expression that shows a 0/1 column as words: text 6 of the language service for 1,
    /// text 5 for any other value and Null. The instance caches the two texts: later calls use them with any
    /// session record. Quotes in the texts are not escaped.
    /// @param strLanguage  not used
    /// Error 91 without a language service.
    std::string ConvBoolSQLColumnToStr(const TmkVar& tmkVar, std::string_view strColumn, std::string_view strLanguage);

private:
    struct BooleanWords {
        std::string no;
        std::string yes;
    };
    std::optional<BooleanWords> booleanWords_;
};

} // namespace tamarok

#pragma GCC visibility pop
