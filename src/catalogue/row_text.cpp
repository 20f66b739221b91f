#include "row_text.h"

#include <charconv>

#include "ado/first_row.h"
#include "upper_case.h"

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"
#include "tamarok/platform.h"

namespace tamarok::catalogue {

enum class RowText::Placeholder : std::uint8_t {
    Row,
    Version,
    Digit,
    Settlement,
    Price,
    Label,
    Currency,
    True,
    False,
    Concatenate,
    IsNull
};

struct RowText::Name {
    std::string_view text;
    Placeholder placeholder;
};

const RowText::Name RowText::names[] = {
    {"ROW", Placeholder::Row},           {"VER", Placeholder::Version},
    {"DIGIT", Placeholder::Digit},       {"SETTLEMENT", Placeholder::Settlement},
    {"PRICE", Placeholder::Price},       {"LABEL", Placeholder::Label},
    {"CURRENCY", Placeholder::Currency}, {"TRUE", Placeholder::True},
    {"FALSE", Placeholder::False},       {"+", Placeholder::Concatenate},
    {"ISNULL", Placeholder::IsNull},
};

namespace {

std::int16_t parseId(std::string_view digits)
{
    std::int16_t id = 0;
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), id);
    if (failure != std::errc{} || end != digits.data() + digits.size()) {
        throw Error{errors::invalidArgument, "\"" + std::string{digits} + "\" is no column id."};
    }
    return id;
}

/// A factor as SQL reads it, whatever the decimal separator is.
std::string factorText(double factor)
{
    return convert::toSqlNumber(factor, Platform::current().regional);
}

} // namespace

void RowText::append(std::string& out, std::string_view pattern)
{
    const std::size_t start = out.size();
    std::size_t at = 0;
    for (std::size_t brace = pattern.find('{'); brace != std::string_view::npos; brace = pattern.find('{', at)) {
        const std::size_t end = pattern.find('}', brace);
        if (end == std::string_view::npos) {
            throw Error{errors::invalidArgument, "A placeholder has no end in \"" + std::string{pattern} + "\"."};
        }
        out.append(pattern, at, brace - at);
        if (!appendPlaceholder(out, pattern.substr(brace + 1, end - brace - 1))) {
            out.resize(start);
            return;
        }
        at = end + 1;
    }
    out.append(pattern, at);
}

bool RowText::appendPlaceholder(std::string& out, std::string_view placeholder)
{
    const std::string_view word = placeholder.substr(0, placeholder.find(' '));
    const std::string_view argument = placeholder.substr(std::min(word.size() + 1, placeholder.size()));
    const auto name = std::ranges::find(names, word, &Name::text);
    if (name == std::end(names)) {
        throw Error{errors::invalidArgument, "Unknown placeholder {" + std::string{placeholder} + "}."};
    }
    const Regional& regional = Platform::current().regional;
    switch (name->placeholder) {
    case Placeholder::Row: appendRow(out, argument); break;
    case Placeholder::Version: appendVersion(out); break;
    case Placeholder::Digit: return appendSettlement(out, true);
    case Placeholder::Settlement: return appendSettlement(out, false);
    case Placeholder::Price: appendPrice(out, argument); break;
    case Placeholder::Label: appendLabel(out, argument); break;
    case Placeholder::Currency: appendCurrency(out); break;
    case Placeholder::True: out += regional.trueText; break;
    case Placeholder::False: out += regional.falseText; break;
    case Placeholder::Concatenate: out += session_.bolOracle ? " || " : " + "; break;
    case Placeholder::IsNull: out += session_.bolOracle ? "NVL" : "ISNULL"; break;
    }
    return true;
}

bool RowText::appendSettlement(std::string& out, bool digitOnly) const
{
    const char last = versionKey_.empty() ? ' ' : versionKey_.back();
    if (last == 'R') {
        out += digitOnly ? '0' : 'R';
        return true;
    }
    if (last < '1' || last > '8') {
        return false;
    }
    if (!digitOnly) {
        out += 'A';
    }
    out += last;
    return true;
}

void RowText::appendRow(std::string& out, std::string_view id)
{
    const Column* row = rows_.find(parseId(id));
    if (row == nullptr) {
        return;
    }
    if (row->composed) {
        append(out, row->text);
    } else {
        out += row->text;
    }
}

/// The version is the row's own settlement in a list of the main invoice and the list's version in
/// any other list.
void RowText::appendPrice(std::string& out, std::string_view settlement) const
{
    const Comm_Get options;
    double national = options.GetOptionenDouble(session_, "UFAKTNAT_EURO");
    if (national == 0.0) {
        national = 1.0;
    }
    const std::string_view version = versionKey_ == "R" ? settlement : versionKey_;
    const bool baseIsEuro = options.GetOptionenNumber(session_, "STATEURO") == 1;

    out.append("(CASE LOGS_RECH.").append(version).append("_EURO WHEN ").append(baseIsEuro ? "0" : "1");
    out.append(" THEN ").append(factorText(baseIsEuro ? 1.0 / national : national));
    out.append(" ELSE 1 END)*LOGS_RECH.").append(version).append("_PREIS*");
}

void RowText::appendLabel(std::string& out, std::string_view number)
{
    if (!texts_) {
        texts_ = Platform::locService();
    }
    out += texts_->GetText(parseId(number), session_);
}

void RowText::appendVersion(std::string& out)
{
    out += upperCase(versionKey_, upperVersion_);
}

void RowText::appendCurrency(std::string& out) const
{
    const auto name =
        ado::readFirstValue(session_.db_ADO, "SELECT TEXT_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'NATWAHRUNG'");
    if (name && !name->isNull()) {
        out += convert::toText(*name);
    }
}

} // namespace tamarok::catalogue
