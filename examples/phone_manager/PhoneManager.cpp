#include "PhoneManager.h"

#include "DropArea.h"
#include "HeaderCell.h"
#include "Resources.h"
#include "files/ExportTask.h"
#include "files/ImportTask.h"

#include <platform/appkit/NSNib.h>
#include <platform/appkit/NSOpenPanel.h>
#include <platform/appkit/NSWorkspace.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSArray.h>
#include <platform/foundation/NSAttributedString.h>
#include <platform/foundation/NSBundle.h>
#include <platform/foundation/NSURL.h>
#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSFont.h>
#include <util/FileUtil.h>
#include <util/UiUtil.h>
#include <window/Classes.h>
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

/// In the settings, and of views, of which each has some; first those that show the accent.
constexpr std::array kColors{"color_border",
                             "color_background",
                             "color_used_",
                             "color_normal_border",
                             "color_normal_background",
                             "color_hover_border",
                             "color_hover_font",
                             "color_normal_font",
                             "color_hover_background",
                             "color_border_normal",
                             "color_desc",
                             "color_name_hover",
                             "color_desc_hover"};
constexpr std::size_t kAccentColors = 7;

constexpr double kUpdateInterval = 0.5;     // seconds, while a task runs
constexpr std::size_t kFaultsShown = 3;     // of a task
constexpr NSSize kWindowSize{960.0, 640.0}; // where there is none in the settings
constexpr NSSize kSmallestWindow{760.0, 480.0};

constexpr std::array<const ClassTable*, 6> kClasses{&DropArea::table,     &KindsView::table,
                                                    &ContactsPage::table, &MessagesPage::table,
                                                    &PicturesPage::table, &HeaderCell::table};

constexpr std::array kProperties{
    outlet<&PhoneManager::outline>("outline"),           outlet<&PhoneManager::contactsPage>("contactsPage"),
    outlet<&PhoneManager::messagesPage>("messagesPage"), outlet<&PhoneManager::picturesPage>("picturesPage"),
    outlet<&PhoneManager::startPage>("startPage"),       outlet<&PhoneManager::sampleLink>("sampleLink"),
    outlet<&PhoneManager::headline>("headline"),         outlet<&PhoneManager::taskPanel>("taskPanel"),
    outlet<&PhoneManager::taskStatus>("taskStatus"),     outlet<&PhoneManager::taskProgress>("taskProgress"),
    outlet<&PhoneManager::taskCancel>("taskCancel"),
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
    selector<&PhoneManager::update>("update"),
};

/// What a task has done, and the first of what went wrong, in the user's language.
std::string reportOn(const Task& task)
{
    const std::size_t shown = std::min(task.faults().size(), kFaultsShown);
    std::string sentences = localised("Task %s: %s", {std::to_string(task.identifier()), task.summary()});
    for (std::size_t fault = 0; fault < shown; ++fault) {
        sentences += '\n' + task.faults()[fault];
    }
    if (task.faultCount() > shown) {
        sentences += '\n' + localised("… and %s more", {std::to_string(task.faultCount() - shown)});
    }
    return sentences;
}

} // namespace

constinit const ClassTable PhoneManager::table{"PhoneManager", &NSObject::table, kProperties, kSelectors};

PhoneManager::PhoneManager(const std::string& settingsFile) : _settings(settingsFile), _phone(make<Phone>())
{
    _phone->setObserver([this] { update(); });
    if (const std::string chosen = _settings.text("language", ""); !chosen.empty()) {
        setLanguage(chosen);
    }
    build();
    const auto* const page =
        std::ranges::find(KindsView::kKindNames, _settings.text("page", KindsView::kKindNames.front()));
    outline->selectKind(page == KindsView::kKindNames.end()
                            ? KindsView::Kind()
                            : KindsView::Kind(page - KindsView::kKindNames.begin()));
    showPage();
    tell(_settings.trouble());
}

PhoneManager::~PhoneManager()
{
    _phone->setObserver(nullptr);
    for (const Ref<Task>& task : _tasks) {
        task->setObserver(nullptr);
        task->cancel();
    }
}

