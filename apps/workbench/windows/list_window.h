#pragma once

#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QSettings>
#include <QSplitter>
#include <QTableView>
#include <QToolBar>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "windows/chart_panel.h"
#include "windows/list_model.h"
#include "windows/texts.h"
#include "windows/totals_row.h"

class QMenu;

namespace tamarok::workbench {

/// One list: its tools, its table with totals, the picture beside it, and how far its reading is.
class ListWindow final : public QWidget {
public:
    /// What the window asks the program for.
    struct Actions {
        std::function<void(const ListSetup&)> openList;             ///< opens a further list beside this one
        std::function<void(const std::string& timberList)> measure; ///< measures in a timber list; nothing: not offered
    };

    /// @param setup  without columns: those that the user chose last
    /// @param place  outlives the window
    ListWindow(const Workplace& place, ListSetup setup, Actions actions, QWidget* parent = nullptr);
    ~ListWindow() override;

    const ListSetup& setup() const noexcept { return setup_; }
    QString title() const; ///< of the list type; the window's own title tells groups and filters too
    QTableView& table() noexcept { return table_; }
    bool isLoading() const noexcept { return model_->isLoading(); }
    /// Labels and texts anew, in the language of the session.
    void retranslate();
    void refresh();

private:
    void layOut();
    void addTools();
    QAction* addTool(Text text, Text hint, const QKeySequence& key, const std::function<void()>& action);
    void connectTable();

    QString fullTitle() const;
    void show(ListSetup setup);
    void showProgress(std::size_t rows);
    void showFirstRows();
    void showLoaded();
    void showFailure(const std::string& reason);
    void showFilters();
    void stop();

    void sortBy(int section);
    void chooseColumns();
    void toggleGroup();
    void toggleChart();
    void showMenu(const QPoint& point);
    void addMeasuring(QMenu& menu, const QModelIndex& index);
    void filterBy(const QModelIndex& index);
    void copyCells() const;
    void showRecords(const QModelIndex& index);
    void exportList();
    void showStatement();

    QString rowsText(std::size_t rows) const;
    void fitWidths();
    void keepWidth(int section, int width);
    QString settingsKey(const char* what) const;
    const ListColumn* column(std::int16_t id) const;

    const Workplace& place_;
    ListSetup setup_;
    Actions actions_;
    std::vector<ListColumn> columns_; ///< all of the type
    std::unique_ptr<ListModel> model_;
    std::unique_ptr<Worker> worker_; ///< goes first: its jobs tell the model
    QToolBar tools_;
    QComboBox version_;
    QAction* group_ = nullptr;
    QAction* chart_ = nullptr;
    QWidget filters_;
    QSplitter splitter_;
    QTableView table_;
    TotalsRow totals_{table_};
    ChartPanel chartPanel_;
    QLabel state_;
    QProgressBar progress_;
    QAction* stop_ = nullptr;
    bool fitting_ = true; ///< the program itself sets the widths of the columns
};

} // namespace tamarok::workbench
