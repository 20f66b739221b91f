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

/// How a recordset was asked for.
struct Opening {
    std::string_view statement;
    CursorType cursorType = CursorType::OpenForwardOnly;
    LockType lockType = LockType::ReadOnly;
    bool procedure = false;
};

/// The state of one open recordset, shared with its fields so that a field that is kept longer finds
/// it closed instead of gone. Forward-only read-only rows are read out of the cursor; any others are
/// kept in a RowStore.
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

    /// Runs the statement and stands on the first row. Null where there is no result set.
    static std::shared_ptr<Source> open(const ConnectionRef& connection, const Opening& opening);
    std::shared_ptr<Source> clone() const;
    void close();
    void release() noexcept override;

    bool isOpen() const noexcept { return connection_ != nullptr; }
    void requireOpen(std::string_view operation, std::string_view object) const;

    std::size_t columnCount() const noexcept { return columns_->size(); }
    const ColumnInfo& column(std::size_t ordinal) const;
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
    /// Where the recordset stands. Nowhere: between rows, after a deletion or a move that failed.
    enum class Standing : std::uint8_t { Row, Before, Behind, Nowhere };
    enum class Edit : std::uint8_t { None, Change, Add };

    void run(const Opening& opening);
    void stepStream();
    Variant keptValue(std::size_t ordinal) const;
    [[noreturn]] void failWithoutRow(std::string_view operation) const;
    void requireScrolling(std::string_view operation) const;
    void requireEditable(std::string_view operation) const;

    std::size_t rowsOnward(std::int64_t rows);
    std::int64_t rowsBack(std::int64_t rows) const;
    void readAgain();
    void restart();
    void settleForward(std::size_t row);
    void settleBackward(std::int64_t row);
    bool hold(std::size_t row);
    bool lock(std::size_t row);
    void leaveRow();
    void finishEdit();

    void sendChange(std::span<const Assignment> assignments);
    void sendNewRow(std::span<const Assignment> assignments);
    void endEdit() noexcept;

    ConnectionRef connection_; ///< before the rows: destroyed after them
    std::string statement_;
    std::string provider_;
    CursorType cursorType_;
    LockType lockType_;
    bool locking_ = false; ///< the current row is kept locked
    bool locked_ = false;
    bool editable_ = false;
    bool empty_ = false; ///< no row at all was found
    Standing standing_ = Standing::Behind;
    Edit edit_ = Edit::None;
    std::shared_ptr<const std::vector<ColumnInfo>> columns_;
    std::unique_ptr<Cursor> cursor_;  ///< of a stream
    std::shared_ptr<RowStore> store_; ///< of any other
    std::int64_t position_ = -1;      ///< zero-based, -1 before the first row
    std::vector<std::optional<Variant>> edits_;
};

} // namespace tamarok::ado
