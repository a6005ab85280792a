// The updater against a feed served on loopback by the test itself.
#include "shell/UpdaterController.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>

#include "AppTestSupport.h"
#include "testing/InMemorySettingsStore.h"

namespace zd::app {
namespace {

// Answers every request with `body` (or never, when `silent`).
class FeedServer {
  public:
    FeedServer(QByteArray body, bool silent) : body_(std::move(body)), silent_(silent) {
        server_.listen(QHostAddress::LocalHost);
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            auto* socket = server_.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, [this, socket] {
                if (silent_ || !socket->readAll().contains("\r\n\r\n"))
                    return;
                socket->write(
                    "HTTP/1.1 200 OK\r\nContent-Type: application/rss+xml\r\n"
                    "Connection: close\r\nContent-Length: " +
                    QByteArray::number(body_.size()) + "\r\n\r\n" + body_);
                socket->disconnectFromHost();
            });
        });
    }
    QString url() const {
        return QString("http://127.0.0.1:%1/appcast.xml").arg(server_.serverPort());
    }

  private:
    QTcpServer server_;
    QByteArray body_;
    bool silent_;
};

QByteArray appcast(const char* version) {
    return QByteArray(R"(<?xml version="1.0"?>
<rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle">
 <channel><title>Zephyrdock</title>
  <item><title>Old</title><sparkle:version>0.0.9</sparkle:version></item>
  <item><title>Release</title><link>https://zephyrdock.invalid/release</link>
   <enclosure url="https://zephyrdock.invalid/z.tar.xz" sparkle:version=")") +
           version + R"(" sparkle:shortVersionString="Release )" + version +
           R"(" length="1" type="application/octet-stream"/></item>
 </channel></rss>)";
}

TEST(Updater, ShowsOnlyWhatTheFeedSays) {
    testing::ensureApp();
    using Outcome = UpdateChecker::Outcome;
    const struct {
        QByteArray body;
        bool silent;
        Outcome outcome;
        int notices;  // what a user who asked sees
    } cases[] = {
        {appcast("0.2"), false, Outcome::newer, 1},
        {appcast("0.1.0"), false, Outcome::upToDate, 1},
        {"<rss><channel><item>", false, Outcome::failed, 0},
        {"<html>Moved</html>", false, Outcome::failed, 0},
        {"", true, Outcome::failed, 0},  // no answer
    };
    for (const auto& c : cases) {
        FeedServer server(c.body, c.silent);
        InMemorySettingsStore settings;
        settings.setObject(Value(server.url().toStdString()), SoftwareUpdate::feedURLKey);
        UpdaterController updater(settings, "0.1.0");
        updater.checker().setTimeout(std::chrono::milliseconds(400));
        std::vector<UpdaterController::Notice> shown;
        updater.setPresenter([&](const UpdaterController::Notice& n) { shown.push_back(n); });
        QSignalSpy ended(&updater, &UpdaterController::checkEnded);

        updater.checkForUpdates();
        ASSERT_TRUE(ended.wait(5000)) << c.body.toStdString();
        EXPECT_EQ(ended.at(0).at(0).value<Outcome>(), c.outcome) << c.body.toStdString();
        ASSERT_EQ(static_cast<int>(shown.size()), c.notices) << c.body.toStdString();
        if (c.outcome == Outcome::newer) {
            EXPECT_EQ(shown[0].title, "Zephyrdock Release 0.2 is available");
            EXPECT_EQ(shown[0].page.toString(), "https://zephyrdock.invalid/release");
        } else if (c.notices) {
            EXPECT_EQ(shown[0].title, QString::fromUtf8(SoftwareUpdate::upToDateTitle));
            EXPECT_TRUE(shown[0].page.isEmpty());
        }
    }
}

TEST(Updater, ChecksQuietlyAtLaunchAndNotAtAllWithoutAFeed) {
    testing::ensureApp();
    FeedServer server(appcast("0.1.0"), false);
    InMemorySettingsStore settings;
    UpdaterController updater(settings, "0.1.0");
    int shown = 0;
    updater.setPresenter([&](const UpdaterController::Notice&) { ++shown; });
    QSignalSpy ended(&updater, &UpdaterController::checkEnded);
    updater.checkForUpdates();  // no feed in the settings: nothing fetched, nothing shown
    ASSERT_EQ(ended.size(), 1);
    EXPECT_EQ(ended.at(0).at(0).value<UpdateChecker::Outcome>(), UpdateChecker::Outcome::failed);

    settings.setObject(Value(server.url().toStdString()), SoftwareUpdate::feedURLKey);
    updater.startAtLaunch();  // up to date at launch: nothing to say
    ASSERT_TRUE(ended.wait(5000));
    EXPECT_EQ(ended.at(1).at(0).value<UpdateChecker::Outcome>(), UpdateChecker::Outcome::upToDate);
    EXPECT_EQ(shown, 0);
}

}  // namespace
}  // namespace zd::app
