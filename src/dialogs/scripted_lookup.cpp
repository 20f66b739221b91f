#include <algorithm>
#include <string>
#include <vector>

#include "script_player.h"

#include "tamarok/convert.h"
#include "tamarok/grids.h"
#include "tamarok/text.h"

namespace tamarok::dialogs {

namespace {

/// The month view. Its default value is the date.
class MonthView final : public WithMembers<MonthView, controls::Control> {
public:
    static std::span<const Member<MonthView>> members() noexcept;
    std::string_view typeName() const override { return "MonthView"; }
    Variant defaultValue() const override { return Value; }
    bool hasDefaultValue() const noexcept override { return true; }

    Date Value;
};

constexpr Member<MonthView> monthMembers[]{
    {.name = "Value", .get = [](const MonthView& month, std::span<const Variant>) -> Variant { return month.Value; }},
};

std::span<const Member<MonthView>> MonthView::members() noexcept
{
    return monthMembers;
}

/// Steps of its own: keys and heads of the grid, selected rows, the date, and the width of a column.
class ScriptedLookup final : public Scripted<LookupWindow> {
public:
    explicit ScriptedLookup(std::shared_ptr<DialogScripts> scripts) : Scripted{"frmViewGrid", std::move(scripts)}
    {
        DialogForm& form = controls();
        form.resize({6000, 5000});
        frame_ = form.add(std::make_shared<CaptionedControl>("Frame"), "Frame1", {});
        grid_ = form.add(std::make_shared<controls::DataGrid>(), "DataGrid1", {});
        month_ = form.add(std::make_shared<MonthView>(), "MonthView1", {0, 0, 2595, 2370});
        for (const std::string_view box : {"Text1", "Text2", "Text3"})
            form.add(std::make_shared<controls::TextBox>(), box, {});
        for (const std::string_view button : {"cmdOk", "cmdClose", "cmdNew", "cmdSave"})
            form.addButton(button, {});
        form.text("cmdOk", "OK");
        form.text("cmdClose", "Schließen");
        form.text("cmdNew", "Neu");
        form.text("cmdSave", "Speichern");
    }

    Object& grid() override { return *grid_; }

    void showRows(const GridRows& rows, std::span<const std::string> names) override
    {
        rows_ = &rows;
        selected_.clear(); // bookmarks of the former rows
        grid_->ApproxCount = static_cast<std::int32_t>(rows.count());
        controls::GridColumns& columns = *grid_->columns();
        if (columns.all().size() != names.size()) {
            while (columns.Count() > 0)
                columns.Remove(Variant{0});
            while (columns.all().size() < names.size())
                columns.Add(columns.Count());
        }
        for (std::size_t column = 0; column < names.size(); ++column) {
            columns.all()[column]->DataField = names[column];
            columns.all()[column]->Caption = names[column];
        }
    }
    void columnCaption(std::size_t column, std::string_view caption) override { at(column).Caption = caption; }
    void columnVisible(std::size_t column, bool visible) override { at(column).Visible = visible; }
    float columnWidth(std::size_t column) const override { return at(column).Width; }
    void columnWidth(std::size_t column, float width) override { at(column).Width = width; }

    void currentRow(std::optional<std::size_t> row) override
    {
        grid_->Row = row ? static_cast<std::int32_t>(*row) : -1;
        for (std::size_t column = 0; column < grid_->columns()->all().size(); ++column)
            at(column).Text = row ? rows_->text(*row, column) : std::string{};
    }
    std::vector<std::size_t> selectedRows() const override { return selected_; }
    void selectRows(std::span<const std::size_t> rows) override { selected_.assign(rows.begin(), rows.end()); }

    Date date() const override { return month_->Value; }
    void date(Date date) override { month_->Value = date; }

    void focus(std::string_view control) override
    {
        Scripted::focus(control);
        if (std::dynamic_pointer_cast<controls::TextEntry>(controls().find(control))) events().boxEntered(control);
    }
    void selectText(std::string_view box) override
    {
        auto& entry = dynamic_cast<controls::TextEntry&>(controls().control(box));
        entry.SelStart(0);
        entry.SelLength(static_cast<std::int32_t>(text::length(entry.text())));
    }
    void tag(std::string_view control, std::string_view text) override { controls().control(control).Tag = text; }
    void handleEvents() override {} // a script waits for its step

private:
    void appeared() override { events().activated(); }

