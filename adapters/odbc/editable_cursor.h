#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "cursor.h"
#include "row_changes.h"

namespace tamarok::odbc {

/// A client copy of rows that can be changed and locked by the key of their base table. The whole result is taken from
/// the connection at once, since every change needs it. The recordset model knows a row by a number, which is here an
/// index of the keys.
class EditableCursor final : public StreamCursor {
public:
    EditableCursor(std::shared_ptr<SessionState> session, const ado::Statement& statement);
    ~EditableCursor() override;

    void start() override;
    bool next() override;
    /// A result that does not show its key takes new rows, but none of its rows can be locked.
    bool updatable() const override { return changes_ && (!pessimistic_ || changes_->table().showsKey()); }
    std::int64_t rowKey() const override;
    void lockRow(std::int64_t key) override;
    void unlockRow() override;
    void updateRow(std::int64_t key, std::span<const ado::Assignment> assignments) override;
    std::int64_t insertRow(std::span<const ado::Assignment> assignments) override;
    void deleteRow(std::int64_t key) override;
    bool readRow(std::int64_t key, std::vector<Variant>& values) override;

private:
    void findTable();
    const KeyValues& keyAt(std::int64_t key) const { return keys_.at(static_cast<std::size_t>(key)); }
    bool readFromStatement(const KeyValues& key, std::vector<Variant>& values);

    bool pessimistic_;
    bool described_ = false;
    std::optional<RowChanges> changes_;
    std::vector<KeyValues> keys_; ///< an empty one for a row that cannot be found again
    std::optional<std::int64_t> held_;
};

} // namespace tamarok::odbc
