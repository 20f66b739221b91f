#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "tamarok/column_texts.h"
#include "tamarok/controls.h"

#pragma GCC visibility push(default)

/// The error numbers of the collections of controls.
namespace tamarok::errors {
inline constexpr std::int32_t elementIndexOutOfBounds = 35600; ///< A collection has no position of this number.
inline constexpr std::int32_t elementNotFound = 35601;         ///< A collection has no element with this key.
inline constexpr std::int32_t keyNotUnique = 35602;            ///< Another element has this key.
inline constexpr std::int32_t invalidKey = 35603;              ///< A key that is a number.
} // namespace tamarok::errors

/// The list view: rows of texts under column headers. Positions in its collections begin at 1.
///
/// Keys are compared exactly, with regard to case. "" is no key, and any number of elements may have none. A key that
/// reads as a number is Error 35603, one that another element has Error 35602. Where a collection takes an index, a
/// text is a key (Error 35601 if it is unknown) and any other value a position (Error 35600 outside the collection).
namespace tamarok::controls {

class ListItems;

enum class SortDirection : std::uint8_t { Ascending = 0, Descending = 1 };

/// One row. It stays valid when its list is sorted. An item that was removed from its list, and one whose list has
/// gone, raises Error 91 for every member.
class ListItem final : public WithMembers<ListItem> {
public:
    /// Made by ListItems::Add. @param columns  number of texts to make room for
    ListItem(ListItems& list, std::string_view text, std::size_t columns);

    static std::span<const Member<ListItem>> members() noexcept;
    std::string_view typeName() const override { return "ListItem"; }
    Variant defaultValue() const override { return text(); }
    bool hasDefaultValue() const noexcept override { return true; }

    /// Returns or sets the text of the first column. A new text does not move the item in a sorted list.
    const std::string& text() const;
    void text(std::string_view value);

    /// Returns or sets the text of another column, "" if none was set. A new text does not move the item in a sorted
    /// list. @param index  1 for the second column; Error 380 for a column that the list does not have
    const std::string& SubItems(std::int32_t index) const;
    void SubItems(std::int32_t index, std::string_view value);

    const std::string& Key() const;
    /// Errors 35602 and 35603.
    void Key(std::string_view key);

    const Variant& Tag() const;
    void Tag(Variant value);

    /// Returns the position in the list, from 1.
    std::int32_t Index() const;

    /// Whether the item is the list's SelectedItem.
    bool Selected() const;
    void Selected(bool selected);

private:
    friend class ListItems;
    ListItems& list() const;

    ListItems* list_;            ///< nullptr once removed
    std::uint32_t position_ = 0; ///< from 0; valid if the list has numbered it
    std::string key_;            ///< "" for none
    Variant tag_;
    std::vector<std::string> cells_; ///< the text, then the subitems as far as one was set
};

using ListItemRef = std::shared_ptr<ListItem>;

/// The rows of a list view.
class ListItems final : public WithMembers<ListItems>, public ColumnTexts {
public:
    ListItems() = default;
    ListItems(const ListItems&) = delete;
    ListItems& operator=(const ListItems&) = delete;
    ~ListItems() override;

    static std::span<const Member<ListItems>> members() noexcept;
    std::string_view typeName() const override { return "ListItems"; }

    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(items_.size()); }

    /// Inserts an item. A sorted list chooses the position itself: behind the items that the new one does not precede.
    /// Sorted by another column than the first, the new item has an empty text there. The first item of a list becomes
    /// its SelectedItem.
    /// @param index  position from 1; nothing for the end. Error 35600 unless it is 1 to Count + 1
    /// @param key    errors 35602 and 35603
    ListItemRef Add(std::optional<std::int32_t> index, std::string_view key, std::string_view text);

    /// Returns an item. Errors 35600 and 35601.
    const ListItemRef& Item(const Variant& index) const;
    /// Removes an item. Errors 35600 and 35601.
    void Remove(const Variant& index);
    void Clear() noexcept;