// Set-up

void PhoneManager::build()
{
    const Ref<NSNib> form = make<NSNib>()->initWithContentsOfFile(
        NSBundle::mainBundle()->pathForResource_ofType(text("MainWindow").get(), text("ui").get()).get());
    form->addClasses(kWindowClasses);
    form->addClasses(kClasses);
    form->setTranslation([](NSString* shown) { return text(localised(shown->UTF8String())); });
    _content = form->instantiateWithOwner(this);
    _title = form->windowTitle();

    sampleLink->setAttributedStringValue(ZuHyperlinkTextField::hyperlinkFromString_withURL_withFont(
        sampleLink->stringValue().get(), text("sample"), NSFont::fontWithName_size("Arial", 14.0)));
    sampleLink->setIsAction(true);
    sampleLink->setCaller(this);
    sampleLink->setFuncAction(SEL{"importSample:"});
    taskProgress->setTotal_(1.0);
    UiUtil::changeBackgroundColor_withRGB(_content.get(), text("F5F5F5").get());
    applyColors(*_content);
    outline->setPhone(_phone);
    contactsPage->setPhone(_phone);
    messagesPage->setPhone(_phone);
    picturesPage->setPhone(_phone);
}

void PhoneManager::applyColors(NSView& view)
{
    for (const char* key : kColors) {
        const Ref<NSColor> color = _settings.color(key); // else the view's own stays
        if (color && view.classTable().findProperty(key) != nullptr) {
            view.setValue_forKey(color.get(), key);
        }
    }
    if (auto* button = dynamic_cast<ZuToolButton*>(&view)) {
        button->setFocusRingType(NSFocusRingType::Default);
        button->setOffset(_settings.number("icon_offset", button->offset()));
    }
    view.setNeedsDisplay();
    for (const Ref<NSView>& inside : view.subviews()) {
        applyColors(*inside);
    }
}

void PhoneManager::openWindow()
{
    const auto length = [&](const char* key, double usual, double smallest) {
        return std::max<double>(_settings.number(key, static_cast<int>(usual)), smallest);
    };
    _window = make<NSWindow>()->initWithContentRect_styleMask(
        {{160.0, 120.0},
         {length("window_width", kWindowSize.width, kSmallestWindow.width),
          length("window_height", kWindowSize.height, kSmallestWindow.height)}},
        NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskMiniaturizable |
            NSWindowStyleMaskResizable);
    _window->setContentMinSize(kSmallestWindow);
    _window->setTitle(_title);
    _window->setContentView(_content);
    _window->setDelegate(this);
    _window->makeKeyAndOrderFront();
}

void PhoneManager::windowDidResize(NSWindow* window)
{
    const NSSize size = window->contentSize();
    _settings.set("window_width", static_cast<int>(size.width));
    _settings.set("window_height", static_cast<int>(size.height));
}

// Pages

void PhoneManager::showPage()
{
    const auto kind = static_cast<std::size_t>(outline->selectedKind());
    const bool isEmpty = _phone->isEmpty();
    headline->setStringValue(text(localised(isEmpty ? "Nothing here yet" : KindsView::kKindNames[kind])));
    startPage->setHidden(!isEmpty);
    const std::array<NSView*, 3> pages{contactsPage.get(), messagesPage.get(), picturesPage.get()};
    for (std::size_t page = 0; page < pages.size(); ++page) {
        pages[page]->setHidden(isEmpty || page != kind);
    }
}

void PhoneManager::openKind(NSObject* /*sender*/)
{
    showPage();
    _settings.set("page", KindsView::kKindNames[static_cast<std::size_t>(outline->selectedKind())]);
}

void PhoneManager::update()
{
    _isUpdateDue = false;
    outline->update();
    contactsPage->update();
    messagesPage->update();
    picturesPage->update();
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
        _faultsBefore.clear();
    }
    _tasks.push_back(task);
    task->setObserver([this] { taskDidProceed(); });
    if (_tasks.size() == 1) {
        task->start();
        showTask();
    }
}

