#include "lock_refusal.h"

#include <algorithm>
#include <array>
#include <optional>

#include "ado/first_row.h"

#include "tamarok/ado.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

namespace tamarok::rights {
namespace {

using ado::fieldText;

// Numbers of texts.
constexpr std::int16_t leadsInObject = 4890;
constexpr std::int16_t leadsInDocument = 4891;
constexpr std::int16_t lockedBy = 4892;
constexpr std::int16_t closing = 4893;

/// How the fields of the head record make the shown value.
enum class Shown { FirstField, MonthOfYear };

/// A kind of object whose number stands in a head record.
struct LookedUpKind {
    std::string_view column;
    std::string_view statement; ///< the key is appended
    bool hasLeadIn;             ///< whether the message begins with text 4890
    Shown shown = Shown::FirstField;
};

// Required by the contract: FAKTURA, LOHNERFASSUNG, MASCHINEN and STEH have no leading text, and the
// opening bracket in the statement of WAL_BB is never closed, so that this look-up always fails. Do not
// correct.

constexpr std::array<LookedUpKind, 16> lookedUpKinds = {{
#include "data/lock_kinds.inc"
}};

struct DocumentType {
    std::string_view type; ///< settlement of a log, as in the column names of LOGS_RECH
    std::int16_t text;     ///< number of its name's text
};

constexpr std::array<DocumentType, 9> documentTypes = {{
    {"R", 642},
    {"A1", 646},
    {"A2", 649},
    {"A3", 652},
    {"A4", 655},
    {"A5", 629},
    {"A6", 632},
    {"A7", 625},
    {"A8", 638},
}};

/// Returns the number of an object, read from its head record.
std::string lookedUpValue(const TmkVar& tmkVar, const LookedUpKind& kind, std::string_view key)
{
    std::string value;
    // Required by the contract: a head record that is missing fails the call. Do not correct.
    ado::readExisting(tmkVar.db_ADO, std::string{kind.statement}.append(key), [&](const ado::FieldCollection& fields) {
        value = kind.shown == Shown::FirstField ? fieldText(fields.Item(0).Value())
                                                : fieldText(fields.Item("BUCHUNGS_MONTH").Value()) + "/" +
                                                      fieldText(fields.Item("BUCHUNGS_YEAR").Value());
    });
    return value;
}

/// Returns the number of the text that names an invoice's document type; nothing for an unknown type.
/// @param key  a quote, two characters of type, the name, a quote
std::optional<std::int16_t> documentText(std::string_view key)
{
    const std::string_view type = text::trim(text::mid(key, 2, 2));
    const auto* const document = std::ranges::find(documentTypes, type, &DocumentType::type);
    return document == documentTypes.end() ? std::nullopt : std::optional{document->text};
}

} // namespace

std::string lockRefusal(const TmkVar& tmkVar, std::string_view column, std::string_view key, std::string_view holder)
{
    const auto texts = Platform::locService();
    const auto text = [&](std::int16_t number) { return texts->GetText(number, tmkVar); };
    const auto heldBy = [&] { return text(lockedBy).append(" ").append(holder).append(" ").append(text(closing)); };

    if (column == "LISTE") return text(leadsInObject).append(" ").append(key).append(" ").append(heldBy());

    if (column == "RECHNUNG") {
        const std::optional<std::int16_t> document = documentText(key);
        if (!document) return {};
        // The key's own closing quote closes the shown name.
        return text(leadsInDocument)
            .append(" (")
            .append(text(*document))
            .append(") '")
            .append(text::mid(key, 4))
            .append(" ")
            .append(heldBy());
    }

    const auto* const kind = std::ranges::find(lookedUpKinds, column, &LookedUpKind::column);
    if (kind == lookedUpKinds.end()) return {};
    const std::string value = lookedUpValue(tmkVar, *kind, key);
    std::string message = kind->hasLeadIn ? text(leadsInObject) + " " : std::string{};
    return message.append("'").append(value).append("' ").append(heldBy());
}

} // namespace tamarok::rights