    /// Returns all items in their order.
    const std::vector<ListItemRef>& all() const;

    std::vector<std::string*> textsOf(std::size_t column) override;
    void finishSort() override
    {
        settle();
        touch();
    }

    /// Returns a number that grows with each change of rows, texts and order, by which a view tells whether it shows
    /// the present ones. Texts changed through `textsOf` count when they are handed out and when the sort is finished.
    std::uint64_t revision() const noexcept { return revision_; }

private:
    friend class ColumnHeaders;
    friend class ListItem;
    friend class ListView;

    // Not noexcept, so that the set keeps the hash of each item and does not read the items of a whole bucket.
    struct KeyHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view key) const { return std::hash<std::string_view>{}(key); }
        std::size_t operator()(const ListItem* item) const { return (*this)(std::string_view{item->key_}); }
    };
    struct KeyEqual {
        using is_transparent = void;
        static std::string_view keyOf(std::string_view key) noexcept { return key; }
        static std::string_view keyOf(const ListItem* item) noexcept { return item->key_; }
        bool operator()(const auto& a, const auto& b) const noexcept { return keyOf(a) == keyOf(b); }
    };

    std::size_t place(const std::optional<std::int32_t>& index) const;
    std::size_t sortedPlace(std::string_view text);
    std::size_t positionOf(const Variant& index) const;
    std::size_t positionOf(const ListItem& item) const;
    std::size_t checkedSubItem(std::int32_t index) const;

    void touch() noexcept { ++revision_; }

    void insertColumn(std::size_t column);
    void removeColumn(std::size_t column);

    ListItemRef selected() const;
    void select(const ListItemRef& item);

    void sorted(bool value);
    void sortKey(std::int32_t column);
    void sortOrder(std::int32_t order);
    /// Carries out a sort that is due.
    void settle() const;
    /// To be called before a text of that column changes.
    void settleBefore(std::size_t changedColumn) const;

    // A sort is carried out when the order is next looked at: a click on a header sets SortKey, SortOrder and Sorted,
    // each of which sorts, and only the last order is seen. That halves the time of a click (bench: clickOnAHead).
    mutable std::vector<ListItemRef> items_;
    mutable bool sortIsDue_ = false;
    mutable std::size_t numbered_ = 0;    ///< number of leading items whose position_ is valid
    mutable std::size_t blankPrefix_ = 0; ///< leading items that a sort by a later column, ascending, placed as empty
    std::unordered_set<const ListItem*, KeyHash, KeyEqual> keys_;
    const ListItem* selected_ = nullptr;
    std::size_t columns_ = 0;
    std::size_t sortColumn_ = 0;
    SortDirection direction_ = SortDirection::Ascending;
    bool sorted_ = false;
    std::uint64_t revision_ = 0;
};

class ColumnHeaders;

enum class ColumnAlignment : std::uint8_t { Left = 0, Right = 1, Center = 2 };

/// The head of a column. One that was removed raises Error 91 for its Index, SubItemIndex and a new Key.
class ColumnHeader final : public WithMembers<ColumnHeader> {
public:
    static constexpr float defaultWidth = 1440;

    explicit ColumnHeader(ColumnHeaders& list) noexcept : list_{&list} {}

    static std::span<const Member<ColumnHeader>> members() noexcept;
    std::string_view typeName() const override { return "ColumnHeader"; }
    Variant defaultValue() const override { return text; }
    bool hasDefaultValue() const noexcept override { return true; }

    const std::string& Key() const noexcept { return key_; }
    /// Errors 35602 and 35603.
    void Key(std::string_view key);
    /// Returns the position among the headers, from 1. SubItemIndex is one less.
    std::int32_t Index() const;

    std::string text;
    ColumnAlignment Alignment = ColumnAlignment::Left; ///< by name Error 380 for another number than 0, 1, 2
    float Width = defaultWidth;                        ///< twips; by name Error 380 for a negative one
    Variant Tag;

private:
    friend class ColumnHeaders;
    ColumnHeaders& list() const;

