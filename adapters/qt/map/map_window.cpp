#include <QLabel>
#include <QPushButton>
#include <QWebEngineProfile>
#include <QWebEngineView>

#include "dialogs/design_texts.h"
#include "dialogs/dialog_shell.h"
#include "owned.h"
#include "tamarok_qt/map.h"
#include "tamarok_qt/texts.h"
#include "tamarok_qt/twips.h"

namespace tamarok::qt {

namespace {

constexpr dialogs::Size windowSize{15000, 11250};

class MapDialog final : public Modal<dialogs::MapWindow> {
public:
    explicit MapDialog(const std::shared_ptr<Desk>& desk) : Modal{"F_WebBrowser", desk}
    {
        shell().outerSize(windowSize);
        browser_ = &makeOwned<QWebEngineView>(&shell().content());
        shell().addControl("WebBrowser1", *browser_);
        shell().addButton("btnClose", designText(DesignText::Close));
        shell().control("btnClose").resize(pixels(1365), pixels(420));
        shell().escapeButton("btnClose");
        QObject::connect(browser_, &QWebEngineView::loadFinished, browser_,
                         [this] { tell([](auto& events) { events.pageFinished(); }); });
        QObject::connect(browser_, &QWebEngineView::titleChanged, browser_, [this](const QString& title) {
            if (shell().windowTitle().isEmpty()) browser_->setAccessibleName(title);
        });
    }

    void navigate(std::string_view address) override { browser_->load(QUrl::fromUserInput(toQt(address))); }
    std::string address() const override { return fromQt(QString::fromUtf8(browser_->url().toEncoded())); }

private:
    QWebEngineView* browser_ = nullptr;
};

} // namespace

std::unique_ptr<dialogs::MapWindow> makeMapWindow(const std::shared_ptr<Desk>& desk)
{
    return std::make_unique<MapDialog>(desk);
}

} // namespace tamarok::qt
