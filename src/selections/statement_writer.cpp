#include "statement_writer.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "key_parts.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace tamarok::selections {
namespace {

constexpr char separator = '\t';
constexpr std::size_t levelsOfAPlace = 6;

struct DialectWord {
    std::string_view name;
    std::string_view oracle;
    std::string_view server;
};

constexpr DialectWord dialectWords[] = {
    {"ISNULL", "NVL", "ISNULL"}, {"LONG", "LONG_", "LONG"}, {"TOP", "", "TOP 1"},     {"ROWNUM", " AND rownum=1", ""},
    {"DUAL", "FROM DUAL", ""},   {"CONCAT", "||", "+"},     {"NOTEXT", "NULL", "''"},
};

struct MeasureKind {
    std::string_view code;
    std::string_view filter;
};

/// Which assortments a measure kind offers; no code offers all of them.
constexpr MeasureKind measureKinds[] = {
    {"", ""},
    {"1", " AND RUND = 1"},
    {"2", " AND SCHICHT = 1"},
    {"3", " AND STANG = 1"},
    {"4", " AND GEWICHT = 1"},
    {"5", " AND WERK = 1"},
    {"6", " AND MANTEL = 1"},
};
constexpr std::string_view otherMeasureKind = " AND HS IS NOT NULL";

[[noreturn]] void failOnField(std::size_t index)
{
    throw Error{errors::subscriptOutOfRange,
                "The selection reads field " + std::to_string(index) + " (counted from 0), which the vector lacks."};
}

enum class PartEnd : std::uint8_t { Colon, Brace };

/// The end of a part that begins at `begin`: its first colon or its closing brace, nested braces passed over.
std::size_t endOfPart(std::string_view text, std::size_t begin, PartEnd end) noexcept
{
    std::size_t depth = 0;
    for (std::size_t at = begin; at < text.size(); ++at) {
        switch (text[at]) {
        case '{': ++depth; break;
        case '}':
            if (depth == 0) return at;
            --depth;
            break;
        case ':':
            if (depth == 0 && end == PartEnd::Colon) return at;
            break;
        default: break;
        }
    }
    return text.size();
}

/// The digit at a placeholder's end, 0 where it has none.
std::size_t indexIn(std::string_view name) noexcept
{
    const char last = name.empty() ? ' ' : name.back();
    return last >= '0' && last <= '9' ? static_cast<std::size_t>(last - '0') : 0;
}

std::string_view withoutIndex(std::string_view name) noexcept
{
    return name.substr(0, name.find_last_not_of("0123456789") + 1);
}

} // namespace

bool FieldVector::has(std::size_t index) const noexcept
{
    return static_cast<std::size_t>(std::ranges::count(text_, separator)) >= index;
}

std::string_view FieldVector::operator[](std::size_t index) const
{
    std::string_view rest = text_;
    for (std::size_t i = 0; i < index; ++i) {
        const std::size_t tab = rest.find(separator);
        if (tab == std::string_view::npos) failOnField(index);
        rest.remove_prefix(tab + 1);
    }
    return rest.substr(0, rest.find(separator));
}

struct StatementWriter::Placeholder {
    std::string_view name;
    void (StatementWriter::*write)(std::size_t index);
};

constinit const StatementWriter::Placeholder StatementWriter::placeholders[] = {
    {"P", &StatementWriter::writeField},         {"N", &StatementWriter::writeNumber},
    {"UP", &StatementWriter::writeCapitals},     {"GROUP", &StatementWriter::writeGroup},
    {"KEYPART", &StatementWriter::writeKeyPart}, {"Typ", &StatementWriter::writeKey},
    {"ACL", &StatementWriter::writeLevels},      {"MEASURE", &StatementWriter::writeMeasure},
    {"PLACE", &StatementWriter::writePlace},
};

std::string StatementWriter::fill(std::string_view statement)
{
    constexpr std::size_t roomForWords = 64;
    text_.clear();
    text_.reserve(statement.size() + 2 * fieldBytes_ + roomForWords);
    write(statement);
    return std::move(text_);
}