    ColumnHeaders* list_; ///< nullptr once removed
    std::string key_;     ///< "" for none
};

using ColumnHeaderRef = std::shared_ptr<ColumnHeader>;

/// The columns of a list view. A new column is empty in all rows, and the columns to its right move; a removed one
/// takes its texts along. The rows keep the text of their first column when the last header goes.
class ColumnHeaders final : public WithMembers<ColumnHeaders> {
public:
    explicit ColumnHeaders(std::shared_ptr<ListItems> rows) noexcept : rows_{std::move(rows)} {}
    ColumnHeaders(const ColumnHeaders&) = delete;
    ColumnHeaders& operator=(const ColumnHeaders&) = delete;
    ~ColumnHeaders() override;

    static std::span<const Member<ColumnHeaders>> members() noexcept;
    std::string_view typeName() const override { return "ColumnHeaders"; }

    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(headers_.size()); }

    /// Inserts a header. @param index  position from 1; nothing for the end. Errors 35600, 35602, 35603
    ColumnHeaderRef Add(std::optional<std::int32_t> index = {}, std::string_view key = {}, std::string text = {});
    /// Returns a header. Errors 35600 and 35601.
    const ColumnHeaderRef& Item(const Variant& index) const;
    /// Removes a header. Errors 35600 and 35601.
    void Remove(const Variant& index);
    void Clear();

    const std::vector<ColumnHeaderRef>& all() const noexcept { return headers_; }

private:
    friend class ColumnHeader;
    void requireFreeKey(std::string_view key) const;
    std::size_t positionOf(const Variant& index) const;

    std::vector<ColumnHeaderRef> headers_;
    std::shared_ptr<ListItems> rows_;
};

/// Rows of texts in columns. By name: `ListItems`, `ColumnHeaders`, `Sorted`, `SortKey`, `SortOrder`, `SelectedItem`
/// and the members of every control.
///
/// While `Sorted` is true, the rows are in the alphabetical order of the column `SortKey`, without regard to case; an
/// accent counts only between texts that are equal otherwise. Rows with equal texts keep their order. Setting `Sorted`
/// to true sorts, also if it is true already, and so does a change of `SortKey` or `SortOrder`. A changed text does
/// not.
class ListView final : public WithMembers<ListView, Control> {
public:
    static std::span<const Member<ListView>> members() noexcept;
    std::string_view typeName() const override { return "ListView"; }

    const std::shared_ptr<ListItems>& items() const noexcept { return items_; }
    const std::shared_ptr<ColumnHeaders>& headers() const noexcept { return headers_; }

    /// Returns the text of a cell. @param index  row from 1, Error 35600  @param column  from 0, Error 380
    const std::string& text(std::int32_t index, std::int32_t column) const;

    bool Sorted() const noexcept { return items_->sorted_; }
    void Sorted(bool value) { items_->sorted(value); }
    /// Returns or sets the column by which rows are sorted: 0 is their text, n is SubItems(n). Error 380 for a column
    /// that the list does not have; 0 is always one.
    std::int32_t SortKey() const noexcept { return static_cast<std::int32_t>(items_->sortColumn_); }
    void SortKey(std::int32_t column) { items_->sortKey(column); }
    /// Returns or sets the direction: 0 ascending, 1 descending, otherwise Error 380.
    std::int32_t SortOrder() const noexcept { return static_cast<std::int32_t>(items_->direction_); }
    void SortOrder(std::int32_t order) { items_->sortOrder(order); }

    /// Returns the selected item, an empty reference if none is.
    ListItemRef SelectedItem() const;
    /// Selects an item, an empty reference selects none. Error 5 for an item of another list.
    void SelectedItem(const ListItemRef& item);

private:
    std::shared_ptr<ListItems> items_ = std::make_shared<ListItems>();
    std::shared_ptr<ColumnHeaders> headers_ = std::make_shared<ColumnHeaders>(items_);
};

} // namespace tamarok::controls

#pragma GCC visibility pop
