#include "VTTextDecoding_p.h"

#include <QStringDecoder>

using namespace Qt::StringLiterals;

QString VTStringFromUtf8ThenAscii(QByteArrayView bytes)
{
    if (bytes.isEmpty())
        return u""_s;
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    return utf8.hasError() ? QString() : text;
}
