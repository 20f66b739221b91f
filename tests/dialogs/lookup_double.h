#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/controls.h"
#include "tamarok/dialog_windows.h"
#include "tamarok/error.h"
#include "tamarok/form.h"
#include "tamarok/grids.h"

namespace tamarok::test {

/// What a lookup window was told, and what its user does.
struct LookupRecord {
    std::function<void(dialogs::LookupEvents&)> user = [](dialogs::LookupEvents& events) { events.closeAsked(); };
    std::function<void()> waitingEvents = [] {}; ///< what happens while the window handles events

    std::string caption;
    std::map<std::string, std::string, std::less<>> texts;
    std::map<std::string, std::string, std::less<>> tags;
    std::map<std::string, bool, std::less<>> visible;
    std::map<std::string, bool, std::less<>> enabled;
    std::map<std::string, dialogs::Box, std::less<>> places;
    dialogs::Size size{6000, 5000};
    std::string focus;
    std::string selectedText;
    std::shared_ptr<controls::DataGrid> grid = std::make_shared<controls::DataGrid>();
    std::shared_ptr<controls::Form> form = std::make_shared<controls::Form>();
    const dialogs::GridRows* rows = nullptr;
    std::optional<std::size_t> current;
    std::vector<std::size_t> selected;
    Date date;
    bool closed = false;

    controls::GridColumn& column(std::size_t index) const { return *grid->columns()->all().at(index); }
    std::string head(std::size_t index) const { return column(index).Caption; }
};

/// The double of the lookup's window: keeps what it is told in a record, and lets the record's user act.
class LookupDouble final : public dialogs::LookupWindow {
public:
    explicit LookupDouble(LookupRecord& record) : record_{record}
    {
        record_.form->Name = "frmViewGrid";
        record_.grid->Name = "DataGrid1";
        record_.grid->Parent(record_.form);
    }

    void caption(std::string_view text) override { record_.caption = text; }
    dialogs::Size size() const override { return record_.size; }
    dialogs::Size innerSize() const override { return record_.size; }
    void resize(dialogs::Size size) override { record_.size = size; }
    void text(std::string_view control, std::string_view text) override { record_.texts[std::string{control}] = text; }
    std::string text(std::string_view control) const override
    {
        const auto found = record_.texts.find(control);
        return found == record_.texts.end() ? std::string{} : found->second;
    }
    void visible(std::string_view control, bool visible) override { record_.visible[std::string{control}] = visible; }
    void enabled(std::string_view control, bool enabled) override { record_.enabled[std::string{control}] = enabled; }
    dialogs::Box place(std::string_view control) const override
    {
        const auto found = record_.places.find(control);
        return found == record_.places.end() ? dialogs::Box{} : found->second;
    }
    void place(std::string_view control, const dialogs::Box& box) override
    {
        record_.places[std::string{control}] = box;
    }
    void bringToFront(std::string_view) override {}
    void focus(std::string_view control) override
    {
        const auto shown = record_.visible.find(control);
        if (shown != record_.visible.end() && !shown->second)
            throw Error{errors::invalidArgument, "The control " + std::string{control} + " is hidden."};
        record_.focus = control;
    }
    Object& form() override { return *record_.form; }
    void close() override { record_.closed = true; }
    void showModal(dialogs::LookupEvents& events) override
    {
        events.resized();
        events.activated();
        record_.user(events);
    }

    Object& grid() override { return *record_.grid; }
    void showRows(const dialogs::GridRows& rows, std::span<const std::string> names) override
    {
        record_.rows = &rows;
        controls::GridColumns& columns = *record_.grid->columns();
        while (columns.all().size() < names.size())
            columns.Add(columns.Count());
        for (std::size_t column = 0; column < names.size(); ++column)
            record_.column(column).Caption = names[column];
    }
    void columnCaption(std::size_t column, std::string_view caption) override
    {
        record_.column(column).Caption = caption;
    }
    void columnVisible(std::size_t column, bool visible) override { record_.column(column).Visible = visible; }
    float columnWidth(std::size_t column) const override { return record_.column(column).Width; }
    void columnWidth(std::size_t column, float width) override { record_.column(column).Width = width; }
    void currentRow(std::optional<std::size_t> row) override { record_.current = row; }
    std::vector<std::size_t> selectedRows() const override { return record_.selected; }
    void selectRows(std::span<const std::size_t> rows) override { record_.selected.assign(rows.begin(), rows.end()); }
    Date date() const override { return record_.date; }
    void date(Date date) override { record_.date = date; }
    void selectText(std::string_view box) override { record_.selectedText = box; }
    void tag(std::string_view control, std::string_view text) override { record_.tags[std::string{control}] = text; }
    void handleEvents() override { record_.waitingEvents(); }

private:
    LookupRecord& record_;
};

} // namespace tamarok::test
