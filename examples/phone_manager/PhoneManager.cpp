#include "PhoneManager.h"

#include "ExportTask.h"
#include "HeaderCell.h"
#include "ImportTask.h"
#include "Texts.h"

#include <platform/appkit/NSNib.h>
#include <platform/appkit/NSOpenPanel.h>
#include <platform/appkit/NSWorkspace.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSArray.h>
#include <platform/foundation/NSAttributedString.h>
#include <platform/foundation/NSBundle.h>
#include <platform/foundation/NSString.h>
#include <platform/foundation/NSURL.h>
#include <platform/foundation/NSUserDefaults.h>
#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSFont.h>
#include <util/FileUtil.h>
#include <util/UiUtil.h>
#include <window/Classes.h>
#include <window/ZuSimpleButton.h>
#include <window/ZuToolButton.h>

#include <algorithm>
#include <array>
#include <utility>

namespace
{

struct Accent {
    const char* name;
    const char* color;
};
constexpr std::array kAccents{Accent{"Sky", "32,186,234"}, Accent{"Meadow", "52,152,83"},
                              Accent{"Sunset", "224,104,32"}, Accent{"Violet", "126,87,194"}};
constexpr std::array kLanguages{"en", "de"};

/// In the settings, by the places of `KindsView::Kind`; also the headlines, in English.
constexpr std::array kPages{"Contacts", "Messages", "Pictures"};

constexpr double kUpdateInterval = 0.5;     // seconds, while a task runs
constexpr NSSize kWindowSize{960.0, 640.0}; // where there is none in the settings
constexpr NSSize kSmallestWindow{760.0, 480.0};

constexpr std::array<const ClassTable*, 6> kClasses{&KindsView::table,    &ContactsPage::table,
                                                    &MessagesPage::table, &PicturesPage::table,
                                                    &TaskPanel::table,    &HeaderCell::table};

constexpr std::array kProperties{
    property<&PhoneManager::outline, &PhoneManager::setOutline>("outline"),
    property<&PhoneManager::contactsPage, &PhoneManager::setContactsPage>("contactsPage"),
    property<&PhoneManager::messagesPage, &PhoneManager::setMessagesPage>("messagesPage"),
    property<&PhoneManager::picturesPage, &PhoneManager::setPicturesPage>("picturesPage"),
    property<&PhoneManager::startPage, &PhoneManager::setStartPage>("startPage"),
    property<&PhoneManager::sampleLink, &PhoneManager::setSampleLink>("sampleLink"),
    property<&PhoneManager::headline, &PhoneManager::setHeadline>("headline"),
    property<&PhoneManager::taskPanel, &PhoneManager::setTaskPanel>("taskPanel"),
};
constexpr std::array kSelectors{
    selector<&PhoneManager::chooseImport>("chooseImport:"),
    selector<&PhoneManager::chooseExport>("chooseExport:"),
    selector<&PhoneManager::importSample>("importSample:"),
    selector<&PhoneManager::changeAppearance>("changeAppearance:"),
    selector<&PhoneManager::switchLanguage>("switchLanguage:"),
    selector<&PhoneManager::openHelp>("openHelp:"),
    selector<&PhoneManager::openKind>("openKind:"),
    selector<&PhoneManager::cancelTask>("cancelTask:"),
    selector<&PhoneManager::phoneDidChange>("phoneDidChange:"),
    selector<&PhoneManager::taskDidProceed>("taskDidProceed:"),
};

} // namespace

constinit const ClassTable PhoneManager::table{"PhoneManager", &NSObject::table, kProperties, kSelectors};

const ClassTable& PhoneManager::classTable() const
{
    return table;
}

PhoneManager::PhoneManager() : _phone(make<Phone>()) {}

PhoneManager::~PhoneManager()
{
    for (const Ref<Task>& task : _tasks) {
        task->cancel();
    }
}

PhoneManager* PhoneManager::initWithSettingsFile(const std::string& path)
{
    _settings = std::make_unique<Settings>(path);
    _phone->setTarget_action(this, SEL{"phoneDidChange:"});
    build();
    const std::string last = _settings->text("page", kPages.front());
    const auto* const page = std::ranges::find(kPages, last);
    _outline->selectKind(page == kPages.end() ? KindsView::Kind() : KindsView::Kind(page - kPages.begin()));
    showPage();
    _taskPanel->show(_settings->trouble());
    return this;
}

