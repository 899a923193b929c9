#include "platform/qt/FormFile.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace
{

/// What layouts go by, which is the toolkit's to know of any widget.
constexpr std::array kOfLayouts{u"geometry", u"sizePolicy", u"minimumSize", u"maximumSize",
                                u"layoutDirection"};
/// What a view has of what the toolkit knows of any widget.
constexpr std::array kOfViews{u"visible", u"toolTip", u"accessibleName"};
constexpr std::array kLayouts{u"QVBoxLayout", u"QHBoxLayout", u"QGridLayout", u"QFormLayout"};
/// Widgets with a layout of their own.
constexpr std::array kContainers{u"QDockWidget", u"QMainWindow",    u"QMdiArea", u"QScrollArea", u"QSplitter",
                                 u"QTabWidget",  u"QStackedWidget", u"QToolBox", u"QWizard"};
constexpr std::array kPlaces{u"row", u"column", u"rowspan", u"colspan"};
constexpr std::array kLengths{u"x", u"y", u"width", u"height"};
constexpr QLatin1String kGroup("buttonGroup");
constexpr std::array kCounts{u"rowCount", u"columnCount"};

template <std::size_t Count> bool isIn(const std::array<const char16_t*, Count>& names, QStringView name)
{
    return std::ranges::any_of(names, [&](QStringView each) { return each == name; });
}

bool isTranslated(const QXmlStreamAttributes& attributes)
{
    return attributes.value(QLatin1String("notr")) != QLatin1String("true");
}

/// The form loader takes names of elements in either case.
QString kindOf(const QXmlStreamReader& xml)
{
    return xml.name().toString().toLower();
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
    const QString family = element.part("family"); // none if only the rest was changed
    return FormFont{(family.isEmpty() ? QStringLiteral("Arial") : family) +
                        QLatin1String(element.has("bold") ? " Bold" : "") +
                        QLatin1String(element.has("italic") ? " Italic" : ""),
                    element.part("pointsize").toDouble()};
}

/// The number that a text is; -1 if it is none.
int countOf(QStringView text)
{
    bool isNumber = false;
    const int number = text.trimmed().toInt(&isNumber);
    return isNumber ? number : -1;
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
        QString className = {};  // of the widget
        bool isPlainTop = false; // a plain widget at the top
        bool isTaken = false;    // by a layout, or a scroll area by the widget that it scrolls
        int layouts = 0;         // around what is in it, up to the next widget
        int rows = 0;            // and columns, of a table, so far
        int columns = 0;
        std::size_t object = kNone; // that the widget is
    };

    void start();
    void startWidget(Open& element);
    /// Reads the property that has begun if it is not the toolkit's. Whether it is not.
    bool readProperty(const Open& widget);
    /// Reads the element that has begun to its end.
    Element readElement();
    /// Reads the property or attribute that has begun to its end; answers its value.
    Element readValue();
    void write(const char* element, const QString& name, const char* kind, const QString& text);
    FormValue valueOf(const Element& element) const;
    void copyStart();
    void copyText();
    void copyLength();
    /// Makes up for the line ends of what was not copied, so that the form loader counts lines as we do.
    void keepLine();
    QString shown(const QString& text) const { return text.isEmpty() ? text : _translate(text); }

    void expect(bool isSo, const char* otherwise);
    // What the form loader would crash by, or hang.
    void expectLayout();
    void expectFree();
    void expectRows(int number);

    QXmlStreamReader _xml;
    FormFile _form;
    QXmlStreamWriter _writer;
    const std::function<bool(const QString&)>& _isOfToolkit;
    const std::function<QString(const QString&)>& _translate;
    std::vector<Open> _open{Open()}; // first, what is around the form
    qint64 _line = 1;                // of the document
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
            _line += _xml.text().count(u'\n');
            break;
        default:
            break; // comments, and entities, which have been put in by now
        }
    }
    if (!_xml.hasError()) {
        expect(_widgets > 0, "there is no widget");
    }
    if (_xml.hasError()) {
        _form.problem = QStringLiteral("%1: %2").arg(QString::number(_xml.lineNumber()), _xml.errorString());
    }
    return std::move(_form);
}

void FormReader::start()
{
    const QString kind = kindOf(_xml);
    const auto is = [&](const char* name) { return kind == QLatin1String(name); };
    const bool isForm =
        is("ui") && _xml.attributes().value(QLatin1String("version")).startsWith(QLatin1String("4."));
    expect(_open.size() > 1 || isForm, "this is no form, or one of another version than 4");
    expect(_open.size() <= FormFile::kMaxDepth, "elements are nested too deeply");
    Open& around = _open.back();
    if (is("customwidgets")) {
        _xml.skipCurrentElement(); // what a class is like, its table says
    } else if (is("tabstops")) {
        for (const auto& [part, name] : readElement().parts) {
            _form.tabStops += name;
        }
    } else if (is("string")) {
        copyText();
    } else if (isIn(kLengths, kind)) {
        copyLength();
    } else if (is("attribute") && _xml.attributes().value(QLatin1String("name")) == kGroup) {
        write("attribute", kGroup, "string", readValue().text); // which the form loader takes for granted
    } else if (!is("property") || !around.isWidget || !readProperty(around)) {
        Open element;
        if (is("widget")) {
            startWidget(element);
        } else {
            element.layouts = around.layouts;
            if (is("layout")) {
                expectLayout();
                ++element.layouts;
            } else if (is("row")) {
                expectRows(++around.rows);
            } else if (is("column")) {
                expectRows(++around.columns);
            }
            copyStart();
        }
        _open.push_back(element);
    }
}

