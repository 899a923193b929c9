#include "platform/appkit/NSTextField.h"

#include "platform/appkit/NSCursor.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSMenu.h"
#include "platform/appkit/NSTextFieldCell.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/FieldEditor.h"
#include "platform/qt/ViewPeer.h"

#include <array>

namespace
{

constexpr std::array kProperties{
    property<&NSTextField::stringValue, &NSTextField::setStringValue>("stringValue"),
    property<&NSTextField::font, &NSTextField::setFont>("font"),
    property<&NSTextField::textColor, &NSTextField::setTextColor>("textColor"),
    property<&NSTextField::isBezeled, &NSTextField::setBezeled>("bezeled"),
    property<&NSTextField::drawsBackground, &NSTextField::setDrawsBackground>("drawsBackground"),
    property<&NSTextField::isEditable, &NSTextField::setEditable>("editable"),
    property<&NSTextField::isSelectable, &NSTextField::setSelectable>("selectable"),
    property<&NSTextField::allowsEditingTextAttributes, &NSTextField::setAllowsEditingTextAttributes>(
        "allowsEditingTextAttributes"),
    property<&NSTextField::delegate, &NSTextField::setDelegate>("delegate"),
};

} // namespace

constinit const ClassTable NSTextField::table{
    "NSTextField", &NSControl::table, kProperties, {}, makeObject<NSTextField>};

const ClassTable& NSTextField::classTable() const
{
    return table;
}

void NSTextFieldDelegate::controlTextDidChange(NSTextField* /*field*/) {}

void NSTextFieldDelegate::controlTextDidEndEditing(NSTextField* /*field*/) {}

NSTextField::NSTextField() : _cell(make<NSTextFieldCell>())
{
    _cell->setWraps(true);
    _cell->setBezeled(true);
    _cell->setDrawsBackground(true);
}

NSTextField::~NSTextField()
{
    if (_editor != nullptr) {
        _editor->abandon();
    }
}

NSTextField* NSTextField::initWithFrame(NSRect frame)
{
    NSControl::initWithFrame(frame);
    return this;
}

// Text and look

void NSTextField::setCell(Ref<NSTextFieldCell> cell)
{
    _cell = std::move(cell);
    if (_cell) {
        _cell->setEnabled(isEnabled());
    }
    placePeer();
    textDidChange();
}

Ref<NSString> NSTextField::stringValue() const
{
    return _cell ? _cell->stringValue() : NSString::stringWithCharacters({});
}

void NSTextField::setStringValue(Ref<NSString> text)
{
    if (_cell) {
        _cell->setStringValue(std::move(text));
        textDidChange();
    }
}

Ref<NSAttributedString> NSTextField::attributedStringValue() const
{
    if (!_cell) {
        return make<NSAttributedString>();
    }
    return _cell->attributedStringValue();
}

void NSTextField::setAttributedStringValue(Ref<NSAttributedString> text)
{
    if (_cell) {
        _cell->setAttributedStringValue(std::move(text));
        textDidChange();
    }
}

Ref<NSFont> NSTextField::font() const
{
    return _cell ? _cell->font() : nullptr;
}

void NSTextField::setFont(Ref<NSFont> font)
{
    if (_cell) {
        _cell->setFont(std::move(font));
        textDidChange();
    }
}

Ref<NSColor> NSTextField::textColor() const
{
    return _cell ? _cell->textColor() : nullptr;
}

void NSTextField::setTextColor(Ref<NSColor> color)
{
    if (_cell) {
        _cell->setTextColor(std::move(color));
        textDidChange();
    }
}

bool NSTextField::isBezeled() const
{
    return _cell && _cell->isBezeled();
}

void NSTextField::setBezeled(bool bezeled)
{
    if (_cell) {
        _cell->setBezeled(bezeled);
        placePeer();
        invalidateCursorRects();
        setNeedsDisplay();
    }
}

bool NSTextField::drawsBackground() const
{
    return _cell && _cell->drawsBackground();
}

void NSTextField::setDrawsBackground(bool draws)
{
    if (_cell) {
        _cell->setDrawsBackground(draws);
        setNeedsDisplay();
    }
}

void NSTextField::textDidChange()
{
    if (_editor != nullptr) {
        _editor->takeField();
    }
    if (_editing) {
        _textBefore = attributedStringValue();
    }
    invalidateCursorRects();
    setNeedsDisplay();
}

NSRect NSTextField::textRect() const
{
    return _cell ? _cell->drawingRectForBounds(bounds()) : NSZeroRect;
}

void NSTextField::drawRect(NSRect /*rect*/)
{
    if (!_cell) {
        return;
    }
    if (_editing) {
        _cell->drawFaceWithFrame(bounds());
    } else {
        _cell->drawWithFrame_inView(bounds(), this);
    }
}

// What the user may do

void NSTextField::setEditable(bool editable)
{
    _editable = editable;
    _selectable = _selectable || editable;
    updateEditor();
}

void NSTextField::setSelectable(bool selectable)
{
    _selectable = selectable;
    _editable = _editable && selectable;
    updateEditor();
}

void NSTextField::setEnabled(bool enabled)
{
    if (_cell) {
        _cell->setEnabled(enabled);
    }
    NSControl::setEnabled(enabled);
    updateEditor();
}

