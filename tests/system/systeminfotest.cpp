// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTSysctl_p.h"
#include "VeltoApplication.h"
#include "VeltoBundle.h"
#include "VeltoSystemInfo.h"
#include "veltotest.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

// A fake system tree of real files below a temporary folder, laid out like "/".
struct FakeTree
{
    QTemporaryDir dir;

    // A null content leaves the file out.
    void write(const QString &relativePath, const QByteArray &content)
    {
        if (content.isNull())
            return;
        const QString path = dir.filePath(relativePath);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    VTSysctl sysctl(const QString &machine = u"x86_64"_s) const { return VTSysctl(dir.path(), machine); }
};

const auto cpuinfoPath = u"proc/cpuinfo"_s;
const auto addressBitsPath = u"sys/kernel/address_bits"_s;
const auto cpufreqPath = u"sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq"_s;
const auto dmiModelPath = u"sys/class/dmi/id/product_name"_s;
const auto deviceTreeModelPath = u"proc/device-tree/model"_s;

// Two processors, as the kernel writes them; only the first one's fields count.
QByteArray cpuinfo(const QByteArray &flags, const QByteArray &mhz)
{
    QByteArray text;
    for (const QByteArray &processor : {QByteArray("0"), QByteArray("1")}) {
        text += "processor\t: " + processor + "\nvendor_id\t: AuthenticAMD\n";
        if (!mhz.isNull())
            text += "cpu MHz\t\t: " + (processor == "0" ? mhz : QByteArray("1.000")) + '\n';
        if (!flags.isNull())
            text += "flags\t\t: " + flags + '\n';
        text += '\n';
    }
    return text;
}

std::optional<QByteArray> readSystemFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
}

} // namespace

class SystemInfoTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sysctlNamesAndValueSizes()
    {
        qint32 value = 12345;
        QVERIFY(Velto_SysCtl_GetIntByName(&value, "hw.ncpu"));
        QCOMPARE(value, VeltoSystem_CPUCount());
        QVERIFY(Velto_SysCtl_GetIntByName(nullptr, "hw.ncpu"));

        // Failures leave the value alone; values that are not 4-byte integers do not fit a 4-byte read.
        for (const char *name : std::initializer_list<const char *>{"hw.NCPU", "kern.ostype", "", "hw.memsize",
                                                                    "hw.model", nullptr}) {
            value = 12345;
            QVERIFY2(!Velto_SysCtl_GetIntByName(&value, name), name);
            QCOMPARE(value, 12345);
        }

        // Answers from the tree come as the bytes sysctl gives. An empty tree has none of the file-backed
        // names; sysconf() answers do not depend on the tree.
        FakeTree tree;
        tree.write(dmiModelPath, "Standard PC\n");
        QCOMPARE(tree.sysctl().valueByName("hw.model").value_or("(none)"), QByteArray("Standard PC\n"));
        const VTSysctl bare = FakeTree().sysctl(QString());
        for (const char *name : {"hw.cpu64bit_capable", "hw.optional.x86_64", "hw.cpufrequency_max", "hw.model"})
            QVERIFY2(!bare.valueByName(name), name);
        QVERIFY(bare.valueByName("hw.ncpu") && bare.valueByName("hw.memsize"));
    }

    void cpuIs64BitTriesNamesInOrder_data()
    {
        QTest::addColumn<QString>("machine");
        QTest::addColumn<QByteArray>("flags");
        QTest::addColumn<QByteArray>("addressBits");
        QTest::addColumn<bool>("expected");

        const QByteArray none, withLm = "fpu vme lm sse2", withoutLm = "fpu vme pae sse2 lmx";
        QTest::newRow("64-bit machine decides") << u"aarch64"_s << withoutLm << QByteArray("32") << true;
        QTest::newRow("32-bit machine decides") << u"i686"_s << withLm << QByteArray("64") << false;
        QTest::newRow("no machine, lm flag") << QString() << withLm << QByteArray("32") << true;
        QTest::newRow("no machine, no lm flag") << QString() << withoutLm << QByteArray("64") << false;
        QTest::newRow("no flags, 64-bit kernel") << QString() << none << QByteArray("64\n") << true;
        QTest::newRow("unreadable address bits") << QString() << none << QByteArray("sixty-four") << false;
        QTest::newRow("nothing answers") << QString() << none << none << false;
    }

    void cpuIs64BitTriesNamesInOrder()
    {
        QFETCH(QString, machine);
        QFETCH(QByteArray, flags);
        QFETCH(QByteArray, addressBits);
        FakeTree tree;
        tree.write(cpuinfoPath, cpuinfo(flags, "2000.000"));
        tree.write(addressBitsPath, addressBits);
        QTEST(tree.sysctl(machine).cpuIs64Bit(), "expected");
    }

    void cpuSpeed_data()
    {
        QTest::addColumn<QByteArray>("maxFreqKHz");
        QTest::addColumn<QByteArray>("cpuMHz");
        QTest::addColumn<qint64>("expected");

        const QByteArray none;
        QTest::newRow("cpufreq wins") << QByteArray("3500000\n") << QByteArray("2596.142") << 3500LL;
        QTest::newRow("cpufreq truncates") << QByteArray("1999999\n") << none << 1999LL;
        QTest::newRow("cpuinfo truncates") << none << QByteArray("999.999") << 999LL;
        QTest::newRow("unreadable cpufreq") << QByteArray("fast\n") << QByteArray("2400.000") << 2400LL;
        QTest::newRow("zero cpufreq") << QByteArray("0\n") << QByteArray("2400.000") << 2400LL;
        QTest::newRow("unreadable cpuinfo") << none << QByteArray("n/a") << 0LL;
    }

    void cpuSpeed()
    {
        QFETCH(QByteArray, maxFreqKHz);
        QFETCH(QByteArray, cpuMHz);
        FakeTree tree;
        tree.write(cpufreqPath, maxFreqKHz);
        tree.write(cpuinfoPath, cpuinfo("fpu lm", cpuMHz));
        QTEST(tree.sysctl().cpuSpeedMHz(), "expected");
    }

    void modelName_data()
    {
        QTest::addColumn<QByteArray>("dmi");
        QTest::addColumn<QByteArray>("deviceTree");
        QTest::addColumn<QString>("expected"); // null for "no model"

        const QByteArray none;
        QTest::newRow("device tree string") << none << QByteArray("Raspberry Pi 4 Model B Rev 1.4\0", 31)
                                            << u"Raspberry Pi 4 Model B Rev 1.4"_s;
        QTest::newRow("dmi before device tree") << QByteArray("ThinkPad\n") << QByteArray("Board\0", 6) << u"ThinkPad"_s;
        QTest::newRow("no terminator") << QByteArray("Model") << none << u"Model"_s;
        QTest::newRow("one line feed dropped") << QByteArray("Model\n\n") << none << u"Model\n"_s;
        QTest::newRow("one zero byte dropped") << none << QByteArray("Model\0\0", 7) << QString(u"Model\0"_s);
        QTest::newRow("empty file") << QByteArray("") << QByteArray("Board\0", 6) << u""_s;
        QTest::newRow("not utf-8") << QByteArray("\xff\xfe Board\n") << none << QString();
        QTest::newRow("none") << none << none << QString();
    }

    void modelName()
    {
        QFETCH(QByteArray, dmi);
        QFETCH(QByteArray, deviceTree);
        QFETCH(QString, expected);
        FakeTree tree;
        tree.write(dmiModelPath, dmi);
        tree.write(deviceTreeModelPath, deviceTree);
        const QString model = tree.sysctl().modelName();
        QCOMPARE(model, expected);
        QCOMPARE(model.isNull(), expected.isNull());
    }

    void envFileValue_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("expected"); // null for "not assigned"

        QTest::newRow("double quotes") << QByteArray("NAME=\"Debian\"\nPRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n")
                                       << u"Debian GNU/Linux 12 (bookworm)"_s;
        QTest::newRow("single quotes") << QByteArray("PRETTY_NAME='Fedora Linux 39'") << u"Fedora Linux 39"_s;
        QTest::newRow("unquoted") << QByteArray("PRETTY_NAME=Arch\n") << u"Arch"_s;
        QTest::newRow("escapes") << QByteArray(R"(PRETTY_NAME="say \"hi\" \\ \$HOME")") << u"say \"hi\" \\ $HOME"_s;
        QTest::newRow("comments, blanks, last wins") << QByteArray("# PRETTY_NAME=\"old\"\n\n  \nPRETTY_NAME=one\n"
                                                                   "PRETTY_NAME=\"new\"\r\n")
                                                     << u"new"_s;
        QTest::newRow("longer key does not match") << QByteArray("PRETTY_NAME_EXTRA=x\n") << QString();
        QTest::newRow("empty value") << QByteArray("PRETTY_NAME=\n") << u""_s;
        QTest::newRow("utf-8") << QByteArray("PRETTY_NAME=\"Ubuntu \xe2\x80\x93 LTS\"\n") << u"Ubuntu \u2013 LTS"_s;
        QTest::newRow("missing") << QByteArray("NAME=Debian\n") << QString();
    }

    void envFileValue()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, expected);
        const QString value = VTSysctl::envFileValue(content, "PRETTY_NAME"_L1);
        QCOMPARE(value, expected);
        QCOMPARE(value.isNull(), expected.isNull());
    }

    void osReleaseAndMachineInfo()
    {
        const QByteArray vendor = "PRETTY_NAME=\"Vendor default\"\n";
        FakeTree tree;
        QVERIFY(tree.sysctl().distributionName().isEmpty());
        QVERIFY(tree.sysctl().prettyHostName().isEmpty());
        tree.write(u"usr/lib/os-release"_s, vendor);
        QCOMPARE(tree.sysctl().distributionName(), u"Vendor default"_s);
        // When etc/os-release exists it is the only file read, even without the entry.
        tree.write(u"etc/os-release"_s, "NAME=Custom\n");
        QVERIFY(tree.sysctl().distributionName().isEmpty());
        tree.write(u"etc/os-release"_s, "PRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n");
        QCOMPARE(tree.sysctl().distributionName(), u"Debian GNU/Linux 12 (bookworm)"_s);

        tree.write(u"etc/machine-info"_s, "CHASSIS=laptop\nPRETTY_HOSTNAME=\"Anna's Laptop\"\n");
        QCOMPARE(tree.sysctl().prettyHostName(), u"Anna's Laptop"_s);
    }

    // Each answer about this machine is checked against a different source than the one the library reads.
    void thisMachine()
    {
        const auto proc = [](const char *name) {
            return QString::fromLatin1(readSystemFile(QString::fromLatin1(name)).value_or(QByteArray()).trimmed());
        };
        QVERIFY(VeltoSystem_CPUCount() >= QThread::idealThreadCount());
        const QString memTotal = proc("/proc/meminfo").section(u'\n', 0, 0).section(u' ', -2, -2);
        QCOMPARE(VeltoSystem_RAM(), memTotal.toULongLong() * 1024);
        QCOMPARE(VeltoSystem_KernelVersionString(), proc("/proc/sys/kernel/osrelease"));
        if (sizeof(void *) == 8) // a 64-bit process can only run on a 64-bit processor
            QVERIFY(VeltoSystem_CPUIs64Bit());
        if (VTSysctl().prettyHostName().isEmpty())
            QCOMPARE(VeltoSystem_ComputerName(), proc("/proc/sys/kernel/hostname"));

        QProcess id;
        id.start(u"id"_s, {u"-un"_s});
        QVERIFY(id.waitForFinished());
        QCOMPARE(VeltoSystem_CurrentUserName(), QString::fromLocal8Bit(id.readAllStandardOutput().trimmed()));

        const QString volume = VeltoSystem_RootVolumeName();
        QVERIFY2(!volume.isEmpty() && !volume.contains(u'/'), qPrintable(volume));
    #if defined(__x86_64__)
        QCOMPARE(VeltoApplication::runningArchitectureString(), u"x86_64"_s);
        QVERIFY(VeltoApplication::isRunningIntelCode());
    #elif defined(__aarch64__)
        QCOMPARE(VeltoApplication::runningArchitectureString(), u"arm64"_s);
        QVERIFY(!VeltoApplication::isRunningIntelCode());
    #endif
    }

    void primaryLanguageCode()
    {
        VeltoTestDefaults defaults;
        QVERIFY(defaults.set(VeltoBundle::PreferredLanguagesKey, QVariantList{u"fr-CA"_s, u"en"_s}));
        QCOMPARE(VeltoSystem_PrimaryLanguageCode(), u"fr-CA"_s);

        // Without a stored list the system's languages count.
        QVERIFY(defaults->removeObjectForKey(VeltoBundle::PreferredLanguagesKey));
        QVERIFY(!VeltoSystem_PrimaryLanguageCode().isEmpty());
        QCOMPARE(VeltoSystem_PrimaryLanguageCode(), VeltoBundle::preferredLanguages().value(0));
    }
};

QTEST_GUILESS_MAIN(SystemInfoTest)
#include "systeminfotest.moc"
