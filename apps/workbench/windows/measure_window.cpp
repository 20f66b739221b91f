#include "windows/measure_window.h"

#include <QApplication>
#include <QEvent>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "tamarok_qt/entry_controls.h"
#include "tamarok_qt/texts.h"
#include "windows/list_worker.h"
#include "windows/patience.h"
#include "windows/tables.h"
#include "windows/texts.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/comm_lock.h"
#include "tamarok/error.h"
#include "tamarok/grid_help.h"
#include "tamarok/text.h"

namespace tamarok::workbench {

namespace {

constexpr const char* lockKind = "LISTE";
constexpr int usualFigure = 110;

/// A field of the form, in the order of the keys.
struct FieldInfo {
    const char* name;
    Text caption;
    const char* format;  ///< pattern of a number, "" for a code
    const char* meaning; ///< column of the check with the long name of a code
};
constexpr std::array fieldInfos{
    FieldInfo{"species", Text::Species, "", "LONG"},     FieldInfo{"assortment", Text::Assortment, "", "HS_LANG"},
    FieldInfo{"quality", Text::Quality, "", "LONG"},     FieldInfo{"barkKey", Text::BarkKey, "", "LONG"},
    FieldInfo{"diameter", Text::Diameter, "000.00", ""}, FieldInfo{"length", Text::Length, "00.00", ""},
    FieldInfo{"pieces", Text::Pieces, "0000", ""},
};

/// The columns of the lines: number, species, assortment, quality, class, length, diameter, pieces, volume, bark.
constexpr std::array<std::int16_t, 10> lineColumns{20, 22, 26, 29, 32, 33, 34, 35, 36, 38};
constexpr std::int16_t listColumn = 1;

std::string lockKey(const std::string& list)
{
    return std::string{"'"}.append(text::replaceAll(list, "'", "''")).append("'");
}

} // namespace

class MeasureWindow::Field {
public:
    explicit Field(const FieldInfo& description) : info{description}
    {
        box.setObjectName(info.name);
        caption.setBuddy(&box);
        meaning.setObjectName("hint");
        meaning.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // cut in a narrow window
        control = std::make_shared<qt::TextBox>(box);
        label = std::make_shared<qt::Label>(meaning);
        if (isCode()) {
            box.setMaximumWidth(110);
        } else {
            box.setAlignment(Qt::AlignRight);
            box.setMaximumWidth(110);
            qt::filterKeys(box,
                           [this](std::int16_t& key) { Comm_Get{}.OnlyNumbersKeyPress(key, *control, info.format); });
        }
    }
    bool isCode() const { return *info.format == '\0'; }
    std::string text() const { return qt::fromQt(box.text().trimmed()); }
    bool isChecked() const { return checked && *checked == text(); }