ViewPeer* NSTextField::makePeer()
{
    auto* const peer = new ViewPeer(*this);
    if (needsEditor()) {
        _editor = makeEditor();
        peer->embed(&_editor->widget());
    }
    return peer;
}

FieldEditor* NSTextField::makeEditor()
{
    return new TextFieldEditor(*this);
}

void NSTextField::updateEditor()
{
    invalidateCursorRects();
    if (_peer == nullptr) {
        return;
    }
    const Ref<NSTextField> self(this);
    if (_editor != nullptr && needsEditor()) {
        _editor->takeField();
    } else if (_editor != nullptr) {
        std::exchange(_editor, nullptr)->abandon();
        _peer->embed(nullptr);
        editingDidEnd(false);
    } else if (needsEditor()) {
        _editor = makeEditor();
        _peer->embed(&_editor->widget());
        placePeer();
    }
    acceptsFirstResponderDidChange();
}

void NSTextField::placePeer()
{
    NSControl::placePeer();
    if (_editor != nullptr) {
        _editor->widget().setGeometry(toQt(textRect()).toRect());
    }
}

void NSTextField::selectText(NSObject* /*sender*/)
{
    if (!acceptsFirstResponder()) {
        return;
    }
    const Ref<NSTextField> self(this); // the one that has the keyboard hears that it ends
    widget();
    _editor->widget().setFocus(Qt::OtherFocusReason);
    if (_editor != nullptr) {
        _editor->selectAllText();
    }
}

// Editing

void NSTextField::editingDidBegin()
{
    if (!_editing) {
        _editing = true;
        _textBefore = attributedStringValue();
        setNeedsDisplay();
    }
}

void NSTextField::userDidChange(const Ref<NSAttributedString>& text)
{
    if (_cell && _allowsEditingTextAttributes) {
        _cell->setAttributedStringValue(text);
    } else if (_cell) {
        _cell->setStringValue(text->string());
        if (_editor != nullptr && !attributedStringValue()->isEqual(text.get())) {
            _editor->takeField(); // the text had attributes, which end here
        }
    }
    const Ref<NSObject> listener = delegate();
    if (auto* heard = dynamic_cast<NSTextFieldDelegate*>(listener.get())) {
        heard->controlTextDidChange(this);
    }
}

void NSTextField::editingDidEnd(bool sendsAction)
{
    if (!std::exchange(_editing, false)) {
        return;
    }
    const Ref<NSTextField> self(this);
    _textBefore = nullptr;
    setNeedsDisplay();
    const Ref<NSObject> listener = delegate();
    if (auto* heard = dynamic_cast<NSTextFieldDelegate*>(listener.get())) {
        heard->controlTextDidEndEditing(this);
    }
    if (sendsAction) {
        sendAction_to(action(), target().get());
    }
    const bool stays = _editor != nullptr && _editor->widget().hasFocus() && _editor->widget().isVisible();
    if (stays) { // it was ended by a key: the next one begins anew
        editingDidBegin();
        _editor->selectAllText();
    }
}

void NSTextField::abortEditing()
{
    if (_editing && _cell && !attributedStringValue()->isEqual(_textBefore.get())) {
        _cell->setStringValue(_textBefore->string());
        if (!attributedStringValue()->isEqual(_textBefore.get())) {
            _cell->setAttributedStringValue(_textBefore);
        }
        textDidChange();
    }
    editingDidEnd(false);
}

// Events

bool NSTextField::handOn(const NSEvent& event)
{
    if (_editor != nullptr && isEnabled()) {
        _peer->handOn(event.type());
    }
    return _editor != nullptr;
}

void NSTextField::mouseDown(NSEvent* event)
{
    if (!handOn(*event)) {
        NSControl::mouseDown(event);
    }
}

void NSTextField::mouseDragged(NSEvent* event)
{
    if (!handOn(*event)) {
        NSControl::mouseDragged(event);
    }
}

void NSTextField::mouseUp(NSEvent* event)
{
    if (!handOn(*event)) {
        NSControl::mouseUp(event);
    }
}

Ref<NSMenu> NSTextField::menuForEvent(NSEvent* event)
{
    return handOn(*event) ? nullptr : NSControl::menuForEvent(event);
}

bool NSTextField::keyDown(NSEvent* event)
{
    return (_editor != nullptr && _editor->handOnKey()) || NSControl::keyDown(event);
}

void NSTextField::viewDidHide()
{
    editingDidEnd(false); // which the focus does not tell of where the window is not key
}

void NSTextField::resetCursorRects()
{
    if (acceptsFirstResponder()) {
        addCursorRect_cursor(NSIntersectionRect(textRect(), visibleRect()), NSCursor::IBeamCursor());
    }
}

Ref<NSCursor> NSTextField::cursorAtPoint(NSPoint point)
{
    if (_editor != nullptr) {
        const auto [x, y] = textRect().origin;
        if (_editor->isLinkAt(QPointF(point.x - x, point.y - y).toPoint())) {
            return NSCursor::pointingHandCursor();
        }
    }
    return NSControl::cursorAtPoint(point);
}

// Assistive technology

NSAccessibilityRole NSTextField::accessibilityRole() const
{
    return needsEditor() ? NSAccessibilityRole::Unknown : NSAccessibilityRole::StaticText;
}

Ref<NSString> NSTextField::accessibilityLabel() const
{
    const Ref<NSString> label = NSControl::accessibilityLabel();
    return label || needsEditor() ? label : stringValue();
}
