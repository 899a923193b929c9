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
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/FormFile.h"
#include "platform/qt/ViewPeer.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QUiLoader>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <utility>

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
        shown, [](QChar each) { return !each.isPrint(); }, QChar(u'?'));
    return shown.toStdString();
}

/// The toolkit's form loader, which has others make what it does not know.
class FormLoader final : public QUiLoader
{
public:
    using Maker = std::function<QWidget*(std::size_t object, QWidget* parent)>;

    explicit FormLoader(Maker maker) : _maker(std::move(maker)) { setTranslationEnabled(false); }

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override
    {
        return className.startsWith(u'#') ? _maker(className.mid(1).toULongLong(), parent)
                                          : QUiLoader::createWidget(className, parent, name);
    }

private:
    Maker _maker;
};

/// Hands `child` to `around` by the setter, if they are of its types. Whether they are.
template <class Parent, class Child>
bool give(NSObject& child, NSObject& around, void (Parent::*setter)(Ref<Child>))
{
    auto* const given = dynamic_cast<Child*>(&child);
    auto* const taker = dynamic_cast<Parent*>(&around);
    if (given == nullptr || taker == nullptr) {
        return false;
    }
    (taker->*setter)(given);
    return true;
}

} // namespace

/// What is made of a form at a time.
class NSNib::Instance
{
public:
    Instance(NSNib& nib, NSObject* owner) : _nib(nib), _owner(owner), _translation(nib._translation) {}

    Ref<NSView> make();

private:
    struct Made {
        Ref<NSObject> object;     // null unless the loader has come to it
        QPointer<QWidget> widget; // null when the toolkit has destroyed it
        /// Whether the widget only keeps the place of an object that has no widget of its own, or will show
        /// by another.
        bool isStandIn = false;
    };

    /// Reports a problem with an object, or with its property in a line.
    void report(std::size_t place, const std::string& problem, qint64 line = 0) const;

    /// The widget at the top; null if the file is no form.
    QWidget* load();
    QWidget* makeObject(std::size_t place, QWidget* parent);
    Ref<NSView> viewAtTop(QWidget& top);

    void nameObjects();
    Ref<NSObject> objectNamed(const QString& name) const;
    void setProperties();
    /// Why the property cannot be set; empty if it has been.
    std::string setProperty(NSObject& object, const FormProperty& property);
    /// The object that stands for a value; null if there is none.
    Ref<NSObject> boxed(const FormValue& value);
    std::string setText(NSObject& object, const PropertyEntry& entry, const FormText& text);
    Ref<NSImage> imageAt(const QString& path);

    /// Puts the objects whose widgets are in `widget` into `around`, those that `isStandIn` says or the
    /// others.
    void putInside(QWidget& widget, NSObject& around, bool isStandIn);
    /// Whether the one can be put into the other.
    static bool put(const Made& standIn, NSObject& around);
    static bool put(NSView& view, NSObject& around);

    void orderKeyboardTakers(const QWidget& top) const;
    void connectOwner() const;

    NSNib& _nib;
    NSObject* _owner;
    Translation _translation;
    FormFile _form;
    std::vector<Made> _made; // for each object of the form
    std::map<QString, Ref<NSObject>> _named;
    std::map<QString, Ref<NSImage>> _images;
};

void NSNib::Instance::report(std::size_t place, const std::string& problem, qint64 line) const
{
    const FormObject& object = _form.objects[place];
    diagnose("instantiateWithOwner", _nib._path + ':' + std::to_string(line > 0 ? line : object.line) + ": " +
                                         printable(object.className) + " \"" + printable(object.name) +
                                         "\": " + problem);
}

Ref<NSView> NSNib::Instance::make()
{
    QWidget* const top = load();
    if (top == nullptr) {
        diagnose("instantiateWithOwner", _nib._path + ':' + printable(_form.problem));
        return nullptr;
    }
    _nib._windowTitle = fromQt(_form.windowTitle);
    Ref<NSView> view = viewAtTop(*top);
    auto& peer = static_cast<ViewPeer&>(*view->widget());
    nameObjects();
    // A cell goes to its column before the column has its title, which the cell keeps; the others have to
    // know by then whether they are upside down.
    putInside(peer, *view, true);
    setProperties();
    // A picture of a place where nothing is: none is drawn, but what does not show yet is laid out for it.
    peer.grab(QRect(QPoint(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX), QSize(-1, -1)));
    putInside(peer, *view, false);
    for (const Made& made : _made) {
        if (made.isStandIn) {
            delete made.widget;
        }
    }
    orderKeyboardTakers(peer);
    connectOwner();
    std::ranges::reverse(_made); // what is inside of others awakes before these
    for (const Made& made : _made) {
        if (auto* const madeView = dynamic_cast<NSView*>(made.object.get())) {
            madeView->awakeFromNib();
        } else if (auto* const cell = dynamic_cast<NSCell*>(made.object.get())) {
            cell->awakeFromNib();
        }
    }
    return view;
}

