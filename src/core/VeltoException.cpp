#include "VeltoException.h"

#include <QList>

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>

#include <cstdlib>
#include <cstring>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int MaximumFrames = 128;

QString demangled(const char *symbol)
{
    int status = 0;
    std::unique_ptr<char, void (*)(void *)> text(abi::__cxa_demangle(symbol, nullptr, nullptr, &status), std::free);
    return QString::fromUtf8(status == 0 && text ? text.get() : symbol);
}

// One frame as "index  binary  symbol + offset"; frames in stripped or hidden code show their address.
QString symbolisedFrame(int index, quintptr address)
{
    Dl_info info{};
    // A return address points just past the call; look up the byte before it so the call's own
    // function is named even when the call is the last instruction of that function.
    const void *lookup = reinterpret_cast<const void *>(address > 0 ? address - 1 : address);
    const QString number = QString::number(index).leftJustified(4);
    if (dladdr(lookup, &info) == 0 || info.dli_fname == nullptr)
        return u"%1??  0x%2"_s.arg(number).arg(address, 0, 16);
    QString binary = QString::fromUtf8(info.dli_fname);
    binary = binary.mid(binary.lastIndexOf(u'/') + 1);
    // Without a visible symbol, the offset into the binary is what addr2line needs.
    if (info.dli_sname == nullptr)
        return u"%1%2  + 0x%3"_s.arg(number, binary).arg(address - reinterpret_cast<quintptr>(info.dli_fbase), 0, 16);
    const quintptr offset = address - reinterpret_cast<quintptr>(info.dli_saddr);
    return u"%1%2  %3 + %4"_s.arg(number, binary, demangled(info.dli_sname)).arg(offset);
}

bool isConstructorFrame(const void *returnAddress)
{
    Dl_info info{};
    const auto *lookup = static_cast<const char *>(returnAddress) - 1;
    return dladdr(lookup, &info) != 0 && info.dli_sname != nullptr
        && std::strncmp(info.dli_sname, "_ZN14VeltoExceptionC", 20) == 0;
}

} // namespace

class VeltoException::Private
{
public:
    QString name;
    QString reason;
    QList<quintptr> addresses;
    QByteArray what;
};

VeltoException::VeltoException(const QString &name, const QString &reason) : d(new Private)
{
    d->name = name;
    d->reason = reason;
    void *frames[MaximumFrames];
    const int count = backtrace(frames, MaximumFrames);
    // The stack starts at the code that made the exception: skip this constructor's frames (one, or
    // two where the compiler keeps the complete-object and base-object constructors apart).
    int first = 1;
    while (first < count && isConstructorFrame(frames[first]))
        ++first;
    for (int i = first; i < count; ++i)
        d->addresses.append(reinterpret_cast<quintptr>(frames[i]));
    d->what = description().toUtf8();
}

VeltoException::~VeltoException()
{
    delete d;
}

VeltoException::VeltoException(const VeltoException &other) : std::exception(other), d(new Private(*other.d)) {}

VeltoException &VeltoException::operator=(const VeltoException &other)
{
    if (this != &other)
        *d = *other.d;
    return *this;
}

QString VeltoException::name() const
{
    return d->name;
}

QString VeltoException::reason() const
{
    return d->reason;
}

QString VeltoException::description() const
{
    return u"%1: %2"_s.arg(d->name, d->reason);
}

QStringList VeltoException::callStackSymbols() const
{
    QStringList lines;
    lines.reserve(d->addresses.size());
    for (int i = 0; i < d->addresses.size(); ++i)
        lines.append(symbolisedFrame(i, d->addresses.at(i)));
    return lines;
}

QList<quintptr> VeltoException::callStackReturnAddresses() const
{
    return d->addresses;
}

const char *VeltoException::what() const noexcept
{
    return d->what.constData();
}
