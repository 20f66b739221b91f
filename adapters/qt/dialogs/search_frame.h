#pragma once

#include <QGroupBox>

namespace tamarok::qt {

/// The frame around the grid of a lookup. Its title is what the user has typed; before that it tells what typing does.
class SearchFrame final : public QGroupBox {
public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tamarok::qt
