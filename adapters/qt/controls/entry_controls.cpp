#include "tamarok_qt/entry_controls.h"

#include <QAbstractItemModel>
#include <algorithm>
#include <utility>

#include "owned.h"
#include "tamarok_qt/texts.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace tamarok::qt {

namespace {

constexpr int qtDefaultLength = 32767; ///< maxLength of a QLineEdit that nobody has limited

// Positions count characters here, and UTF-16 units in Qt.
std::int32_t characters(const QString& text, int units)
{
    return static_cast<std::int32_t>(QStringView{text}.left(units).toUcs4().size());
}

int units(const QString& text, std::int32_t characters)
{
    qsizetype at = 0;
    for (; characters > 0 && at < text.size(); --characters)
        at += text.at(at).isHighSurrogate() && at + 1 < text.size() ? 2 : 1;
    return static_cast<int>(at);
}

/// Reads text and selection of a line into the state.
void pullLine(const QLineEdit& line, controls::TextEntry& state)
{
    const QString shown = line.text();
    std::string text = fromQt(shown);
    if (state.text() != text) state.text(std::move(text));
    const int start = line.hasSelectedText() ? line.selectionStart() : line.cursorPosition();
    const std::int32_t first = characters(shown, start);
    const std::int32_t length = characters(shown, start + line.selectionLength()) - first;
    if (state.SelStart() == first && state.SelLength() == length) return;
    state.SelStart(first);
    state.SelLength(length);
}

void pushLine(QLineEdit& line, const controls::TextEntry& state)
{
    if (fromQt(line.text()) != state.text()) line.setText(toQt(state.text()));
    const QString shown = line.text();
    const int start = units(shown, state.SelStart());
    const int length = units(shown, state.SelStart() + state.SelLength()) - start;
    const bool isThere =
        line.selectionLength() == length && (length > 0 ? line.selectionStart() : line.cursorPosition()) == start;
    if (isThere) return;
    if (length > 0)
        line.setSelection(start, length);
    else
        line.setCursorPosition(start);
}

} // namespace

// ---- text box ------------------------------------------------------------------------------------------------------

TextBox::TextBox(QLineEdit& edit) : TextBox{edit, std::make_shared<controls::TextBox>()} {}

TextBox::TextBox(QLineEdit& edit, std::shared_ptr<controls::TextBox> state) :
    WidgetControl{edit, state}, state_{std::move(state)}, shownLength_{qtDefaultLength}
{}

QLineEdit& TextBox::edit() const
{
    return dynamic_cast<QLineEdit&>(widget());
}

void TextBox::pull() const
{
    WidgetControl::pull();
    const QLineEdit& line = edit();
    state_->Locked = line.isReadOnly();
    if (line.maxLength() != shownLength_)
        state_->MaxLength = line.maxLength() >= qtDefaultLength ? 0 : line.maxLength();
    pullLine(line, *state_);
}

/// Qt cuts a text that is longer than its limit, while here the limit binds the user alone: the limit of Qt grows with
/// the text.
void TextBox::push()
{
    WidgetControl::push();
    QLineEdit& line = edit();
    const int limit = state_->MaxLength == 0 ? qtDefaultLength : state_->MaxLength;
    const int fitting = std::max(limit, static_cast<int>(toQt(state_->text()).size()));
    if (line.isReadOnly() != state_->Locked) line.setReadOnly(state_->Locked);
    if (line.maxLength() != fitting) line.setMaxLength(fitting);
    shownLength_ = fitting;
    pushLine(line, *state_);
}

// ---- combo box -----------------------------------------------------------------------------------------------------

/// Notices that the program has changed the entries of the QComboBox by itself.
class ComboBox::Watch final : public QObject {
public:
    explicit Watch(QComboBox& box)
    {
        const QAbstractItemModel* const model = box.model();
        const auto changed = [this] { isStale = isStale || !acts; };
        connect(model, &QAbstractItemModel::rowsInserted, this, changed);
        connect(model, &QAbstractItemModel::rowsRemoved, this, changed);
        connect(model, &QAbstractItemModel::modelReset, this, changed);
        connect(model, &QAbstractItemModel::dataChanged, this, changed);
    }

