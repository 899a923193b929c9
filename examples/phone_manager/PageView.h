#pragma once

#include "platform/appkit/NSView.h"

#include <string>
#include <vector>

class NSImage;
class NSString;

/// The window's content: a white column for buttons at the left, a page with a headline, a text, a list of
/// pictures or a view and, at the bottom, a note at the right.
class PageView final : public NSView
{
public:
    static constexpr double kColumnWidth = 300.0;
    /// Around what the page shows.
    static constexpr double kMargin = 28.0;
    /// The largest picture of the list, in points.
    static constexpr NSSize kPictureSize{84.0, 60.0};

    /// A line of the list: a picture that fits `kPictureSize`, and two texts beside it. None is null.
    struct Item {
        Ref<NSImage> picture;
        Ref<NSString> name;
        Ref<NSString> detail;
    };

    PageView();

    PageView* initWithFrame(NSRect frame) override;
    bool isFlipped() const override { return true; }
    void drawRect(NSRect rect) override;

    /// The place between text and note, with the margins at its sides. The list stands there, and a view
    /// instead of it may.
    NSRect contentRect() const;

    /// Show other texts (UTF-8) from the next redraw on, which is asked for.
    void setHeadline(const std::string& headline);
    void setText(const std::string& text);
    void setNote(const std::string& note);
    void setItems(std::vector<Item> items);

protected:
    ~PageView() override;

private:
    void show(Ref<NSString>& place, const std::string& text);

    Ref<NSString> _headline;
    Ref<NSString> _text;
    Ref<NSString> _note;
    std::vector<Item> _items;
};
