#pragma once

#include "ContactsPage.h"
#include "KindsView.h"
#include "MessagesPage.h"
#include "PicturesPage.h"
#include "Settings.h"
#include "files/Task.h"

#include <deque>
#include <filesystem>
#include <string>
#include <vector>

/// The application: owns what the interface file describes and what it shows, takes the actions, and goes
/// through the tasks, one after the other.
class PhoneManager final : public NSObject, public NSWindowDelegate, public DragDropViewDeletegate
{
public:
    // Outlets
    Ref<KindsView> outline;
    Ref<ContactsPage> contactsPage;
    Ref<MessagesPage> messagesPage;
    Ref<PicturesPage> picturesPage;
    Ref<NSView> startPage; // in their place, as long as there is nothing on the phone
    Ref<ZuHyperlinkTextField> sampleLink;
    Ref<NSTextField> headline;
    Ref<ZuBox> taskPanel; // shows how far a task has come, or how it ended and what went wrong
    Ref<NSTextField> taskStatus;
    Ref<ZuProgressView> taskProgress;
    Ref<ZuSimpleButton> taskCancel;

    /// Opens the settings and builds the content, in the language that they name, or else the present one.
    explicit PhoneManager(const std::filesystem::path& settingsFile);

    /// Shows the content in a window.
    void openWindow();
    /// The content, made anew when the language changes.
    NSView* content() const { return _content.get(); }
    Phone* phone() const { return _phone.get(); }
    /// The one that runs or came last; null before the first.
    Task* task() const { return _tasks.empty() ? nullptr : _tasks.front().get(); }

    /// Adds what files and folders hold to the phone.
    void importFiles(const std::vector<std::filesystem::path>& files);
    /// Writes what is checked to a new folder in `folder`.
    void exportTo(const std::filesystem::path& folder);

    // Actions
    void chooseImport(NSObject* sender);
    void chooseExport(NSObject* sender);
    void importSample(NSObject* sender);
    void changeAppearance(NSObject* sender);
    void switchLanguage(NSObject* sender);
    void openHelp(NSObject* sender);
    void openKind(NSObject* sender);
    void cancelTask(NSObject* sender);

    // What others tell.
    void dragDropViewFileList(NSArray<NSString>* paths) override;
    void windowDidResize(NSWindow* window) override;

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

protected:
    ~PhoneManager() override;

private:
    void build();
    void applyColors(NSView& view);
    void update();
    void addTask(const Ref<Task>& task);
    void taskDidProceed();
    void tell(const std::string& sentences, bool ofRunningTask = false);
    void notify(const std::string& sentence);
    std::vector<std::filesystem::path> choose(NSOpenPanel& panel, const char* action);

    Settings _settings;
    Ref<Phone> _phone;
    std::deque<Ref<Task>> _tasks; // the first one runs, or has ended
    std::string _toldBefore;      // lines below what the first one tells, as long as it is there
    Ref<NSString> _title;
    Ref<NSView> _content;
    Ref<NSWindow> _window;
};
