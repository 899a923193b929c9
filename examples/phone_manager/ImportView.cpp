#include "ImportView.h"

#include "Label.h"
#include "Look.h"
#include "PageView.h"
#include "PhotoImport.h"
#include "Texts.h"

#include <platform/appkit/NSWorkspace.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSArray.h>
#include <platform/foundation/NSAttributedString.h>
#include <platform/foundation/NSURL.h>
#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSFont.h>
#include <platform/graphics/NSParagraphStyle.h>
#include <platform/graphics/NSShadow.h>
#include <util/FileUtil.h>
#include <util/UiUtil.h>
#include <window/ZuBorderView.h>
#include <window/ZuBox.h>
#include <window/ZuHyperlinkTextField.h>
#include <window/ZuLine.h>
#include <window/ZuProgressView.h>
#include <window/ZuSimpleButton.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <utility>

namespace
{

// The box, from its lower left corner
constexpr double kBoxHeight = 80.0;
constexpr double kBoxTextBottom = 20.0;
constexpr double kBoxLineInset = 14.0;   // from the frame, above and below
constexpr double kBoxFrameHeight = 64.0; // what the title leaves
constexpr std::int64_t kBoxLineHeight = 4;

// The panel under it, from its upper left corner
constexpr double kPanelTop = kBoxHeight + 24.0;
constexpr double kPanelHeight = 196.0;
constexpr double kPadding = 20.0;
constexpr double kPositionWidth = 84.0;
constexpr double kProgressTop = 46.0;
constexpr double kProgressHeight = 12.0;
constexpr double kProgressRadius = 3.0; // the corners of the done part just fit into it
constexpr double kDetailTop = 70.0;
constexpr double kDetailHeight = 46.0;
constexpr double kLineTop = 126.0;
constexpr double kLineHeight = 2.0; // of which one shows
constexpr double kButtonsTop = 144.0;
constexpr NSSize kButtonSize{112.0, 32.0};
constexpr double kButtonGap = 12.0;
constexpr double kLinkTop = 151.0;

constexpr double kTextHeight = 20.0;
constexpr const char* kPhotoExtensions = "jpg,jpeg,png,gif";
constexpr std::size_t kLongestPath = 32; // in bytes

constexpr std::array kSelectors{
    selector<&ImportView::startImport>("startImport:"),
    selector<&ImportView::cancelImport>("cancelImport:"),
    selector<&ImportView::openFolder>("openFolder:"),
    selector<&ImportView::importDidProceed>("importDidProceed:"),
};

Ref<NSColor> darker(const NSColor& color)
{
    constexpr double kPart = 0.85;
    const auto [red, green, blue, alpha] = color.components();
    return NSColor::colorWithSRGBRed_green_blue_alpha(red * kPart, green * kPart, blue * kPart, alpha);
}

Ref<ZuLine> line(NSRect frame, std::int32_t type, std::int32_t style)
{
    Ref<ZuLine> line = make<ZuLine>()->initWithFrame(frame);
    line->awakeFromNib();
    line->setType_(type);
    line->setStyle_(style);
    line->setColor_(grey(0.8));
    return line;
}

/// "One photo", or as many in the other text.
std::string counted(std::size_t count, const char* one, const char* many, const std::string& place = "")
{
    return count == 1 ? localised(one, {place}) : localised(many, {std::to_string(count), place});
}

/// A folder as it is shown in a sentence.
std::string shownFolder(const std::filesystem::path& folder)
{
    const std::string path = folder.string();
    return shownName(path.size() <= kLongestPath ? path : folder.filename().string());
}

/// How an import that has ended went.
std::string resultOf(const PhotoImport& import)
{
    std::string result = import.copied() == 0
                             ? localised("No photo was copied.")
                             : counted(import.copied(), "One photo is in “%s” now.",
                                       "%s photos are in “%s” now.", shownFolder(import.folder()));
    std::string failed;
    for (const std::string& name : import.failed()) {
        failed += (failed.empty() ? "" : ", ") + shownName(name);
    }
    return failed.empty() ? result : result + '\n' + localised("Not copied: %s", {failed});
}

} // namespace

constinit const ClassTable ImportView::table{"ImportView", &DragDropView::table, {}, kSelectors};

const ClassTable& ImportView::classTable() const
{
    return table;
}

ImportView::ImportView() = default;

ImportView::~ImportView()
{
    if (_import) {
        _import->cancel();
    }
}

