#include "windows/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QHeaderView>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QSettings>
#include <QShortcut>
#include <QTabBar>
#include <QVBoxLayout>

#include "tamarok_qt/entry_controls.h"
#include "tamarok_qt/texts.h"
#include "windows/list_window.h"
#include "windows/measure_window.h"
#include "windows/options_window.h"
#include "windows/theme.h"
#include "windows/welcome_page.h"
#include "work/navigation.h"
#include "work/option_rows.h"

#include "tamarok/c_version.h"
#include "tamarok/list_catalogue.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"

namespace tamarok::workbench {

namespace {

constexpr int typeRole = Qt::UserRole;
constexpr const char* geometryKey = "window/geometry";
constexpr const char* stateKey = "window/state";

QString nameOfGroup(const ListGroup& group)
{
    switch (usedLanguage()) {
    case Language::English: return QString::fromUtf8(group.english);
    case Language::French: return QString::fromUtf8(group.french);
    case Language::German: break;
    }
    return QString::fromUtf8(group.german);
}

} // namespace

MainWindow::MainWindow(Workplace& place) : place_{place}
{
    setWindowIcon(programIcon());
    layOut();
    retranslate();
    showWelcome();
    resize(QSize{1240, 780}.boundedTo(screen()->availableSize()));
    restoreGeometry(QSettings{}.value(geometryKey).toByteArray());
    restoreState(QSettings{}.value(stateKey).toByteArray());
}

void MainWindow::layOut()
{
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(8, 8, 0, 8);
    column->setSpacing(8);
    column->addWidget(&search_);
    column->addWidget(&navigation_, 1);
    side_.setLayout(column.release());
    search_.setClearButtonEnabled(true);
    navigation_.setHeaderHidden(true);
    navigation_.setUniformRowHeights(true);
    navigation_.setMinimumWidth(230);

    auto dock = std::make_unique<QDockWidget>();
    dock->setObjectName("navigation");
    dock->setFeatures(QDockWidget::DockWidgetMovable);
    dock->setTitleBarWidget(std::make_unique<QWidget>().release()); // the dock takes it over
    dock->setWidget(&side_);
    addDockWidget(Qt::LeftDockWidgetArea, dock.release()); // the window takes it over

    tabs_.setDocumentMode(true);
    tabs_.setTabsClosable(true);
    tabs_.setMovable(true);
    tabs_.setElideMode(Qt::ElideRight);
    setCentralWidget(&tabs_);

    connect(&search_, &QLineEdit::textChanged, this, [this](const QString& text) { findInNavigation(text); });
    connect(&search_, &QLineEdit::returnPressed, this, [this] {
        if (QTreeWidgetItem* const item = navigation_.currentItem()) emit navigation_.itemActivated(item, 0);
    });
    connect(&navigation_, &QTreeWidget::itemActivated, this, [this](const QTreeWidgetItem* item) {
        const QString type = item->data(0, typeRole).toString();
        if (!type.isEmpty()) openList(qt::fromQt(type));
    });
    connect(&tabs_, &QTabWidget::tabCloseRequested, this, [this](int tab) { closePage(tab); });
}

void MainWindow::makeMenus()
{
    menuBar()->clear();
    QMenu& file = *menuBar()->addMenu(textOf(Text::File));
    if (mayReadOptions(place_.session())) file.addAction(textOf(Text::Options), this, [this] { openOptions(); });
    file.addAction(textOf(Text::CloseList), QKeySequence::Close, this, [this] {
        if (tabs_.count() > 0) closePage(tabs_.currentIndex());
    });
    file.addAction(textOf(Text::Quit), QKeySequence::Quit, this, &QMainWindow::close);

    QMenu& view = *menuBar()->addMenu(textOf(Text::View));
    view.addAction(textOf(Text::Search), QKeySequence::Find, this, [this] { search_.setFocus(); });
    QMenu& languages = *view.addMenu(textOf(Text::LanguageWord));
    const auto exclusive = [](QMenu& menu) {
        return std::make_unique<QActionGroup>(&menu).release();
    }; // the menu's own
    QActionGroup& languageGroup = *exclusive(languages);
    for (const auto& [name, language] :
         {std::pair{"Deutsch", Language::German}, {"English", Language::English}, {"Français", Language::French}}) {
        QAction* const action =
            languages.addAction(QString::fromUtf8(name), this, [this, language = language] { useLanguage(language); });
        action->setCheckable(true);
        action->setChecked(language == usedLanguage());
        languageGroup.addAction(action);
    }
    view.addSeparator();
    QActionGroup& colourGroup = *exclusive(view);
    for (const auto& [text, colours] : {std::pair{Text::SystemColours, Colours::System},
                                        {Text::LightColours, Colours::Light},
                                        {Text::DarkColours, Colours::Dark}}) {
        QAction* const action = view.addAction(textOf(text), this, [colours = colours] {
            keepColours(colours);
            useColours(*qApp, colours);
        });
        action->setCheckable(true);
        action->setChecked(colours == keptColours());
        colourGroup.addAction(action);
    }

    QMenu& help = *menuBar()->addMenu(textOf(Text::Help));
    help.addAction(textOf(Text::Welcome), this, [this] { showWelcome(); });
    help.addAction(textOf(Text::About), this, [this] {
        QMessageBox::about(this, textOf(Text::About),
                           textOf(Text::Program) + "\n" + qt::toQt(C_Version{}.DLL_Version()) + "\n\n" +
                               qt::toQt(place_.databaseName()));
    });
}

/// Fills the tree with the lists that the user may see; those that he may not change say so.
void MainWindow::fillNavigation()
{
    navigation_.clear();
    const auto texts = Platform::locService();
    for (const ListGroup& group : listGroups()) {
        auto parent = std::make_unique<QTreeWidgetItem>(QStringList{nameOfGroup(group)});
        const std::vector<ListRight> rights = rightsOf(group, place_.session());
        for (std::size_t index = 0; index < group.lists.size(); ++index) {
            if (!rights[index].isVisible) continue;
            const std::string type{group.lists[index].type};
            QString name = qt::toQt(texts->GetText(catalogue::listTypeInfo(type).label, place_.session()));
            auto item = std::make_unique<QTreeWidgetItem>(QStringList{name});
            item->setData(0, typeRole, qt::toQt(type));
            if (!rights[index].isWritable) {
                item->setToolTip(0, name + " (" + textOf(Text::ReadOnly) + ")");
                item->setForeground(0, palette().brush(QPalette::PlaceholderText));
            }
            parent->addChild(item.release());
        }
        if (parent->childCount() > 0) navigation_.addTopLevelItem(parent.release());
    }
    navigation_.expandAll();
}

void MainWindow::findInNavigation(const QString& text)
{
    QTreeWidgetItem* first = nullptr;
    for (int group = 0; group < navigation_.topLevelItemCount(); ++group) {
        QTreeWidgetItem* const parent = navigation_.topLevelItem(group);
        bool any = false;
        for (int child = 0; child < parent->childCount(); ++child) {
            QTreeWidgetItem* const item = parent->child(child);
            const bool found = item->text(0).contains(text, Qt::CaseInsensitive);
            item->setHidden(!found);
            any = any || found;
            if (found && first == nullptr) first = item;
        }
        parent->setHidden(!any);
    }
    if (first != nullptr) navigation_.setCurrentItem(first);
}

ListWindow* MainWindow::listAt(int tab) const
{
    return dynamic_cast<ListWindow*>(tabs_.widget(tab));
}

ListWindow& MainWindow::openList(const std::string& type)
{
    for (int tab = 0; tab < tabs_.count(); ++tab) {
        ListWindow* const list = listAt(tab);
        if (list == nullptr || list->setup().type != type) continue;
        tabs_.setCurrentIndex(tab);
        return *list;
    }
    ListSetup setup;
    setup.type = type;
    return openList(setup);
}

ListWindow& MainWindow::openList(const ListSetup& setup)
{
    if (tabs_.count() == 1 && dynamic_cast<WelcomePage*>(tabs_.widget(0)) != nullptr) {
        tabs_.widget(0)->deleteLater(); // one of its buttons may have been clicked
        tabs_.removeTab(0);
    }
    auto list = std::make_unique<ListWindow>(
        place_, setup,
        ListWindow::Actions{[this](const ListSetup& further) { openList(further); },
                            [this](const std::string& timberList) { measure(timberList); }});
    ListWindow& opened = *list;
    addPage(std::move(list), opened.windowTitle());
    return opened;
}

/// One timber list is measured at a time: the library releases all object locks of a user together.
void MainWindow::measure(const std::string& timberList)
{
    for (int tab = 0; tab < tabs_.count(); ++tab) {
        auto* const open = dynamic_cast<MeasureWindow*>(tabs_.widget(tab));
        if (open == nullptr) continue;
        tabs_.setCurrentIndex(tab);
        if (open->list() == timberList) return;
        if (!closePage(tab)) return;
        break;
    }
    qt::guarded([&] {
        auto window = MeasureWindow::open(place_, timberList);
        if (!window) return; // the holder was named
        addPage(std::move(window), textOf(Text::TimberList).arg(qt::toQt(timberList)));
    });
}

void MainWindow::openOptions()
{
    for (int tab = 0; tab < tabs_.count(); ++tab)
        if (dynamic_cast<OptionsWindow*>(tabs_.widget(tab)) != nullptr) return tabs_.setCurrentIndex(tab);
    qt::guarded([&] { addPage(std::make_unique<OptionsWindow>(place_), textOf(Text::Options)); });
}

void MainWindow::showWelcome()
{
    for (int tab = 0; tab < tabs_.count(); ++tab)
        if (dynamic_cast<WelcomePage*>(tabs_.widget(tab)) != nullptr) return tabs_.setCurrentIndex(tab);
    addPage(std::make_unique<WelcomePage>(place_, [this](const std::string& type) { openList(type); }),
            textOf(Text::Welcome));
}

/// Appends a page and brings it forward. A page's own title becomes that of its tab.
void MainWindow::addPage(std::unique_ptr<QWidget> page, const QString& title)
{
    QWidget* const added = page.release(); // the tabs take it over
    connect(added, &QWidget::windowTitleChanged, this,
            [this, added](const QString& changed) { tabs_.setTabText(tabs_.indexOf(added), changed); });
    tabs_.setCurrentIndex(tabs_.addTab(added, title));
    added->setFocus();
}

/// Closes a page, unless the user wants to keep what he has typed in it.
bool MainWindow::closePage(int tab)
{
    auto* const measuring = dynamic_cast<MeasureWindow*>(tabs_.widget(tab));
    if (measuring != nullptr && !measuring->mayClose()) return false;
    const std::unique_ptr<QWidget> closed{tabs_.widget(tab)};
    tabs_.removeTab(tab);
    return true;
}

void MainWindow::useLanguage(Language language)
{
    workbench::useLanguage(language);
    place_.language(nameOf(language));
    QSettings{}.setValue("language", static_cast<int>(language));
    retranslate();
}

void MainWindow::retranslate()
{
    setWindowTitle(textOf(Text::Program) + " – " + qt::toQt(place_.user().name));
    search_.setPlaceholderText(textOf(Text::Search));
    search_.setAccessibleName(textOf(Text::Search));
    navigation_.setAccessibleName(textOf(Text::Lists));
    makeMenus();
    fillNavigation();
    for (int tab = 0; tab < tabs_.count(); ++tab) {
        if (auto* const measuring = dynamic_cast<MeasureWindow*>(tabs_.widget(tab))) {
            measuring->retranslate();
            tabs_.setTabText(tab, textOf(Text::TimberList).arg(qt::toQt(measuring->list())));
        }
        if (auto* const options = dynamic_cast<OptionsWindow*>(tabs_.widget(tab))) {
            options->retranslate();
            tabs_.setTabText(tab, textOf(Text::Options));
        }
        ListWindow* const list = listAt(tab);
        if (list == nullptr) continue;
        list->retranslate();
        list->refresh();
    }
    retranslateWelcome();
}

/// The page is made anew, in its place.
void MainWindow::retranslateWelcome()
{
    for (int tab = 0; tab < tabs_.count(); ++tab) {
        if (dynamic_cast<WelcomePage*>(tabs_.widget(tab)) == nullptr) continue;
        const int current = tabs_.currentIndex();
        tabs_.widget(tab)->deleteLater();
        tabs_.removeTab(tab);
        showWelcome();
        tabs_.tabBar()->moveTab(tabs_.count() - 1, tab);
        tabs_.setCurrentIndex(current);
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    for (int tab = 0; tab < tabs_.count(); ++tab) {
        auto* const measuring = dynamic_cast<MeasureWindow*>(tabs_.widget(tab));
        if (measuring == nullptr) continue;
        tabs_.setCurrentIndex(tab);
        if (!measuring->mayClose()) return event->ignore();
    }
    QSettings{}.setValue(geometryKey, saveGeometry());
    QSettings{}.setValue(stateKey, saveState());
    QMainWindow::closeEvent(event);
}

} // namespace tamarok::workbench
