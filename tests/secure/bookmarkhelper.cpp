// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The second process of the secure URL tests: captures the file it is given and prints the global
// serialization in base64, so that the test process resolves what another process stored.

#include "VeltoSecureURL.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    VeltoError error;
    const auto url = argc == 2 ? VeltoSecureURL::initCapturingBookmarkForURL(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])),
                                                                            false, &error)
                               : nullptr;
    if (!url) {
        QTextStream(stderr) << "bookmarkhelper: " << error.descriptionForUserVelto() << '\n';
        return 1;
    }
    QTextStream(stdout) << url->serializationStorableGlobally().toBase64() << '\n';
    return 0;
}