ImportView* ImportView::initWithFrame(NSRect frame)
{
    DragDropView::initWithFrame(frame);
    setFilePostfix(text(kPhotoExtensions));
    setDelegate(this);
    _count = make<Label>("Arial Bold", 15.0, 0.13, NSTextAlignment::Center);
    _size = make<Label>("Arial", 15.0, 0.27, NSTextAlignment::Center);
    _status = make<Label>("Arial Bold", 13.0, 0.13, NSTextAlignment::Left);
    _position = make<Label>("Arial", 12.0, 0.4, NSTextAlignment::Right);
    _detail = make<Label>("Arial", 12.0, 0.4, NSTextAlignment::Left);
    addSubview(sourceBox());
    addSubview(progressPanel());
    showSource();
    showProgress();
    return this;
}

Ref<NSView> ImportView::sourceBox()
{
    const double width = bounds().size.width - 2.0 * PageView::kMargin;
    const Ref<ZuBox> box =
        make<ZuBox>()->initWithFrame(NSMakeRect(PageView::kMargin, 0.0, width, kBoxHeight));
    _source = box;
    box->awakeFromNib();
    box->setFillColor(NSColor::whiteColor());
    box->setCornerRadius(0.0);
    box->setHeight(kBoxLineHeight);

    const double half = width * 0.5;
    _count->setFrame(NSMakeRect(0.0, kBoxTextBottom, half, kTextHeight));
    _size->setFrame(NSMakeRect(half, kBoxTextBottom, half, kTextHeight));
    box->addSubview(_count);
    box->addSubview(_size);
    box->addSubview(line(NSMakeRect(half, kBoxLineInset, 1.0, kBoxFrameHeight - 2.0 * kBoxLineInset),
                         ZuLine::kVertical, ZuLine::kSolid));
    return box;
}

Ref<NSView> ImportView::progressPanel()
{
    const double width = bounds().size.width - 2.0 * PageView::kMargin;
    Ref<ZuBorderView> panel =
        make<ZuBorderView>()->initWithFrame(NSMakeRect(PageView::kMargin, kPanelTop, width, kPanelHeight));
    panel->setFlipped(true);
    panel->setColor_border_(grey(0.8));
    UiUtil::changeBackgroundColor_withColor(panel.get(), NSColor::whiteColor().get());
    panel->setShadow();
    const Ref<NSShadow> lighter = panel->shadow();
    lighter->setShadowColor(grey(0.8));
    panel->setShadow(lighter);

    const double column = width - 2.0 * kPadding;
    _status->setFrame(NSMakeRect(kPadding, kPadding, column - kPositionWidth, kTextHeight));
    _position->setFrame(NSMakeRect(width - kPadding - kPositionWidth, kPadding, kPositionWidth, kTextHeight));
    _detail->setFrame(NSMakeRect(kPadding, kDetailTop, column, kDetailHeight));
    _progress =
        make<ZuProgressView>()->initWithFrame(NSMakeRect(kPadding, kProgressTop, column, kProgressHeight));
    _progress->setAccessibilityLabel(text(localised("Progress of the import")));
    _progress->setColor_border_(grey(0.75));
    _progress->setColor_unuse_(grey(0.94));
    _progress->setXRadius_(kProgressRadius);
    _progress->setYRadius_(kProgressRadius);
    const double right = width - kPadding - kButtonSize.width;
    _importButton = button(right, "Import", SEL{"startImport:"});
    _cancelButton = button(right - kButtonGap - kButtonSize.width, "Cancel", SEL{"cancelImport:"});
    setAccent(_importButton->color_normal_background());

    _folderLink = make<ZuHyperlinkTextField>()->initWithFrame(
        NSMakeRect(kPadding, kLinkTop, column - 2.0 * (kButtonSize.width + kButtonGap), kTextHeight));
    _folderLink->awakeFromNib();
    _folderLink->setBezeled(false);
    _folderLink->setDrawsBackground(false);
    _folderLink->setEditable(false);
    _folderLink->setIsAction(true);
    _folderLink->setCaller(this);
    _folderLink->setFuncAction(SEL{"openFolder:"});

    const Ref<NSView> dashes =
        line(NSMakeRect(kPadding, kLineTop, column, kLineHeight), ZuLine::kHorizontal, ZuLine::kDashed);
    for (const Ref<NSView>& view : std::initializer_list<Ref<NSView>>{
             _status, _position, _progress, _detail, dashes, _folderLink, _cancelButton, _importButton}) {
        panel->addSubview(view);
    }
    return panel;
}

Ref<ZuSimpleButton> ImportView::button(double x, const char* title, SEL action)
{
    Ref<ZuSimpleButton> button = make<ZuSimpleButton>()->initWithFrame({{x, kButtonsTop}, kButtonSize});
    button->awakeFromNib();
    button->setTitle(text(localised(title)));
    // What goes with the grey face, too: a press disables the button while the pointer is on it.
    button->setColor_normal_border(nullptr);
    button->setColor_hover_font(NSColor::whiteColor());
    button->setTarget(this);
    button->setAction(action);
    return button;
}

