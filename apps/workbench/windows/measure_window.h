#pragma once

#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QWidget>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "windows/list_model.h"
#include "windows/totals_row.h"
#include "work/measured_line.h"

namespace tamarok::workbench {

/// A timber list in which lines are measured: codes with their look-ups (F4) and checks, volume, bark and class while
/// the numbers are typed, and the lines of the list. The list is locked as long as the window is open.
class MeasureWindow final : public QWidget {
public:
    /// Locks a timber list and opens it. Returns nothing, after a message that names the holder, if another session has
    /// it. @param place  outlives the window
    static std::unique_ptr<MeasureWindow> open(const Workplace& place, const std::string& list);

    /// Proves that the list was locked: `open` alone makes one.
    class Locked {
        friend class MeasureWindow;
        Locked() = default;
    };
    MeasureWindow(Locked, const Workplace& place, std::string list);
    ~MeasureWindow() override;

    const std::string& list() const noexcept { return list_; }
    void retranslate();
    /// Returns whether the window may close: asks where a log was typed and not saved.
    bool mayClose();

private:
    class Field; ///< a box with its caption and, of a code, what it stands for

    void layOut();
    void connectFields();
    MeasuredLine line() const;
    void showLines();
    void showFigures();
    bool check(Field& field);
    void lookUp(Field& field);
    bool save();
    Field& field(std::string_view name) const;
    bool eventFilter(QObject* watched, QEvent* event) override;
    Field* fieldOf(const QObject* box) const;

    const Workplace& place_;
    std::string list_;
    std::vector<std::unique_ptr<Field>> fields_;
    QLabel heading_;
    QLabel volumeCaption_;
    QLabel barkCaption_;
    QLabel classCaption_;
    QLabel volume_;
    QLabel bark_;
    QLabel strengthClass_;
    QPushButton save_;
    QLabel state_;
    std::unique_ptr<ListModel> model_;
    std::unique_ptr<Worker> worker_; ///< goes first: its jobs tell the model
    QTableView lines_;
    TotalsRow totals_{lines_};
    bool checking_ = false; ///< a message about a code is shown
};

} // namespace tamarok::workbench
