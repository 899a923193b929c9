#pragma once

#include "platform/appkit/NSTextField.h"
#include "platform/foundation/NSRange.h"

class NSLayoutManager;
class NSTextContainer;
class NSTextStorage;

/// What the delegate of a field with links may implement beside `NSTextFieldDelegate`.
class TESSALINE_EXPORT WyClickableURLTextFieldDelegate
{
public:
    /// A link was clicked: `url` is an `NSURL`, or whatever else the text has for a link other than a string.
    /// True if the delegate has dealt with it; else the workspace opens it.
    virtual bool textField_openURL(NSTextField* field, NSObject* url) = 0;

protected:
    ~WyClickableURLTextFieldDelegate() = default;
};

/// A text to read, some of whose stretches may be links (`NSLinkAttributeName`). Over a link the pointer is a
/// hand, and a press and release on links to the same URL opens it, unless the field is disabled: by the
/// delegate, or else the workspace. Keys do not reach the links.
///
/// Where the links are, a text system of the field's own finds out, which is built when the field, with a
/// text in it, is first asked for its cursor rectangles; a press before that hits no link. It keeps the width
/// that the field had then. What the user sees under the pointer is what opens: the room that the field's
/// cell leaves around the text is taken into account.
class TESSALINE_EXPORT WyClickableURLTextField : public NSTextField
{
public:
    WyClickableURLTextField();

    /// Places the field and makes it one to read, which offers no copying.
    WyClickableURLTextField* initWithFrame(NSRect frame) override;
    /// Makes the field one to read.
    void awakeFromNib() override;

    /// Another text has other links: the cursor rectangles are asked for anew.
    void setAttributedStringValue(Ref<NSAttributedString> text) override;
    /// Shows a text without attributes, and so without links.
    void setStringValue(Ref<NSString> text) override;

    /// Whether a link can be copied from a context menu. Default no; the field then has no such menu.
    bool canCopyURLs() const { return _canCopyURLs; }
    void setCanCopyURLs(bool can) { _canCopyURLs = can; }

    /// The link at the place of `event`: an `NSURL`, also for one that the text has as a string, or any other
    /// value as it is. Null if there is none, or the string is no URL.
    Ref<NSObject> urlAtMouse(NSEvent* event) const;
    /// Puts the URL that `sender`, a menu item, stands for on the general pasteboard, as URL and as text.
    void copyURL(NSObject* sender);

    /// The links, as far as they are visible, with the pointing hand.
    void resetCursorRects() override;
    /// A menu to copy the link there, if that can be done.
    Ref<NSMenu> menuForEvent(NSEvent* event) override;
    void mouseDown(NSEvent* event) override;
    void mouseUp(NSEvent* event) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~WyClickableURLTextField() override;

private:
    void buildTextSystem();
    /// The rectangles around some characters, as far as they are in the text rectangle `inside`.
    std::vector<NSRect> rectsOfCharacters(NSRange characters, NSRect inside) const;

    Ref<NSTextStorage> _urlStorage;           // null until the text system is built
    NSLayoutManager* _urlManager = nullptr;   // belongs to the storage
    NSTextContainer* _urlContainer = nullptr; // belongs to the layout manager
    Ref<NSObject> _clickedURL;                // null unless a link is being pressed
    bool _canCopyURLs = false;
};
