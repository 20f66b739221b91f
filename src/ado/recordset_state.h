#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ado_failure.h"
#include "row_store.h"

#include "tamarok/ado_backend.h"

namespace tamarok::ado {

/// The arguments of Recordset::Open.
struct Opening {
    std::string_view statement;
    CursorType cursorType = CursorType::OpenForwardOnly;
    LockType lockType = LockType::ReadOnly;
    bool procedure = false;
};

/// The state of one open recordset. Its fields share it, so that a field that outlives the recordset finds it
/// closed. Forward-only read-only rows are read directly from the cursor; all others are kept in a RowStore.
struct Field::Source final : public Dependent {
private:
    template <class Action>
    decltype(auto) guarded(Action&& action) const
    {
        return tamarok::ado::guarded(statement_, provider_, std::forward<Action>(action));
    }

public:
    Source(ConnectionRef connection, const Opening& opening);
    ~Source() override;

    /// Runs the statement and moves to the first row. Returns null for a statement without result set.
    static std::shared_ptr<Source> open(const ConnectionRef& connection, const Opening& opening);
    std::shared_ptr<Source> clone() const;
    void close();
    void release() noexcept override;

    bool isOpen() const noexcept { return connection_ != nullptr; }
    void requireOpen(std::string_view operation, std::string_view object) const;

    std::size_t columnCount() const noexcept { return columns_->infos.size(); }
    const ColumnInfo& column(std::size_t ordinal) const;
    /// The same with the names in its base table, which the cursor may have to ask for.
    const ColumnInfo& columnWithBase(std::size_t ordinal) const;
    Variant value(std::size_t ordinal) const
    {
        if (standing_ == Standing::Row && !store_) [[likely]]
            return guarded([&] { return cursor_->value(ordinal); });
        return keptValue(ordinal);
    }
    void setValue(std::size_t ordinal, const Variant& value);

    bool atEnd() const;
    bool atStart() const;
    bool onRow() const noexcept { return standing_ == Standing::Row; }
    void requireRow(std::string_view operation) const;

    void moveNext()
    {
        if (standing_ == Standing::Row && !store_) [[likely]]
            stepStream();
        else
            move(1, "MoveNext");
    }
    void moveFirst();
    void moveLast();
    void move(std::int64_t rows, std::string_view operation);

    VariantArray getRows(std::int64_t rows);
    void keepRows();
    std::int64_t recordCount() const;
    std::int64_t bookmark() const;
    void bookmark(std::int64_t mark);
    std::int64_t absolutePosition() const;
    void absolutePosition(std::int64_t position);

    void addNew();
    void update();
    void cancelUpdate();
    void deleteCurrent();

    bool scrolls() const noexcept { return cursorType_ != CursorType::OpenForwardOnly; }

private:
    /// The position. Nowhere: no current row after a deletion or a failed move.
    enum class Standing : std::uint8_t { Row, Before, After, Nowhere };
    enum class Edit : std::uint8_t { None, Change, Add };

    /// The columns, shared by the clones of a recordset.
    struct Columns {
        std::vector<ColumnInfo> infos;
        bool basesNamed = false;
    };

    void run(const Opening& opening);
    void stepStream();
    Variant keptValue(std::size_t ordinal) const;
    [[noreturn]] void failWithoutRow(std::string_view operation) const;
    void requireScrolling(std::string_view operation) const;
    void requireEditable(std::string_view operation) const;

    std::size_t findRowForward(std::int64_t rows);
    std::int64_t findRowBackward(std::int64_t rows) const;
    void reloadRow();
    void restart();
    void moveToRowFrom(std::size_t row);
    void moveToRowBack(std::int64_t row);
    bool standOn(std::size_t row);
    bool lock(std::size_t row);
    void leaveRow();
    void finishEdit();

    void sendChange(std::span<const Assignment> assignments);
    void sendNewRow(std::span<const Assignment> assignments);
    void endEdit() noexcept;

    ConnectionRef connection_; ///< declared before cursor and store, so that it is destroyed after them
    std::string statement_;
    std::string provider_;
    CursorType cursorType_;
    LockType lockType_;
    bool locking_ = false; ///< pessimistic: each current row is locked
    bool locked_ = false;
    bool editable_ = false;
    bool empty_ = false; ///< the recordset has no rows
    Standing standing_ = Standing::After;
    Edit edit_ = Edit::None;
    std::shared_ptr<Columns> columns_;
    std::unique_ptr<Cursor> cursor_;  ///< of a forward-only read-only recordset
    std::shared_ptr<RowStore> store_; ///< of any other recordset
    std::int64_t position_ = -1;      ///< zero-based, -1 before the first row
    std::vector<std::optional<Variant>> edits_;
};

} // namespace tamarok::ado
