#include "platform/appkit/NSNib.h"

#include "platform/appkit/NSBox.h"
#include "platform/appkit/NSButton.h"
#include "platform/appkit/NSButtonCell.h"
#include "platform/appkit/NSComboBox.h"
#include "platform/appkit/NSImageCell.h"
#include "platform/appkit/NSOutlineView.h"
#include "platform/appkit/NSScrollView.h"
#include "platform/appkit/NSTableColumn.h"
#include "platform/appkit/NSTableHeaderCell.h"
#include "platform/appkit/NSTableHeaderView.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSArray.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/FormFile.h"
#include "platform/qt/ViewPeer.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QUiLoader>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace
{

constexpr std::array kClasses{
    &NSBox::table,        &NSButton::table,      &NSButtonCell::table,      &NSCell::table,
    &NSComboBox::table,   &NSControl::table,     &NSImageCell::table,       &NSOutlineView::table,
    &NSScrollView::table, &NSTableColumn::table, &NSTableHeaderCell::table, &NSTableHeaderView::table,
    &NSTableView::table,  &NSTextField::table,   &NSTextFieldCell::table,   &NSView::table,
};

/// A text of the file for a line of a report.
std::string printable(const QString& text)
{
    constexpr qsizetype kLongest = 100;
    QString shown = text.left(kLongest);
    std::ranges::replace_if(
        shown, [](QChar character) { return !character.isPrint(); }, QChar(u'?'));
    return shown.toStdString();
}

/// The toolkit's form loader, with objects for the classes that it does not know.
class FormLoader final : public QUiLoader
{
public:
    using Maker = std::function<QWidget*(std::size_t object, QWidget* parent)>;

    explicit FormLoader(Maker maker) : _maker(std::move(maker))
    {
        clearPluginPaths(); // a form brings no code
        setTranslationEnabled(false);
    }

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override
    {
        return className.startsWith(u'#') ? _maker(className.mid(1).toULongLong(), parent)
                                          : QUiLoader::createWidget(className, parent, name);
    }

private:
    Maker _maker;
};

} // namespace

/// What is made of a form at a time.
class NSNib::Instance
{
public:
    Instance(NSNib& nib, NSObject* owner) : _nib(nib), _owner(owner) {}

    Ref<NSView> make();

private:
    struct Made {
        Ref<NSObject> object;     // null unless the loader has come to it
        QPointer<QWidget> widget; // null when the toolkit has destroyed it
        /// Whether the widget only keeps the place of an object that has no widget of its own, or another in
        /// the end.
        bool isStandIn = false;
    };

    void report(std::size_t place, const std::string& problem) const;

    QWidget* makeObject(std::size_t place, QWidget* parent);
    Ref<NSView> viewAtTop(QWidget* top);

    void nameObjects();
    Ref<NSObject> objectNamed(const QString& name) const;
    void setProperties();
    /// Why the property cannot be set; empty if it has been.
    std::string setProperty(NSObject& object, const FormProperty& property);
    std::string setText(NSObject& object, const PropertyEntry& entry, const FormText& text);
    Ref<NSImage> imageAt(const QString& path);

    /// Puts the objects whose widgets are in `widget` into `around`.
    void putInside(QWidget& widget, NSObject& around);
    /// Whether the one object can be put into the other.
    bool put(const Made& made, NSObject& around);

    void connectOwner();
    void awake() const;

    NSNib& _nib;
    NSObject* _owner;
    FormFile _form;
    std::vector<Made> _made; // for each object of the form
    std::map<QString, Ref<NSObject>> _named;
    std::map<QString, Ref<NSImage>> _images;
};

void NSNib::Instance::report(std::size_t place, const std::string& problem) const
{
    const FormObject& object = _form.objects[place];
    diagnose("instantiateWithOwner", _nib._path + ':' + std::to_string(object.line) + ": " +
                                         printable(object.className) + " \"" + printable(object.name) +
                                         "\": " + problem);
}