    bool isStale = true; ///< the state does not have the entries of the box
    bool acts = false;   ///< the control itself changes the entries
    QString shownText;   ///< of a box that is not editable, when it was last read
};

ComboBox::ComboBox(QComboBox& box) : ComboBox{box, std::make_shared<controls::ComboBox>()} {}

ComboBox::ComboBox(QComboBox& box, std::shared_ptr<controls::ComboBox> state) :
    WidgetControl{box, state}, state_{std::move(state)}, watch_{std::make_unique<Watch>(box)}
{
    box.setInsertPolicy(QComboBox::NoInsert);
}

ComboBox::~ComboBox() = default;

QComboBox& ComboBox::box() const
{
    return dynamic_cast<QComboBox&>(widget());
}

void ComboBox::pull() const
{
    WidgetControl::pull();
    const QComboBox& shown = box();
    if (std::exchange(watch_->isStale, false)) {
        const bool sorted = std::exchange(state_->Sorted, false);
        state_->Clear();
        for (int index = 0; index < shown.count(); ++index) {
            state_->AddItem(fromQt(shown.itemText(index)));
            state_->ItemData(index, shown.itemData(index).toInt());
        }
        state_->Sorted = sorted;
        watch_->shownText.clear();
    }
    if (state_->ListIndex() != shown.currentIndex()) state_->ListIndex(shown.currentIndex());
    if (const QLineEdit* const line = shown.lineEdit()) {
        state_->Locked = line->isReadOnly();
        pullLine(*line, *state_);
    } else if (watch_->shownText != shown.currentText()) {
        watch_->shownText = shown.currentText();
        state_->text(fromQt(watch_->shownText));
    }
}

void ComboBox::push()
{
    WidgetControl::push();
    QComboBox& shown = box();
    if (shown.currentIndex() != state_->ListIndex()) shown.setCurrentIndex(state_->ListIndex());
    watch_->shownText = shown.currentText();
    QLineEdit* const line = shown.lineEdit();
    if (line == nullptr) return;
    if (line->isReadOnly() != state_->Locked) line->setReadOnly(state_->Locked);
    pushLine(*line, *state_);
}

void ComboBox::putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value)
{
    QComboBox& shown = box();
    pull();
    state_->putIndexed(name, index, value);
    watch_->acts = true;
    const int place = convert::toLong(index[0]);
    if (text::equalsNoCase(name, "List")) shown.setItemText(place, toQt(state_->List(place)));
    if (text::equalsNoCase(name, "ItemData")) shown.setItemData(place, state_->ItemData(place));
    watch_->acts = false;
    push();
}

Variant ComboBox::call(std::string_view name, std::span<Variant> args)
{
    const bool adds = text::equalsNoCase(name, "AddItem");
    const bool removes = text::equalsNoCase(name, "RemoveItem");
    const bool clears = text::equalsNoCase(name, "Clear");
    if (!adds && !removes && !clears) return WidgetControl::call(name, args);
    QComboBox& shown = box();
    pull();
    Variant result = state_->call(name, args);
    watch_->acts = true;
    const std::int32_t added = state_->NewIndex();
    if (adds) shown.insertItem(added, toQt(state_->List(added)), 0);
    if (removes) shown.removeItem(convert::toLong(args[0]));
    if (clears) shown.clear();
    watch_->acts = false;
    push();
    return result;
}

// ---- label ---------------------------------------------------------------------------------------------------------

Label::Label(QLabel& label) : Label{label, std::make_shared<controls::Label>()} {}

Label::Label(QLabel& label, std::shared_ptr<controls::Label> state) :
    WidgetControl{label, state}, state_{std::move(state)}
{}

QLabel& Label::label() const
{
    return dynamic_cast<QLabel&>(widget());
}

void Label::pull() const
{
    WidgetControl::pull();
    state_->Caption = fromQt(label().text());
}

void Label::push()
{
    WidgetControl::push();
    if (fromQt(label().text()) != state_->Caption) label().setText(toQt(state_->Caption));
}

} // namespace tamarok::qt
