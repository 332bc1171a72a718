// Archives come from anywhere. Unpacking any bytes from memory into a fresh folder must never crash,
// never create anything outside that folder, and, when it fails, leave the folder as it was (empty).
// Each run gets its own folder inside one root, removed afterwards, so the root must be empty again.
// Anything else aborts.

#include "VTArchiveExtractor_p.h"

#include <QDir>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static QTemporaryDir root;
    static const VeltoUnarchiveOptions options{64 << 20, 1000, {}};
    const QDir::Filters everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    {
        QTemporaryDir folder(root.filePath(QStringLiteral("run-XXXXXX")));
        VeltoError error;
        const bool unpacked = VTArchiveExtractor::extractMemory(QByteArrayView(data, qsizetype(size)), folder.path(),
                                                                options, &error);
        check(unpacked == error.isNull());
        check(QDir(root.path()).entryList(everything).size() == 1);
        if (!unpacked)
            check(QDir(folder.path()).entryList(everything).isEmpty());
    }
    check(QDir(root.path()).entryList(everything).isEmpty());
    return 0;
}