Ref<NSView> NSNib::Instance::make()
{
    FormLoader loader([this](std::size_t place, QWidget* parent) { return makeObject(place, parent); });
    QStringList classesOfToolkit = loader.availableWidgets();
    classesOfToolkit.sort();
    _form = readForm(
        QByteArray::fromRawData(_nib._bytes.data(), static_cast<qsizetype>(_nib._bytes.size())),
        [&](const QString& name) {
            return _nib.classNamed(name.toStdString()) == nullptr &&
                   std::ranges::binary_search(classesOfToolkit, name);
        },
        [&](const QString& text) {
            const Ref<NSString> shown = _nib._translation ? _nib._translation(fromQt(text).get()) : nullptr;
            return shown ? toQt(*shown) : text;
        });
    QWidget* top = nullptr;
    if (_form.problem.isEmpty()) {
        _made.resize(_form.objects.size());
        loader.setWorkingDirectory(QFileInfo(QString::fromStdString(_nib._path)).dir());
        QBuffer document(&_form.document);
        document.open(QIODevice::ReadOnly);
        top = loader.load(&document);
        _form.problem = top == nullptr ? loader.errorString() : QString();
    }
    if (top == nullptr) {
        diagnose("instantiateWithOwner", _nib._path + ": " + printable(_form.problem));
        return nullptr;
    }
    _nib._windowTitle = fromQt(_form.windowTitle);

    nameObjects();
    setProperties();
    Ref<NSView> view = viewAtTop(top);
    auto& peer = static_cast<ViewPeer&>(*view->widget());
    // Lays everything out as for a picture, of nothing.
    peer.grab(QRect(QPoint(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX), QSize(-1, -1)));
    view->setFrame(fromQt(QRectF(QPointF(), peer.size())));
    putInside(peer, *view);
    for (const Made& made : _made) {
        if (made.isStandIn) {
            delete made.widget;
        }
    }
    connectOwner();
    awake();
    return view;
}

QWidget* NSNib::Instance::makeObject(std::size_t place, QWidget* parent)
{
    Made& made = _made[place];
    const QString& name = _form.objects[place].className;
    const ClassTable* table = _nib.classNamed(name.toStdString());
    if (table == nullptr) {
        table = &NSView::table;
        if (name != QLatin1String("QWidget")) {
            report(place, "there is no such class");
        }
    }
    made.object = table->factory();
    auto* const view = dynamic_cast<NSView*>(made.object.get());
    // A table and its header show by widgets of the toolkit's, once they are where they belong.
    made.isStandIn = view == nullptr || dynamic_cast<NSTableView*>(view) != nullptr ||
                     dynamic_cast<NSTableHeaderView*>(view) != nullptr;
    made.widget = made.isStandIn ? new QWidget : view->widget();
    made.widget->setParent(parent);
    return made.widget;
}

Ref<NSView> NSNib::Instance::viewAtTop(QWidget* top)
{
    if (auto* const peer = dynamic_cast<ViewPeer*>(top)) {
        return {peer->view()};
    }
    Ref<NSView> view = ::make<NSView>();
    auto* const layout = new QVBoxLayout(view->widget());
    layout->setContentsMargins({});
    const QSize size = top->testAttribute(Qt::WA_Resized) ? top->size() : top->sizeHint();
    top->setParent(view->widget(), Qt::Widget);
    layout->addWidget(top);
    view->widget()->resize(size);
    return view;
}

// Names

void NSNib::Instance::nameObjects()
{
    for (const auto& [name, object] : _nib._objects) {
        _named[QString::fromStdString(name)] = object;
    }
    if (_owner != nullptr) {
        _named[QString::fromUtf8(kOwnerName.data(), kOwnerName.size())] = _owner;
    }
    for (std::size_t place = 0; place < _made.size(); ++place) {
        const QString& name = _form.objects[place].name;
        if (_made[place].object && !name.isEmpty() && !_named.emplace(name, _made[place].object).second) {
            report(place, "another object has that name");
        }
    }
}

Ref<NSObject> NSNib::Instance::objectNamed(const QString& name) const
{
    const auto found = _named.find(name);
    return found != _named.end() ? found->second : nullptr;
}

// Properties

void NSNib::Instance::setProperties()
{
    // One may wait for another: the name of an action for the target.
    struct Waiting {
        std::size_t place;
        const FormProperty* property;
    };
    std::vector<Waiting> waiting;
    for (std::size_t place = 0; place < _made.size(); ++place) {
        for (const FormProperty& property : _form.objects[place].properties) {
            if (_made[place].object && !setProperty(*_made[place].object, property).empty()) {
                waiting.push_back({place, &property});
            }
        }
    }
    for (const auto& [place, property] : waiting) {
        const std::string problem = setProperty(*_made[place].object, *property);
        if (!problem.empty()) {
            report(place, printable(property->name) + ": " + problem);
        }
    }
}