void PhoneManager::build()
{
    const Ref<NSNib> form = make<NSNib>()->initWithContentsOfFile(
        NSBundle::mainBundle()->pathForResource_ofType(text("MainWindow").get(), text("ui").get()).get());
    form->addClasses(kWindowClasses);
    form->addClasses(kClasses);
    form->setTranslation([](NSString* shown) { return text(localised(shown->UTF8String())); });
    _content = form->instantiateWithOwner(this);
    _title = form->windowTitle();

    _sampleLink->setAttributedStringValue(ZuHyperlinkTextField::hyperlinkFromString_withURL_withFont(
        _sampleLink->stringValue().get(), text("sample"), NSFont::fontWithName_size("Arial", 14.0)));
    _sampleLink->setIsAction(true);
    _sampleLink->setCaller(this);
    _sampleLink->setFuncAction(SEL{"importSample:"});
    UiUtil::changeBackgroundColor_withRGB(_content.get(), text("F5F5F5").get());
    applyColors(*_content);
    _outline->setPhone(_phone);
    for (Page* page :
         std::initializer_list<Page*>{_contactsPage.get(), _messagesPage.get(), _picturesPage.get()}) {
        page->setPhone(_phone);
    }
}

void PhoneManager::applyColors(NSView& view)
{
    if (auto* button = dynamic_cast<ZuToolButton*>(&view)) {
        using Setter = void (ZuToolButton::*)(Ref<NSColor>);
        static constexpr std::array<std::pair<const char*, Setter>, 6> kColors{{
            {"color_border", &ZuToolButton::setColor_border},
            {"color_border_normal", &ZuToolButton::setColor_border_normal},
            {"color_background", &ZuToolButton::setColor_background},
            {"color_desc", &ZuToolButton::setColor_desc},
            {"color_name_hover", &ZuToolButton::setColor_name_hover},
            {"color_desc_hover", &ZuToolButton::setColor_desc_hover},
        }};
        for (const auto& [key, setter] : kColors) {
            if (const Ref<NSColor> color = _settings->color(key)) { // else the button's own stays
                (button->*setter)(color);
            }
        }
        button->setFocusRingType(NSFocusRingType::Default);
        button->setOffset(_settings->number("icon_offset", button->offset()));
    } else if (auto* progress = dynamic_cast<ZuProgressView*>(&view)) {
        progress->setColor_used_(_settings->color("color_background"));
    } else if (auto* simple = dynamic_cast<ZuSimpleButton*>(&view)) {
        const Ref<NSColor> accent = _settings->color("color_background");
        simple->setColor_normal_font(NSColor::whiteColor());
        simple->setColor_normal_background(accent);
        simple->setColor_normal_border(accent);
        simple->setColor_hover_font(accent);
        simple->setColor_hover_background(NSColor::whiteColor());
        simple->setColor_hover_border(accent);
    }
    view.setNeedsDisplay();
    for (const Ref<NSView>& inside : view.subviews()) {
        applyColors(*inside);
    }
}

void PhoneManager::openWindow()
{
    const NSSize size{
        static_cast<double>(_settings->number("window_width", static_cast<int>(kWindowSize.width))),
        static_cast<double>(_settings->number("window_height", static_cast<int>(kWindowSize.height)))};
    _window = make<NSWindow>()->initWithContentRect_styleMask(
        {{160.0, 120.0},
         {std::max(size.width, kSmallestWindow.width), std::max(size.height, kSmallestWindow.height)}},
        NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskMiniaturizable |
            NSWindowStyleMaskResizable);
    _window->setContentMinSize(kSmallestWindow);
    _window->setTitle(_title);
    _window->setContentView(_content);
    _window->setDelegate(this);
    _window->makeKeyAndOrderFront();
}

// Pages

void PhoneManager::showPage()
{
    const auto kind = static_cast<std::size_t>(_outline->selectedKind());
    const bool isEmpty =
        _phone->contacts().empty() && _phone->messages().empty() && _phone->pictures().empty();
    _headline->setStringValue(text(localised(isEmpty ? "Nothing here yet" : kPages[kind])));
    _startPage->setHidden(!isEmpty);
    const std::array<NSView*, 3> pages{_contactsPage.get(), _messagesPage.get(), _picturesPage.get()};
    for (std::size_t page = 0; page < pages.size(); ++page) {
        pages[page]->setHidden(isEmpty || page != kind);
    }
}

void PhoneManager::openKind(NSObject* /*sender*/)
{
    showPage();
    _settings->set("page", kPages[static_cast<std::size_t>(_outline->selectedKind())]);
}

void PhoneManager::phoneDidChange(NSObject* /*sender*/)
{
    _isUpdateDue = false;
    _outline->update();
    _contactsPage->update();
    _messagesPage->update();
    _picturesPage->update();
    showPage();
}

// Tasks

void PhoneManager::importFiles(std::vector<std::filesystem::path> files)
{
    addTask(make<ImportTask>()->initWithFiles_phone(std::move(files), _phone));
}

void PhoneManager::exportTo(const std::filesystem::path& folder)
{
    addTask(make<ExportTask>()->initWithPhone_folder(_phone, folder / localised("Phone export")));
}

void PhoneManager::addTask(const Ref<Task>& task)
{
    if (!_tasks.empty() && _tasks.front()->state() != Task::State::Running) {
        _tasks.pop_front();
    }
    _tasks.push_back(task);
    task->setTarget_action(this, SEL{"taskDidProceed:"});
    if (_tasks.size() == 1) {
        task->start();
        _taskPanel->show(*task);
    }
}

