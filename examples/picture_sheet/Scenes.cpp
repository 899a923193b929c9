#include "Scenes.h"

#include <platform/appkit/NSEvent.h>
#include <platform/foundation/NSString.h>
#include <platform/graphics/NSBezierPath.h>
#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSImage.h>
#include <platform/graphics/NSImageRep.h>
#include <util/UiUtil.h>
#include <window/ZuBorderView.h>
#include <window/ZuBox.h>
#include <window/ZuFlippedView.h>
#include <window/ZuLine.h>
#include <window/ZuProgressView.h>
#include <window/ZuSimpleButton.h>
#include <window/ZuTableCornerView.h>
#include <window/ZuToolButton.h>

#include <utility>

namespace
{

Ref<NSString> text(const char* utf8)
{
    return NSString::stringWithUTF8String(utf8);
}

Ref<NSColor> rgb(int red, int green, int blue)
{
    constexpr double kFull = 255.0;
    return NSColor::colorWithSRGBRed_green_blue_alpha(red / kFull, green / kFull, blue / kFull, 1.0);
}

/// A patch in one colour with rounded corners, drawn as sharp as the device can show it.
class Patch final : public NSImageRep
{
public:
    explicit Patch(Ref<NSColor> color) : _color(std::move(color)) {}

    bool drawInRect(NSRect rect) override
    {
        const double radius = rect.size.height * 0.3;
        _color->setFill();
        NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius(rect, radius, radius)->fill();
        return true;
    }

private:
    Ref<NSColor> _color;
};

Ref<NSImage> patch(const char* name, NSSize size, Ref<NSColor> color)
{
    Ref<NSImage> image = make<NSImage>()->initWithSize(size);
    image->setName(name);
    image->addRepresentation(make<Patch>(std::move(color)));
    return image;
}

// What the pointer does to a button.

using Handler = void (NSView::*)(NSEvent*);
constexpr Handler kEnter = &NSView::mouseEntered;
constexpr Handler kPress = &NSView::mouseDown;

void send(NSView& view, std::initializer_list<Handler> handlers)
{
    const auto [width, height] = view.bounds().size;
    const NSPoint middle = view.convertPoint_toView({width * 0.5, height * 0.5}, nullptr);
    const Ref<NSEvent> event =
        NSEvent::mouseEventWithType_location_window(NSEventType::LeftMouseDown, middle, nullptr);
    for (const Handler handler : handlers) {
        (view.*handler)(event.get());
    }
}

Ref<ZuToolButton> toolButton(std::initializer_list<Handler> handlers = {})
{
    Ref<ZuToolButton> button = make<ZuToolButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 60.0));
    button->setImage(patch("icon", {32.0, 32.0}, rgb(82, 110, 160)));
    button->setAlternateImage(patch("badge", {24.0, 14.0}, rgb(224, 64, 48)));
    button->setAlternateTitle(text("3"));
    button->setTitle(text("Contacts"));
    button->setToolTip(text("People with numbers"));
    button->setColor_border(rgb(32, 186, 234));
    button->setColor_background(rgb(32, 186, 234));
    button->setColor_border_normal(rgb(222, 226, 231));
    button->setColor_desc_hover(NSColor::whiteColor());
    send(*button, handlers);
    return button;
}

Ref<ZuToolButton> plainToolButton()
{
    Ref<ZuToolButton> button = make<ZuToolButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 60.0));
    button->setTitle(text("Contacts"));
    return button;
}

Ref<ZuSimpleButton> simpleButton(const char* title, std::initializer_list<Handler> handlers = {})
{
    Ref<ZuSimpleButton> button = make<ZuSimpleButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 120.0, 32.0));
    button->awakeFromNib();
    button->setTitle(text(title));
    send(*button, handlers);
    return button;
}

Ref<ZuSimpleButton> disabledButton()
{
    Ref<ZuSimpleButton> button = simpleButton("Import");
    button->setEnabled(false);
    return button;
}

Ref<ZuSimpleButton> imageButton(std::initializer_list<Handler> handlers = {})
{
    Ref<ZuSimpleButton> button = simpleButton("Import", handlers);
    button->setImage(patch("icon", {16.0, 16.0}, rgb(255, 196, 0)));
    return button;
}

Ref<ZuSimpleButton> roundButton()
{
    Ref<ZuSimpleButton> button = simpleButton("Import");
    button->setXRadius_(16.0);
    button->setYRadius_(16.0);
    button->setColor_normal_background(rgb(52, 152, 83));
    button->setColor_normal_border(rgb(30, 110, 56));
    return button;
}

/// Neither awake nor with a colour but that of its title.
Ref<ZuSimpleButton> bareButton()
{
    Ref<ZuSimpleButton> button = make<ZuSimpleButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 120.0, 32.0));
    button->setTitle(text("Import"));
    return button;
}

Ref<ZuProgressView> progressView(double step, double total, double radius = 0.0)
{
    Ref<ZuProgressView> view = make<ZuProgressView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 10.0));
    view->awakeFromNib();
    view->setColor_border_(rgb(140, 150, 160));
    view->setColor_unuse_(NSColor::whiteColor());
    view->setColor_used_(rgb(32, 186, 234));
    view->setXRadius_(radius);
    view->setYRadius_(radius);
    view->setTotal_(total);
    view->setStep_(step);
    return view;
}