void PhoneManager::taskDidProceed()
{
    if (_tasks.front()->state() != Task::State::Running) {
        update();
        if (_tasks.size() > 1) {
            if (_tasks.front()->faultCount() > 0) {
                _faultsBefore = '\n' + reportOn(*_tasks.front()) + _faultsBefore;
            }
            _tasks.pop_front();
            _tasks.front()->start();
        }
    } else if (!std::exchange(_isUpdateDue, true)) { // not with each slice: it takes longer than many of them
        performSelector_withObject_afterDelay(SEL{"update"}, nullptr, kUpdateInterval);
    }
    showTask();
}

void PhoneManager::cancelTask(NSObject* /*sender*/)
{
    if (!_tasks.empty()) {
        _tasks.front()->cancel();
    }
}

void PhoneManager::showTask()
{
    const Task& task = *_tasks.front();
    taskProgress->setStep_(task.progress());
    taskProgress->setNeedsDisplay();
    tell(reportOn(task) + _faultsBefore, task.state() == Task::State::Running);
}

/// Shows sentences in the panel, or no panel if there are none.
void PhoneManager::tell(const std::string& sentences, bool ofRunningTask)
{
    taskPanel->setHidden(sentences.empty());
    taskStatus->setStringValue(text(sentences));
    taskProgress->setHidden(!ofRunningTask);
    taskCancel->setHidden(!ofRunningTask);
}

// Files

/// What the user chooses for an action of that name; nothing if they do not.
std::vector<std::filesystem::path> PhoneManager::choose(NSOpenPanel& panel, const char* action)
{
    panel.setTitle(text(localised(action)));
    panel.setPrompt(panel.title());
    panel.setDirectoryURL(NSURL::fileURLWithPath(text(_settings.text("folder", "")).get()));
    std::vector<std::filesystem::path> chosen;
    if (panel.runModal() == NSModalResponseOK) {
        for (const Ref<NSURL>& url : *panel.URLs()) {
            chosen.emplace_back(url->path()->UTF8String());
        }
    }
    return chosen;
}

void PhoneManager::chooseImport(NSObject* /*sender*/)
{
    const Ref<PhoneManager> self(this);
    const Ref<NSOpenPanel> panel = NSOpenPanel::openPanel();
    panel->setAllowsMultipleSelection(true);
    const std::vector<std::filesystem::path> files = choose(*panel, "Import");
    if (!files.empty()) {
        _settings.set("folder", files.front().parent_path().string());
        importFiles(files);
    }
}

void PhoneManager::chooseExport(NSObject* /*sender*/)
{
    const Ref<PhoneManager> self(this);
    if (!_phone->hasChecked()) {
        tell(localised("Check what is to be exported first."));
        return;
    }
    const Ref<NSOpenPanel> panel = NSOpenPanel::openPanel();
    panel->setCanChooseFiles(false);
    panel->setCanChooseDirectories(true);
    const std::vector<std::filesystem::path> folders = choose(*panel, "Export");
    if (!folders.empty()) {
        _settings.set("folder", folders.front().string());
        exportTo(folders.front());
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
        std::ranges::find(kAccents, _settings.text(kColors.front(), ""), &Accent::color);
    const Accent& next =
        accent == kAccents.end() || accent + 1 == kAccents.end() ? kAccents.front() : *(accent + 1);
    for (std::size_t color = 0; color < kAccentColors; ++color) {
        _settings.set(kColors[color], next.color);
    }
    applyColors(*_content);
    tell(_settings.trouble().empty() ? localised("The buttons are in %s from now on.", {localised(next.name)})
                                     : _settings.trouble());
}

void PhoneManager::switchLanguage(NSObject* /*sender*/)
{
    setLanguage(language() == "de" ? "en" : "de");
    _settings.set("language", language());
    const KindsView::Kind kind = outline->selectedKind();
    build();
    outline->selectKind(kind);
    showPage();
    if (_tasks.empty()) {
        tell(_settings.trouble());
    } else {
        showTask();
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
