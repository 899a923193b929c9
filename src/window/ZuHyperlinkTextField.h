#pragma once

#include "platform/appkit/NSTextField.h"

/// A text that is a link, blue and underlined. A click follows it, as it does in any text that can be
/// selected and whose attributes count; or, in action mode (`isAction`), a press anywhere on the field has a
/// method of the application called with the first link of the text, wherever that is. A
/// disabled one does nothing.
class TESSALINE_EXPORT ZuHyperlinkTextField : public NSTextField
{
public:
    /// A text in `font`; null counts as an empty text.
    static Ref<NSAttributedString> hyperlinkFromString_withFont(NSString* text, const Ref<NSFont>& font);
    /// The same in blue and underlined, that links to `url`: an `NSURL` or an `NSString` that holds one.
    static Ref<NSAttributedString>
    hyperlinkFromString_withURL_withFont(NSString* text, const Ref<NSObject>& url, const Ref<NSFont>& font);

    ZuHyperlinkTextField();

    ZuHyperlinkTextField* initWithFrame(NSRect frame) override;
    /// Makes the text one that can be selected and whose attributes count, and takes the action away.
    void awakeFromNib() override;

    /// Whether a press does the action instead of what it does in other fields. Default no.
    bool isAction() const { return _isAction; }
    void setIsAction(bool isAction) { _isAction = isAction; }

    /// Whose method is called; not retained. Default null, for no one.
    Ref<NSObject> caller() const { return _caller.get(); }
    void setCaller(NSObject* caller) { _caller = caller; }

    /// The method, whose one argument is the link as the text has it. Default none.
    SEL funcAction() const { return _funcAction; }
    void setFuncAction(SEL action) { _funcAction = action; }

    void mouseDown(NSEvent* event) override;
    /// In action mode, Return and the space key do the action, too.
    bool keyDown(NSEvent* event) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    void performAction();

    bool _isAction = false;
    Weak<NSObject> _caller;
    SEL _funcAction;
};