void ImportView::setAccent(const Ref<NSColor>& color)
{
    const Ref<NSColor> hover = darker(*color);
    _progress->setColor_used_(color);
    _progress->setNeedsDisplay();
    for (const Ref<ZuSimpleButton>& button : {_importButton, _cancelButton}) {
        button->setColor_normal_background(color);
        button->setColor_hover_background(hover);
        button->setColor_hover_border(hover);
        button->setNeedsDisplay();
    }
}

void ImportView::setFiles_folder(std::vector<std::filesystem::path> files, std::filesystem::path folder)
{
    _files = std::move(files);
    _folder = std::move(folder);
    _source->setTitle(text(localised("On the phone")));
    showSource();
    showProgress();
}

void ImportView::dragDropViewFileList(NSArray<NSString>* paths)
{
    std::vector<std::filesystem::path> photos;
    const Ref<NSString> wanted = text(std::string(",") + kPhotoExtensions + ',');
    for (const Ref<NSString>& path : *paths) {
        const std::filesystem::path file = path->UTF8String();
        std::string extension = file.extension().string();
        std::ranges::replace(extension, '.', ',');
        const NSRange found =
            wanted->rangeOfString_options(text(extension + ',').get(), NSCaseInsensitiveSearch);
        if (extension.size() > 1 && found.location != NSNotFound) {
            photos.push_back(file);
        }
    }
    if (!photos.empty()) {
        setFiles_folder(std::move(photos), _folder);
        _source->setTitle(text(localised("Dropped here")));
    }
}

void ImportView::openFolder(NSObject* url)
{
    NSWorkspace::sharedWorkspace()->openURL(dynamic_cast<NSURL*>(url));
}

void ImportView::startImport(NSObject* /*sender*/)
{
    _import = make<PhotoImport>()->initWithFiles_folder(_files, _folder);
    _import->setTarget_action(this, SEL{"importDidProceed:"});
    _import->start();
    showProgress();
}

void ImportView::cancelImport(NSObject* /*sender*/)
{
    if (_import) {
        _import->cancel();
    }
    showProgress();
}

void ImportView::importDidProceed(NSObject* /*sender*/)
{
    showProgress();
}

void ImportView::showSource()
{
    std::uint64_t bytes = 0;
    for (const std::filesystem::path& file : _files) {
        bytes += static_cast<std::uint64_t>(FileUtil::getFileSize(file.c_str()));
    }
    _count->setText(counted(_files.size(), "One photo", "%s photos"));
    _size->setText(localised("%s in all", {FileUtil::QxGetFormatSizeFromBytes(bytes)->UTF8String()}));
}

void ImportView::showProgress()
{
    using State = PhotoImport::State;
    const State state = _import ? _import->state() : State::Idle;
    const bool running = state == State::Running;
    const std::size_t total = _import ? _import->files().size() : 0;
    const std::size_t finished = _import ? _import->finished() : 0;
    _importButton->setEnabled(!running && !_files.empty());
    _cancelButton->setEnabled(running);
    _folderLink->setHidden(running || !_import || _import->copied() == 0);
    if (!_folderLink->isHidden()) {
        const Ref<NSURL> url = NSURL::fileURLWithPath(text(_import->folder().string()).get());
        _folderLink->setAttributedStringValue(ZuHyperlinkTextField::hyperlinkFromString_withURL_withFont(
            text(localised("Open the folder")).get(), url, NSFont::fontWithName_size("Arial", 13.0)));
    }
    _progress->setTotal_(static_cast<double>(total));
    _progress->setStep_(static_cast<double>(finished));
    _progress->setNeedsDisplay();
    _position->setText(
        finished == 0 ? "" : localised("%s of %s", {std::to_string(finished), std::to_string(total)}));
    _detail->setToolTip(text((_import ? _import->folder() : _folder).string()));
    switch (state) {
    case State::Idle:
        if (_import) {
            _status->setText(localised("Nothing was imported."));
            _detail->setText(localised("The folder “%s” cannot be made: nothing can be written there.",
                                       {shownFolder(_import->folder())}));
        } else if (_files.empty()) {
            _status->setText(localised("There is nothing to import."));
        } else {
            _status->setText(localised("Ready to import."));
            _detail->setText(localised("The photos will be copied to “%s”.", {shownFolder(_folder)}));
        }
        break;
    case State::Running:
        if (finished < total) {
            _status->setText(
                localised("Copying “%s”…", {shownName(_import->files()[finished].filename().string())}));
        }
        _detail->setText(localised("To “%s”.", {shownFolder(_import->folder())}));
        break;
    case State::Done:
    case State::Cancelled:
        _status->setText(
            localised(state == State::Done ? "The import is complete." : "The import was cancelled."));
        _detail->setText(resultOf(*_import));
        break;
    }
}
