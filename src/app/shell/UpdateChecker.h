#pragma once
// Fetches the update feed once and tells whether it offers a newer Zephyrdock. The feed is an
// appcast: an RSS channel of items, each with a version (Sparkle's `sparkle:version`, as an
// element or on the enclosure) and a page. Every failure (no answer, an HTTP error, a feed that
// isn't one) ends as `failed`, which the shell shows to nobody.

#include <QObject>
#include <QUrl>
#include <chrono>
#include <optional>
#include <vector>

#include "app/SoftwareUpdate.h"

class QNetworkAccessManager;
class QNetworkReply;

namespace zd::app {

class UpdateChecker : public QObject {
    Q_OBJECT
  public:
    enum class Outcome { upToDate, newer, failed };

    explicit UpdateChecker(QString currentVersion, QObject* parent = nullptr);

    // How long a check may wait for the whole answer.
    void setTimeout(std::chrono::milliseconds timeout) { timeout_ = timeout; }

    // Starts a check; a check still under way is abandoned. `finished` follows exactly once.
    void check(const QUrl& feed);

    // The releases of an appcast, or nothing when the text isn't one.
    static std::optional<std::vector<SoftwareUpdate::Release>> parseAppcast(const QByteArray& xml);

  signals:
    void finished(zd::app::UpdateChecker::Outcome outcome,
                  const zd::SoftwareUpdate::Release& release);

  private:
    void onReply(QNetworkReply* reply);

    QString current_;
    std::chrono::milliseconds timeout_{std::chrono::seconds(20)};
    QNetworkAccessManager* network_;
    QNetworkReply* pending_ = nullptr;
};

}  // namespace zd::app
