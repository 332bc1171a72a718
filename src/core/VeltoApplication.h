// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoApplication.h
 * \brief VeltoApplication: questions about the running application process as a whole.
 *
 * Process-wide application helpers: the processor the code was built for, whether the process runs in
 * a sandbox or is terminating, the application's information dictionary, and which documents are
 * really on screen. Everything here is static and needs no QCoreApplication instance unless it says so.
 *
 * \code
 * if (VeltoApplication::isRunningInsideSandbox())
 *     qInfo() << "sandboxed; support page" << VeltoApplication::veltoURLForInfoDictionaryKey(u"SupportURL"_s);
 * \endcode
 */

#include "veltocore_export.h"

#include <QList>
#include <QString>
#include <QUrl>
#include <QVariantMap>

class VeltoDocument;

/// The maker's web site: the answer of veltoURLForInfoDictionaryKey() when a key gives no URL.
inline constexpr QLatin1StringView VeltoMakerWebSiteAddress{"https://www.velto.com/"};
/// Information-dictionary key of the application's reverse-domain identifier ("com.velto.Writer").
inline constexpr QLatin1StringView VeltoInfoBundleIdentifierKey{"CFBundleIdentifier"};
/// Information-dictionary key of the application's name ("Writer").
inline constexpr QLatin1StringView VeltoInfoBundleNameKey{"CFBundleName"};
/// Information-dictionary key of the application's version text ("2.1.3").
inline constexpr QLatin1StringView VeltoInfoBundleVersionKey{"CFBundleShortVersionString"};

/// VeltoApplication: process-wide application helpers.
class VELTOCORE_EXPORT VeltoApplication
{
public:
    VeltoApplication() = delete;

    /**
     * isRunningIntelCode: true when this library was built for an Intel processor (x86 or x86-64), as
     * the instructions the process runs are then Intel's; false for every other build.
     */
    [[nodiscard]] static bool isRunningIntelCode();

    /**
     * runningArchitectureString: the processor architecture this library was built for, in Qt's
     * spelling ("x86_64", "i386", "arm64", "riscv64"); see QSysInfo::buildCpuArchitecture().
     */
    [[nodiscard]] static QString runningArchitectureString();

    /**
     * isRunningInsideSandbox: whether the process runs in an application sandbox: the environment has
     * a variable "APP_SANDBOX_CONTAINER_ID" (with any value, empty included), or the process is a
     * Flatpak application ("/.flatpak-info" exists) or a Snap ("SNAP" is set). Decided on the first
     * call and kept for the life of the process; safe on any thread.
     */
    [[nodiscard]] static bool isRunningInsideSandbox();

    /**
     * isTerminatingVelto: false until a QCoreApplication announces that it quits (aboutToQuit), true from
     * then on, also once that application is gone or another is made. Safe on any thread.
     */
    [[nodiscard]] static bool isTerminatingVelto();

    /**
     * infoDictionary: facts about the application, by key. The JSON object in "Info.json" at the root of
     * the application's compiled-in resources (VeltoBundle::mainBundle(), ":/Info.json"), read once;
     * a missing or malformed file counts as empty (a malformed one is reported once as a warning).
     * Keys the file lacks are filled in from the running application when it knows them:
     * VeltoInfoBundleNameKey from QCoreApplication::applicationName(), VeltoInfoBundleVersionKey from
     * applicationVersion(), and VeltoInfoBundleIdentifierKey from the Flatpak application id
     * ("FLATPAK_ID"), else the organization domain reversed followed by "." and the application name
     * ("velto.com" and "Writer" give "com.velto.Writer").
     */
    [[nodiscard]] static QVariantMap infoDictionary();

    /**
     * veltoURLForInfoDictionaryKey: the URL made from the information dictionary's text under \a key;
     * when the key is missing or its value is not text that parses as a URL (strictly, and not empty),
     * the maker's web site (VeltoMakerWebSiteAddress).
     */
    [[nodiscard]] static QUrl veltoURLForInfoDictionaryKey(const QString &key);

    /**
     * orderedVisibleDocumentsVelto: \a orderedDocuments (front to back) without those none of whose
     * window controllers has loaded its window (null entries are left out too). When nothing is left out
     * the very list given comes back (it shares \a orderedDocuments' data), so a caller can tell cheaply
     * that nothing changed.
     */
    [[nodiscard]] static QList<VeltoDocument *> orderedVisibleDocumentsVelto(const QList<VeltoDocument *> &orderedDocuments);
};
