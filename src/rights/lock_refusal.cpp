#include "lock_refusal.h"

#include <array>
#include <functional>

#include "fetch_rows.h"

#include "tamarok/ado.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

namespace tamarok::rights {
namespace {

constexpr std::int16_t objectText = 4890;   // leads in an object
constexpr std::int16_t documentText = 4891; // leads in a document
constexpr std::int16_t lockedByText = 4892;
constexpr std::int16_t closingText = 4893;

/// How the look-up's fields make the shown value.
enum class Shown { FirstField, MonthOfYear };

/// Kinds of object whose number is looked up in a head record.
struct LookedUpKind {
    std::string_view column;
    std::string_view statement; ///< the key goes behind it
    bool leadIn;                ///< whether text 4890 stands in front; three kinds and the wages do without
    Shown shown = Shown::FirstField;
};

constexpr std::array<LookedUpKind, 16> lookedUpKinds = {{
#include "data/lock_kinds.inc"
}};

struct DocumentType {
    std::string_view type;
    std::int16_t text;
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

std::string lookedUpValue(const TmkVar& tmkVar, const LookedUpKind& kind, std::string_view key)
{
    ado::Recordset head;
    head.Open(std::string{kind.statement}.append(key), tmkVar.db_ADO);
    // No test for the end of the rows: a head record that has gone fails the call.
    const ado::FieldCollection& fields = head.Fields();
    std::string value = kind.shown == Shown::FirstField ? textOf(fields.Item(0).Value())
                                                        : textOf(fields.Item("BUCHUNGS_MONTH").Value()) + "/" +
                                                              textOf(fields.Item("BUCHUNGS_YEAR").Value());
    head.Close();
    return value;
}

} // namespace

std::string lockRefusal(const TmkVar& tmkVar, std::string_view column, std::string_view key, std::string_view holder)
{
    const auto texts = Platform::locService();
    const auto text = [&](std::int16_t number) { return texts->GetText(number, tmkVar); };
    const auto heldBy = [&] {
        return text(lockedByText).append(" ").append(holder).append(" ").append(text(closingText));
    };

    if (column == "LISTE") return text(objectText).append(" ").append(key).append(" ").append(heldBy());
    if (column == "RECHNUNG") {
        const std::string_view type = text::trim(text::mid(key, 2, 2));
        for (const DocumentType& document : documentTypes) {
            if (document.type != type) continue;
            // The closing quote of the shown name is the one that the key brings along.
            return text(documentText)
                .append(" (")
                .append(text(document.text))
                .append(") '")
                .append(text::mid(key, 4))
                .append(" ")
                .append(heldBy());
        }
        return {};
    }
    for (const LookedUpKind& kind : lookedUpKinds) {
        if (kind.column != column) continue;
        const std::string value = lookedUpValue(tmkVar, kind, key);
        std::string message = kind.leadIn ? text(objectText) + " " : std::string{};
        return message.append("'").append(value).append("' ").append(heldBy());
    }
    return {};
}

} // namespace tamarok::rights
