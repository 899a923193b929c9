// Feeds arbitrary bytes to the reader of forms and checks what the toolkit's form loader, which trusts what
// it reads, would get: XML of a bounded depth that names each object once.

#include "platform/qt/FormFile.h"

#include <QXmlStreamReader>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace
{

bool isSound(const FormFile& form)
{
    QXmlStreamReader xml(form.document);
    std::size_t depth = 0;
    std::size_t widgets = 0;
    std::size_t objects = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        depth -= xml.isEndElement() ? 1 : 0;
        if (!xml.isStartElement()) {
            continue;
        }
        ++depth;
        if (xml.name() == QLatin1String("widget")) {
            ++widgets;
            const QString name = xml.attributes().value(QLatin1String("class")).toString();
            if (name.startsWith(u'#') && name != u'#' + QString::number(objects++)) {
                return false;
            }
        }
        if (depth > FormFile::kMaxDepth || widgets > FormFile::kMaxWidgets) {
            return false;
        }
    }
    return !xml.hasError() && objects == form.objects.size();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const FormFile form = readForm(
        bytes, [](const QString& name) { return name.startsWith(u'Q'); },
        [](const QString& text) { return text + QStringLiteral("\x01<]]>&"); });
    if (form.problem.isEmpty() && !isSound(form)) {
        std::fprintf(stderr, "broken promise: a form that is read is sound\n");
        std::abort();
    }
    return 0;
}