void PhoneManager::taskDidProceed(NSObject* /*sender*/)
{
    if (_tasks.front()->state() != Task::State::Running) {
        phoneDidChange(nullptr);
        if (_tasks.size() > 1) {
            _tasks.pop_front();
            _tasks.front()->start();
        }
    } else if (!std::exchange(_isUpdateDue, true)) { // not with each slice: it takes longer than many of them
        performSelector_withObject_afterDelay(SEL{"phoneDidChange:"}, nullptr, kUpdateInterval);
    }
    _taskPanel->show(*_tasks.front());
}

void PhoneManager::cancelTask(NSObject* /*sender*/)
{
    if (!_tasks.empty()) {
        _tasks.front()->cancel();
    }
}

// Files

void PhoneManager::chooseImport(NSObject* /*sender*/)
{
    const Ref<PhoneManager> self(this);
    const Ref<NSOpenPanel> panel = NSOpenPanel::openPanel();
    panel->setAllowsMultipleSelection(true);
    panel->setDirectoryURL(NSURL::fileURLWithPath(text(_settings->text("folder", "")).get()));
    if (panel->runModal() == NSModalResponseOK) {
        std::vector<std::filesystem::path> files;
        for (const Ref<NSURL>& url : *panel->URLs()) {
            files.emplace_back(url->path()->UTF8String());
        }
        _settings->set("folder", files.front().parent_path().string());
        importFiles(std::move(files));
    }
}

void PhoneManager::chooseExport(NSObject* /*sender*/)
{
    if (checkedCount(_phone->contacts()) + checkedCount(_phone->messages()) +
            checkedCount(_phone->pictures()) ==
        0) {
        _taskPanel->show(localised("Check what is to be exported first."));
        return;
    }
    const Ref<PhoneManager> self(this);
    const Ref<NSOpenPanel> panel = NSOpenPanel::openPanel();
    panel->setCanChooseFiles(false);
    panel->setCanChooseDirectories(true);
    panel->setDirectoryURL(NSURL::fileURLWithPath(text(_settings->text("folder", "")).get()));
    if (panel->runModal() == NSModalResponseOK) {
        const std::string folder = panel->URLs()->objectAtIndex(0)->path()->UTF8String();
        _settings->set("folder", folder);
        exportTo(folder);
    }
}

void PhoneManager::importSample(NSObject* /*sender*/)
{
    if (const Ref<NSString> resources = FileUtil::GetResourcesDir()) {
        const std::filesystem::path sample = resources->UTF8String() + "Sample";
        importFiles({sample, sample / "Pictures"});
    }
}

void PhoneManager::dragDropViewFileList(NSArray<NSString>* paths)
{
    std::vector<std::filesystem::path> files;
    for (const Ref<NSString>& path : *paths) {
        files.emplace_back(path->UTF8String());
    }
    if (!files.empty()) {
        importFiles(std::move(files));
    }
}

// Settings

void PhoneManager::changeAppearance(NSObject* /*sender*/)
{
    const auto* const accent =
        std::ranges::find(kAccents, _settings->text("color_border", ""), &Accent::color);
    const Accent& next =
        accent == kAccents.end() || accent + 1 == kAccents.end() ? kAccents.front() : *(accent + 1);
    _settings->set("color_border", next.color);
    _settings->set("color_background", next.color);
    applyColors(*_content);
    _taskPanel->show(_settings->trouble().empty()
                         ? localised("The buttons are in %s from now on.", {localised(next.name)})
                         : _settings->trouble());
}

void PhoneManager::switchLanguage(NSObject* /*sender*/)
{
    const Ref<NSString> key = text("Tavori");
    const Ref<NSUserDefaults> defaults = NSUserDefaults::standardUserDefaults();
    const Ref<NSObject> language = defaults->objectForKey(key.get());
    const auto* const now = std::ranges::find_if(
        kLanguages, [&](const char* each) { return text(each)->isEqual(language.get()); });
    const bool isLast = now == kLanguages.end() || now + 1 == kLanguages.end();
    defaults->setObject_forKey(text(isLast ? kLanguages.front() : *(now + 1)).get(), key.get());

    const KindsView::Kind kind = _outline->selectedKind();
    build();
    _outline->selectKind(kind);
    showPage();
    if (_tasks.empty()) {
        _taskPanel->show(_settings->trouble());
    } else {
        _taskPanel->show(*_tasks.front());
    }
    if (_window) {
        _window->setTitle(_title);
        _window->setContentView(_content);
    }
}

void PhoneManager::openHelp(NSObject* sender)
{
    const Ref<NSString> address = dynamic_cast<ZuToolButton&>(*sender).str_url();
    NSWorkspace::sharedWorkspace()->openURL(NSURL::URLWithString(address.get()).get());
}

void PhoneManager::windowDidResize(NSWindow* window)
{
    const NSSize size = window->contentSize();
    _settings->set("window_width", static_cast<int>(size.width));
    _settings->set("window_height", static_cast<int>(size.height));
}
