// Hex text comes from users and files. The fast reader (a table over slices) and the slow one
// (character by character) must agree on every text, valid or not, and bytes written as hex must read
// back unchanged. The input is read as UTF-16 (two bytes a unit, unpaired surrogates included) so that
// every white-space and non-ASCII character can occur. Anything else aborts.

#include "ByteArray+VeltoAdditions.h"

#include <QString>

#include <cstdlib>
#include <cstring>

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QString text(qsizetype(size / 2), Qt::Uninitialized);
    std::memcpy(text.data(), data, size / 2 * 2); // the bytes need not be aligned for UTF-16
    const QByteArray fast = velto::initWithHexStringFast(text);
    const QByteArray slow = velto::initWithHexStringSlow(text);
    check(fast == slow && fast.isNull() == slow.isNull());
    check(velto::initWithHexStringSlow(QString::fromLatin1(reinterpret_cast<const char *>(data), qsizetype(size)))
          == velto::dataWithHexStringVelto(QString::fromLatin1(reinterpret_cast<const char *>(data), qsizetype(size))));

    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    check(velto::dataWithHexStringVelto(velto::lowercaseHexString(bytes)) == bytes);
    check(velto::initWithHexStringSlow(velto::unadornedLowercaseHexString(bytes)) == bytes);
    return 0;
}
