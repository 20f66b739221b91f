#include "work/option_rows.h"

#include "tamarok/ado.h"
#include "tamarok/comm_lock.h"
#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/date.h"
#include "tamarok/text.h"

namespace tamarok::workbench {

namespace {

constexpr std::string_view settingsNode = "TMK24";

} // namespace

std::vector<OptionRow> readOptions(const TmkVar& session)
{
    std::vector<OptionRow> options;
    ado::Recordset rows;
    rows.Open("SELECT PROPERTY_ID,NUMBER_VALUE,DOUBLE_VALUE,TEXT_VALUE,DATE_VALUE FROM OPTIONEN ORDER BY PROPERTY_ID",
              session.db_ADO);
    for (; !rows.AtEOF(); rows.MoveNext()) {
        OptionRow option;
        option.name = convert::toText(rows.Fields().Item(0).Value());
        for (std::size_t kind = 0; kind < optionKinds; ++kind) {
            const Variant value = rows.Fields().Item(static_cast<std::int32_t>(kind) + 1).Value();
            if (!value.isNull()) option.values.at(kind) = convert::toText(value);
        }
        options.push_back(std::move(option));
    }
    return options;
}

void writeOption(const TmkVar& session, std::string_view name, OptionKind kind, const std::string& text)
{
    const Comm_Set set;
    const std::string typed{text::trim(text)};
    const Variant none{Null{}};
    switch (kind) {
    case OptionKind::Number:
        return set.SetOptionenNumber(session, name, typed.empty() ? none : Variant{convert::toLong(Variant{typed})});
    case OptionKind::Decimal: return set.SetOptionenDouble(session, name, convert::toDouble(Variant{typed}));
    case OptionKind::Text: return set.SetOptionenText(session, name, typed.empty() ? none : Variant{typed});
    case OptionKind::Date:
        return set.SetOptionenDate(session, name, typed.empty() ? none : Variant{convert::toDate(Variant{typed})});
    }
}

bool mayReadOptions(const TmkVar& session)
{
    std::vector<std::string> hidden;
    return Comm_Lock{}.NodeVisibleCheck(session, hidden, settingsNode) == Variant{true};
}

bool mayWriteOptions(const TmkVar& session)
{
    return Comm_Lock{}.NodeWrite(session, settingsNode);
}

} // namespace tamarok::workbench
