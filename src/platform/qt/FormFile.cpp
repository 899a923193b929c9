#include "platform/qt/FormFile.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <utility>

namespace
{

/// What layouts go by, which is the toolkit's to know of any widget.
constexpr std::array kOfLayouts{u"geometry", u"sizePolicy", u"minimumSize", u"maximumSize",
                                u"layoutDirection"};
constexpr std::array kPlaces{u"row", u"column", u"rowspan", u"colspan"};
constexpr std::array kCounts{u"rowCount", u"columnCount"};

template <std::size_t Count> bool isIn(const std::array<const char16_t*, Count>& names, QStringView name)
{
    return std::ranges::any_of(names, [&](QStringView each) { return each == name; });
}

bool isTranslated(const QXmlStreamAttributes& attributes)
{
    return attributes.value(QLatin1String("notr")) != QLatin1String("true");
}

/// Without the characters that XML has no form for.
QString writable(QString text)
{
    text.removeIf([](QChar character) {
        const char16_t unit = character.unicode();
        return (unit < u' ' && unit != u'\t' && unit != u'\n' && unit != u'\r') || unit >= 0xfffe;
    });
    return text;
}

/// An element that holds a text, further elements that do, or both.
struct Element {
    QString kind;
    QXmlStreamAttributes attributes;
    QString text = {};
    std::vector<std::pair<QString, QString>> parts = {}; // kind and text

    QString part(const char* name) const
    {
        const auto found = std::ranges::find(parts, QLatin1String(name), &std::pair<QString, QString>::first);
        return found != parts.end() ? found->second : QString();
    }
    bool has(const char* name) const { return part(name) == QLatin1String("true"); }
};

template <class Number> FormValue numberOr(bool isNumber, Number number)
{
    return isNumber ? FormValue(number) : FormValue();
}

FormValue colorOf(const Element& element)
{
    constexpr double kMost = 255.0;
    bool isWhole = true;
    const auto component = [&](const QString& text) {
        bool isNumber = false;
        const int number = text.toInt(&isNumber);
        isWhole = isWhole && isNumber && number >= 0 && number <= kMost;
        return number / kMost;
    };
    const QString alpha = element.attributes.value(QLatin1String("alpha")).toString();
    const FormColor color{component(element.part("red")), component(element.part("green")),
                          component(element.part("blue")), alpha.isEmpty() ? 1.0 : component(alpha)};
    return isWhole ? FormValue(color) : FormValue();
}

FormValue fontOf(const Element& element)
{
    QString name = element.part("family");
    if (!name.isEmpty()) {
        name += QLatin1String(element.has("bold") ? " Bold" : "") +
                QLatin1String(element.has("italic") ? " Italic" : "");
    }
    return FormFont{name, element.part("pointsize").toDouble()};
}

class FormReader
{
public:
    FormReader(const QByteArray& bytes, const std::function<bool(const QString&)>& isOfToolkit,
               const std::function<QString(const QString&)>& translate)
        : _xml(bytes), _writer(&_form.document), _isOfToolkit(isOfToolkit), _translate(translate)
    {
    }

    FormFile read();

private:
    static constexpr std::size_t kNone = ~std::size_t{0};

    /// An element that has begun, and not ended.
    struct Open {
        bool isWidget = false;
        std::size_t object = kNone; // that the widget is, if the properties are the object's
        bool isTranslated = true;   // what is inside
    };

    void start();
    void startWidget(Open& element);
    /// Reads the property that has begun if it is not the toolkit's. Whether it is not.
    bool readProperty(const Open& widget);
    /// Reads the element that has begun to its end.
    Element readElement();
    FormValue valueOf(const Element& element) const;
    void copyStart();
    void copyText(bool isTranslated);
    QString shown(const QString& text) const { return text.isEmpty() ? text : _translate(text); }
    void expectRows(QStringView number);

