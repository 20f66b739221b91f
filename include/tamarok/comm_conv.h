#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tamarok/ado.h"
#include "tamarok/variant.h"

namespace tamarok {

struct TmkVar;

/// Conversions between what a form shows and what SQL needs. Dates follow the format of the
/// connected database in one direction and the machine's regional order in the other; numbers are
/// plain character filters. Regional settings are those of the calling thread's platform.
class Comm_Conv {
public:
    /// A date's text in the format that the database expects, without leading zeros and without
    /// time; the caller puts it between quotes.
    /// @param strDate        anything; what is no date comes back unchanged
    /// @param strDateFormat  order code (DMY, MDY, YMD, YDM in any case, parts joined by "/"), or
    ///        tokens DD, MM, YY, YYYY (upper case) joined by "." or "-". MON and MONTH append
    ///        nothing. An unknown token, so also a format with "/", is told by a "Critical Error"
    ///        message and appends nothing. An unknown order code leaves the date unchanged.
    /// A year below 1900 counts as 1900 plus its last two digits.
    Variant TransDate(const Variant& strDate, std::string_view strDateFormat) const;

    /// Number text for SQL: each "," becomes ".", any other character equal to
    /// `strThousantSep_dll` (one character, or "" for none) is dropped. The comma goes first, so a
    /// thousands mark "," is never dropped.
    std::string NoComma(std::string_view strVar, std::string_view strThousantSep_dll) const;

    /// Each "," becomes ".".
    std::string NoComma3(const std::string& strVar) const;

    /// Every blank dropped.
    std::string NoSpace(const std::string& strValue) const;

    /// The name as it stands.
    std::string AddBrackets(const std::string& rObjName) const;

    /// `rstring` behind two blanks for each character that it lacks of `rnumber`.
    /// Error 5 where it is longer than `rnumber` characters.
    std::string AddSpaces(const std::string& rstring, std::int16_t rnumber) const;

    /// A text "month/day/year" as the regional short form, without time.
    /// Errors: 5 with fewer than two "/", 13 where the parts make no date.
    std::string NationalDate(std::string_view USDate) const;

    /// A regional date text by the option USDATE of the database: 0 (also without a row) gives
    /// day/month/year, 1 month/day/year, anything else "".
    /// Errors: 13 for a text that is no date, 91 without connection, provider failures.
    std::string USDate(std::string_view NationalDate, const ado::ConnectionRef& dbAdo) const;

    /// A regional date text, with a spelled month and a time if need be, as "month/day/year". A
    /// regional order that is none of the four known ones gives the text behind the first separator.
    /// Errors: 5 with fewer than two separators, 13 where a part is no number.
    std::string USDateA(std::string_view NationalDate) const;

    /// The select expression that shows a 0/1 column as words: text 6 for 1, text 5 for anything
    /// else, Null included. The two texts are fetched once per instance, whatever record later calls
    /// bring. @param strLanguage accepted and not used
    std::string ConvBoolSQLColumnToStr(const TmkVar& tmkVar, std::string_view strColumn, std::string_view strLanguage);

private:
    struct BooleanWords {
        std::string no;
        std::string yes;
    };
    std::optional<BooleanWords> booleanWords_;
};

} // namespace tamarok