    bool takeStep(const DialogStep& step) override
    {
        switch (step.kind) {
        case StepKind::Type:
        case StepKind::Key: return typeKeys(step);
        case StepKind::Head: clickHead(step); return true;
        case StepKind::SelectRow: chooseRow(step); return true;
        case StepKind::SelectRows: selectRowsOf(step); return true;
        case StepKind::Set: return set(step);
        default: return false;
        }
    }

    /// The keys of a text box are left to the common player.
    bool typeKeys(const DialogStep& step)
    {
        const bool isGrid = usesGrid();
        if (!isGrid && !month_->Visible) return false;
        if (!isGrid && step.kind == StepKind::Type) refuse(step, "the month view takes no text.");
        if (step.kind == StepKind::Key) {
            press(isGrid, static_cast<char32_t>(step.numbers[0]));
            return true;
        }
        for (std::size_t at = 0; at < step.text.size();)
            press(isGrid, text::decode(step.text, at));
        return true;
    }
    void press(bool isGrid, char32_t key)
    {
        if (isGrid)
            events().keyPressed(key);
        else
            events().monthKeyPressed(key);
    }

    void clickHead(const DialogStep& step)
    {
        requireGrid(step);
        const std::int32_t column = step.numbers[0];
        if (column < 0 || column >= grid_->columns()->Count() || !at(static_cast<std::size_t>(column)).Visible)
            refuse(step, "the grid shows no column " + std::to_string(column) + ".");
        if (frame_->Enabled) events().headClicked(static_cast<std::size_t>(column));
    }

    void chooseRow(const DialogStep& step)
    {
        const std::size_t row = rowOf(step, step.numbers[0]);
        if (frame_->Enabled) events().rowChosen(row);
    }

    void selectRowsOf(const DialogStep& step)
    {
        std::vector<std::size_t> rows;
        for (const std::int32_t number : step.numbers)
            rows.push_back(rowOf(step, number));
        if (!frame_->Enabled) return;
        selected_ = std::move(rows);
        events().selectionChanged();
    }

    /// @param number  from 1
    std::size_t rowOf(const DialogStep& step, std::int32_t number) const
    {
        requireGrid(step);
        if (number < 1 || number > grid_->ApproxCount)
            refuse(step, "the grid has " + std::to_string(grid_->ApproxCount) + " rows and no row " +
                             std::to_string(number) + ".");
        return static_cast<std::size_t>(number) - 1;
    }

    /// The date needs its kind, and the width of a column is an event.
    bool set(const DialogStep& step)
    {
        if (text::equalsNoCase(step.text, "MonthView1") || text::equalsNoCase(step.text, "MonthView1.Value")) {
            if (!month_->Visible) refuse(step, "the dialog picks no date.");
            if (!convert::isDate(step.value)) refuse(step, "the value is no date.");
            month_->Value = convert::toDate(step.value);
            return true;
        }
        if (!text::startsWithNoCase(step.text, "DataGrid1.Columns")) return false;
        setByName(step);
        events().columnResized();
        return true;
    }

    bool usesGrid() const { return grid_->Visible && frame_->Enabled; }
    void requireGrid(const DialogStep& step) const
    {
        if (!grid_->Visible) refuse(step, "the dialog picks a date and has no grid.");
    }
    controls::GridColumn& at(std::size_t column) const { return *grid_->columns()->all().at(column); }

    std::shared_ptr<CaptionedControl> frame_;
    std::shared_ptr<controls::DataGrid> grid_;
    std::shared_ptr<MonthView> month_;
    const GridRows* rows_ = nullptr;
    std::vector<std::size_t> selected_;
};

} // namespace

std::unique_ptr<LookupWindow> ScriptedWindows::makeLookup()
{
    return std::make_unique<ScriptedLookup>(scripts_);
}

} // namespace tamarok::dialogs
