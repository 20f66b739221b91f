#include "tree_lookup.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "tamarok/ado.h"
#include "tamarok/convert.h"
#include "tamarok/grid_help.h"
#include "tamarok/loc_service.h"
#include "tamarok/mcomm.h"
#include "tamarok/platform.h"
#include "tamarok/variant.h"

// The tree of budget titles: a title with up to four levels under it. A node's key is the path of record ids, "|"
// before each.

namespace tamarok::dialogs {

namespace {

constexpr std::string_view budgetMode = "EBENE";
constexpr std::string_view rootKey = "Root";
constexpr float indentation = 300;
constexpr std::int16_t leafNeeded = 223; ///< number of the text that asks for a leaf
constexpr std::size_t levels = 5;

constexpr std::string_view budgetSelect =
    "SELECT HH_TITEL.NUMBER+ ' ' +ISNULL(HH_TITEL.NAME,''),"
    "T_EBENE1.SHORT+ ' ' +ISNULL(T_EBENE1.LONG,''),"
    "T_EBENE2.SHORT+ ' ' +ISNULL(T_EBENE2.LONG,''),"
    "T_EBENE3.SHORT+ ' ' +ISNULL(T_EBENE3.LONG,''),"
    "T_EBENE4.SHORT+ ' ' +ISNULL(T_EBENE4.LONG,''),"
    "HH_TITEL.ID,T_EBENE1.ID,T_EBENE2.ID,T_EBENE3.ID,T_EBENE4.ID"
    " FROM HH_TITEL"
    " LEFT JOIN T_EBENE1 ON T_EBENE1.ID_HH_TITEL = HH_TITEL.ID"
    " LEFT JOIN T_EBENE2 ON T_EBENE2.ID_T_EBENE1 = T_EBENE1.ID"
    " LEFT JOIN T_EBENE3 ON T_EBENE3.ID_T_EBENE2 = T_EBENE2.ID"
    " LEFT JOIN T_EBENE4 ON T_EBENE4.ID_T_EBENE3 = T_EBENE3.ID"
    " WHERE ISNULL(HH_TITEL.DISABLE,0) = 0"
    " AND ISNULL(T_EBENE1.DISABLE,0) = 0"
    " AND ISNULL(T_EBENE2.DISABLE,0) = 0"
    " AND ISNULL(T_EBENE3.DISABLE,0) = 0"
    " AND ISNULL(T_EBENE4.DISABLE,0) = 0"
    " AND HH_TITEL.ID IN (SELECT ID_SLAVE FROM ONETOMANY WHERE RELATION = 'HH_KAPITEL.HH_TITEL' AND ID_MASTER = 0";
constexpr std::string_view budgetOrder =
    ") ORDER BY HH_TITEL.NUMBER,T_EBENE1.SHORT,T_EBENE2.SHORT,T_EBENE3.SHORT,T_EBENE4.SHORT";

/// Returns all rows of the statement as (field, row); nothing if there are none.
/// @param master  digits that follow the 0 of the chapter's id
std::optional<VariantArray> readBudget(const ado::ConnectionRef& connection, std::string_view master)
{
    ado::Recordset rows;
    rows.Open(std::string{budgetSelect}.append(master).append(budgetOrder), connection);
    std::optional<VariantArray> read;
    if (!rows.AtEOF()) read = rows.GetRows();
    rows.Close();
    return read;
}

} // namespace

std::string TreeLookup::run(std::string_view mode, std::string_view caption, std::string_view defaultKey)
{
    window_.caption(caption);
    if (mode.starts_with(budgetMode)) {
        choosesLeaf_ = true;
        buildBudgetTree(mode.substr(budgetMode.size()), caption, defaultKey);
    }
    window_.showModal(*this);
    return result_;
}

void TreeLookup::buildBudgetTree(std::string_view master, std::string_view caption, std::string_view defaultKey)
{
    const std::optional<VariantArray> rows = readBudget(session_.db_ADO, master);
    window_.clearTree();
    if (!rows) return;
    addNode({}, rootKey, caption);
    window_.indentation(indentation);
    const std::string found = addNodes(*rows, defaultKey);
    if (found.empty())
        window_.expandNode(rootKey);
    else
        window_.selectNode(found);
}

/// Adds a node for each id that differs from the one before at its level: the rows are sorted. An id is 0 before the
/// first row, and Null never differs.
/// @return the key of the node to select, "" if none has the key `defaultKey`
std::string TreeLookup::addNodes(const VariantArray& rows, std::string_view defaultKey)
{
    std::array<std::int64_t, levels> ids{};
    std::string found;
    const std::span<const Variant> cells = rows.elements();
    for (std::size_t row = 0; row < cells.size(); row += 2 * levels) {
        std::string parent{rootKey};
        std::string key;
        for (std::size_t level = 0; level < levels; ++level) {
            const Variant& id = cells[row + levels + level];
            const std::int64_t number = id.isNull() ? ids[level] : convert::toLongLong(id);
            const bool isNew = number != ids[level];
            ids[level] = number;
            key.append("|").append(std::to_string(ids[level]));
            if (isNew) {
                const Variant& text = cells[row + level];
                addNode(parent, key, text.isNull() ? std::string{} : convert::toText(text));
                if (key == defaultKey) found = key;
            }
            parent = key;
        }
    }
    return found;
}

void TreeLookup::addNode(std::string_view parent, std::string_view key, std::string_view text)
{
    window_.addNode(parent, key, text);
    parents_.emplace(parent);
}

void TreeLookup::clicked(std::string_view button)
{
    const std::optional<std::string> selected = window_.selectedNode();
    if (button == "cmdOk" && choosesLeaf_ && selected) return takeSelected(*selected);
    window_.close();
}

/// Only a leaf may be taken.
void TreeLookup::takeSelected(const std::string& key)
{
    if (key == rootKey || parents_.contains(key)) {
        mComm::ShowMessage(Platform::locService()->GetText(leafNeeded, session_), 0);
        return window_.focus("TreeView1");
    }
    result_ = key;
    Platform::pressEnter();
    window_.close();
}

} // namespace tamarok::dialogs

namespace tamarok {

std::string Grid_Help::TreeviewHelp(const TmkVar& tmkVar, std::string_view strSQL, std::string_view strCaption,
                                    std::string_view DefaultValue) const
{
    const auto window = Platform::windows().makeTree();
    return dialogs::TreeLookup{tmkVar, *window}.run(strSQL, strCaption, DefaultValue);
}

} // namespace tamarok
