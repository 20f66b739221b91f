#pragma once

#include <memory>
#include <optional>
#include <string>

#include "connection_object.h"
#include "forwarding_object.h"
#include "sorted_rows.h"

#include "tamarok/ado.h"
#include "tamarok/members.h"

namespace tamarok::data {

/// The class Tamarok.Recordset: a recordset of the library that is opened by its members and remembers how. What its
/// own table lacks is a member of the library's recordset.
class RecordsetObject final : public WithForwarding<RecordsetObject> {
public:
    static std::span<const Member<RecordsetObject>> members() noexcept;

    std::string_view typeName() const override { return "Recordset"; }

    /// Opens the rows of a statement. A connection or recordset whose rows are with the client has static rows.
    /// Errors: as ado::Recordset::Open.
    void open(const std::string& statement, std::shared_ptr<ConnectionObject> connection, ado::CursorType cursorType,
              ado::LockType lockType, std::int32_t options);
    /// Runs the statement again. Errors: 3704 for a closed recordset; as open.
    void requery();
    ado::Recordset& rows() const noexcept { return *rows_; }
    const std::shared_ptr<ado::Recordset>& shareRows() const noexcept { return rows_; }
    bool isOpen() const noexcept { return rows_->State() == ado::ObjectState::Open; }

    /// Sorts the rows; an empty order gives them back as they were read. Both move to the first row. Errors: 3251 for
    /// rows that are not static; as SortedRows.
    void sort(std::string_view order);
    const std::string& order() const noexcept { return order_; }
    /// Lets the order know that a new row has been written.
    void noteNewRow();

    /// A recordset over the same rows with a position of its own.
    std::shared_ptr<RecordsetObject> clone() const;

    /// What Open takes where its arguments are left out.
    std::string source;
    std::shared_ptr<ConnectionObject> connection;
    ado::CursorType cursorType = ado::CursorType::OpenForwardOnly;
    ado::LockType lockType = ado::LockType::ReadOnly;
    std::optional<std::int32_t> cursorLocation; ///< that of the connection if it was not set

protected:
    Object& target() const override
    {
        if (sorted_) return *sorted_;
        return *rows_;
    }
    std::shared_ptr<ErrorList> failures() const override { return connection ? connection->errors() : nullptr; }

private:
    bool keepsRows() const noexcept;

    std::shared_ptr<ado::Recordset> rows_ = std::make_shared<ado::Recordset>();
    std::int32_t options_ = -1;
    std::string order_;
    std::unique_ptr<SortedRows> sorted_; ///< none while the rows are as they were read
};

/// A value for CursorLocation: 2 or 3. Error 5 for any other.
std::int32_t checkedLocation(const Variant& value, std::string_view source);

} // namespace tamarok::data
