#include "shell/UpdateChecker.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QXmlStreamReader>

namespace zd::app {

UpdateChecker::UpdateChecker(QString currentVersion, QObject* parent)
    : QObject(parent),
      current_(std::move(currentVersion)),
      network_(new QNetworkAccessManager(this)) {}

void UpdateChecker::check(const QUrl& feed) {
    if (pending_) {
        pending_->disconnect(this);
        pending_->abort();
        pending_->deleteLater();
        pending_ = nullptr;
    }
    if (!feed.isValid() || feed.isEmpty()) {
        emit finished(Outcome::failed, {});
        return;
    }
    QNetworkRequest request(feed);
    request.setTransferTimeout(static_cast<int>(timeout_.count()));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    pending_ = network_->get(request);
    QNetworkReply* reply = pending_;
    connect(reply, &QNetworkReply::finished, this, [this, reply] { onReply(reply); });
}

void UpdateChecker::onReply(QNetworkReply* reply) {
    reply->deleteLater();
    if (reply != pending_)
        return;
    pending_ = nullptr;
    const auto status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (reply->error() != QNetworkReply::NoError || (status.isValid() && status.toInt() != 200)) {
        emit finished(Outcome::failed, {});
        return;
    }
    const auto releases = parseAppcast(reply->readAll());
    if (!releases) {
        emit finished(Outcome::failed, {});
        return;
    }
    if (auto newer = SoftwareUpdate::newerRelease(*releases, current_.toStdString()))
        emit finished(Outcome::newer, *newer);
    else
        emit finished(Outcome::upToDate, {});
}

std::optional<std::vector<SoftwareUpdate::Release>> UpdateChecker::parseAppcast(
    const QByteArray& xml) {
    QXmlStreamReader reader(xml);
    std::vector<SoftwareUpdate::Release> releases;
    bool sawChannel = false;
    std::optional<SoftwareUpdate::Release> item;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            const auto name = reader.name();
            const auto qualified = reader.qualifiedName();
            if (name == u"channel") {
                sawChannel = true;
            } else if (name == u"item") {
                item = SoftwareUpdate::Release{};
            } else if (item && name == u"enclosure") {
                const auto attrs = reader.attributes();
                for (const auto& attr : attrs) {
                    if (attr.name() == u"version" && item->version.empty())
                        item->version = attr.value().toString().trimmed().toStdString();
                    else if (attr.name() == u"shortVersionString" && item->displayVersion.empty())
                        item->displayVersion = attr.value().toString().trimmed().toStdString();
                    else if (attr.name() == u"url" && item->pageURL.empty())
                        item->pageURL = attr.value().toString().trimmed().toStdString();
                }
            } else if (item && (qualified == u"sparkle:version" || name == u"version")) {
                item->version = reader.readElementText().trimmed().toStdString();
            } else if (item && name == u"shortVersionString") {
                item->displayVersion = reader.readElementText().trimmed().toStdString();
            } else if (item && name == u"link") {
                // An item's own page wins over its download.
                item->pageURL = reader.readElementText().trimmed().toStdString();
            }
        } else if (reader.isEndElement() && reader.name() == u"item" && item) {
            releases.push_back(std::move(*item));
            item.reset();
        }
    }
    if (reader.hasError() || !sawChannel)
        return std::nullopt;
    return releases;
}

}  // namespace zd::app
