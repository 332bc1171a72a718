// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Running a file check in a second process (tests/secure/fileaccesshelper.cpp) as a user to whom the
// permission bits apply: root passes every permission check, so under root the helper gives up root
// ("nobody", with the supplementary groups the caller names) before it starts.

#include <QProcess>
#include <QString>
#include <QStringList>

#include <grp.h>
#include <vector>
#include <unistd.h>

/// The helper's user under root.
inline constexpr uid_t HelperUser = 65534;

/// runFileAccessHelper: the helper's one line of output for \a arguments, or "helper failed: ...".
inline QString runFileAccessHelper(const QString &helper, const QStringList &arguments,
                                   const std::vector<gid_t> &groups = {})
{
    QProcess process;
    if (geteuid() == 0) {
        process.setChildProcessModifier([groups] {
            if (setgroups(groups.size(), groups.data()) != 0 || setgid(65534) != 0 || setuid(65534) != 0)
                _exit(3);
        });
    }
    process.start(helper, arguments);
    if (!process.waitForFinished(30000) || process.exitCode() != 0)
        return QStringLiteral("helper failed: %1").arg(process.exitCode());
    return QString::fromUtf8(process.readAllStandardOutput());
}
