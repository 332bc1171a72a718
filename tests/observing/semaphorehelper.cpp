// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The second process of the semaphore test. Usage: semaphorehelper post|wait|create <name>
// post: opens the semaphore, posts once and closes; wait: opens it and waits once; create: tries to create
// it. Prints the error text and exits with 1 when opening or creating fails.

#include "VeltoSemaphore.h"

#include <QTextStream>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    const QString mode = QString::fromUtf8(argv[1]);
    VeltoError error;
    auto semaphore = VeltoSemaphore::initWithName(QString::fromUtf8(argv[2]), mode == u"create"_s, &error);
    QTextStream out(stdout);
    if (!semaphore) {
        out << error.localizedDescription();
        return 1;
    }
    if (mode == u"post"_s)
        semaphore->post();
    else if (mode == u"wait"_s)
        semaphore->wait();
    out << "done";
    return 0;
}
