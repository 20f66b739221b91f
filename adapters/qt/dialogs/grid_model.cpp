#include "dialogs/grid_model.h"

#include "tamarok_qt/texts.h"

namespace tamarok::qt {

namespace {

constexpr std::size_t longestShown = 1000; ///< characters of a cell
constexpr std::size_t mostBytes = 4;       ///< of a character

} // namespace

QString shownText(std::string_view text)
{
    // The bytes are cut first, so that a text of a megabyte is not converted for each drawing.
    const bool isCut = text.size() > mostBytes * longestShown;
    QString shown = toQt(text.substr(0, mostBytes * longestShown));
    if (isCut || shown.size() > static_cast<qsizetype>(longestShown))
        shown = shown.left(static_cast<qsizetype>(longestShown)) + QChar{0x2026};
    for (const char16_t control : {u'\r', u'\n', u'\t'})
        shown.replace(QChar{control}, u' ');
    return shown;
}

void GridModel::show(const dialogs::GridRows& rows, std::span<const std::string> names)
{
    beginResetModel();
    rows_ = &rows;
    captions_.clear();
    isNumber_.clear();
    for (std::size_t column = 0; column < names.size(); ++column) {
        captions_.push_back(toQt(names[column]));
        isNumber_.push_back(rows.isNumber(column));
    }
    endResetModel();
}

void GridModel::caption(std::size_t column, std::string_view text)
{
    captions_.at(column) = toQt(text);
    const int section = static_cast<int>(column);
    emit headerDataChanged(Qt::Horizontal, section, section);
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return rows_ == nullptr || parent.isValid() ? 0 : static_cast<int>(rows_->count());
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(captions_.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    if (rows_ == nullptr || !index.isValid()) return {};
    const auto column = static_cast<std::size_t>(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole: return shownText(rows_->text(static_cast<std::size_t>(index.row()), column));
    case Qt::TextAlignmentRole:
        return QVariant{Qt::Alignment{Qt::AlignVCenter | (isNumber_[column] ? Qt::AlignRight : Qt::AlignLeft)}};
    default: return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    const auto column = static_cast<std::size_t>(section);
    if (role == Qt::DisplayRole) return captions_[column];
    if (role == Qt::TextAlignmentRole)
        return QVariant{Qt::Alignment{Qt::AlignVCenter | (isNumber_[column] ? Qt::AlignRight : Qt::AlignLeft)}};
    return {};
}

} // namespace tamarok::qt
