#include "day/list_window.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "list/column_labels.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_models.h"
#include "tamarok/comm_set.h"
#include "tamarok/text.h"

namespace tamarok::cli::day {

namespace {

/// Prints what a connection is sent while it exists.
class StatementPrinter {
public:
    StatementPrinter(const ado::ConnectionRef& connection, Output& output) : connection_{connection}
    {
        connection_->listen([&output](std::string_view text) { output.write(std::string{text} + "\n\n"); });
    }
    ~StatementPrinter() { connection_->listen({}); }
    StatementPrinter(const StatementPrinter&) = delete;
    StatementPrinter& operator=(const StatementPrinter&) = delete;

private:
    ado::ConnectionRef connection_;
};

std::string padded(const std::string& text, std::size_t width, bool toTheRight)
{
    const std::string blanks(width - std::min(width, text::length(text)), ' ');
    return toTheRight ? blanks + text : text + blanks;
}

} // namespace

ListWindow::ListWindow(const Context& context, std::string type, const std::vector<std::int16_t>& ids) :
    context_{context}, type_{std::move(type)}
{
    view_->Parent(form_);
    const std::vector<std::string> labels = columnHeaders(type_, ids, context.session);
    for (std::size_t column = 0; column < ids.size(); ++column)
        view_->headers()->Add({}, "COL_" + std::to_string(ids[column]), labels[column]);
}

void ListWindow::fill(std::string_view base, std::string_view condition)
{
    std::string selection = "FROM " + std::string{base};
    if (!condition.empty()) selection.append(" WHERE ").append(condition);
    const StatementPrinter printer{context_.session.db_ADO, context_.output};
    Comm_CSel{}.FillListview(context_.session, "R", type_, *view_, selection);
}

void ListWindow::click(std::int32_t column)
{
    Comm_Set{}.OrderColumnListview(context_.session, *view_->headers()->Item(Variant{column}), *view_, false);
}

/// The text of a cell; row 0 is the header.
std::string ListWindow::cell(std::int32_t row, std::int32_t column) const
{
    return row == 0 ? view_->headers()->all()[static_cast<std::size_t>(column)]->text : view_->text(row, column);
}

void ListWindow::print(std::int32_t rows) const
{
    const std::int32_t shown = std::min(rows, view_->items()->Count());
    for (std::int32_t row = 0; row <= shown; ++row) {
        std::string line;
        for (std::int32_t column = 0; column < view_->headers()->Count(); ++column) {
            std::size_t width = 0;
            for (std::int32_t other = 0; other <= shown; ++other)
                width = std::max(width, text::length(cell(other, column)));
            const auto& header = *view_->headers()->all()[static_cast<std::size_t>(column)];
            line += "    " + padded(cell(row, column), width, header.Alignment == controls::ColumnAlignment::Right);
        }
        context_.output.write(line.substr(0, line.find_last_not_of(' ') + 1) + "\n");
    }
    context_.output.write("    ... " + std::to_string(view_->items()->Count()) + " rows\n\n");
}

void ListWindow::widen(std::int32_t column, float width)
{
    view_->headers()->Item(Variant{column})->Width = width;
}

std::string ListWindow::widths() const
{
    std::string all;
    for (const controls::ColumnHeaderRef& header : view_->headers()->all())
        all.append(all.empty() ? "" : " ").append(std::to_string(static_cast<int>(header->Width)));
    return all;
}

void ListWindow::saveWidths(std::string_view relation)
{
    Comm_Models{}.ColWidth_Set(context_.session, relation, *view_);
}

void ListWindow::restoreWidths(std::string_view relation)
{
    Comm_Models{}.ColWidth_Get(context_.session, relation, *view_);
}

} // namespace tamarok::cli::day
