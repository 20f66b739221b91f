#pragma once

#include <QActionGroup>
#include <QLineEdit>
#include <QMainWindow>
#include <QTabWidget>
#include <QTreeWidget>
#include <functional>
#include <memory>
#include <string>

#include "lists/list_setup.h"
#include "windows/texts.h"
#include "work/workplace.h"

namespace tamarok::workbench {

class ListWindow;

/// The workbench: the lists that the user may see on the left, the open ones on the right.
class MainWindow final : public QMainWindow {
public:
    /// @param place  a user is logged in; outlives the window
    explicit MainWindow(Workplace& place);

    /// Opens a list of a type, or brings forward the one that is open.
    ListWindow& openList(const std::string& type);
    /// Opens a further list.
    ListWindow& openList(const ListSetup& setup);
    /// Measures in a timber list, in a window that locks it. A refusal names the holder.
    void measure(const std::string& timberList);
    void openOptions();
    void useLanguage(Language language);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void layOut();
    void makeMenus();
    void fillNavigation();
    void findInNavigation(const QString& text);
    void showWelcome();
    void addPage(std::unique_ptr<QWidget> page, const QString& title);
    bool closePage(int tab);
    void retranslate();
    void retranslateWelcome();
    ListWindow* listAt(int tab) const;

    Workplace& place_;
    QWidget side_;
    QLineEdit search_;
    QTreeWidget navigation_;
    QTabWidget tabs_;
};

} // namespace tamarok::workbench
