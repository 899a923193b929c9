#pragma once

#include "ContactsPage.h"
#include "KindsView.h"
#include "MessagesPage.h"
#include "Phone.h"
#include "PicturesPage.h"
#include "Settings.h"
#include "Task.h"
#include "TaskPanel.h"

#include <platform/appkit/NSWindow.h>
#include <platform/foundation/NSObject.h>
#include <window/DragDropView.h>
#include <window/ZuHyperlinkTextField.h>

#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// The application: owns what the interface file describes and what it shows, takes the actions, and goes
/// through the tasks, one after the other.
class PhoneManager final : public NSObject, public NSWindowDelegate, public DragDropViewDeletegate
{
public:
    PhoneManager();

    /// Opens the settings and builds the content, in the language that the standard user default "Tavori"
    /// names.
    PhoneManager* initWithSettingsFile(const std::string& path);

    /// Shows the content in a window.
    void openWindow();
    /// The content, made anew when the language changes.
    NSView* content() const { return _content.get(); }
    Phone* phone() const { return _phone.get(); }
    /// The one that runs or came last; null before the first.
    Task* task() const { return _tasks.empty() ? nullptr : _tasks.front().get(); }

    /// Adds what files and folders hold to the phone.
    void importFiles(std::vector<std::filesystem::path> files);
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
    void phoneDidChange(NSObject* sender);
    void taskDidProceed(NSObject* sender);

    // Outlets
    Ref<KindsView> outline() const { return _outline; }
    void setOutline(Ref<KindsView> view) { _outline = std::move(view); }
    Ref<ContactsPage> contactsPage() const { return _contactsPage; }
    void setContactsPage(Ref<ContactsPage> page) { _contactsPage = std::move(page); }
    Ref<MessagesPage> messagesPage() const { return _messagesPage; }
    void setMessagesPage(Ref<MessagesPage> page) { _messagesPage = std::move(page); }
    Ref<PicturesPage> picturesPage() const { return _picturesPage; }
    void setPicturesPage(Ref<PicturesPage> page) { _picturesPage = std::move(page); }
    Ref<NSView> startPage() const { return _startPage; }
    void setStartPage(Ref<NSView> page) { _startPage = std::move(page); }
    Ref<ZuHyperlinkTextField> sampleLink() const { return _sampleLink; }
    void setSampleLink(Ref<ZuHyperlinkTextField> link) { _sampleLink = std::move(link); }
    Ref<NSTextField> headline() const { return _headline; }
    void setHeadline(Ref<NSTextField> field) { _headline = std::move(field); }
    Ref<TaskPanel> taskPanel() const { return _taskPanel; }
    void setTaskPanel(Ref<TaskPanel> panel) { _taskPanel = std::move(panel); }

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~PhoneManager() override;

private:
    void build();
    void applyColors(NSView& view);
    void showPage();
    void addTask(const Ref<Task>& task);

    std::unique_ptr<Settings> _settings;
    Ref<Phone> _phone;
    std::deque<Ref<Task>> _tasks; // the first one runs, or has ended
    bool _isUpdateDue = false;    // what the running task has done will show
    Ref<NSString> _title;
    Ref<NSView> _content;
    Ref<NSWindow> _window;
    Ref<KindsView> _outline;
    Ref<ContactsPage> _contactsPage;
    Ref<MessagesPage> _messagesPage;
    Ref<PicturesPage> _picturesPage;
    Ref<NSView> _startPage;
    Ref<ZuHyperlinkTextField> _sampleLink;
    Ref<NSTextField> _headline;
    Ref<TaskPanel> _taskPanel;
};
