#pragma once

#include <QAbstractTableModel>
#include <span>
#include <string>
#include <vector>

#include "tamarok/lookup_window.h"

namespace tamarok::qt {

/// The rows of a lookup, of which a view asks for the cells that can be seen.
class GridModel final : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Shows other rows under these heads.
    void show(const dialogs::GridRows& rows, std::span<const std::string> names);
    void caption(std::size_t column, std::string_view text);
    const QString& caption(std::size_t column) const { return captions_.at(column); }
    const dialogs::GridRows* rows() const noexcept { return rows_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const dialogs::GridRows* rows_ = nullptr;
    std::vector<QString> captions_;
    std::vector<bool> isNumber_;
};

/// Returns the text of a cell as a view draws it: on one line, and of a very long text its beginning.
QString shownText(std::string_view text);

} // namespace tamarok::qt