std::string NSNib::Instance::setProperty(NSObject& object, const FormProperty& property)
{
    const ClassTable& table = object.classTable();
    const std::string name = property.name.toStdString();
    const PropertyEntry* entry = table.findProperty(name);
    FormValue value = property.value;
    if (entry == nullptr && name == "accessibleName") {
        entry = table.findProperty("accessibilityLabel");
    } else if (entry == nullptr && name == "visible") {
        entry = table.findProperty("hidden");
        if (auto* const visible = std::get_if<qint64>(&value)) {
            *visible = *visible == 0 ? 1 : 0;
        }
    }
    if (entry == nullptr) {
        return QWidget::staticMetaObject.indexOfProperty(name.c_str()) < 0 ? "there is no such property" : "";
    }
    if (const auto* const text = std::get_if<FormText>(&value)) {
        return setText(object, *entry, *text);
    }
    Ref<NSObject> boxed;
    if (const auto* const integer = std::get_if<qint64>(&value)) {
        boxed = NSNumber::numberWithInteger(*integer);
    } else if (const auto* const number = std::get_if<double>(&value)) {
        boxed = NSNumber::numberWithDouble(*number);
    } else if (const auto* const texts = std::get_if<QStringList>(&value)) {
        std::vector<Ref<NSString>> strings;
        for (const QString& each : *texts) {
            strings.push_back(fromQt(each));
        }
        boxed = NSArray<NSString>::arrayWithObjects(std::move(strings));
    } else if (const auto* const color = std::get_if<FormColor>(&value)) {
        boxed =
            NSColor::colorWithSRGBRed_green_blue_alpha(color->red, color->green, color->blue, color->alpha);
    } else if (const auto* const font = std::get_if<FormFont>(&value)) {
        boxed = NSFont::fontWithName_size(font->name.isEmpty() ? "Arial" : font->name.toUtf8().constData(),
                                          font->pointSize);
    } else if (const auto* const picture = std::get_if<FormPicture>(&value)) {
        boxed = imageAt(picture->path);
        if (!boxed) {
            return "there is no picture \"" + printable(picture->path) + '"';
        }
    } else {
        return "the value cannot be read";
    }
    return !entry->takesAnyObject && entry->set(object, boxed.get()) ? "" : "the value does not fit";
}

std::string NSNib::Instance::setText(NSObject& object, const PropertyEntry& entry, const FormText& text)
{
    if (!entry.takesAnyObject && entry.set(object, fromQt(text.shown).get())) {
        return {};
    }
    if (const Ref<NSObject> named = objectNamed(text.written)) {
        if (entry.set(object, named.get())) {
            return {};
        }
    } else if (entry.takesAnyObject) {
        return "there is no object \"" + printable(text.written) + '"';
    } else if (entry.set(object, fromQt(text.written).get())) {
        return {};
    } else if (const Ref<NSImage> image = imageAt(text.written); image && entry.set(object, image.get())) {
        return {};
    }
    return '"' + printable(text.written) + "\" does not fit";
}

Ref<NSImage> NSNib::Instance::imageAt(const QString& path)
{
    const auto known = _images.find(path);
    if (known != _images.end()) {
        return known->second;
    }
    QString file = QFileInfo(QString::fromStdString(_nib._path)).dir().filePath(path);
    if (!QFileInfo(file).isFile()) {
        const Ref<NSString> resource =
            NSBundle::mainBundle()->pathForResource_ofType(fromQt(path).get(), nullptr);
        file = resource ? toQt(*resource) : QString();
    }
    Ref<NSImage> image;
    if (QFileInfo(file).isFile()) {
        image = ::make<NSImage>()->initByReferencingFile(fromQt(file).get());
    }
    _images[path] = image;
    return image;
}

// The tree

void NSNib::Instance::putInside(QWidget& widget, NSObject& around)
{
    const QObjectList children = widget.children();
    for (QObject* child : children) {
        auto* const inside = qobject_cast<QWidget*>(child);
        if (inside == nullptr) {
            continue;
        }
        const auto made =
            std::ranges::find(_made, inside, [](const Made& each) { return each.widget.data(); });
        if (made == _made.end()) {
            putInside(*inside, around);
            continue;
        }
        if (!put(*made, around)) {
            report(static_cast<std::size_t>(made - _made.begin()),
                   "it cannot be inside of a " + std::string(around.classTable().name));
        }
        putInside(*inside, *made->object);
    }
}