void FormReader::startWidget(Open& element)
{
    const bool isTop = _open.size() == 2;
    ++_widgets;
    expect(_widgets <= FormFile::kMaxWidgets && (!isTop || _widgets == 1), "there are too many widgets");
    if (_open.back().className == QLatin1String("QScrollArea")) {
        expectFree();
    }
    const QString className = _xml.attributes().value(QLatin1String("class")).toString();
    const QString name = _xml.attributes().value(QLatin1String("name")).toString();
    element.isWidget = true;
    element.className = className;
    element.isPlainTop = isTop && className == QLatin1String("QWidget");
    if (!element.isPlainTop && _isOfToolkit(className)) {
        copyStart();
        return;
    }
    element.object = _form.objects.size();
    _form.objects.push_back({className, name, _xml.lineNumber(), {}});
    keepLine();
    _writer.writeStartElement(QStringLiteral("widget"));
    _writer.writeAttribute(QStringLiteral("class"), QLatin1Char('#') + QString::number(element.object));
    _writer.writeAttribute(QStringLiteral("name"), name);
}

bool FormReader::readProperty(const Open& widget)
{
    const bool isTop = _open.size() == 3;
    const QString name = _xml.attributes().value(QLatin1String("name")).toString();
    const bool isTitle = isTop && name == QLatin1String("windowTitle");
    const bool isOfObject =
        widget.isPlainTop ? isIn(kOfViews, name) : widget.object != kNone && !isIn(kOfLayouts, name);
    const bool isCount = !isOfObject && isIn(kCounts, name);
    if (!isTitle && !isOfObject && !isCount) {
        return false;
    }
    const qint64 line = _xml.lineNumber();
    const Element element = readValue();
    if (isCount) {
        expectRows(countOf(element.text));
        write("property", name, "number", element.text);
    } else if (isTitle) {
        const FormValue value = valueOf(element);
        const auto* const text = std::get_if<FormText>(&value);
        _form.windowTitle = text != nullptr ? text->shown : QString();
    } else {
        _form.objects[widget.object].properties.push_back({name, line, valueOf(element)});
    }
    return true;
}

Element FormReader::readValue()
{
    std::vector<Element> elements;
    while (_xml.readNextStartElement()) {
        elements.push_back(readElement());
    }
    return elements.empty() ? Element() : elements.front();
}

void FormReader::write(const char* element, const QString& name, const char* kind, const QString& text)
{
    _writer.writeStartElement(QLatin1String(element));
    _writer.writeAttribute(QStringLiteral("name"), name);
    _writer.writeTextElement(QLatin1String(kind), text);
    _writer.writeEndElement();
}

Element FormReader::readElement()
{
    Element element{kindOf(_xml), _xml.attributes()};
    while (!_xml.atEnd() && _xml.readNext() != QXmlStreamReader::EndElement) {
        if (_xml.isStartElement()) {
            const QString kind = kindOf(_xml);
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
    if (is("number", "uint", "longlong", "ulonglong")) {
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
    if (is("cstring")) {
        return FormText{element.text, element.text};
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
            expectRows(countOf(attribute.value()));
        }
    }
    keepLine();
    _writer.writeStartElement(kindOf(_xml));
    _writer.writeAttributes(attributes);
}

void FormReader::keepLine()
{
    for (; _line < _xml.lineNumber(); ++_line) {
        _writer.writeCharacters(QStringLiteral("\n"));
    }
}

void FormReader::copyText()
{
    _writer.writeStartElement(QStringLiteral("string"));
    const bool translated = isTranslated(_xml.attributes());
    const QString text = _xml.readElementText(QXmlStreamReader::SkipChildElements);
    _writer.writeCharacters(translated ? shown(text) : text);
    _writer.writeEndElement();
}

void FormReader::copyLength()
{
    const Element element = readElement();
    expect(std::abs(element.text.toDouble()) <= FormFile::kMaxLength, "a length is too large");
    _writer.writeTextElement(element.kind, element.text);
}

void FormReader::expect(bool isSo, const char* otherwise)
{
    if (!isSo) {
        _xml.raiseError(QLatin1String(otherwise));
    }
}

void FormReader::expectLayout()
{
    const Open& around = _open.back();
    expectFree();
    expect(around.layouts < FormFile::kMaxLayouts, "layouts are nested too deeply");
    expect(!isIn(kContainers, around.className) &&
               isIn(kLayouts, _xml.attributes().value(QLatin1String("class"))),
           "there can be no such layout");
}

void FormReader::expectFree()
{
    expect(!std::exchange(_open.back().isTaken, true), "there is one too many inside");
}

void FormReader::expectRows(int number)
{
    expect(number >= 0 && number <= FormFile::kMaxRows, "there cannot be so many rows or columns");
}

} // namespace

FormFile readForm(const QByteArray& bytes, const std::function<bool(const QString&)>& isOfToolkit,
                  const std::function<QString(const QString&)>& translate)
{
    return FormReader(bytes, isOfToolkit, translate).read();
}