QWidget* NSNib::Instance::load()
{
    const QStringList paths = QCoreApplication::libraryPaths();
    QCoreApplication::setLibraryPaths({}); // where it would load all plugins for Designer from
    FormLoader loader([this](std::size_t place, QWidget* parent) { return makeObject(place, parent); });
    QCoreApplication::setLibraryPaths(paths);
    QStringList classesOfToolkit = loader.availableWidgets();
    classesOfToolkit << QStringLiteral("Line");                  // which it makes, and does not list
    classesOfToolkit.removeAll(QStringLiteral("QOpenGLWidget")); // which crashes where there is no OpenGL
    _form = readForm(
        QByteArray::fromStdString(_nib._bytes),
        [&](const QString& name) {
            return _nib.classNamed(name.toStdString()) == nullptr && classesOfToolkit.contains(name);
        },
        [this](const QString& text) {
            const Ref<NSString> shown = _translation ? _translation(fromQt(text).get()) : nullptr;
            return shown ? toQt(*shown) : text;
        });
    if (!_form.problem.isEmpty()) {
        return nullptr;
    }
    _made.resize(_form.objects.size());
    loader.setWorkingDirectory(QFileInfo(QString::fromStdString(_nib._path)).dir());
    QBuffer document(&_form.document);
    document.open(QIODevice::ReadOnly);
    QWidget* const top = loader.load(&document);
    _form.problem = u' ' + loader.errorString(); // which tells the line in its own way
    return top;
}

QWidget* NSNib::Instance::makeObject(std::size_t place, QWidget* parent)
{
    const QString& name = _form.objects[place].className;
    const ClassTable* table = _nib.classNamed(name.toStdString());
    if (table == nullptr && name != QLatin1String("QWidget")) {
        report(place, "there is no such class");
    }
    Made& made = _made[place];
    made.object = (table != nullptr ? *table : NSView::table).factory();
    auto* const view = dynamic_cast<NSView*>(made.object.get());
    made.isStandIn = view == nullptr || dynamic_cast<NSTableView*>(view) != nullptr ||
                     dynamic_cast<NSTableHeaderView*>(view) != nullptr;
    made.widget = made.isStandIn ? new QWidget : view->widget();
    made.widget->setParent(parent);
    made.widget->setAttribute(Qt::WA_Resized, false); // unless the form gives it a size
    return made.widget;
}

Ref<NSView> NSNib::Instance::viewAtTop(QWidget& top)
{
    if (auto* const peer = dynamic_cast<ViewPeer*>(&top)) {
        return {peer->view()};
    }
    Ref<NSView> view = ::make<NSView>();
    QWidget* const around = view->widget();
    around->resize(top.size());
    around->setAttribute(Qt::WA_Resized, top.testAttribute(Qt::WA_Resized));
    auto* const layout = new QVBoxLayout(around);
    layout->setContentsMargins({});
    top.setParent(around, Qt::Widget);
    layout->addWidget(&top);
    return view;
}

// Names and properties

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

