#include "windows/column_chooser.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "tamarok_qt/texts.h"
#include "windows/texts.h"

namespace tamarok::workbench {

namespace {

constexpr int idRole = Qt::UserRole;

QListWidgetItem* itemOf(const ListColumn& column)
{
    auto* const item = std::make_unique<QListWidgetItem>(qt::toQt(column.label)).release(); // the list takes it over
    item->setData(idRole, column.id);
    item->setSizeHint({0, QFontMetrics{QApplication::font()}.height() + 8}); // the height of a table's rows
    item->setToolTip(qt::toQt(column.header) + (column.isMeasure ? " – " + textOf(Text::Measure) : QString{}));
    if (column.isMeasure) {
        QFont italic = item->font();
        italic.setItalic(true);
        item->setFont(italic);
    }
    return item;
}

/// Two lists: the columns that are not shown, with a search, and the shown ones in their order.
class ColumnChooser final : public QDialog {
public:
    ColumnChooser(QWidget* parent, const std::vector<ListColumn>& all, const std::vector<std::int16_t>& shown) :
        QDialog{parent}
    {
        setWindowTitle(textOf(Text::Columns));
        resize(640, 520);
        for (const std::int16_t id : shown) {
            const auto column = std::ranges::find(all, id, &ListColumn::id);
            if (column != all.end()) shown_.addItem(itemOf(*column));
        }
        for (const ListColumn& column : all)
            if (std::ranges::find(shown, column.id) == shown.end()) available_.addItem(itemOf(column));
        layOut();
        connectAll();
        enable();
    }

    std::vector<std::int16_t> chosen() const
    {
        std::vector<std::int16_t> ids;
        ids.reserve(static_cast<std::size_t>(shown_.count()));
        for (int row = 0; row < shown_.count(); ++row)
            ids.push_back(static_cast<std::int16_t>(shown_.item(row)->data(idRole).toInt()));
        return ids;
    }

private:
    void layOut()
    {
        search_.setPlaceholderText(textOf(Text::Search));
        search_.setClearButtonEnabled(true);
        search_.setAccessibleName(textOf(Text::Search));
        available_.setAccessibleName(textOf(Text::Available));
        shown_.setAccessibleName(textOf(Text::Shown));
        for (QListWidget* const list : {&available_, &shown_}) {
            list->setSelectionMode(QAbstractItemView::ExtendedSelection);
            list->setAlternatingRowColors(true);
        }
        shown_.setDragDropMode(QAbstractItemView::InternalMove);
        auto* const grid = std::make_unique<QGridLayout>(this).release(); // Qt owns what a window contains
        availableLabel_.setBuddy(&available_);
        shownLabel_.setBuddy(&shown_);
        grid->addWidget(&availableLabel_, 0, 0);
        grid->addWidget(&shownLabel_, 0, 2);
        grid->addWidget(&search_, 1, 0);
        grid->addWidget(&available_, 2, 0);
        grid->addWidget(&shown_, 1, 2, 2, 1);
        auto middle = std::make_unique<QVBoxLayout>();
        middle->addStretch();
        for (QPushButton* const button : {&add_, &remove_, &up_, &down_})
            middle->addWidget(button);
        middle->addStretch();
        grid->addLayout(middle.release(), 1, 1, 2, 1);
        grid->addWidget(&buttons_, 3, 0, 1, 3);
        buttons_.button(QDialogButtonBox::Cancel)->setText(textOf(Text::Cancel));
        search_.setFocus();
    }

    void connectAll()
    {
        connect(&search_, &QLineEdit::textChanged, this, [this](const QString& text) {
            for (int row = 0; row < available_.count(); ++row)
                available_.item(row)->setHidden(!available_.item(row)->text().contains(text, Qt::CaseInsensitive));
        });
        connect(&add_, &QPushButton::clicked, this, [this] { move(available_, shown_); });
        connect(&remove_, &QPushButton::clicked, this, [this] { move(shown_, available_); });
        connect(&available_, &QListWidget::itemDoubleClicked, this, [this] { move(available_, shown_); });
        connect(&shown_, &QListWidget::itemDoubleClicked, this, [this] { move(shown_, available_); });
        connect(&up_, &QPushButton::clicked, this, [this] { shift(-1); });
        connect(&down_, &QPushButton::clicked, this, [this] { shift(1); });
        for (QListWidget* const list : {&available_, &shown_})
            connect(list, &QListWidget::itemSelectionChanged, this, [this] { enable(); });
        connect(&buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(&buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    }

    void move(QListWidget& from, QListWidget& to)
    {
        for (QListWidgetItem* const item : from.selectedItems())
            to.addItem(from.takeItem(from.row(item)));
        enable();
    }

    void shift(int by)
    {
        const int row = shown_.currentRow();
        if (row < 0 || row + by < 0 || row + by >= shown_.count()) return;
        shown_.insertItem(row + by, shown_.takeItem(row));
        shown_.setCurrentRow(row + by);
    }

    /// A list has one column at least.
    void enable()
    {
        add_.setEnabled(!available_.selectedItems().isEmpty());
        const auto taken = shown_.selectedItems().size();
        remove_.setEnabled(taken > 0 && taken < shown_.count());
        up_.setEnabled(taken == 1 && shown_.currentRow() > 0);
        down_.setEnabled(taken == 1 && shown_.currentRow() + 1 < shown_.count());
        buttons_.button(QDialogButtonBox::Ok)->setEnabled(shown_.count() > 0);
    }

    QLabel availableLabel_{textOf(Text::Available)};
    QLabel shownLabel_{textOf(Text::Shown)};
    QLineEdit search_;
    QListWidget available_;
    QListWidget shown_;
    QPushButton add_{textOf(Text::Add)};
    QPushButton remove_{textOf(Text::Remove)};
    QPushButton up_{textOf(Text::Up)};
    QPushButton down_{textOf(Text::Down)};
    QDialogButtonBox buttons_{QDialogButtonBox::Ok | QDialogButtonBox::Cancel};
};

} // namespace

std::optional<std::vector<std::int16_t>> chooseColumns(QWidget* parent, const std::vector<ListColumn>& all,
                                                       const std::vector<std::int16_t>& shown)
{
    ColumnChooser chooser{parent, all, shown};
    if (chooser.exec() != QDialog::Accepted) return std::nullopt;
    return chooser.chosen();
}

} // namespace tamarok::workbench
