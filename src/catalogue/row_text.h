#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "column_table.h"

#include "tamarok/loc_service.h"
#include "tamarok/tmkvar.h"

namespace tamarok::catalogue {

/// Fills the placeholders of catalogue texts for one operation. The placeholders are
///   {ROW 240}     the text of another row of the same catalogue, empty where there is none
///   {VER}         the version key in upper case
///   {DIGIT}       alias digit of the settlement that the version key's last character names
///   {SETTLEMENT}  the settlement's column prefix by the same rule (R, A1 to A8)
///   {PRICE A1}    price in base currency times, with the version that the row stands for
///   {LABEL 3442}  language text of that number
///   {CURRENCY}    name of the national currency
///   {TRUE}        text of the Boolean value under the regional settings, likewise {FALSE}
///   {+}           the dialect's text concatenation with blanks around
///   {ISNULL}      the dialect's null function
/// A text with {DIGIT} or {SETTLEMENT} is empty as a whole where the version key names no
/// settlement.
class RowText {
public:
    /// @param session     read for the database, the dialect and the language
    /// @param versionKey  as the caller gave it; must outlive this object
    /// @param rows        where {ROW n} is looked up
    RowText(const TmkVar& session, std::string_view versionKey, const ColumnTable& rows) noexcept :
        session_{session}, versionKey_{versionKey}, rows_{rows}
    {}

    /// Appends `pattern`, filled. Errors: 5 for an unknown placeholder, failures of the database
    /// and of the language service.
    void append(std::string& out, std::string_view pattern);

    std::string fill(std::string_view pattern)
    {
        std::string out;
        append(out, pattern);
        return out;
    }

private:
    enum class Placeholder : std::uint8_t;
    struct Name;
    static const Name names[];

    bool appendPlaceholder(std::string& out, std::string_view placeholder);
    bool appendSettlement(std::string& out, bool digitOnly) const;
    void appendRow(std::string& out, std::string_view id);
    void appendPrice(std::string& out, std::string_view settlement) const;
    void appendLabel(std::string& out, std::string_view number);
    void appendVersion(std::string& out);
    void appendCurrency(std::string& out) const;

    const TmkVar& session_;
    std::string_view versionKey_;
    const ColumnTable& rows_;
    std::string upperVersion_; ///< filled on first use
    std::unique_ptr<LocService> texts_;
};

} // namespace tamarok::catalogue
