#pragma once

#include "platform/appkit/NSControl.h"

class FieldEditor;
class NSAttributedString;
class NSColor;
class NSFont;
class NSTextField;
class NSTextFieldCell;

/// Hears of what the user does in a text field. To be implemented by an object (`NSObject`); each method does
/// nothing unless it is overridden.
class TESSALINE_EXPORT NSTextFieldDelegate
{
public:
    /// After each change that the user makes.
    virtual void controlTextDidChange(NSTextField* field);
    /// When the user leaves the field or ends editing by a key.
    virtual void controlTextDidEndEditing(NSTextField* field);

protected:
    ~NSTextFieldDelegate() = default;
};

/// A text that is shown, and can be selected or edited if that is allowed, which the toolkit does: input
/// methods, selection, clipboard, undo. The field draws its text itself but for the time in which it has the
/// keyboard, from when on the toolkit does.
///
/// Return ends editing and sends the action; the escape key puts back the text from before and ends editing,
/// too. Where the text's attributes count (`allowsEditingTextAttributes`), a click on a link has the
/// workspace open it, as has Return with the caret on it in a text that cannot be edited. The toolkit knows
/// fonts of whole sizes, so that a text in others moves a little when it gets the keyboard, and line ends of
/// one kind,
/// "\n", which all others become when the user changes the text.
class TESSALINE_EXPORT NSTextField : public NSControl
{
public:
    NSTextField();

    NSTextField* initWithFrame(NSRect frame) override;
    bool isFlipped() const override { return true; }

    /// What the field draws with; kept alive. Default one that wraps, with a border and a white background.
    /// With null, the field shows nothing and has no text. The setter asks for a redraw.
    NSTextFieldCell* cell() const { return _cell.get(); }
    void setCell(Ref<NSTextFieldCell> cell);

    // The cell's. Setters ask for a redraw; without a cell, they do nothing.

    /// The text, empty by default and for null; the one that is being edited as far as it has come.
    Ref<NSString> stringValue() const;
    virtual void setStringValue(Ref<NSString> text);
    Ref<NSAttributedString> attributedStringValue() const;
    virtual void setAttributedStringValue(Ref<NSAttributedString> text);
    Ref<NSFont> font() const;
    void setFont(Ref<NSFont> font);
    Ref<NSColor> textColor() const;
    void setTextColor(Ref<NSColor> color);
    bool isBezeled() const;
    void setBezeled(bool bezeled);
    bool drawsBackground() const;
    void setDrawsBackground(bool draws);

    /// Whether the user can change the text, which includes selecting it. Default yes.
    bool isEditable() const { return _editable; }
    void setEditable(bool editable);
    /// Whether the user can select the text. Default yes; no means that it cannot be changed either.
    bool isSelectable() const { return _selectable; }
    void setSelectable(bool selectable);
    /// Whether the user can follow links, and text that is typed takes the attributes of what is before it.
    /// Default no.
    bool allowsEditingTextAttributes() const { return _allowsEditingTextAttributes; }
    void setAllowsEditingTextAttributes(bool allows) { _allowsEditingTextAttributes = allows; }

    /// Hears of editing (`NSTextFieldDelegate`), and of what kinds of fields have to say. Not retained.
    Ref<NSObject> delegate() const { return _delegate.get(); }
    void setDelegate(NSObject* delegate) { _delegate = delegate; }

    /// Whether the user is at it: the text has the keyboard.
    bool isEditing() const { return _editing; }

    /// Selects the whole text, if that is allowed, and directs the window's keyboard to it. `sender` does not
    /// count.
    void selectText(NSObject* sender);

    void drawRect(NSRect rect) override;
    void setEnabled(bool enabled) override;

    // Events are handed on to the toolkit where the text can be selected, or else to the superview.

    void mouseDown(NSEvent* event) override;
    void mouseDragged(NSEvent* event) override;
    void mouseUp(NSEvent* event) override;
    /// The toolkit's own where the text can be selected.
    Ref<NSMenu> menuForEvent(NSEvent* event) override;
    bool keyDown(NSEvent* event) override;
    bool acceptsFirstResponder() const override { return isSelectable() && isEnabled(); }
    /// Ends editing.
    void viewDidHide() override;
    void resetCursorRects() override;

    /// A text that cannot be selected is one to read; one that can is announced by the toolkit.
    NSAccessibilityRole accessibilityRole() const override;
    /// The text to read, unless another label was set.
    Ref<NSString> accessibilityLabel() const override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~NSTextField() override;

    /// Where the text is, with the room at its sides: what the cell's border leaves. Zero without a cell.
    virtual NSRect textRect() const;

private:
    friend class FieldEditor;
    friend class NSComboBox;

    /// Whether one of the toolkit's widgets is there for the text.
    virtual bool needsEditor() const { return _selectable; }
    virtual FieldEditor* makeEditor();
    ViewPeer* makePeer() override;
    void placePeer() override;
    Ref<NSCursor> cursorAtPoint(NSPoint point) override;

    /// Hands the event that is being handled to what edits the text; false if there is none.
    bool handOn(const NSEvent& event);
    /// Has what edits the text, with what the field allows, or does without.
    void updateEditor();
    void textDidChange();

    // What the editor tells.
    void editingDidBegin();
    void userDidChange(const Ref<NSAttributedString>& text);
    void editingDidEnd(bool sendsAction);
    void abortEditing();

    Ref<NSTextFieldCell> _cell;
    bool _editable = true;
    bool _selectable = true;
    bool _allowsEditingTextAttributes = false;
    Weak<NSObject> _delegate;
    bool _editing = false;
    Ref<NSAttributedString> _textBefore; // editing; null at other times
    FieldEditor* _editor = nullptr;      // owned by the peer; null while none is needed
};
