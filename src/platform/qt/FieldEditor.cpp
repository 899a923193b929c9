#include "platform/qt/FieldEditor.h"

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTextField.h"
#include "platform/appkit/NSTextFieldCell.h"
#include "platform/appkit/NSWorkspace.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/NSURL.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSParagraphStyle.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/Native.h"
#include "platform/qt/ViewPeer.h"

#include <QKeyEvent>
#include <QPointer>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextFrame>

#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

/// The number of a format's attributes, in a list of them.
constexpr int kAttributes = QTextFormat::UserProperty;

Qt::Alignment alignmentOf(const NSAttributes& attributes)
{
    const NSParagraphStyle* const style = attributes[NSParagraphStyleAttributeName];
    switch (style != nullptr ? style->alignment() : NSTextAlignment::Natural) {
    case NSTextAlignment::Left:
        return Qt::AlignLeft | Qt::AlignAbsolute;
    case NSTextAlignment::Right:
        return Qt::AlignRight | Qt::AlignAbsolute;
    case NSTextAlignment::Center:
        return Qt::AlignHCenter;
    case NSTextAlignment::Justified:
        return Qt::AlignJustify;
    case NSTextAlignment::Natural:
        break;
    }
    return Qt::AlignLeading;
}

QString linkOf(NSObject* value)
{
    if (const auto* url = dynamic_cast<NSURL*>(value)) {
        return toQt(*url->absoluteString());
    }
    const auto* text = dynamic_cast<NSString*>(value);
    return text != nullptr ? toQt(*text) : QString();
}

QTextCharFormat formatOf(const NSAttributes& attributes, int number, const QColor& color)
{
    QTextCharFormat format;
    format.setProperty(kAttributes, number);
    format.setFont(fontOf(attributes[NSFontAttributeName]));
    const NSColor* const own = attributes[NSForegroundColorAttributeName];
    format.setForeground(own != nullptr ? toQt(*own) : color);
    const NSNumber* const underline = attributes[NSUnderlineStyleAttributeName];
    format.setFontUnderline(underline != nullptr && underline->integerValue() != NSUnderlineStyleNone);
    const QString link = linkOf(attributes[NSLinkAttributeName]);
    format.setAnchor(!link.isEmpty());
    format.setAnchorHref(link);
    return format;
}

} // namespace

QFont fontOf(const NSFont* font)
{
    const Ref<NSFont> shown = font != nullptr ? Ref<NSFont>(const_cast<NSFont*>(font))
                                              : NSFont::fontWithName_size("Arial", NSFont::kDefaultSize);
    QFont result = shown->native().font;
    result.setPixelSize(std::max(1, static_cast<int>(std::lround(shown->pointSize()))));
    return result;
}

FieldEditor::~FieldEditor()
{
    if (_field != nullptr) {
        _field->_editor = nullptr;
    }
}

bool FieldEditor::handOnKey()
{
    if (_key == nullptr) {
        return false;
    }
    const bool isPlain = (_key->modifiers() & ~Qt::KeypadModifier) == 0;
    if (isPlain && _field->isEditable() && (_key->key() == Qt::Key_Return || _key->key() == Qt::Key_Enter)) {
        _field->editingDidEnd(true);
        return true;
    }
    if (isPlain && _field->isEditable() && _key->key() == Qt::Key_Escape) {
        _field->abortEditing();
        return true;
    }
    QKeyEvent& key = *_key; // a host may take the editor away by it
    performKey(key);
    return key.isAccepted();
}

void FieldEditor::handle(QKeyEvent& event)
{
    event.ignore();
    if (_field == nullptr) {
        return;
    }
    const EventInProgress progress;
    const Ref<NSTextField> field(_field);
    const QPointer<QWidget> self(&widget()); // may go with a host's window
    QKeyEvent* const outer = std::exchange(_key, &event);
    event.setAccepted(field->keyDown(keyEvent(event, *field).get()));
    if (self) {
        _key = outer;
    }
}

void FieldEditor::userDidChange(const Ref<NSAttributedString>& text)
{
    if (_field != nullptr) {
        const EventInProgress progress;
        const Ref<NSTextField> field(_field);
        field->userDidChange(text);
    }
}

void FieldEditor::focusDidCome()
{
    if (_field != nullptr) {
        _field->editingDidBegin();
    }
}

void FieldEditor::focusDidGo(const QFocusEvent& event)
{
    switch (event.reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        break; // it will come back
    default:
        if (_field != nullptr) {
            const EventInProgress progress;
            const Ref<NSTextField> field(_field);
            field->editingDidEnd(false);
        }
    }
}

TextFieldEditor::TextFieldEditor(NSTextField& field) : FieldEditor(field)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabChangesFocus(true);
    setAcceptRichText(false);
    viewport()->setAutoFillBackground(false); // the field fills it
    viewport()->unsetCursor();                // and has the cursor
    connect(this, &QTextEdit::textChanged, this, [this] {
        if (!_taking) {
            userDidChange(text());
        }
    });
    takeField();
}

