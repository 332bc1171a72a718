// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoApplication.h"

#include "VeltoBundle.h"
#include "VeltoCoreLogging_p.h"
#include "VeltoDocument.h"
#include "VeltoWindowController.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSysInfo>

#include <algorithm>
#include <atomic>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

std::atomic<bool> terminating{false};

// The termination watcher: run by every QCoreApplication as it is made (and at once when one exists as
// the library loads), it turns the flag on when that application announces that it quits.
void watchForTermination()
{
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, QCoreApplication::instance(),
                     [] { terminating.store(true); });
}

QVariantMap infoFileContents()
{
    const QString path = VeltoBundle::mainBundle()->rootPath() + u"/Info.json"_s;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (!document.isObject()) {
        qCWarning(lcVeltoBundle) << "ignoring the information dictionary" << path << "as it is not a JSON object:"
                                 << parseError.errorString();
        return {};
    }
    return document.object().toVariantMap();
}

QString identifierFromApplication()
{
    const QString flatpakId = qEnvironmentVariable("FLATPAK_ID");
    if (!flatpakId.isEmpty())
        return flatpakId;
    const QString domain = QCoreApplication::organizationDomain();
    const QString name = QCoreApplication::applicationName();
    if (domain.isEmpty() || name.isEmpty())
        return QString();
    QStringList labels = domain.split(u'.', Qt::SkipEmptyParts);
    std::reverse(labels.begin(), labels.end());
    return labels.join(u'.') + u'.' + name;
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watchForTermination)

bool VeltoApplication::isRunningIntelCode()
{
    // The code that runs is the code we were compiled to; an emulator does not change that answer.
#if defined(Q_PROCESSOR_X86)
    return true;
#else
    return false;
#endif
}

QString VeltoApplication::runningArchitectureString()
{
    return QSysInfo::buildCpuArchitecture();
}

bool VeltoApplication::isRunningInsideSandbox()
{
    static const bool sandboxed = qEnvironmentVariableIsSet("APP_SANDBOX_CONTAINER_ID")
                                  || QFileInfo::exists(u"/.flatpak-info"_s) || qEnvironmentVariableIsSet("SNAP");
    return sandboxed;
}

bool VeltoApplication::isTerminatingVelto()
{
    return terminating.load();
}

QVariantMap VeltoApplication::infoDictionary()
{
    static const QVariantMap fromFile = infoFileContents();
    QVariantMap info = fromFile;
    const auto fillIn = [&info](QLatin1StringView key, const QString &value) {
        if (!info.contains(key) && !value.isEmpty())
            info.insert(key, value);
    };
    fillIn(VeltoInfoBundleNameKey, QCoreApplication::applicationName());
    fillIn(VeltoInfoBundleVersionKey, QCoreApplication::applicationVersion());
    fillIn(VeltoInfoBundleIdentifierKey, identifierFromApplication());
    return info;
}

QUrl VeltoApplication::veltoURLForInfoDictionaryKey(const QString &key)
{
    const QVariant value = infoDictionary().value(key);
    if (value.typeId() == QMetaType::QString) {
        const QUrl url(value.toString(), QUrl::StrictMode);
        if (url.isValid() && !url.isEmpty())
            return url;
    }
    return QUrl(VeltoMakerWebSiteAddress);
}

QList<VeltoDocument *> VeltoApplication::orderedVisibleDocumentsVelto(const QList<VeltoDocument *> &orderedDocuments)
{
    // The copy is made on the first removal only, so an unchanged list comes back as the caller's own.
    std::optional<QList<VeltoDocument *>> visible;
    for (qsizetype index = orderedDocuments.size() - 1; index >= 0; --index) {
        const VeltoDocument *document = orderedDocuments.at(index);
        const QList<VeltoWindowController *> controllers =
            document ? document->windowControllers() : QList<VeltoWindowController *>();
        const bool shown = std::any_of(controllers.cbegin(), controllers.cend(), [](const VeltoWindowController *controller) {
            return controller && controller->isWindowLoaded();
        });
        if (shown)
            continue;
        if (!visible)
            visible = orderedDocuments;
        visible->removeAt(index);
    }
    return visible ? *visible : orderedDocuments;
}
