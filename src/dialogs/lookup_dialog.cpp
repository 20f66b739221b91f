#include "lookup_dialog.h"

#include <algorithm>

#include "ado/first_row.h"
#include "lookup_parts.h"
#include "lookup_search.h"
#include "lookup_statement.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_models.h"
#include "tamarok/convert.h"
#include "tamarok/dialog_windows.h"
#include "tamarok/grid_help.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

// Opening, sorting and positioning; what the user does is in lookup_events.cpp.

namespace tamarok::dialogs {

namespace {

constexpr std::string_view dateMode = "DATUM";
constexpr std::string_view buttonTexts = "91,94,268,610";
constexpr float lastColumnWidth = 4500;
constexpr float formHeight = 5000;

/// The heads that are translated, with the number of their text.
struct HeadText {
    std::string_view field;
    std::int16_t text;
};
constexpr std::array headTexts{HeadText{"NUMMER", 5243}, HeadText{"SHORT", 5244}, HeadText{"LONG", 5245},
                               HeadText{"LONG_", 5245}};

} // namespace

std::string LookupDialog::run(std::string_view select, std::string_view caption, std::string_view defaultValue)
{
    isDate_ = select == dateMode;
    showDesign(caption);
    if (isDate_)
        openDate(defaultValue);
    else
        openGrid(select, defaultValue);
    window_.showModal(*this);
    if (!result_.empty()) return result_;
    return isDate_ && config_.hidesFirstColumn ? std::string{} : std::string{defaultValue};
}

/// Sets the title, reads the texts of the buttons, and hides what not every lookup has.
void LookupDialog::showDesign(std::string_view caption)
{
    window_.caption(caption);
    texts_ = Comm_CSel{}.LoadColString(buttonTexts, session_, false);
    for (const std::string_view control : {"DataGrid1", "cmdOk", "cmdClose"})
        window_.visible(control, !isDate_);
    window_.visible("MonthView1", isDate_);
    for (const std::string_view control : {"cmdNew", "cmdSave", "Text1", "Text2", "Text3"})
        window_.visible(control, false);
}

void LookupDialog::openDate(std::string_view defaultValue)
{
    const Variant given{defaultValue};
    window_.date(convert::isDate(given) ? convert::toDate(given) : Platform::today());
}

void LookupDialog::openGrid(std::string_view select, std::string_view defaultValue)
{
    if (!openSource(std::string{select})) throw *failure_;
    showHeads();
    const std::size_t columns = source_.rows().columns();
    if (config_.hidesFirstColumn) window_.columnVisible(0, false);
    window_.columnWidth(columns - 1, lastColumnWidth);
    seekDefault(defaultValue.empty() ? defaultFromTable() : std::string{defaultValue});
    fitWidth();
    Comm_Models{}.ColWidth_Get(session_, widthsKey(), window_.grid());
    showEntryControls();
    setBrowsing(true);
}

void LookupDialog::seekDefault(std::string_view value)
{
    const Loading loading{loading_};
    if (!hasRows()) return;
    moveTo(value.empty() ? 0 : findDefault(source_.rows(), returnColumn, value).value_or(0));
}

/// Returns the code of the row that the table marks as its default, "" without one. A table without such a mark is no
/// failure.
std::string LookupDialog::defaultFromTable() const
{
    const std::string statement = defaultRowStatement(source_.statement(), returnColumn);
    if (statement.empty()) return {};
    try {
        return ado::readFirstText(session_.db_ADO, statement);
    } catch (const Error&) {
        return {};
    }
}

void LookupDialog::fitWidth()
{
    float width = 900;
    for (std::size_t column = 0; column < source_.rows().columns(); ++column)
        width += window_.columnWidth(column);
    window_.resize({width - 15, formHeight});
}

void LookupDialog::showEntryControls()
{
    window_.visible("cmdNew", config_.showsNew());
    window_.visible("cmdSave", config_.entersRows);
    if (!config_.entersRows) return;
    const std::size_t visibleColumns = source_.rows().columns() - (config_.hidesFirstColumn ? 1 : 0);
    shownBoxes_ = std::min(visibleColumns, lookupBoxes);
    for (std::size_t box = 0; box < shownBoxes_; ++box)
        window_.visible(boxNames[box], true);
}

std::string LookupDialog::widthsKey() const
{
    return source_.isOpen() ? widthsRelation(source_.statement(), source_.baseColumns()) : std::string{};
}

/// Opens a statement and shows its rows. Returns false after a failure, which `failure_` keeps; the former rows stay.
bool LookupDialog::openSource(const std::string& statement)
{
    try {
        source_.open(statement);
    } catch (const Error& error) {
        failure_ = error;
        return false;
    }
    showRows();
    moved();
    return true;
}

void LookupDialog::showRows()
{
    window_.showRows(source_.rows(), source_.names());
}

/// Reads the current row again.
void LookupDialog::reload()
{
    if (!source_.reload()) {
        showRows();
        showHeads();
    }
    moved();
}

/// @param column  from 1; 0 reads the rows of the present statement again
void LookupDialog::sortBy(std::size_t column)
{
    if (column == 0) {
        if (!openSource(source_.statement())) return;
        sorted_ = 0;
    } else {
        if (!source_.current()) return;
        const std::string former = source_.statement();
        const std::string code = source_.currentText(returnColumn);
        // An order that the database refuses leaves the former one, with its arrow.
        if (openSource(orderedBy(former, column)))
            sorted_ = column;
        else
            openSource(former);
        search("1", typed_);
        // Required by the contract: the cells are cut to the typed length plus one while the whole code is sought, so
        // that as a rule the first row becomes the current one. Do not correct.
        findTyped(code, 0);
    }
    search("", "");
    showHeads();
}

/// Translates the heads and marks the sorted one.
void LookupDialog::showHeads()
{
    const std::vector<std::string> names = source_.names();
    for (std::size_t column = 0; column < names.size(); ++column) {
        std::string text = headText(names[column]);
        if (column + 1 == sorted_) {
            text.insert(0, isDescending(source_.statement()) ? " ««  " : " »»  ");
            search(std::to_string(sorted_), typed_);
        }
        window_.columnCaption(column, text);
    }
}

std::string LookupDialog::headText(const std::string& field) const
{
    const auto* const translated = std::ranges::find(headTexts, field, &HeadText::field);
    return translated == headTexts.end() ? field : Platform::locService()->GetText(translated->text, session_);
}

/// Moves to the first row whose cell, cut to one character more than what was typed, is `value`. Without one, a key
/// press moves to the first row and is kept; a search without a key moves back.
void LookupDialog::findTyped(std::string_view value, char32_t key)
{
    if (!source_.isOpen() || source_.recordset().AtEOF()) return;
    const std::optional<std::size_t> current = source_.current();
    const auto column = static_cast<std::size_t>(convert::toLong(Variant{searchColumn_}) - 1);
    const std::optional<std::size_t> found = findCut(source_.rows(), column, text::length(typed_) + 1, value);
    if (found || key != 0) {
        search(searchColumn_, value);
        moveTo(found.value_or(0));
    } else if (current) {
        moveTo(*current);
    }
}

void LookupDialog::moveTo(std::size_t row)
{
    source_.moveTo(row);
    moved();
}

/// Shows the current row, in the boxes too.
void LookupDialog::moved()
{
    if (!loading_ && shownBoxes_ > 0 && hasRows()) {
        ado::Recordset& rows = source_.recordset();
        if (rows.AtBOF()) rows.MoveFirst();
        if (rows.AtEOF()) rows.MoveLast();
    }
    window_.currentRow(source_.current());
    if (loading_) return;
    if (source_.current()) fillBoxes();
    newTag("");
}

void LookupDialog::fillBoxes()
{
    for (std::size_t box = 0; box < shownBoxes_; ++box)
        window_.text(boxNames[box], source_.currentText(box));
}

/// Sets the state of the search: the column, and the text that the user sees as the title of the frame.
void LookupDialog::search(std::string_view column, std::string_view typed)
{
    searchColumn_ = column;
    typed_ = typed;
    window_.tag("Frame1", searchColumn_);
    window_.text("Frame1", typed_);
}

} // namespace tamarok::dialogs

namespace tamarok {

std::string Grid_Help::GridHelp(const TmkVar& tmkVar, std::string_view strSQL, std::string_view strCaption,
                                std::string_view DefaultValue, std::string_view strConfig) const
{
    const std::unique_ptr<dialogs::LookupWindow> window = Platform::windows().makeLookup();
    return dialogs::LookupDialog{tmkVar, *window, strConfig}.run(strSQL, strCaption, DefaultValue);
}

} // namespace tamarok