bool NSNib::Instance::put(const Made& made, NSObject& around)
{
    auto* const view = dynamic_cast<NSView*>(made.object.get());
    auto* const column = dynamic_cast<NSTableColumn*>(made.object.get());
    auto* const cell = dynamic_cast<NSCell*>(made.object.get());
    auto* const tableAround = dynamic_cast<NSTableView*>(&around);
    auto* const columnAround = dynamic_cast<NSTableColumn*>(&around);
    if (auto* const table = dynamic_cast<NSTableView*>(view)) {
        auto* const scrollView = dynamic_cast<NSScrollView*>(&around);
        if (scrollView == nullptr) {
            return false;
        }
        scrollView->setDocumentView(table);
        QWidget::setTabOrder(made.widget, table->widget());
        return true;
    }
    if (auto* const header = dynamic_cast<NSTableHeaderView*>(view)) {
        if (tableAround == nullptr) {
            return false;
        }
        header->setFrame(fromQt(QRectF(QPointF(), made.widget->size())));
        tableAround->setHeaderView(header);
        return true;
    }
    if (column != nullptr) {
        if (tableAround == nullptr) {
            return false;
        }
        tableAround->addTableColumn(column);
        return true;
    }
    if (cell != nullptr) {
        if (auto* const headerCell = dynamic_cast<NSTableHeaderCell*>(cell); headerCell && columnAround) {
            columnAround->setHeaderCell(headerCell);
            return true;
        }
        if (columnAround != nullptr) {
            columnAround->setDataCell(cell);
            return true;
        }
        auto* const field = dynamic_cast<NSTextField*>(&around);
        auto* const fieldCell = dynamic_cast<NSTextFieldCell*>(cell);
        if (field == nullptr || fieldCell == nullptr) {
            return false;
        }
        field->setCell(fieldCell);
        return true;
    }
    if (view == nullptr) {
        return true;
    }
    auto* const superview = dynamic_cast<NSView*>(&around);
    if (superview == nullptr || tableAround != nullptr) {
        return false;
    }
    auto& peer = static_cast<ViewPeer&>(*made.widget);
    if (peer.parentWidget() != superview->widget() || superview->widget()->layout() != nullptr) {
        peer.follow();
    } else {
        NSRect frame = fromQt(QRectF(peer.geometry()));
        if (!superview->isFlipped()) {
            frame.origin.y = superview->bounds().size.height - frame.origin.y - frame.size.height;
        }
        view->setFrame(frame);
    }
    superview->addSubview(view);
    return true;
}

// The end

void NSNib::Instance::connectOwner()
{
    for (std::size_t place = 0; _owner != nullptr && place < _made.size(); ++place) {
        const QString& name = _form.objects[place].name;
        const PropertyEntry* const outlet = _owner->classTable().findProperty(name.toStdString());
        if (outlet != nullptr && objectNamed(name) == _made[place].object &&
            !outlet->set(*_owner, _made[place].object.get())) {
            report(place, "it does not fit the owner's property of that name");
        }
    }
}

void NSNib::Instance::awake() const
{
    for (const Made& made : _made) {
        if (auto* const view = dynamic_cast<NSView*>(made.object.get())) {
            view->awakeFromNib();
        } else if (auto* const cell = dynamic_cast<NSCell*>(made.object.get())) {
            cell->awakeFromNib();
        }
    }
}

NSNib::NSNib() : _classes(kClasses.begin(), kClasses.end()) {}

NSNib::~NSNib() = default;

NSNib* NSNib::initWithContentsOfFile(NSString* path)
{
    _path = path != nullptr ? path->UTF8String() : "";
    QFile file(QString::fromStdString(_path));
    const bool isThere = QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly);
    const QByteArray bytes = isThere ? file.read(FormFile::kMaxSize + 1) : QByteArray();
    if (!isThere || file.error() != QFileDevice::NoError || bytes.size() > FormFile::kMaxSize) {
        diagnose("initWithContentsOfFile",
                 printable(QString::fromStdString(_path)) +
                     (bytes.size() > FormFile::kMaxSize ? ": it is too large" : ": it cannot be read"));
        return nullptr;
    }
    _bytes = bytes.toStdString();
    return this;
}

void NSNib::addClasses(std::span<const ClassTable* const> classes)
{
    _classes.insert(_classes.end(), classes.begin(), classes.end());
}

const ClassTable* NSNib::classNamed(std::string_view name) const
{
    const auto found = std::ranges::find_if(
        _classes, [&](const ClassTable* each) { return each->name == name && each->factory != nullptr; });
    return found != _classes.end() ? *found : nullptr;
}

void NSNib::setObject_forName(Ref<NSObject> object, std::string_view name)
{
    if (object) {
        _objects.insert_or_assign(std::string(name), std::move(object));
    } else if (const auto found = _objects.find(name); found != _objects.end()) {
        _objects.erase(found);
    }
}

Ref<NSString> NSNib::windowTitle() const
{
    return _windowTitle;
}

Ref<NSView> NSNib::instantiateWithOwner(NSObject* owner)
{
    const Ref<NSNib> self(this);
    const Ref<NSObject> kept(owner);
    return Instance(*this, owner).make();
}