    QXmlStreamReader _xml;
    FormFile _form;
    QXmlStreamWriter _writer;
    const std::function<bool(const QString&)>& _isOfToolkit;
    const std::function<QString(const QString&)>& _translate;
    std::vector<Open> _open;
    std::size_t _widgets = 0;
};

FormFile FormReader::read()
{
    while (!_xml.atEnd()) {
        switch (_xml.readNext()) {
        case QXmlStreamReader::StartElement:
            start();
            break;
        case QXmlStreamReader::EndElement:
            _open.pop_back();
            _writer.writeEndElement();
            break;
        case QXmlStreamReader::Characters:
            _writer.writeCharacters(_xml.text().toString());
            break;
        default:
            break; // comments, and entities, which have been put in by now
        }
    }
    if (!_xml.hasError() && _widgets == 0) {
        _xml.raiseError(QStringLiteral("there is no widget"));
    }
    if (_xml.hasError()) {
        _form.problem = QStringLiteral("%1: %2").arg(QString::number(_xml.lineNumber()), _xml.errorString());
    }
    return std::move(_form);
}

void FormReader::start()
{
    if (_open.size() == FormFile::kMaxDepth) {
        _xml.raiseError(QStringLiteral("elements are nested too deeply"));
        return;
    }
    const Open around = _open.empty() ? Open() : _open.back();
    const QStringView kind = _xml.name();
    Open element;
    element.isTranslated = around.isTranslated && isTranslated(_xml.attributes());
    if (kind == QLatin1String("customwidgets")) {
        _xml.skipCurrentElement(); // what a class is like, its table says
    } else if (kind == QLatin1String("string")) {
        copyText(element.isTranslated);
    } else if (kind != QLatin1String("property") || !around.isWidget || !readProperty(around)) {
        if (kind == QLatin1String("widget")) {
            startWidget(element);
        } else {
            copyStart();
        }
        _open.push_back(element);
    }
}

void FormReader::startWidget(Open& element)
{
    const bool isTop = _open.size() == 1;
    if (++_widgets > FormFile::kMaxWidgets || (isTop && _widgets > 1)) {
        _xml.raiseError(QStringLiteral("there are too many widgets"));
    }
    element.isWidget = true;
    const QString className = _xml.attributes().value(QLatin1String("class")).toString();
    const bool isPlainTop = isTop && className == QLatin1String("QWidget");
    if (!isPlainTop && _isOfToolkit(className)) {
        copyStart();
        return;
    }
    const std::size_t object = _form.objects.size();
    element.object = isPlainTop ? kNone : object;
    const QString name = _xml.attributes().value(QLatin1String("name")).toString();
    _form.objects.push_back({className, name, _xml.lineNumber(), {}});
    _writer.writeStartElement(QStringLiteral("widget"));
    _writer.writeAttribute(QStringLiteral("class"), QLatin1Char('#') + QString::number(object));
    _writer.writeAttribute(QStringLiteral("name"), name);
}

bool FormReader::readProperty(const Open& widget)
{
    const bool isTop = _open.size() == 2;
    const QString name = _xml.attributes().value(QLatin1String("name")).toString();
    const bool isTitle = isTop && name == QLatin1String("windowTitle");
    const bool isOfObject = widget.object != kNone && !isIn(kOfLayouts, name);
    const bool isCount = !isOfObject && isIn(kCounts, name);
    if (!isTitle && !isOfObject && !isCount) {
        return false;
    }
    const qint64 line = _xml.lineNumber();
    std::vector<Element> elements;
    while (_xml.readNextStartElement()) {
        elements.push_back(readElement());
    }
    const Element element = elements.empty() ? Element() : elements.front();
    const FormValue value = valueOf(element);
    if (isTitle) {
        const auto* const text = std::get_if<FormText>(&value);
        _form.windowTitle = text != nullptr ? text->shown : QString();
    } else if (isOfObject) {
        _form.objects[widget.object].properties.push_back({name, line, value});
    } else {
        expectRows(element.text);
        _writer.writeStartElement(QStringLiteral("property"));
        _writer.writeAttribute(QStringLiteral("name"), name);
        _writer.writeTextElement(QStringLiteral("number"), element.text);
        _writer.writeEndElement();
    }
    return true;
}

Element FormReader::readElement()
{
    Element element{_xml.name().toString(), _xml.attributes()};
    while (!_xml.atEnd() && _xml.readNext() != QXmlStreamReader::EndElement) {
        if (_xml.isStartElement()) {
            const QString kind = _xml.name().toString();
            element.parts.emplace_back(kind, _xml.readElementText(QXmlStreamReader::SkipChildElements));
        } else if (_xml.isCharacters()) {
            element.text += _xml.text();
        }
    }
    return element;
}

FormValue FormReader::valueOf(const Element& element) const
{
    const QString& kind = element.kind;
    const auto is = [&](auto... kinds) { return ((kind == QLatin1String(kinds)) || ...); };
    const QString trimmed = element.text.trimmed();
    bool isNumber = false;
    if (is("bool")) {
        const bool isTrue = trimmed == QLatin1String("true");
        return numberOr(isTrue || trimmed == QLatin1String("false"), qint64{isTrue});
    }
    if (is("number", "uInt", "longLong", "uLongLong")) {
        const qint64 number = trimmed.toLongLong(&isNumber);
        return numberOr(isNumber, number);
    }
    if (is("double", "float")) {
        const double number = trimmed.toDouble(&isNumber);
        return numberOr(isNumber, number);
    }
    if (is("string")) {
        return FormText{element.text, isTranslated(element.attributes) ? shown(element.text) : element.text};
    }
    if (is("cstring", "enum", "set")) {
        return FormText{element.text, element.text};
    }
    if (is("url")) {
        return FormText{element.part("string"), element.part("string")};
    }
    if (is("stringlist")) {
        QStringList texts;
        for (const auto& [part, text] : element.parts) {
            texts += isTranslated(element.attributes) ? shown(text) : text;
        }
        return texts;
    }
    if (is("pixmap", "iconset")) {
        const QString normal = element.part("normaloff");
        return FormPicture{normal.isEmpty() ? trimmed : normal};
    }
    return is("color") ? colorOf(element) : is("font") ? fontOf(element) : FormValue();
}

void FormReader::copyStart()
{
    const QXmlStreamAttributes attributes = _xml.attributes();
    for (const QXmlStreamAttribute& attribute : attributes) {
        if (isIn(kPlaces, attribute.name())) {
            expectRows(attribute.value());
        }
    }
    _writer.writeStartElement(_xml.name().toString());
    _writer.writeAttributes(attributes);
}

void FormReader::copyText(bool isTranslated)
{
    _writer.writeStartElement(QStringLiteral("string"));
    const QString text = _xml.readElementText(QXmlStreamReader::SkipChildElements);
    _writer.writeCharacters(isTranslated ? writable(shown(text)) : text);
    _writer.writeEndElement();
}

void FormReader::expectRows(QStringView number)
{
    bool isNumber = false;
    const int rows = number.trimmed().toInt(&isNumber);
    if (!isNumber || rows < 0 || rows > FormFile::kMaxRows) {
        _xml.raiseError(QStringLiteral("there cannot be so many rows or columns"));
    }
}

} // namespace

FormFile readForm(const QByteArray& bytes, const std::function<bool(const QString&)>& isOfToolkit,
                  const std::function<QString(const QString&)>& translate)
{
    return FormReader(bytes, isOfToolkit, translate).read();
}
