#pragma once

#include <QPushButton>
#include <QScrollArea>
#include <QWidget>
#include <functional>
#include <string>

#include "work/workplace.h"

namespace tamarok::workbench {

/// The first page: what the program shows, where to begin, and its keys.
class WelcomePage final : public QScrollArea {
public:
    /// @param openList  opens a list by its type
    WelcomePage(const Workplace& place, std::function<void(const std::string& type)> openList);

private:
    QWidget* heading(const Workplace& place);
    QWidget* beginnings(const Workplace& place);
    QWidget* keys();

    std::function<void(const std::string& type)> openList_;
};

} // namespace tamarok::workbench
