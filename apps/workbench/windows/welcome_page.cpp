#include "windows/welcome_page.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QVBoxLayout>
#include <array>
#include <memory>
#include <utility>

#include "tamarok_qt/texts.h"
#include "windows/texts.h"
#include "windows/theme.h"
#include "work/navigation.h"

#include "tamarok/list_catalogue.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"

namespace tamarok::workbench {

namespace {

constexpr int readableWidth = 640;

/// The lists that are offered first: measured timber, invoices, contracts.
constexpr std::array firstLists{"LOG", "RJ", "VERTRAG"};

/// The keys of the program and what they do. Their order is that of learning them.
const std::array<std::pair<QKeySequence, Text>, 9>& keysOfProgram()
{
    static const std::array<std::pair<QKeySequence, Text>, 9> keys{{
        {QKeySequence::Find, Text::SearchHint},
        {Qt::CTRL | Qt::Key_K, Text::ColumnsHint},
        {Qt::CTRL | Qt::Key_G, Text::GroupHint},
        {Qt::CTRL | Qt::Key_B, Text::ChartHint},
        {QKeySequence::Save, Text::ExportHint},
        {Qt::Key_F8, Text::StatementHint},
        {Qt::Key_F5, Text::RefreshHint},
        {Qt::Key_Escape, Text::StopHint},
        {Qt::Key_F4, Text::LookUpHint},
    }};
    return keys;
}

bool maySee(const std::string& type, const TmkVar& session)
{
    for (const ListGroup& group : listGroups())
        for (std::size_t index = 0; index < group.lists.size(); ++index)
            if (group.lists[index].type == type) return rightsOf(group, session)[index].isVisible;
    return false;
}

} // namespace

WelcomePage::WelcomePage(const Workplace& place, std::function<void(const std::string& type)> openList) :
    openList_{std::move(openList)}
{
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(48, 40, 48, 40);
    column->setSpacing(24);
    // Qt owns what a page contains.
    column->addWidget(heading(place));
    column->addWidget(beginnings(place));
    column->addWidget(keys(), 0, Qt::AlignLeft);
    column->addStretch();
    auto page = std::make_unique<QWidget>();
    page->setLayout(column.release());
    setWidget(page.release()); // the area takes it over
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
}

QWidget* WelcomePage::heading(const Workplace& place)
{
    auto icon = std::make_unique<QLabel>();
    icon->setPixmap(programIcon().pixmap(72, 72));
    auto name = std::make_unique<QLabel>(textOf(Text::Welcome) + ", " + qt::toQt(place.user().name));
    name->setObjectName("heading");
    auto database = std::make_unique<QLabel>(qt::toQt(place.databaseName()));
    database->setObjectName("hint");
    auto words = std::make_unique<QVBoxLayout>();
    words->addWidget(name.release());
    words->addWidget(database.release());
    auto row = std::make_unique<QHBoxLayout>();
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(20);
    row->addWidget(icon.release());
    row->addLayout(words.release(), 1);
    auto part = std::make_unique<QWidget>();
    part->setLayout(row.release());
    return part.release();
}

/// What to do first, with a button for each list that the user may see.
QWidget* WelcomePage::beginnings(const Workplace& place)
{
    auto text = std::make_unique<QLabel>(textOf(Text::WelcomeText));
    text->setWordWrap(true);
    text->setMaximumWidth(readableWidth);
    auto line = std::make_unique<QHBoxLayout>();
    line->addWidget(text.release(), 1000); // up to its greatest width, then the room beside it grows
    line->addStretch(1);
    auto buttons = std::make_unique<QHBoxLayout>();
    for (const std::string type : firstLists) {
        if (!maySee(type, place.session())) continue;
        const std::int16_t label = catalogue::listTypeInfo(type).label;
        auto button = std::make_unique<QPushButton>(qt::toQt(Platform::locService()->GetText(label, place.session())));
        connect(button.get(), &QPushButton::clicked, this, [this, type] { openList_(type); });
        buttons->addWidget(button.release());
    }
    buttons->addStretch();
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(14);
    column->addLayout(line.release());
    column->addLayout(buttons.release());
    auto part = std::make_unique<QWidget>();
    part->setLayout(column.release());
    return part.release();
}

QWidget* WelcomePage::keys()
{
    auto grid = std::make_unique<QGridLayout>();
    grid->setContentsMargins(20, 14, 28, 14);
    grid->setHorizontalSpacing(18);
    grid->setVerticalSpacing(8);
    auto title = std::make_unique<QLabel>(textOf(Text::Shortcuts));
    title->setObjectName("hint");
    grid->addWidget(title.release(), 0, 0, 1, 2);
    int row = 1;
    for (const auto& [sequence, what] : keysOfProgram()) {
        auto key = std::make_unique<QLabel>(sequence.toString(QKeySequence::NativeText));
        key->setObjectName("key");
        grid->addWidget(key.release(), row, 0, Qt::AlignLeft);
        auto meaning = std::make_unique<QLabel>(textOf(what));
        grid->addWidget(meaning.release(), row, 1);
        ++row;
    }
    auto card = std::make_unique<QFrame>();
    card->setObjectName("card");
    card->setLayout(grid.release());
    return card.release();
}

} // namespace tamarok::workbench