Ref<ZuLine> line(NSSize size, std::int32_t type, std::int32_t style)
{
    Ref<ZuLine> view = make<ZuLine>()->initWithFrame({{}, size});
    view->awakeFromNib();
    view->setType_(type);
    view->setStyle_(style);
    return view;
}

Ref<ZuBox> box(const char* title, std::int64_t height, Ref<NSColor> color)
{
    Ref<ZuBox> view = make<ZuBox>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 60.0));
    view->awakeFromNib();
    view->setTitle(text(title));
    view->setHeight(height);
    view->setColor(std::move(color));
    return view;
}

/// A view that is nothing but a colour, to be seen where it is put.
Ref<NSView> mark(NSRect frame)
{
    Ref<NSView> view = make<NSView>()->initWithFrame(frame);
    UiUtil::changeBackgroundColor_red_green_blue(view.get(), 224, 104, 32);
    return view;
}

/// With a mark at its origin.
template <class T> Ref<T> marked(Ref<T> view)
{
    view->addSubview(mark(NSMakeRect(4.0, 4.0, 16.0, 16.0)));
    return view;
}

Ref<ZuBorderView> borderView(double width, Ref<NSColor> color)
{
    Ref<ZuBorderView> view = make<ZuBorderView>()->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 60.0));
    view->setWidth_border_(width);
    view->setColor_border_(std::move(color));
    return view;
}

Ref<ZuBorderView> flippedBorderView()
{
    Ref<ZuBorderView> view = marked(borderView(1.0, NSColor::blackColor()));
    view->setFlipped(true);
    return view;
}

Ref<ZuBorderView> shadowOfBorder()
{
    Ref<ZuBorderView> view = borderView(4.0, NSColor::blackColor());
    view->setShadow();
    return view;
}

Ref<ZuBorderView> shadowOfFace()
{
    Ref<ZuBorderView> view = borderView(1.0, rgb(200, 205, 210));
    UiUtil::changeBackgroundColor_withColor(view.get(), NSColor::whiteColor().get());
    view->setShadow();
    return view;
}

Ref<ZuFlippedView> flippedView()
{
    Ref<ZuFlippedView> view = make<ZuFlippedView>()->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 60.0));
    return marked(view);
}

Ref<ZuTableCornerView> cornerView()
{
    return make<ZuTableCornerView>()->initWithFrame(NSMakeRect(0.0, 0.0, 16.0, 24.0));
}

} // namespace

std::vector<Scene> scenes()
{
    const Ref<NSColor> grey = rgb(220, 220, 220);
    const Ref<NSColor> accent = rgb(32, 186, 234);
    return {
        {"ZuToolButton",
         {{"normal", toolButton()},
          {"hover", toolButton({kEnter})},
          {"pressed", toolButton({kEnter, kPress})},
          {"nothing but a name", plainToolButton()}}},
        {"ZuSimpleButton",
         {{"normal", simpleButton("Import")},
          {"hover", simpleButton("Import", {kEnter})},
          {"pressed", simpleButton("Import", {kEnter, kPress})},
          {"disabled", disabledButton()},
          {"image", imageButton()},
          {"image, hover", imageButton({kEnter})},
          {"round, other colours", roundButton()},
          {"made in code", bareButton()}}},
        {"ZuProgressView",
         {{"nothing known", progressView(0.0, 0.0)},
          {"a quarter", progressView(25.0, 100.0)},
          {"all", progressView(100.0, 100.0)},
          {"beyond", progressView(150.0, 100.0)},
          {"round", progressView(60.0, 100.0, 5.0)}}},
        {"ZuLine",
         {{"horizontal", line({100.0, 2.0}, ZuLine::kHorizontal, ZuLine::kSolid)},
          {"horizontal, dashed", line({100.0, 2.0}, ZuLine::kHorizontal, ZuLine::kDashed)},
          {"vertical", line({1.0, 40.0}, ZuLine::kVertical, ZuLine::kSolid)},
          {"vertical, dashed", line({1.0, 40.0}, ZuLine::kVertical, ZuLine::kDashed)}}},
        {"ZuBox", {{"awake", box(nullptr, 1, grey)}, {"title, other line", box("Photos", 6, accent)}}},
        {"ZuBorderView",
         {{"origin below", marked(borderView(1.0, NSColor::blackColor()))},
          {"flipped", flippedBorderView()},
          {"wide", borderView(6.0, accent)},
          {"border, shadow", shadowOfBorder()},
          {"face, shadow", shadowOfFace()}}},
        {"ZuFlippedView", {{"origin above", flippedView()}}},
        {"ZuTableCornerView", {{"corner", cornerView()}}},
    };
}

Ref<NSView> look(std::string_view control, std::string_view name)
{
    for (const Scene& scene : scenes()) {
        for (const Look& each : scene.looks) {
            if (scene.control == control && each.name == name) {
                return each.view;
            }
        }
    }
    return nullptr;
}
