#include "platform/qt/UriList.h"

#include <QStringDecoder>
#include <QUrl>

#include <algorithm>

namespace
{

/// Calls `take` with one URL after the other until it answers false.
template <class Take> void forEachUrl(QByteArrayView list, Take take)
{
    while (!list.isEmpty()) {
        const qsizetype end = list.indexOf('\n');
        QByteArrayView line = end < 0 ? list : list.first(end);
        list = end < 0 ? QByteArrayView() : list.sliced(end + 1);
        if (line.endsWith('\r')) {
            line.chop(1);
        }
        if (!line.isEmpty() && !line.startsWith('#') && !take(line)) {
            return;
        }
    }
}

/// Empty for bytes that are not valid UTF-8.
QString decoded(QByteArrayView utf8)
{
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(utf8);
    return decoder.hasError() ? QString() : text;
}

/// Empty for what is no path on this computer.
QString fileNameOf(QByteArrayView line, const QString& host)
{
    const QUrl url(decoded(line), QUrl::TolerantMode);
    const bool here = url.host().isEmpty() || url.host() == QLatin1String("localhost") ||
                      url.host().compare(host, Qt::CaseInsensitive) == 0;
    if (url.scheme() != QLatin1String("file") || !here || url.hasQuery() || url.hasFragment()) {
        return {};
    }
    // Decoded here, since Qt puts something in the place of bytes that are no text.
    QString path = decoded(QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()));
    return path.startsWith(u'/') && !path.contains(QChar::Null) ? path : QString();
}

} // namespace

QString firstUrlIn(QByteArrayView list)
{
    QString first;
    forEachUrl(list, [&](QByteArrayView line) {
        first = decoded(line);
        return false;
    });
    return first;
}

std::vector<QString> fileNamesIn(QByteArrayView list, const QString& host)
{
    std::vector<QString> names;
    forEachUrl(list, [&](QByteArrayView line) {
        if (QString name = fileNameOf(line, host); !name.isEmpty()) {
            names.push_back(std::move(name));
        }
        return true;
    });
    return names;
}