void StatementWriter::write(std::string_view statement)
{
    for (;;) {
        const std::size_t open = statement.find('{');
        text_.append(statement.substr(0, open));
        if (open == std::string_view::npos) return;
        statement.remove_prefix(open + 1);
        const std::size_t nameEnd = std::min(statement.find_first_of("?}"), statement.size());
        const std::string_view name = statement.substr(0, nameEnd);
        std::size_t close = nameEnd;
        if (close < statement.size() && statement[close] == '?') {
            const std::size_t colon = endOfPart(statement, nameEnd + 1, PartEnd::Colon);
            close = endOfPart(statement, colon + 1, PartEnd::Brace);
            write(holds(name) ? statement.substr(nameEnd + 1, colon - nameEnd - 1)
                              : statement.substr(colon + 1, close - colon - 1));
        } else {
            writePlaceholder(name);
        }
        statement.remove_prefix(std::min(close + 1, statement.size()));
    }
}

void StatementWriter::writePlaceholder(std::string_view name)
{
    const std::string_view kind = withoutIndex(name);
    const auto* const placeholder = std::ranges::find(placeholders, kind, &Placeholder::name);
    if (placeholder != std::end(placeholders)) {
        (this->*placeholder->write)(indexIn(name));
        return;
    }
    const auto* const word = std::ranges::find(dialectWords, name, &DialectWord::name);
    if (word == std::end(dialectWords))
        throw Error{errors::invalidArgument, "No placeholder has the name \"" + std::string{name} + "\"."};
    text_.append(tmkVar_.bolOracle ? word->oracle : word->server);
}

bool StatementWriter::holds(std::string_view condition) const
{
    if (condition == "ORACLE") return static_cast<bool>(tmkVar_.bolOracle);
    if (condition == "KEYPART") return !partOf(key_).empty();
    const std::size_t equals = condition.find('=');
    const std::string_view field = condition.substr(0, equals);
    const std::size_t index = indexIn(field);
    if (equals != std::string_view::npos) return fields_[index] == condition.substr(equals + 1);
    if (field.starts_with("GIVEN")) return fields_.has(index) && !fields_[index].empty();
    return !fields_[index].empty();
}

void StatementWriter::writeField(std::size_t index)
{
    text_.append(fields_[index]);
}

void StatementWriter::writeNumber(std::size_t index)
{
    const std::string_view field = fields_[index];
    text_.append(convert::parseNumber(field, Platform::current().regional) ? field : "0");
}

void StatementWriter::writeCapitals(std::size_t index)
{
    text_.append(text::toUpper(fields_[index]));
}

void StatementWriter::writeLevels(std::size_t groups)
{
    std::string levelsOfUser{"SELECT ID_SLAVE FROM ONETOMANY WHERE RELATION = 'USERS.ACCESS_LEVELS' AND ID_MASTER = "};
    levelsOfUser.append(fields_[0]);
    text_.append(Comm_Set{}.CreateSQL_ACCESS_LEVELS(tmkVar_, levelsOfUser, static_cast<std::uint8_t>(groups), "True"));
}

void StatementWriter::writeMeasure(std::size_t index)
{
    write(" WHERE {ISNULL}(DISABLE,0)=0");
    const auto* const kind = std::ranges::find(measureKinds, fields_[index], &MeasureKind::code);
    text_.append(kind != std::end(measureKinds) ? kind->filter : otherMeasureKind);
}

void StatementWriter::writePlace(std::size_t index)
{
    std::string_view path = fields_[index];
    for (std::size_t level = 1; level <= levelsOfAPlace && !path.empty(); ++level) {
        const std::size_t slash = level < levelsOfAPlace ? path.find('/') : std::string_view::npos;
        const std::string_view name = text::trim(path.substr(0, slash));
        if (!name.empty())
            text_.append(" AND UPPER(WALDORT.WO")
                .append(std::to_string(level))
                .append(") = '")
                .append(text::toUpper(name))
                .append("'");
        path = slash == std::string_view::npos ? std::string_view{} : path.substr(slash + 1);
    }
}

void StatementWriter::writeGroup(std::size_t)
{
    text_.append(groupOf(key_));
}

void StatementWriter::writeKeyPart(std::size_t)
{
    text_.append(partOf(key_));
}

void StatementWriter::writeKey(std::size_t)
{
    text_.append(key_);
}

} // namespace tamarok::selections
