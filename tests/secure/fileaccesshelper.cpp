// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The second process of the file-access tests: runs one check, as whichever user the test started it
// as, and prints "true", or "false" followed by the error's domain, code and user-facing text.
//   fileaccesshelper readable PATH | writable PATH 0|1 | read-xattr PATH NAME | write-xattr PATH NAME VALUE
//   fileaccesshelper posix PATH     prints "read <0|1> write <0|1>" (hasPosixPermissionToRead)

#include "VeltoFileManager.h"

#include <QCoreApplication>
#include <QTextStream>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments().mid(1);
    if (arguments.size() < 2)
        return 2;
    const QString command = arguments.at(0);
    const QUrl url = QUrl::fromLocalFile(arguments.at(1));
    VeltoError error;
    bool result = false;
    QString value;
    if (command == u"posix") {
        QTextStream(stdout) << "read " << int(VeltoFileManager::hasPosixPermissionToRead(true, url)) << " write "
                            << int(VeltoFileManager::hasPosixPermissionToRead(false, url));
        return 0;
    }
    if (command == u"readable") {
        result = VeltoFileManager::isReadableItemAtURL(url, &error);
    } else if (command == u"writable" && arguments.size() == 3) {
        result = VeltoFileManager::isWritableItemVeltoAtURL(url, arguments.at(2) == u"1", &error);
    } else if (command == u"read-xattr" && arguments.size() == 3) {
        value = VeltoFileManager::readStringExtendedAttribute(arguments.at(2), url, &error);
        result = error.isNull();
    } else if (command == u"write-xattr" && arguments.size() == 4) {
        result = VeltoFileManager::writeExtendedAttribute(arguments.at(2), arguments.at(3).toUtf8(), url, &error);
    } else {
        return 2;
    }
    QTextStream out(stdout);
    if (result)
        out << "true" << (value.isNull() ? QString() : u' ' + value);
    else
        out << "false " << error.domain() << ' ' << error.code() << ' ' << error.descriptionForUserVelto();
    return 0;
}
