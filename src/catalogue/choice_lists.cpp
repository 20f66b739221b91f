#include <algorithm>
#include <array>
#include <set>
#include <span>
#include <utility>

#include "dialect/sql_template.h"
#include "list_types.h"

#include "tamarok/collection.h"
#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"

// The boxes in which a user chooses the columns of a list. An entry is a label and, as its number, the column id.

namespace tamarok {

using catalogue::Choice;
using catalogue::ListType;

namespace {

// Three operations share the keys, as forms call them. The keys of the log list are among those of none.
constexpr std::string_view firstKeys[]{"USERS",
                                       "PERSONAL",
                                       "AKAT",
                                       "PLAN_BEARBEITUNG_BB",
                                       "PLAN_ABSCHLUSS_BB",
                                       "PLAN_VORBEREITUNG_BB",
                                       "BBTALK",
                                       "ANGEBOT_BB",
                                       "RECHNUNG_BB",
                                       "FAKTURA_BB",
                                       "BBHAB_UMBUCH",
                                       "KLR_UBERNAHME",
                                       "SAPAGRUPPE",
                                       "BBLTN",
                                       "BBAUFTRAGS_PLANUNG",
                                       "BBMAP",
                                       "BBJAGD",
                                       "BBWILD",
                                       "BBHUNDE",
                                       "BBZV",
                                       "BBZV_HIZ"};
constexpr std::string_view secondKeys[]{
    "BBSTRK", "LAGER_BB",       "VERLOHN", "WAL_BB", "DTZB",   "EXPORTLV", "VERTSCH_BB", "MBUCH_SCH", "BERM",
    "PLAN",   "BB_JAGDBEZIRKE", "BBFAHR",  "BBOBJ",  "MVLOSE", "FHPEXP",   "FHPIZ",      "STEH"};

bool holds(std::span<const std::string_view> keys, std::string_view key)
{
    return std::ranges::find(keys, key) != keys.end();
}

bool isLogKey(std::string_view key)
{
    return key == "LOG" || key == "HIZ";
}

/// One entry of a box.
struct Entry {
    std::int16_t column;
    std::int16_t label;         ///< 0 for a fixed text
    std::string_view fixedText; ///< else ""
    const Choice* row;
};

/// The entries of a key in the order of the box, with those of every edition and option.
std::vector<Entry> entriesOf(std::string_view key)
{
    std::vector<Entry> entries;
    for (const ListType* type : catalogue::listTypes()) {
        for (const Choice& row : type->description().choices) {
            if (!catalogue::namesKey(row, key)) continue;
            catalogue::forEachId(row.columns, [&](std::int16_t id) {
                const std::string_view fixedText = row.fixedText;
                entries.push_back({id, fixedText.empty() ? type->column(id)->label : std::int16_t{0}, fixedText, &row});
            });
        }
    }
    return entries;
}

/// The numbers of the labels, separated by commas; each once, since editions may offer the same columns.
std::string labelList(std::span<const Entry> entries)
{
    std::string list;
    std::set<std::int16_t> listed{0};
    for (const Entry& entry : entries) {
        if (listed.insert(entry.label).second) list.append(list.empty() ? "" : ",").append(std::to_string(entry.label));
    }
    return list;
}

std::string labelOf(const std::shared_ptr<Collection>& labels, std::int16_t number)
{
    if (!labels) throw Error{errors::objectNotSet, "The labels of the choice list were not read."};
    return convert::toText(labels->Item(Variant{std::to_string(number)}));
}

/// A box in the hands of an operation that keeps going when a label is missing. Error 5 adds "<Null>" and goes on
/// with the next statement; any other error is given up on: the statement is repeated without the trap, so that its
/// failure reaches the caller.
class TrappedBox {
public:
    explicit TrappedBox(Object& box) : box_{box} {}

    template <class Statement>
    void attempt(Statement statement)
    {
        if (!set_) return statement();
        try {
            statement();
        } catch (const Error& error) {
            if (error.number == errors::invalidArgument) return addItem("<Null>");
            set_ = false;
            statement();
        }
    }

    void clear() { call("Clear", {}); }
    void addItem(std::string text) { call("AddItem", {Variant{std::move(text)}}); }
    /// Gives the entry added last its number.
    void setNumber(std::int32_t number)
    {
        const Variant newIndex = box_.get("NewIndex", {});
        box_.putIndexed("ItemData", {&newIndex, 1}, number);
    }

private:
    void call(std::string_view method, std::vector<Variant> arguments) { box_.call(method, arguments); }

