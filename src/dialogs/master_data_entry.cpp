#include "master_data_entry.h"

#include <utility>

#include "ado/first_row.h"
#include "master_data_statements.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/format.h"
#include "tamarok/loc_service.h"
#include "tamarok/mcomm.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

// Failures of single statements do not stop the operation, except where a result depends on them. They are errors of
// the database or of the recordset, and the user learns of them by the one message.

namespace tamarok::dialogs {

namespace {

constexpr std::size_t firstBox = 0;
constexpr std::size_t secondBox = 1;
constexpr std::size_t thirdBox = 2;

/// Returns whether an action succeeds.
template <class Action>
bool succeeds(Action&& action)
{
    try {
        action();
        return true;
    } catch (const Error&) {
        return false;
    }
}

bool isBlank(std::string_view text)
{
    return text::trim(text).empty();
}

/// One saving of the boxes.
class MasterDataEntry {
public:
    MasterDataEntry(const TmkVar& session, MasterDataForm& form) :
        session_{session}, form_{form}, table_{masterTableOf(form.select())}
    {}

    bool save();

private:
    bool isDuplicate() const;
    bool lacksRequired() const;
    bool saveFreeList();
    bool saveStandingFreeList();
    bool saveOrder();
    bool saveProject();
    bool saveObject();
    bool saveContract();
    bool saveByRecordset();
    bool storeBoxes();
    void store(std::size_t box);
    void giveLevel();

    bool execute(const std::string& statement);
    bool executeAndFind(const std::string& statement, const std::string& criterion);
    bool refuse() const;
    bool refuse(std::size_t box) const;

    MasterRow row() const { return {form_.boxText(firstBox), form_.boxText(secondBox), form_.boxText(thirdBox)}; }
    FormerRow former() const;
    bool isNew() const { return form_.typesNewRow() || form_.recordset().AtEOF(); }