void NSNib::Instance::setProperties()
{
    // What cannot be set may wait for another property: the name of an action, for the target.
    std::vector<std::pair<std::size_t, const FormProperty*>> waiting;
    for (std::size_t place = 0; place < _made.size(); ++place) {
        for (const FormProperty& property : _form.objects[place].properties) {
            if (_made[place].object && !setProperty(*_made[place].object, property).empty()) {
                waiting.emplace_back(place, &property);
            }
        }
    }
    for (const auto& [place, property] : waiting) {
        const std::string problem = setProperty(*_made[place].object, *property);
        if (!problem.empty()) {
            report(place, printable(property->name) + ": " + problem, property->line);
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
    const Ref<NSObject> given = boxed(value);
    if (!given) {
        return "the value cannot be read";
    }
    return !entry->takesAnyObject && entry->set(object, given.get()) ? "" : "the value does not fit";
}

Ref<NSObject> NSNib::Instance::boxed(const FormValue& value)
{
    if (const auto* const integer = std::get_if<qint64>(&value)) {
        return NSNumber::numberWithInteger(*integer);
    }
    if (const auto* const number = std::get_if<double>(&value)) {
        return NSNumber::numberWithDouble(*number);
    }
    if (const auto* const color = std::get_if<FormColor>(&value)) {
        return NSColor::colorWithSRGBRed_green_blue_alpha(color->red, color->green, color->blue,
                                                          color->alpha);
    }
    if (const auto* const font = std::get_if<FormFont>(&value)) {
        return NSFont::fontWithName_size(font->name.toUtf8().constData(), font->pointSize);
    }
    const auto* const picture = std::get_if<FormPicture>(&value);
    return picture != nullptr ? imageAt(picture->path) : nullptr;
}

std::string NSNib::Instance::setText(NSObject& object, const PropertyEntry& entry, const FormText& text)
{
    if (!entry.takesAnyObject && entry.set(object, fromQt(text.shown).get())) {
        return {};
    }
    const std::string quoted = '"' + printable(text.written) + '"';
    if (const Ref<NSObject> named = objectNamed(text.written)) {
        return entry.set(object, named.get()) ? "" : "the object " + quoted + " does not fit";
    }
    if (entry.takesAnyObject) {
        return "there is no object " + quoted;
    }
    // A method is named as it is written, and nobody looks for a picture where none fits.
    if (entry.set(object, fromQt(text.written).get())) {
        return {};
    }
    const Ref<NSImage> image = imageAt(text.written);
    return image && entry.set(object, image.get()) ? "" : quoted + " does not fit";
}

Ref<NSImage> NSNib::Instance::imageAt(const QString& path)
{
    const auto [place, isNew] = _images.try_emplace(path);
    if (isNew) {
        QString file = QFileInfo(QString::fromStdString(_nib._path)).dir().filePath(path);
        if (!QFileInfo(file).isFile()) {
            const Ref<NSString> resource =
                NSBundle::mainBundle()->pathForResource_ofType(fromQt(path).get(), nullptr);
            file = resource ? toQt(*resource) : QString();
        }
        if (QFileInfo(file).isFile()) { // nothing that is read without end, either
            place->second = ::make<NSImage>()->initByReferencingFile(fromQt(file).get());
        }
    }
    return place->second;
}

// The tree

void NSNib::Instance::putInside(QWidget& widget, NSObject& around, bool isStandIn)
{
    for (QWidget* const inside : widget.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        const auto made =
            std::ranges::find(_made, inside, [](const Made& each) { return each.widget.data(); });
        if (made == _made.end()) {
            putInside(*inside, around, isStandIn);
            continue;
        }
        if (made->isStandIn == isStandIn &&
            !(isStandIn ? put(*made, around) : put(dynamic_cast<NSView&>(*made->object), around))) {
            report(static_cast<std::size_t>(made - _made.begin()),
                   "it cannot be inside of an object of class " + std::string(around.classTable().name));
        }
        putInside(*inside, *made->object, isStandIn);
    }
}

bool NSNib::Instance::put(const Made& standIn, NSObject& around)
{
    NSObject& object = *standIn.object;
    if (auto* const header = dynamic_cast<NSTableHeaderView*>(&object)) {
        header->setFrame(fromQt(QRectF(QPointF(), standIn.widget->size())));
        return give(object, around, &NSTableView::setHeaderView);
    }
    const bool isPart = dynamic_cast<NSView*>(&object) != nullptr ||
                        dynamic_cast<NSTableColumn*>(&object) != nullptr ||
                        dynamic_cast<NSCell*>(&object) != nullptr;
    return give(object, around, &NSScrollView::setDocumentView) ||
           give(object, around, &NSTableView::addTableColumn) ||
           give(object, around, &NSTableColumn::setHeaderCell) ||
           give(object, around, &NSTableColumn::setDataCell) || give(object, around, &NSTextField::setCell) ||
           !isPart;
}

bool NSNib::Instance::put(NSView& view, NSObject& around)
{
    auto* const superview = dynamic_cast<NSView*>(&around);
    auto& peer = static_cast<ViewPeer&>(*view.widget());
    if (superview == nullptr || !superview->widget()->isAncestorOf(&peer)) {
        return false; // in a stand-in
    }
    if (peer.parentWidget() != superview->widget() || superview->widget()->layout() != nullptr) {
        peer.follow();
    } else {
        NSRect frame = fromQt(QRectF(peer.geometry()));
        if (!superview->isFlipped()) {
            frame.origin.y = superview->bounds().size.height - frame.origin.y - frame.size.height;
        }
        view.setFrame(frame);
    }
    superview->addSubview(&view);
    return true;
}

void NSNib::Instance::orderKeyboardTakers(const QWidget& top) const
{
    QWidget* before = nullptr;
    for (const QString& name : _form.tabStops) {
        auto* const view = dynamic_cast<NSView*>(objectNamed(name).get());
        auto* const peer = view != nullptr ? dynamic_cast<ViewPeer*>(view->widget()) : nullptr;
        QWidget* const next = peer != nullptr ? &peer->keyboardTaker() : top.findChild<QWidget*>(name);
        if (next == nullptr || !top.isAncestorOf(next)) {
            continue;
        }
        if (before != nullptr) {
            QWidget::setTabOrder(before, next);
        }
        before = next;
    }
}

void NSNib::Instance::connectOwner() const
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

NSNib::NSNib() : _classes(kClasses.begin(), kClasses.end()) {}

NSNib::~NSNib() = default;

NSNib* NSNib::initWithContentsOfFile(NSString* path)
{
    _path = path != nullptr ? path->UTF8String() : "";
    QFile file(QString::fromStdString(_path));
    const bool isThere = QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly);
    const QByteArray bytes = isThere ? file.read(FormFile::kMaxSize + 1) : QByteArray();
    if (!isThere || file.error() != QFileDevice::NoError || bytes.size() > FormFile::kMaxSize) {
        diagnose("initWithContentsOfFile", _path + ": it cannot be read, or is too large");
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
