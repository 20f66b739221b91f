#include <algorithm>

#include "ado/first_row.h"
#include "lookup_dialog.h"
#include "lookup_parts.h"
#include "lookup_search.h"

#include "tamarok/comm_models.h"
#include "tamarok/convert.h"
#include "tamarok/format.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

// What the user does with the lookup.

namespace tamarok::dialogs {

namespace {

constexpr char32_t backspace = 8;
constexpr char32_t enter = 13;
constexpr char32_t escape = 27;

} // namespace

void LookupDialog::clicked(std::string_view button)
{
    if (button == "cmdOk") return ok();
    if (button == "cmdNew") return pressNew();
    if (button == "cmdSave") return pressSave();
    result_.clear();
    closeAsked();
}

/// Keeps the widths and closes. Refused while a row is edited.
void LookupDialog::closeAsked()
{
    if (!browsing_) return;
    Comm_Models{}.ColWidth_Set(session_, widthsKey(), window_.grid());
    window_.close();
}

void LookupDialog::activated()
{
    {
        const Loading loading{loading_};
        window_.handleEvents();
    }
    // While a row is edited the grid cannot have the focus, and a reloaded row would overwrite the boxes.
    if (isDate_ || !browsing_ || !hasRows()) return;
    reload();
    window_.focus("DataGrid1");
}

void LookupDialog::keyPressed(char32_t key)
{
    // They are the keys of the buttons, as in the month view, and no cell contains them.
    if (key == enter) return ok();
    if (key == escape) return clicked("cmdClose");
    if (searchColumn_.empty()) search("1", typed_);
    if (key == backspace) {
        if (text::length(typed_) < 2) {
            if (hasRows()) moveTo(0);
            return search(searchColumn_, "");
        }
        // The shortened text is typed anew, by its last character.
        const Retyped retyped = afterBackspace(typed_);
        search(searchColumn_, retyped.typed);
        key = retyped.key;
    }
    std::string wanted = typed_;
    text::append(wanted, key);
    findTyped(wanted, key);
}

/// A text that was typed for another row would mislead.
void LookupDialog::rowChosen(std::size_t row)
{
    search(searchColumn_, "");
    moveTo(row);
}

/// Keeps one selected row, the current one, under a grid that allows several.
void LookupDialog::selectionChanged()
{
    if (config_.selectsSeveral) return;
    std::vector<std::size_t> rows = window_.selectedRows();
    if (rows.size() > 1) rows.erase(rows.begin(), rows.end() - 1);
    const std::optional<std::size_t> current = source_.current();
    if (!rows.empty() && current) rows.front() = *current;
    window_.selectRows(rows);
}

void LookupDialog::monthKeyPressed(char32_t key)
{
    if (key == enter) ok();
    if (key == escape) clicked("cmdClose");
}

void LookupDialog::ok()
{
    if (loading_ || !browsing_) return;
    result_ = chosen();
    if (!config_.withoutEnter) Platform::pressEnter();
    closeAsked();
}

std::string LookupDialog::chosen() const
{
    if (isDate_) return text::replaceAll(format::value(Variant{window_.date()}, "dd.mm.yyyy"), " ", "");
    if (config_.selectsSeveral) return chosenRows();
    return source_.current() ? source_.currentText(returnColumn) : std::string{};
}

/// Returns the codes of the selected rows in the order of the rows, that of the current row if none is selected.
std::string LookupDialog::chosenRows() const
{
    if (!hasRows()) return {};
    std::vector<std::size_t> selected = window_.selectedRows();
    if (selected.empty()) return source_.current() ? source_.currentText(returnColumn) : std::string{};
    std::ranges::sort(selected);
    selected.erase(std::unique(selected.begin(), selected.end()), selected.end());
    std::string codes;
    for (const std::size_t row : selected) {
        if (row != selected.front()) codes += ",";
        codes += source_.rows().text(row, returnColumn);
    }
    return codes;
}

void LookupDialog::pressNew()
{
    if (config_.newClosesDialog) {
        result_ = "&New";
        return closeAsked();
    }
    if (!browsing_) {
        if (saveMasterData(session_, *this)) setBrowsing(true);
        return;
    }
    setBrowsing(false);
    newTag("NEW");
    for (std::size_t box = 0; box < lookupBoxes; ++box)
        boxText(box, "");
    focusBox(0);
}

void LookupDialog::pressSave()
{
    if (browsing_) {
        newTag("");
        return setBrowsing(false);
    }
    // Drops the changes.
    if (hasRows()) reload();
    setBrowsing(true);
}

void LookupDialog::setBrowsing(bool browsing)
{
    const auto caption = [this](const char* number) { return convert::toText(texts_->Item(Variant{number})); };
    browsing_ = browsing;
    window_.text("cmdNew", caption(browsing ? "94" : "268"));
    window_.text("cmdSave", caption(browsing ? "91" : "610"));
    for (const std::string_view box : boxNames)
        window_.enabled(box, !browsing);
    for (const std::string_view control : {"Frame1", "cmdClose", "cmdOk"})
        window_.enabled(control, browsing);
}

void LookupDialog::newTag(std::string_view tag)
{
    newTag_ = tag;
    window_.tag("cmdNew", newTag_);
}

void LookupDialog::resized()
{
    if (isDate_) {
        const Box month = window_.place("MonthView1");
        const DateLayout layout = layOutDate({month.width, month.height});
        window_.place("MonthView1", layout.month);
        window_.place("Frame1", layout.frame);
        if (window_.size() != layout.form) window_.resize(layout.form);
        return;
    }
    const LookupLayout layout = layOutLookup(window_.size(), config_.showsNew(), boxColumns());
    if (window_.size() != layout.form) window_.resize(layout.form);
    window_.place("Frame1", layout.frame);
    window_.place("DataGrid1", layout.grid);
    for (std::size_t box = 0; box < shownBoxes_; ++box)
        window_.place(boxNames[box], layout.boxes[box]);
    window_.place("cmdNew", layout.newButton);
    window_.place("cmdSave", layout.saveButton);
    window_.place("cmdOk", layout.okButton);
    window_.place("cmdClose", layout.closeButton);
}

/// Returns the visible columns under which the boxes stand.
std::array<ColumnSpan, lookupBoxes> LookupDialog::boxColumns() const
{
    std::array<ColumnSpan, lookupBoxes> spans;
    float left = 0;
    std::size_t column = config_.hidesFirstColumn ? 1 : 0;
    for (std::size_t box = 0; box < lookupBoxes && column < source_.rows().columns(); ++box, ++column) {
        spans[box] = {left, window_.columnWidth(column)};
        left += spans[box].width;
    }
    return spans;
}

std::string LookupDialog::boxText(std::size_t box) const
{
    return window_.text(boxNames[box]);
}

void LookupDialog::boxText(std::size_t box, std::string_view text)
{
    window_.text(boxNames[box], text);
}

void LookupDialog::focusBox(std::size_t box)
{
    window_.focus(boxNames[box]);
}

void LookupDialog::addNew()
{
    const Loading loading{loading_};
    source_.recordset().AddNew();
}

void LookupDialog::rowAdded()
{
    source_.readRows();
    showRows();
    showHeads();
    window_.currentRow(source_.current());
}

void LookupDialog::find(std::string_view criterion)
{
    source_.recordset().Find(criterion);
    moved();
}

} // namespace tamarok::dialogs