    const TmkVar& session_;
    MasterDataForm& form_;
    MasterTable table_;
};

bool MasterDataEntry::save()
{
    if (isDuplicate()) return refuse(firstBox);
    switch (table_) {
    case MasterTable::FreeList: return saveFreeList();
    case MasterTable::StandingFreeList: return saveStandingFreeList();
    case MasterTable::Order: return saveOrder();
    case MasterTable::Contract: return saveContract();
    case MasterTable::Object: return saveObject();
    case MasterTable::Project: return saveProject();
    case MasterTable::Other: break;
    }
    return saveByRecordset();
}

/// Compares the first box with the first field of all rows, except that of a row that is being changed.
bool MasterDataEntry::isDuplicate() const
{
    const std::string wanted = form_.boxText(firstBox);
    if (!hasUniqueFirstField(form_.select()) || isBlank(wanted)) return false;
    const std::shared_ptr<ado::Recordset> all = form_.recordset().Clone();
    if (all->AtEOF()) return false;
    const VariantArray rows = all->GetRows();
    const std::int64_t current = form_.recordset().AbsolutePosition() - 1;
    for (std::int32_t index = 0; index <= rows.bounds(2).upper; ++index) {
        const Variant& value = rows.at(0, index);
        if (value.isNull() || convert::toText(value) != wanted) continue;
        if (form_.typesNewRow() || index != current) return true;
    }
    return false;
}

/// Puts the focus on a required box that is empty.
bool MasterDataEntry::lacksRequired() const
{
    const bool needsSecond = table_ == MasterTable::Object || table_ == MasterTable::Project;
    const bool needsThird = table_ == MasterTable::Contract;
    for (const auto& [box, needed] :
         {std::pair{firstBox, true}, std::pair{secondBox, needsSecond}, std::pair{thirdBox, needsThird}}) {
        if (!needed || !isBlank(form_.boxText(box))) continue;
        succeeds([&form = form_, where = box] { form.focusBox(where); }); // a hidden box cannot have it
        return true;
    }
    return false;
}

FormerRow MasterDataEntry::former() const
{
    FormerRow former;
    const auto text = [this](std::int32_t field) -> std::optional<std::string> {
        const ado::FieldCollection& fields = form_.recordset().Fields();
        if (field >= fields.Count()) return std::nullopt;
        const Variant value = fields.Item(field).Value();
        return value.isNull() ? std::nullopt : std::optional{convert::toText(value)};
    };
    succeeds([&] { former = {text(0), text(1)}; }); // without a current row both are missing
    return former;
}

/// Required by the contract: a row without a short name, and a SELECT that does not name its list, end as if they had
/// been saved. Do not correct.
bool MasterDataEntry::saveFreeList()
{
    if (isBlank(form_.boxText(firstBox)) || !namesFreeList(form_.select())) return true;
    const MasterRow values = cutToWidths(table_, row());
    const std::string field = form_.recordset().Fields().Item(0).Name();
    return executeAndFind(isNew() ? newFreeListRow(form_.select(), values)
                                  : changedFreeListRow(form_.select(), values, former(), session_.ID_Access_Levels),
                          field + " = '" + values.first + "'");
}

bool MasterDataEntry::saveStandingFreeList()
{
    if (isBlank(form_.boxText(firstBox)) || !namesFreeList(form_.select())) return true;
    const MasterRow values = cutToWidths(table_, row());
    return executeAndFind(isNew() ? newStandingFreeListRow(form_.select(), values)
                                  : changedStandingFreeListRow(form_.select(), values, former()),
                          {});
}

bool MasterDataEntry::saveOrder()
{
    if (lacksRequired()) return false;
    // The boxes show what is stored, also if the saving fails.
    MasterRow values = cutToWidths(table_, row());
    form_.boxText(firstBox, values.first);
    form_.boxText(secondBox, values.second);
    if (!values.third.empty()) {
        const Variant hours{values.third};
        if (!convert::isNumeric(hours)) return refuse();
        values.third = format::number(convert::toDouble(hours), "0.00", Platform::current().regional);
        form_.boxText(thirdBox, values.third);
    }
    return executeAndFind(isNew() ? newOrder(values, session_) : changedOrder(form_.select(), values, former()),
                          "NUMMER = '" + values.first + "'");
}

bool MasterDataEntry::saveProject()
{
    if (lacksRequired()) return false;
    const MasterRow values = cutToWidths(table_, row());
    return executeAndFind(
        isNew() ? newProject(values, session_.ID_Access_Levels) : changedProject(form_.select(), values, former()), {});
}

/// Objects are added only: a changed one is not saved.
bool MasterDataEntry::saveObject()
{
    if (lacksRequired() || !isNew()) return false;
    return executeAndFind(newObject(form_.select(), cutToWidths(table_, row())), {});
}

bool MasterDataEntry::saveContract()
{
    if (lacksRequired()) return false;
    bool duplicate = false;
    succeeds([&] { duplicate = ado::hasRow(session_.db_ADO, contractsOfNumber(form_.boxText(thirdBox), session_)); });
    return duplicate ? refuse(thirdBox) : saveByRecordset();
}

/// Required by the contract: each saving adds a row, also if the current one was to be changed. Do not correct.
bool MasterDataEntry::saveByRecordset()
{
    if (!succeeds([this] { form_.addNew(); })) return false;
    if (!storeBoxes()) return false;
    if (!succeeds([this] { form_.recordset().Update(); })) {
        succeeds([this] { form_.recordset().CancelUpdate(); });
        return refuse(firstBox);
    }
    giveLevel();
    form_.rowAdded();
    for (const std::size_t box : {firstBox, secondBox, thirdBox})
        form_.boxText(box, "");
    return true;
}

/// Stores the boxes in the new row. A refused value cancels it and leaves the focus on its box.
bool MasterDataEntry::storeBoxes()
{
    for (const std::size_t box : {firstBox, secondBox, thirdBox}) {
        if (!form_.boxShown(box) || succeeds([this, box] { store(box); })) continue;
        succeeds([this] { form_.recordset().CancelUpdate(); });
        return refuse(box);
    }
    return true;
}

/// Returns a text as the field takes it. Errors: 13 or 6 for a text that does not convert, 5 for one that is too long.
Variant valueFor(const ado::Field& field, const std::string& text)
{
    switch (field.Type()) {
    case ado::DataType::SmallInt:
    case ado::DataType::UnsignedTinyInt:
    case ado::DataType::Integer:
    case ado::DataType::BigInt: return convert::toLongLong(Variant{text});
    case ado::DataType::Single:
    case ado::DataType::Double:
    case ado::DataType::Currency:
    case ado::DataType::Decimal:
    case ado::DataType::Numeric: return convert::toDouble(Variant{text});
    case ado::DataType::Date:
    case ado::DataType::DBDate:
    case ado::DataType::DBTimeStamp: return convert::toDate(Variant{text});
    default: break;
    }
    if (field.DefinedSize() > 0 && text::length(text) > static_cast<std::size_t>(field.DefinedSize()))
        throw Error{errors::invalidArgument, "The text is too long for the column " + field.Name() + ".", "GridHelp"};
    return Variant{text};
}

void MasterDataEntry::store(std::size_t box)
{
    ado::Field& field = form_.recordset().Fields().Item(static_cast<std::int32_t>(box));
    const std::string text = form_.boxText(box);
    // The first box is the code, and is stored as it is; an empty text is Null in the others.
    field.Value(box != firstBox && text.empty() ? Variant{Null{}} : valueFor(field, text));
}

/// Gives the new row the user's level. It is taken for the one of the greatest id.
void MasterDataEntry::giveLevel()
{
    succeeds([this] {
        const std::string table = form_.recordset().Fields().Item(0).BASETABLENAME();
        ado::require(session_.db_ADO)
            .Execute("UPDATE " + table + " SET ID_ACCESS_LEVELS = " + std::to_string(session_.ID_Access_Levels) +
                     " WHERE ID IN (SELECT MAX(ID) FROM " + table + ")");
    });
}

bool MasterDataEntry::execute(const std::string& statement)
{
    return succeeds([&] { ado::require(session_.db_ADO).Execute(statement); }) || refuse();
}

/// Runs a statement, reads the rows again, and moves to the one that was saved.
/// @param criterion  "" leaves the first row current
bool MasterDataEntry::executeAndFind(const std::string& statement, const std::string& criterion)
{
    if (!execute(statement)) return false;
    succeeds([&] { form_.refresh(); });
    if (!criterion.empty()) succeeds([&] { form_.find(criterion); });
    return true;
}

bool MasterDataEntry::refuse() const
{
    constexpr std::int16_t refusal = 223;
    constexpr std::int32_t warning = 48;
    mComm::ShowMessage(Platform::locService()->GetText(refusal, session_), warning);
    return false;
}

bool MasterDataEntry::refuse(std::size_t box) const
{
    succeeds([&] { form_.focusBox(box); });
    return refuse();
}

} // namespace

bool saveMasterData(const TmkVar& session, MasterDataForm& form)
{
    return MasterDataEntry{session, form}.save();
}

} // namespace tamarok::dialogs
