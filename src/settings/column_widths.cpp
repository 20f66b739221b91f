#include <string>
#include <string_view>
#include <vector>

#include "ado/first_row.h"
#include "runtime/late_bound.h"

#include "tamarok/comm_models.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"

// The widths of a control's columns as a text, and their way into and out of table MODELS. The control is reached by
// names alone.

namespace tamarok {

namespace {

constexpr std::string_view separator = ",";

/// Where a kind of control has its columns.
struct ColumnAccess {
    std::string_view typeName;
    std::string_view columns; ///< collection of the columns
    std::string_view count;   ///< "" if `columns` is a collection that counts itself, else the property that counts
    std::int32_t first;       ///< index of the first column
};

constexpr ColumnAccess listView{"ListView", "ColumnHeaders", "", 1};
constexpr ColumnAccess flexGrid{"MSFlexGrid", "ColWidth", "Cols", 0};
constexpr ColumnAccess dataGrid{"DataGrid", "Columns", "", 0};

/// Any control that is neither a list view nor a flex grid is treated as a data grid.
const ColumnAccess& accessTo(const Object& control)
{
    if (control.typeName() == listView.typeName) return listView;
    return control.typeName() == flexGrid.typeName ? flexGrid : dataGrid;
}

/// The columns of one control.
class ControlColumns {
public:
    explicit ControlColumns(Object& control) :
        control_{control}, access_{accessTo(control)}, end_{access_.first + countColumns()}
    {}

    /// A data grid counts its visible columns only, and may have the size of its form behind them.
    bool isGrid() const { return &access_ == &dataGrid; }
    std::int32_t first() const { return access_.first; }
    std::int32_t end() const { return end_; }

    bool isVisible(std::int32_t index) const
    {
        return !isGrid() || convert::toBoolean(column(index)->get("Visible", {}));
    }
    Variant width(std::int32_t index) const
    {
        const Variant place{index};
        return &access_ == &flexGrid ? control_.get(access_.columns, {&place, 1}) : column(index)->get("Width", {});
    }
    void setWidth(std::int32_t index, const Variant& width)
    {
        const Variant place{index};
        if (&access_ == &flexGrid) return control_.putIndexed(access_.columns, {&place, 1}, width);
        column(index)->put("Width", width);
    }

private:
    std::int32_t countColumns() const
    {
        if (!access_.count.empty()) return late_bound::numberOf(control_, access_.count);
        return late_bound::numberOf(*late_bound::objectOf(control_, access_.columns), "Count");
    }
    ObjectRef column(std::int32_t index) const { return late_bound::elementOf(control_, access_.columns, index); }

    Object& control_;
    const ColumnAccess& access_;
    std::int32_t end_;
};

/// Returns the form of a grid if its size is kept with the widths, or nothing.
/// Required by the contract: the name of the parent is read for every control of this branch, so that one without a
/// parent fails. Do not correct.
ObjectRef formOfLookup(const Object& control)
{
    const Variant parent = control.get("Parent", {});
    const std::string name = convert::toText(require(parent.asObject(), "Parent").get("Name", {}));
    return control.typeName() == dataGrid.typeName && name == "frmViewGrid" ? parent.asObject() : nullptr;
}

/// Error 6 for a width beyond 16 bits.
void append(std::string& widths, const Variant& width)
{
    if (!widths.empty()) widths += separator;
    widths += convert::toText(Variant{convert::toInteger(width)});
}

std::string widthsOf(Object& control)
{
    const ControlColumns columns{control};
    std::string widths;
    for (std::int32_t index = columns.first(); index < columns.end(); ++index)
        if (columns.isVisible(index)) append(widths, columns.width(index));
    if (!columns.isGrid()) return widths;
    if (const ObjectRef form = formOfLookup(control)) {
        append(widths, form->get("Width", {}));
        append(widths, form->get("Height", {}));
    }
    return widths;
}

std::vector<Variant> splitWidths(std::string_view widths)
{
    std::vector<Variant> parts;
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = widths.find(separator);
        parts.emplace_back(widths.substr(0, end));
        widths.remove_prefix(end == std::string_view::npos ? widths.size() : end + separator.size());
    }
    return parts;
}

/// Hands the widths out in order; a part that is no number leaves its column alone. Surplus parts are the size of the
/// form of a lookup.
/// Required by the contract: the walk stops with the last part, before that is counted as used. Do not correct.
void restoreWidths(Object& control, const std::vector<Variant>& parts)
{
    ControlColumns columns{control};
    std::size_t next = 0;
    for (std::int32_t index = columns.first(); index < columns.end(); ++index) {
        if (!columns.isVisible(index)) continue;
        if (convert::isNumeric(parts[next])) columns.setWidth(index, parts[next]);
        if (next + 1 == parts.size()) break;
        ++next;
    }
    if (!columns.isGrid()) return;
    const ObjectRef form = formOfLookup(control);
    if (!form || next + 1 >= parts.size()) return;
    form->put("Width", parts[next]);
    form->put("Height", parts[next + 1]);
}

} // namespace

void Comm_Models::ColWidth_Get(const TmkVar& tmkVar, std::string_view model, Object& DG) const
{
    std::string statement{"SELECT MODEL FROM MODELS WHERE NAME = 'STANDARD' AND RELATION = '"};
    statement.append(model).append("'");
    ado::readFirst(tmkVar.db_ADO, statement, [&](const ado::FieldCollection& fields) {
        restoreWidths(DG, splitWidths(ado::fieldText(fields.Item(0).Value())));
    });
}

void Comm_Models::ColWidth_Set(const TmkVar& tmkVar, std::string_view relation, Object& DG) const
{
    using ado::DataType;
    using ado::ParameterDirection;

    if (relation.empty()) return;
    const std::string widths = widthsOf(DG);
    ado::Command command;
    const auto add = [&command](DataType type, std::int32_t size, Variant value) {
        command.Parameters().push_back(
            command.CreateParameter("", type, ParameterDirection::Input, size, std::move(value)));
    };
    add(DataType::VarChar, 60, relation);
    add(DataType::VarChar, 80, "STANDARD");
    add(DataType::VarChar, 1000, widths);
    // The row is a default, and belongs to no user and to no access level.
    for (const std::int32_t number : {1, 0, 0, 0})
        add(DataType::BigInt, 0, number);
    Platform::locService()->RunProcedure(tmkVar, "tmk_MODELS_INS", command);
}

} // namespace tamarok
