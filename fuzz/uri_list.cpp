// Feeds arbitrary bytes to the reader of the lists that drags bring and checks that the names of files which
// are written out again, with every byte encoded, read the same.

#include "platform/qt/UriList.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView list(data, static_cast<qsizetype>(size));
    const QString host = QStringLiteral("here");
    const std::vector<QString> names = fileNamesIn(list, host);
    QByteArray written;
    bool sound = firstUrlIn(list).isValidUtf16();
    for (const QString& name : names) {
        sound = sound && name.startsWith(u'/') && !name.contains(QChar::Null) && name.isValidUtf16();
        written += "file://" + name.toUtf8().toPercentEncoding("/") + "\r\n";
    }
    if (!sound || fileNamesIn(written, host) != names) {
        std::fprintf(stderr,
                     "broken promise: file names are absolute texts that read the same when written\n");
        std::abort();
    }
    return 0;
}