    const FieldInfo& info;
    QLabel caption;
    QLineEdit box;
    QLabel meaning;
    std::shared_ptr<qt::TextBox> control;
    std::shared_ptr<qt::Label> label;
    std::optional<std::string> checked; ///< the code that was found valid last
};

std::unique_ptr<MeasureWindow> MeasureWindow::open(const Workplace& place, const std::string& list)
{
    bool locked = false;
    doPatiently(QApplication::activeWindow(), textOf(Text::Locking).arg(qt::toQt(list)),
                [&] { locked = Comm_Lock{}.LockOn(lockKind, lockKey(list), place.session()); });
    if (!locked) return nullptr;
    return std::make_unique<MeasureWindow>(Locked{}, place, list);
}

MeasureWindow::MeasureWindow(Locked /*proof*/, const Workplace& place, std::string list) :
    place_{place}, list_{std::move(list)}
{
    worker_ = makeListWorker(place_, "LOG", *this);
    model_ = std::make_unique<ListModel>(
        *worker_, place_,
        ListModel::Listener{[](std::size_t) {}, [this] { fitColumns(lines_, *model_); },
                            [this] {
                                fitColumns(lines_, *model_);
                                totals_.show(model_->totals());
                                lines_.scrollToBottom();
                            },
                            [this](const std::string& reason) { state_.setText(qt::toQt(reason)); }});
    for (const FieldInfo& info : fieldInfos)
        fields_.push_back(std::make_unique<Field>(info));
    layOut();
    connectFields();
    retranslate();
    fields_.back()->box.setText("1");
    setFocusProxy(&fields_.front()->box);
}

/// The lock goes with the window. It is the only one of the user's: the workbench opens one list at a time.
MeasureWindow::~MeasureWindow()
{
    worker_.reset();
    qt::guarded([this] { Comm_Lock{}.LockOff(lockKind, lockKey(list_), place_.session()); });
}

void MeasureWindow::layOut()
{
    heading_.setObjectName("heading");
    auto form = std::make_unique<QGridLayout>();
    form->setHorizontalSpacing(12);
    form->setVerticalSpacing(8);
    int row = 0;
    for (const auto& field : fields_) {
        form->addWidget(&field->caption, row, 0);
        form->addWidget(&field->box, row, 1);
        form->addWidget(&field->meaning, row, 2);
        ++row;
    }
    form->setColumnStretch(2, 1);

    auto figures = std::make_unique<QGridLayout>();
    figures->setContentsMargins(20, 14, 20, 14);
    figures->setHorizontalSpacing(24);
    figures->setVerticalSpacing(14);
    const std::array pairs{std::pair{&volumeCaption_, &volume_}, std::pair{&barkCaption_, &bark_},
                           std::pair{&classCaption_, &strengthClass_}};
    int place = 0;
    for (const auto& [caption, value] : pairs) {
        caption->setObjectName("hint");
        value->setObjectName("figure");
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        figures->addWidget(caption, place, 0);
        figures->addWidget(value, place, 1, Qt::AlignRight);
        ++place;
    }
    figures->setColumnMinimumWidth(1, usualFigure);
    auto card = std::make_unique<QFrame>();
    card->setObjectName("card");
    card->setLayout(figures.release());

    auto upper = std::make_unique<QHBoxLayout>();
    upper->setSpacing(24);
    upper->addLayout(form.release(), 3);
    upper->addWidget(card.release(), 0, Qt::AlignTop);
    upper->addStretch(2);

    auto buttons = std::make_unique<QHBoxLayout>();
    buttons->addWidget(&save_);
    buttons->addWidget(&state_, 1);
    save_.setDefault(true);

    lines_.setModel(model_.get());
    layOutTable(lines_);

    auto layout = std::make_unique<QVBoxLayout>();
    layout->setContentsMargins(20, 16, 20, 8);
    layout->setSpacing(14);
    layout->addWidget(&heading_);
    layout->addLayout(upper.release());
    layout->addLayout(buttons.release());
    layout->addWidget(&lines_, 1);
    layout->addWidget(&totals_);
    setLayout(layout.release());
}

void MeasureWindow::connectFields()
{
    for (const auto& owned : fields_) {
        Field* const field = owned.get();
        field->box.installEventFilter(this);
        connect(&field->box, &QLineEdit::textChanged, this, [this] { showFigures(); });
        connect(&field->box, &QLineEdit::editingFinished, this, [this, field] {
            // A message must not appear while the focus moves.
            if (field->isCode()) QTimer::singleShot(0, this, [this, field] { check(*field); });
        });
    }
    connect(&save_, &QPushButton::clicked, this, [this] { save(); });
}

void MeasureWindow::retranslate()
{
    heading_.setText(textOf(Text::TimberList).arg(qt::toQt(list_)));
    for (const auto& field : fields_) {
        field->caption.setText(textOf(field->info.caption));
        field->box.setAccessibleName(textOf(field->info.caption));
        field->box.setPlaceholderText(field->isCode() ? QStringLiteral("F4") : QString{});
        field->box.setToolTip(field->isCode() ? textOf(Text::LookUpHint) : QString{});
    }
    volumeCaption_.setText(textOf(Text::Volume));
    barkCaption_.setText(textOf(Text::Bark));
    classCaption_.setText(textOf(Text::Class));
    save_.setText(textOf(Text::SaveLine));
    lines_.setAccessibleName(heading_.text());
    showFigures();
    showLines();
}

void MeasureWindow::showLines()
{
    ListSetup setup;
    setup.columns.assign(lineColumns.begin(), lineColumns.end());
    setup.filters = {{listColumn, Variant{list_}}};
    setup.order = {lineColumns.front()};
    model_->show(setup, listColumns("LOG", place_.session()));
}

MeasuredLine MeasureWindow::line() const
{
    MeasuredLine line;
    const std::array members{&line.species,  &line.assortment, &line.quality, &line.barkKey,
                             &line.diameter, &line.length,     &line.pieces};
    for (std::size_t index = 0; index < members.size(); ++index)
        *members.at(index) = fields_[index]->text();
    return line;
}

/// Shows the figures while the numbers are typed. A number that is not complete yet, such as "4,", has none.
void MeasureWindow::showFigures()
{
    LineFigures figures;
    try {
        figures = figuresOf(line(), place_.session());
    } catch (const Error&) {
        figures = {};
    }
    const auto show = [](QLabel& label, const std::string& value, const char* unit) {
        label.setText(value.empty() ? QStringLiteral("–") : qt::toQt(value) + QString::fromUtf8(unit));
    };
    show(volume_, figures.volume, " m³");
    show(bark_, figures.bark, " cm");
    show(strengthClass_, figures.strengthClass, "");
    save_.setEnabled(!figures.volume.empty());
}

/// Checks a code as leaving the field does: a wrong one is told, and the field gets the focus again.
bool MeasureWindow::check(Field& field)
{
    if (field.isChecked()) return true;
    if (checking_) return false;
    if (field.text().empty()) {
        field.meaning.clear();
        return true;
    }
    checking_ = true;
    bool valid = false;
    qt::guarded([&] {
        valid = Comm_CSel{}.Valid(place_.session(), true, checkOf(field.info.name, line(), place_.session()),
                                  field.control, field.label, field.info.meaning, nullptr, "");
        if (valid) field.box.setText(qt::toQt(spelledCode(field.info.name, line(), place_.session())));
    });
    field.checked = valid ? std::optional{field.text()} : std::nullopt;
    checking_ = false;
    return valid;
}

/// The look-up behind F4. Enter, which it sends after OK, moves on.
void MeasureWindow::lookUp(Field& field)
{
    checking_ = true;
    qt::guarded([&] {
        const std::string code =
            Grid_Help{}.GridHelp(place_.session(), choiceOf(field.info.name, line(), place_.session()),
                                 qt::fromQt(field.caption.text()), field.text(), "0001");
        field.box.setText(qt::toQt(code));
    });
    checking_ = false;
    check(field);
    field.box.setFocus();
}

/// Returns whether the line was saved. A failure leaves what was typed.
bool MeasureWindow::save()
{
    const bool valid =
        std::ranges::all_of(fields_, [this](const auto& field) { return !field->isCode() || check(*field); });
    if (!valid) return false;
    try {
        std::int32_t number = 0;
        doPatiently(this, textOf(Text::SaveWord), [&] { number = addLine(list_, line(), place_.session()); });
        state_.setText(textOf(Text::LineSaved).arg(number));
    } catch (const Error& error) {
        state_.setText(qt::toQt(error.description));
        return false;
    }
    field("length").box.clear();
    field("diameter").box.clear();
    field("diameter").box.setFocus();
    showLines();
    return true;
}

bool MeasureWindow::mayClose()
{
    if (field("diameter").box.text().isEmpty() && field("length").box.text().isEmpty()) return true;
    QMessageBox question{QMessageBox::Question, heading_.text(), textOf(Text::LineUnsaved), QMessageBox::NoButton,
                         this};
    const QPushButton* const saving = question.addButton(textOf(Text::SaveWord), QMessageBox::AcceptRole);
    const QPushButton* const discarding = question.addButton(textOf(Text::Discard), QMessageBox::DestructiveRole);
    question.addButton(textOf(Text::Cancel), QMessageBox::RejectRole);
    question.exec();
    if (question.clickedButton() == saving) return save();
    return question.clickedButton() == discarding;
}

MeasureWindow::Field& MeasureWindow::field(std::string_view name) const
{
    return **std::ranges::find(fields_, name, [](const auto& field) { return std::string_view{field->info.name}; });
}

MeasureWindow::Field* MeasureWindow::fieldOf(const QObject* box) const
{
    const auto found = std::ranges::find_if(fields_, [box](const auto& field) { return &field->box == box; });
    return found == fields_.end() ? nullptr : found->get();
}

/// F4 opens the look-up of a code; Enter moves on, and saves from the last box.
bool MeasureWindow::eventFilter(QObject* watched, QEvent* event)
{
    Field* const field = fieldOf(watched);
    if (field == nullptr || event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const int key = dynamic_cast<QKeyEvent&>(*event).key();
    if (key == Qt::Key_F4 && field->isCode()) {
        lookUp(*field);
        return true;
    }
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        if (field == fields_.back().get()) {
            save();
        } else if (!field->isCode() || check(*field)) {
            focusNextChild();
        }
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace tamarok::workbench