    Object& box_;
    bool set_ = true;
};

/// Whether a session sees the entries of a row, by its edition and by an option of its database.
bool isOffered(const Choice& row, const TmkVar& session)
{
    const std::string_view edition = row.edition;
    if (!edition.empty() && edition != session.strCustomer) return false;
    const std::string_view option = row.option;
    return option.empty() || Comm_Get{}.GetOptionenNumber(session, option) != 0;
}

/// The entries of a key that a session sees. An option is read once for a row.
std::vector<Entry> offeredEntries(std::string_view key, const TmkVar& session)
{
    std::vector<Entry> entries = entriesOf(key);
    const Choice* row = nullptr;
    bool offered = false;
    std::erase_if(entries, [&](const Entry& entry) {
        if (std::exchange(row, entry.row) != entry.row) offered = isOffered(*entry.row, session);
        return !offered;
    });
    return entries;
}

/// Fills a box from one statement for all labels.
void fillBox(std::string_view key, Object& combo, const TmkVar& session, bool shortForms)
{
    TrappedBox box{combo};
    std::vector<Entry> entries;
    box.attempt([&] { entries = offeredEntries(key, session); });
    const std::string list = labelList(entriesOf(key));
    std::shared_ptr<Collection> labels;
    if (!list.empty()) box.attempt([&] { labels = Comm_CSel{}.LoadColString(list, session, shortForms); });
    for (const Entry& entry : entries) {
        box.attempt(
            [&] { box.addItem(entry.label == 0 ? std::string{entry.fixedText} : labelOf(labels, entry.label)); });
        box.attempt([&] { box.setNumber(entry.column); });
    }
}

/// Appends to an array that starts with one empty element.
void appendToArray(std::vector<std::string>& array, std::string value)
{
    if (!array.front().empty()) array.emplace_back();
    array.back() = std::move(value);
}

/// Fills the pairs of label, tab and column id of the log list's box. An error leaves the pairs that come before it.
void fillColumnArray(std::vector<std::string>& pairs, std::string_view key, const TmkVar& session)
{
    std::vector<Entry> entries;
    for (const Choice& row : catalogue::logList().description().choices) {
        catalogue::forEachId(row.columns, [&](std::int16_t id) {
            entries.push_back({id, catalogue::logList().column(id)->label, {}, &row});
        });
    }
    const std::shared_ptr<Collection> labels = Comm_CSel{}.LoadColString(labelList(entries), session, false);
    for (const Entry& entry : entries) {
        if (catalogue::namesKey(*entry.row, key))
            appendToArray(pairs, labelOf(labels, entry.label) + "\t" + std::to_string(entry.column));
    }
}

/// Label and column id of a pair.
std::pair<std::string, std::int32_t> divided(const std::string& pair)
{
    const std::size_t tab = pair.find('\t');
    return {pair.substr(0, tab), convert::toLong(Variant{pair.substr(tab + 1)})};
}

/// Required by the contract: the log list's box has no short forms.
void fillLogBox(TrappedBox& box, std::string_view key, const TmkVar& session)
{
    std::vector<std::string> pairs{""};
    box.attempt([&] {
        pairs.assign(1, "");
        fillColumnArray(pairs, key, session);
    });
    box.attempt([&] { box.clear(); });
    for (const std::string& pair : pairs) {
        if (pair.empty()) continue;
        box.attempt([&] { box.addItem(divided(pair).first); });
        box.attempt([&] { box.setNumber(divided(pair).second); });
    }
}

} // namespace

std::shared_ptr<Collection> Comm_CSel::LoadColString(std::string_view Id_Strings, const TmkVar& tmkVar,
                                                     bool bolShort) const
{
    constexpr std::string_view statement =
        "SELECT ID_STRING,{SHORT?{ISNULL}(SHORT_{LANGUAGE},:}{ISNULL}(CUSTOM_{LANGUAGE},"
        "{ISNULL}({LANGUAGE},'')){SHORT?):} AS RESULT FROM STRINGS WHERE ID_STRING IN "
        "({IDS}) ORDER BY 2";
    ado::Recordset rows;
    rows.Open(dialect::fill(statement, dialect::of(tmkVar),
                            {{"SHORT", bolShort ? "1" : ""}, {"LANGUAGE", tmkVar.strLanguage}, {"IDS", Id_Strings}}),
              tmkVar.db_ADO, ado::CursorType::OpenForwardOnly, ado::LockType::ReadOnly, -1);
    auto labels = std::make_shared<Collection>();
    if (!rows.AtEOF()) {
        const VariantArray all = rows.GetRows();
        for (std::int32_t row = 0; row <= all.bounds(2).upper; ++row)
            labels->Add(Variant{GetValue(all.at(1, row), "")}, convert::toText(all.at(0, row)));
    }
    rows.Close();
    return labels;
}

void Comm_CSel::AddComboTyp(std::string_view Typ, Object& Combo, const TmkVar& tmkVar, bool bolShort) const
{
    TrappedBox box{Combo};
    box.attempt([&] { box.clear(); });
    if (holds(firstKeys, Typ)) {
        box.attempt([&] { AddComboTyp_1(Typ, Combo, tmkVar, bolShort); });
    } else if (holds(secondKeys, Typ)) {
        box.attempt([&] { AddComboTyp_2(Typ, Combo, tmkVar, bolShort); });
    } else if (isLogKey(Typ)) {
        fillLogBox(box, Typ, tmkVar);
    } else {
        fillBox(Typ, Combo, tmkVar, bolShort);
    }
}

void Comm_CSel::AddComboTyp_1(std::string_view Typ, Object& Combo, const TmkVar& tmkVar, bool bolShort) const
{
    if (holds(firstKeys, Typ)) fillBox(Typ, Combo, tmkVar, bolShort);
}

void Comm_CSel::AddComboTyp_2(std::string_view Typ, Object& Combo, const TmkVar& tmkVar, bool bolShort) const
{
    if (holds(secondKeys, Typ)) fillBox(Typ, Combo, tmkVar, bolShort);
}

std::string Comm_CSel::ComboList_String(std::int32_t ItemData_ID, std::string_view Typ, const TmkVar& tmkVar) const
{
    std::vector<std::string> pairs{""};
    fillColumnArray(pairs, Typ, tmkVar);
    for (const std::string& pair : pairs) {
        if (pair.empty()) continue;
        const auto [label, column] = divided(pair);
        if (column == ItemData_ID) return label;
    }
    return {};
}

void Comm_CSel::SetListIndex2(Object& Combo, std::int16_t intIndex) const
{
    const std::int32_t count = convert::toLong(Combo.get("ListCount", {}));
    for (std::int32_t index = 0; index < count; ++index) {
        const Variant position{index};
        if (convert::toLong(Combo.get("ItemData", {&position, 1})) != intIndex) continue;
        Combo.put("ListIndex", position);
        return;
    }
}

} // namespace tamarok
