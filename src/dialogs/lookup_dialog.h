#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "lookup_config.h"
#include "lookup_layout.h"
#include "lookup_source.h"
#include "master_data_entry.h"

#include "tamarok/collection.h"
#include "tamarok/error.h"
#include "tamarok/lookup_window.h"

namespace tamarok::dialogs {

/// The lookup: a grid over the rows of a SELECT, which finds rows by typing, sorts by a click on a head and keeps the
/// widths of its columns; a date picker for the word "DATUM"; and the entry of master data.
class LookupDialog final : public LookupEvents, private MasterDataForm {
public:
    LookupDialog(const TmkVar& session, LookupWindow& window, std::string_view config) :
        session_{session}, config_{config}, window_{window}
    {}

    /// Shows the dialog. See Grid_Help::GridHelp.
    std::string run(std::string_view select, std::string_view caption, std::string_view defaultValue);

    void clicked(std::string_view button) override;
    void resized() override;
    void closeAsked() override;
    void activated() override;
    void keyPressed(char32_t key) override;
    void headClicked(std::size_t column) override { sortBy(column + 1); }
    void rowChosen(std::size_t row) override;
    void selectionChanged() override;
    void columnResized() override { resized(); }
    void doubleClicked() override { ok(); }
    void monthKeyPressed(char32_t key) override;
    void boxEntered(std::string_view box) override { window_.selectText(box); }

private:
    class Loading; ///< sets `loading_` for a while

    // Opening.
    void showDesign(std::string_view caption);
    void openDate(std::string_view defaultValue);
    void openGrid(std::string_view select, std::string_view defaultValue);
    void seekDefault(std::string_view value);
    std::string defaultFromTable() const;
    void fitWidth();
    void showEntryControls();
    std::string widthsKey() const;

    // The rows.
    bool openSource(const std::string& statement);
    void showRows();
    void reload();
    void sortBy(std::size_t column);
    void showHeads();
    std::string headText(const std::string& field) const;
    void findTyped(std::string_view value, char32_t key);
    void moveTo(std::size_t row);
    void moved();
    void fillBoxes();
    bool hasRows() const noexcept { return source_.isOpen() && source_.rows().count() > 0; }
    void search(std::string_view column, std::string_view typed);

    // Buttons.
    void ok();
    std::string chosen() const;
    std::string chosenRows() const;
    void pressNew();
    void pressSave();
    void setBrowsing(bool browsing);
    void newTag(std::string_view tag);

    std::array<ColumnSpan, lookupBoxes> boxColumns() const;

    // MasterDataForm
    bool boxShown(std::size_t box) const override { return shownBoxes_ > box; }
    std::string boxText(std::size_t box) const override;
    void boxText(std::size_t box, std::string_view text) override;
    void focusBox(std::size_t box) override;
    bool typesNewRow() const override { return newTag_ == "NEW"; }
    const std::string& select() const override { return source_.statement(); }
    ado::Recordset& recordset() override { return source_.recordset(); }
    void addNew() override;
    void rowAdded() override;
    void refresh() override { sortBy(0); }
    void find(std::string_view criterion) override;

    const TmkVar session_; ///< a copy: the caller may change his while the dialog is open
    LookupConfig config_;
    LookupWindow& window_;
    LookupSource source_{session_};
    std::shared_ptr<Collection> texts_; ///< of the buttons, by number
    std::optional<Error> failure_;      ///< of the last opening
    std::string result_;
    bool isDate_ = false;
    bool loading_ = false; ///< the dialog positions itself: moves and OK are ignored
    bool browsing_ = true;
    std::string searchColumn_; ///< tag of the frame: number of the column that typing searches
    std::string typed_;        ///< caption of the frame: what was typed so far
    std::string newTag_;       ///< tag of the button for a new row: "NEW" while one is typed
    std::size_t sorted_ = 0;   ///< number of the column of the last sort, 0 for none
    std::size_t shownBoxes_ = 0;
};

} // namespace tamarok::dialogs
