#include "PhoneManager.h"

#include "DropArea.h"
#include "Resources.h"
#include "files/ExportTask.h"
#include "files/ImportTask.h"

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
/// The colours that are the accent, in the settings and of views.
constexpr std::array kAccentColors{"color_border",        "color_background",        "color_used_",
                                   "color_normal_border", "color_normal_background", "color_hover_border",
                                   "color_hover_font"};

constexpr NSSize kWindowSize{960.0, 640.0}; // where there is none in the settings
constexpr NSSize kSmallestWindow{760.0, 480.0};

constexpr std::array<const ClassTable*, 5> kClasses{&DropArea::table, &KindsView::table, &ContactsPage::table,
                                                    &MessagesPage::table, &PicturesPage::table};
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
};

/// What a task has done, and the first of what went wrong.
std::string reportOn(const Task& task)
{
    constexpr std::size_t kMostShown = 3;
    const std::size_t shown = std::min(task.faults().size(), kMostShown);
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

PhoneManager::PhoneManager(const std::filesystem::path& settingsFile)
    : _settings(settingsFile), _phone(make<Phone>())
{
    _phone->didChange = [this] { update(); };
    if (const std::string chosen = _settings.text("language"); !chosen.empty()) {
        setLanguage(chosen);
    }
    build();
    tell(_settings.trouble());
    _toldBefore = _settings.trouble().empty() ? "" : '\n' + _settings.trouble();
}

PhoneManager::~PhoneManager()
{
    _phone->didChange = [] {};
    for (const Ref<Task>& task : _tasks) {
        task->didProceed = [] {};
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
    outline->phone = contactsPage->phone = messagesPage->phone = picturesPage->phone = _phone;
    update();
    outline->selectKind(Kind::Contacts);
}

/// Sets the colours that the settings have by the names of properties. Others stay.
void PhoneManager::applyColors(NSView& view)
{
    for (const ClassTable* each = &view.classTable(); each != nullptr; each = each->base) {
        for (const PropertyEntry& property : each->properties) {
            const std::string key(property.name);
            if (const Ref<NSColor> color =
                    key.starts_with("color_") ? _settings.color(key.c_str()) : nullptr) {
                view.setValue_forKey(color.get(), key);
            }
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

/// Shows what has become of the phone.
void PhoneManager::update()
{
    outline->update();
    contactsPage->update();
    messagesPage->update();
    picturesPage->update();
    openKind(nullptr);
}

void PhoneManager::openKind(NSObject* /*sender*/)
{
    const auto kind = static_cast<std::size_t>(outline->selectedKind());
    const bool isEmpty = _phone->contacts.empty() && _phone->messages.empty() && _phone->pictures.empty();
    headline->setStringValue(text(localised(isEmpty ? "Nothing here yet" : kKindNames[kind])));
    startPage->setHidden(!isEmpty);
    const std::array<NSView*, 3> pages{contactsPage.get(), messagesPage.get(), picturesPage.get()};
    for (std::size_t page = 0; page < pages.size(); ++page) {
        pages[page]->setHidden(isEmpty || page != kind);
    }
}

// Tasks

void PhoneManager::importFiles(const std::vector<std::filesystem::path>& files)
{
    addTask(make<ImportTask>(files, _phone));
}

void PhoneManager::exportTo(const std::filesystem::path& folder)
{
    addTask(make<ExportTask>(*_phone, folder / localised("Phone export")));
}

void PhoneManager::addTask(const Ref<Task>& task)
{
    if (!_tasks.empty() && _tasks.front()->state() != Task::State::Running) {
        _tasks.pop_front();
        _toldBefore.clear();
    }
    _tasks.push_back(task);
    task->didProceed = [this] { taskDidProceed(); };
    if (_tasks.size() == 1) {
        task->start();
        taskDidProceed();
    }
}

/// Shows how far the first task is, and goes on to the next one when it has ended.
void PhoneManager::taskDidProceed()
{
    Ref<Task> task = _tasks.front();
    if (task->state() != Task::State::Running) {
        update();
        if (_tasks.size() > 1) {
            _toldBefore = task->faultCount() == 0 ? _toldBefore : '\n' + reportOn(*task) + _toldBefore;
            _tasks.pop_front();
            task = _tasks.front();
            task->start();
        }
    }
    taskProgress->setStep_(task->progress());
    taskProgress->setNeedsDisplay();
    tell(reportOn(*task) + _toldBefore, task->state() == Task::State::Running);
}

void PhoneManager::cancelTask(NSObject* /*sender*/)
{
    if (!_tasks.empty()) {
        _tasks.front()->cancel();
    }
}

/// Shows sentences in the panel, or no panel if there are none.
void PhoneManager::tell(const std::string& sentences, bool ofRunningTask)
{
    taskPanel->setHidden(sentences.empty());
    taskStatus->setStringValue(text(sentences));
    taskProgress->setHidden(!ofRunningTask);
    taskCancel->setHidden(!ofRunningTask);
}

/// Tells something else, below what there is to tell of a task that runs.
void PhoneManager::notify(const std::string& sentence)
{
    if (!_tasks.empty() && _tasks.front()->state() == Task::State::Running) {
        _toldBefore = '\n' + sentence + _toldBefore;
    } else {
        tell(sentence);
    }
}

// Files

/// What the user chooses for an action of that name; nothing if they do not.
std::vector<std::filesystem::path> PhoneManager::choose(NSOpenPanel& panel, const char* action)
{
    panel.setTitle(text(localised(action)));
    panel.setPrompt(panel.title());
    panel.setDirectoryURL(NSURL::fileURLWithPath(text(_settings.text("folder")).get()));
    std::vector<std::filesystem::path> chosen;
    if (panel.runModal() == NSModalResponseOK) {
        for (const Ref<NSURL>& url : *panel.URLs()) {
            chosen.emplace_back(url->path()->UTF8String());
        }
    }
    if (!chosen.empty()) {
        const bool isFolder = panel.canChooseDirectories();
        _settings.set("folder", (isFolder ? chosen.front() : chosen.front().parent_path()).string());
    }
    return chosen;
}

void PhoneManager::chooseImport(NSObject* /*sender*/)
{
    const Ref<PhoneManager> self(this); // while the panel is open
    const Ref<NSOpenPanel> panel = NSOpenPanel::openPanel();
    panel->setAllowsMultipleSelection(true);
    if (const auto files = choose(*panel, "Import"); !files.empty()) {
        importFiles(files);
    }
}

void PhoneManager::chooseExport(NSObject* /*sender*/)
{
    const Ref<PhoneManager> self(this);
    bool hasChecked = false;
    _phone->visit([&](Kind, const std::string&, bool isChecked) { hasChecked = hasChecked || isChecked; });
    if (!hasChecked) {
        notify(localised("Check what is to be exported first."));
        return;
    }
    const Ref<NSOpenPanel> panel = NSOpenPanel::openPanel();
    panel->setCanChooseFiles(false);
    panel->setCanChooseDirectories(true);
    if (const auto folders = choose(*panel, "Export"); !folders.empty()) {
        exportTo(folders.front());
    }
}

void PhoneManager::importSample(NSObject* /*sender*/)
{
    const std::filesystem::path sample =
        StringUtil::NilToEmpty(FileUtil::GetResourcesDir().get())->UTF8String() + "Sample";
    importFiles({sample, sample / "Pictures"});
}

void PhoneManager::dragDropViewFileList(NSArray<NSString>* paths)
{
    std::vector<std::filesystem::path> files;
    for (const Ref<NSString>& path : *paths) {
        files.emplace_back(path->UTF8String());
    }
    importFiles(files);
}

// Settings

void PhoneManager::changeAppearance(NSObject* /*sender*/)
{
    const auto* accent = std::ranges::find(kAccents, _settings.text(kAccentColors.front()), &Accent::color);
    accent = accent == kAccents.end() || accent + 1 == kAccents.end() ? kAccents.begin() : accent + 1;
    for (const char* color : kAccentColors) {
        _settings.set(color, accent->color);
    }
    applyColors(*_content);
    notify(_settings.trouble().empty()
               ? localised("The buttons are in %s from now on.", {localised(accent->name)})
               : _settings.trouble());
}

void PhoneManager::switchLanguage(NSObject* /*sender*/)
{
    setLanguage(language() == "de" ? "en" : "de");
    _settings.set("language", language());
    const Kind kind = outline->selectedKind();
    build();
    outline->selectKind(kind);
    openKind(nullptr);
    if (!_tasks.empty()) {
        taskDidProceed();
    }
    if (!_settings.trouble().empty()) {
        notify(_settings.trouble());
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
