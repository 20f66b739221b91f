#include <QApplication>
#include <QLocale>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QWebEngineView>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qt/support/sample.h"
#include "qt/support/user.h"
#include "tamarok_qt/map.h"

#include "tamarok/comm_forms.h"

// The map dialog with the browser engine, on pages that the test itself serves.

namespace tamarok::qt {
namespace {

using namespace acting;

/// A map service: the page "/map" goes on to the back page with coordinates by itself, "/stay" does not.
class MapService {
public:
    MapService()
    {
        server_.listen(QHostAddress::LocalHost);
        QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
            QTcpSocket* const socket = server_.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answer(*socket); });
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        });
    }
    std::string address() const { return "http://127.0.0.1:" + std::to_string(server_.serverPort()); }

private:
    void answer(QTcpSocket& socket)
    {
        const QByteArray request = socket.readAll();
        QByteArray page = "<html><body>Karte</body></html>";
        if (request.startsWith("GET /map"))
            page = "<html><script>location.href='/447/back.php?a=1&parPosY=5255000.5&parPosX=450000'</script></html>";
        socket.write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nConnection: close\r\nContent-Length: " +
                     QByteArray::number(page.size()) + "\r\n\r\n" + page);
        socket.disconnectFromHost();
    }
    QTcpServer server_;
};

class MapWindowTest : public ::testing::Test {
protected:
    StringArray run(const std::string& page)
    {
        Platform::current().mapEndpoints = {"vendor.example", service.address()};
        StringArray point;
        point.values = {"x", "y"};
        Comm_Forms{}.WebBrowser_Run(sample.session, service.address() + page, point);
        return point;
    }
    MapService service;
    Sample sample{"GERMAN", &makeMapWindow};
};

TEST_F(MapWindowTest, TheBackPageGivesThePointAndClosesTheDialog)
{
    EXPECT_THAT(run("/map").values, ::testing::ElementsAre("450000", "5255000.5"));
}

TEST_F(MapWindowTest, TheButtonLeavesThePointAsItWas)
{
    User user{[](QDialog& dialog) {
                  const auto& browser = find<QWebEngineView>(dialog, "WebBrowser1");
                  const auto& button = find<QPushButton>(dialog, "btnClose");
                  EXPECT_EQ(button.text(), "Schließen");
                  EXPECT_GT(button.y(), browser.geometry().bottom());
                  EXPECT_LE(button.geometry().right(), dialog.width());
              },
              click("btnClose")};
    EXPECT_THAT(run("/stay").values, ::testing::ElementsAre("x", "y"));
}

TEST_F(MapWindowTest, APageThatIsNotThereLeavesTheDialogOpen)
{
    Platform::current().mapEndpoints = {"vendor.example", "http://127.0.0.1:1"};
    StringArray point;
    point.values = {"x", "y"};
    User user{[](QDialog& dialog) {
                  auto& browser = find<QWebEngineView>(dialog, "WebBrowser1");
                  QSignalSpy finished{&browser, &QWebEngineView::loadFinished};
                  browser.reload();
                  EXPECT_TRUE(finished.wait(30'000));
              },
              [](QDialog& dialog) { EXPECT_TRUE(dialog.isVisible()); }, closeWindow()};
    Comm_Forms{}.WebBrowser_Run(sample.session, "http://127.0.0.1:1/map", point);
    EXPECT_THAT(point.values, ::testing::ElementsAre("x", "y"));
}

} // namespace
} // namespace tamarok::qt

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The engine refuses to run as root with its sandbox; this program shows its own pages alone.
    qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--disable-gpu --disable-logging");
    const QApplication application{argc, argv};
    QLocale::setDefault(QLocale{QLocale::German, QLocale::Austria});
    return RUN_ALL_TESTS();
}
