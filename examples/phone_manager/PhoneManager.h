#pragma once

#include <platform/foundation/NSObject.h>

#include <filesystem>
#include <string>
#include <vector>

class BASUserDefaults;
class BackupView;
class ContactsView;
class ImportView;
class MessagesView;
class NSWindow;
class PageView;
class ZuToolButton;

/// The application: fills a page from its settings, and takes the clicks of its buttons.
class PhoneManager final : public NSObject
{
public:
    /// The name under which the settings store is registered.
    static constexpr const char* kSettings = "phone manager";

    PhoneManager();

    /// Opens the settings and builds the page, in the language that the standard user default "Tavori" names.
    /// A settings file that is there but cannot be read is reported on the page and never written to.
    PhoneManager* initWithSettingsFile(const std::string& path);

    /// Shows the page in a window.
    void openWindow();

    PageView* page() const { return _page.get(); }
    const std::vector<Ref<ZuToolButton>>& buttons() const { return _buttons; }
    // Parts of the page, each of which shows when its kind is open.
    MessagesView* messagesView() const { return _messagesView.get(); }
    ContactsView* contactsView() const { return _contactsView.get(); }
    ImportView* importView() const { return _importView.get(); }
    BackupView* backupView() const { return _backupView.get(); }

    // Actions of the buttons.
    void openKind(NSObject* sender);
    void changeAppearance(NSObject* sender);

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~PhoneManager() override;

private:
    void buildButtons();
    std::filesystem::path importFolder() const;
    void applyColors();
    void showKind(std::size_t kind);
    void showSettingsState();
    void save(const std::string& done);

    BASUserDefaults* _settings = nullptr; // belongs to the registry
    std::string _path;
    bool _writable = false; // no: the file holds something that we cannot read
    Ref<PageView> _page;
    Ref<MessagesView> _messagesView;
    Ref<ContactsView> _contactsView;
    Ref<ImportView> _importView;
    Ref<BackupView> _backupView;
    Ref<NSWindow> _window;
    std::vector<Ref<ZuToolButton>> _buttons; // one for each kind, then the one for the appearance
};