void TextFieldEditor::takeField()
{
    const NSTextFieldCell* const cell = _field->cell();
    const bool oneLine = cell == nullptr || !cell->wraps() || cell->isScrollable();
    setLineWrapMode(oneLine ? NoWrap : WidgetWidth);
    setTextInteractionFlags(!_field->isEnabled() ? Qt::NoTextInteraction
                            : _field->isEditable()
                                ? Qt::TextEditorInteraction
                                : Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    const Ref<NSColor> own = _field->textColor();
    const QColor color = own ? toQt(*own) : QColor(Qt::black);
    const Ref<NSAttributedString> text = _field->attributedStringValue();
    if (std::exchange(_color, color) != color || !this->text()->isEqual(text.get())) {
        takeText(*text);
    }
}

void TextFieldEditor::takeText(const NSAttributedString& text)
{
    _taking = true;
    const int anchor = textCursor().anchor();
    const int caret = textCursor().position();
    _attributes.clear();
    clear();
    QTextFrameFormat margins = document()->rootFrame()->frameFormat();
    margins.setMargin(0.0);
    margins.setLeftMargin(NSTextFieldCell::kTextInset);
    margins.setRightMargin(NSTextFieldCell::kTextInset);
    document()->rootFrame()->setFrameFormat(margins);

    QTextCursor place(document());
    place.beginEditBlock(); // in which nothing is laid out
    const NSAttributes& first = text.runs().front().attributes;
    place.setBlockCharFormat(formatOf(first, 0, _color)); // what is typed into an empty text looks like
    place.insertText(toQt(*text.string()));
    for (const NSAttributedString::Run& run : text.runs()) {
        place.setPosition(static_cast<int>(run.range.location));
        place.setPosition(static_cast<int>(NSMaxRange(run.range)), QTextCursor::KeepAnchor);
        place.setCharFormat(formatOf(run.attributes, static_cast<int>(_attributes.size()), _color));
        _attributes.push_back(run.attributes);
    }
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        place.setPosition(block.position());
        QTextBlockFormat format;
        format.setAlignment(alignmentOf(
            text.attributesAtIndex_effectiveRange(static_cast<std::size_t>(block.position()), nullptr)));
        place.mergeBlockFormat(format);
    }
    place.endEditBlock();
    document()->clearUndoRedoStacks();

    // The caret stays where it was, as far as there is a text.
    const int end = document()->characterCount() - 1;
    place.setPosition(std::min(anchor, end));
    place.setPosition(std::min(caret, end), QTextCursor::KeepAnchor);
    setTextCursor(place);
    _taking = false;
}

Ref<NSAttributedString> TextFieldEditor::text() const
{
    QString characters = document()->toRawText();
    characters.replace(QChar::ParagraphSeparator, u'\n').replace(QChar::LineSeparator, u'\n');
    const Ref<NSMutableAttributedString> text =
        make<NSMutableAttributedString>()->initWithString(fromQt(characters).get());
    const auto set = [&](const QTextCharFormat& format, int start, int length) {
        const auto number = static_cast<std::size_t>(format.intProperty(kAttributes));
        if (number < _attributes.size()) {
            text->setAttributes_range(_attributes[number],
                                      {static_cast<std::size_t>(start), static_cast<std::size_t>(length)});
        }
    };
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        set(block.charFormat(), std::max(block.position() - 1, 0), 1); // that of the line end before
        for (auto next = block.begin(); !next.atEnd(); ++next) {
            const QTextFragment part = next.fragment();
            set(part.charFormat(), part.position(), part.length());
        }
    }
    return text;
}

bool TextFieldEditor::isLinkAt(QPoint place) const
{
    return _field != nullptr && _field->allowsEditingTextAttributes() && !anchorAt(place).isEmpty();
}

void TextFieldEditor::follow(const QString& link)
{
    if (_field == nullptr || !_field->allowsEditingTextAttributes()) {
        return;
    }
    if (const Ref<NSURL> url = NSURL::URLWithString(fromQt(link).get())) {
        const EventInProgress progress; // an application that opens it itself may do anything
        NSWorkspace::sharedWorkspace()->openURL(url.get());
    }
}

void TextFieldEditor::paintEvent(QPaintEvent* event)
{
    if (_field != nullptr && _field->isEditing()) {
        QTextEdit::paintEvent(event);
    }
}

void TextFieldEditor::focusInEvent(QFocusEvent* event)
{
    QTextEdit::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
        selectAll();
    }
    focusDidCome();
}

void TextFieldEditor::focusOutEvent(QFocusEvent* event)
{
    QTextEdit::focusOutEvent(event);
    focusDidGo(*event);
    if (_field != nullptr && !_field->isEditing()) { // and draws its text from the beginning
        horizontalScrollBar()->setValue(0);
        verticalScrollBar()->setValue(0);
    }
}

void TextFieldEditor::wheelEvent(QWheelEvent* event)
{
    event->ignore();
    if (_field != nullptr && _field->isEditing()) {
        QTextEdit::wheelEvent(event);
    }
}

void TextFieldEditor::performKey(QKeyEvent& event)
{
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (isReturn && isReadOnly()) {
        follow(textCursor().charFormat().anchorHref());
        return;
    }
    QTextEdit::keyPressEvent(&event);
}

void TextFieldEditor::mousePressEvent(QMouseEvent* event)
{
    _pressedLink = anchorAt(event->pos());
    QTextEdit::mousePressEvent(event);
}

void TextFieldEditor::mouseReleaseEvent(QMouseEvent* event)
{
    QTextEdit::mouseReleaseEvent(event);
    const QString pressed = std::exchange(_pressedLink, {});
    if (event->button() == Qt::LeftButton && !textCursor().hasSelection() &&
        pressed == anchorAt(event->pos())) {
        follow(pressed);
    }
}
