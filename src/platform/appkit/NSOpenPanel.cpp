#include "platform/appkit/NSOpenPanel.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/NSURL.h"
#include "platform/qt/Conversions.h"

#include <QApplication>
#include <QEvent>
#include <QFileDialog>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace
{

/// The toolkit's panel, or its go-between to the desktop's. No window owns it, since none that is destroyed
/// may take it, and the messages that it shows, from under those who run them.
class Dialog final : public QFileDialog
{
public:
    Dialog(QStringList extensions, bool choosesFolders)
        : _extensions(std::move(extensions)), _choosesFolders(choosesFolders)
    {
    }

    /// Lies over a window from now on, and is cancelled when that is hidden or destroyed.
    void lieOver(QWidget& window)
    {
        winId(); // makes its own window
        windowHandle()->setTransientParent(window.windowHandle());
        window.installEventFilter(this);
    }

    void accept() override
    {
        const QStringList chosen = selectedFiles();
        const auto isFolder = [](const QString& path) { return QFileInfo(path).isDir(); };
        // Names that are typed, or how many, the toolkit does not mind.
        if ((chosen.size() > 1 && fileMode() != ExistingFiles) ||
            !std::ranges::all_of(chosen,
                                 [&](const QString& path) { return isFolder(path) || isAllowed(path); })) {
            return;
        }
        const auto exists = [](const QString& path) { return QFileInfo::exists(path); };
        if (_choosesFolders && std::ranges::any_of(chosen, isFolder) && std::ranges::all_of(chosen, exists)) {
            done(Accepted); // where the toolkit would only open the folder
        } else {
            QFileDialog::accept();
        }
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Hide && !event->spontaneous()) {
            reject();
        }
        return QFileDialog::eventFilter(watched, event);
    }

private:
    bool isAllowed(const QString& path) const
    {
        return _extensions.isEmpty() || std::ranges::any_of(_extensions, [&](const QString& extension) {
                   return path.endsWith(u'.' + extension, Qt::CaseInsensitive);
               });
    }

    QStringList _extensions; // none for all files
    bool _choosesFolders;
};

} // namespace

NSOpenPanel::NSOpenPanel() : _urls(NSArray<NSURL>::arrayWithObjects({})) {}

NSOpenPanel::~NSOpenPanel() = default;

Ref<NSOpenPanel> NSOpenPanel::openPanel()
{
    return make<NSOpenPanel>();
}

Ref<NSArray<NSString>> NSOpenPanel::allowedFileTypes() const
{
    return _allowedFileTypes;
}

void NSOpenPanel::setAllowedFileTypes(Ref<NSArray<NSString>> types)
{
    _allowedFileTypes = std::move(types);
}

Ref<NSURL> NSOpenPanel::directoryURL() const
{
    return _directoryURL;
}

void NSOpenPanel::setDirectoryURL(Ref<NSURL> url)
{
    _directoryURL = std::move(url);
}

Ref<NSString> NSOpenPanel::title() const
{
    return _title.get();
}

void NSOpenPanel::setTitle(Ref<NSString> title)
{
    _title.set(title);
}

Ref<NSString> NSOpenPanel::prompt() const
{
    return _prompt.get();
}

void NSOpenPanel::setPrompt(Ref<NSString> prompt)
{
    _prompt.set(prompt);
}

NSModalResponse NSOpenPanel::runModal()
{
    if (_running) {
        diagnose("runModal", "the panel shows already");
        return NSModalResponseCancel;
    }
    _urls = NSArray<NSURL>::arrayWithObjects({});
    if (!_canChooseFiles && !_canChooseDirectories) {
        diagnose("runModal", "neither files nor folders can be chosen");
        return NSModalResponseCancel;
    }
    const Ref<NSOpenPanel> self(this); // may be let go meanwhile
    _running = true;

    QStringList extensions;
    QStringList patterns;
    if (_allowedFileTypes) {
        for (const Ref<NSString>& type : *_allowedFileTypes) {
            extensions << toQt(*type);
            patterns << QStringLiteral("*.") + toQt(*type);
        }
    }
    Dialog dialog(extensions, _canChooseFiles && _canChooseDirectories);
    dialog.setFileMode(!_canChooseFiles           ? QFileDialog::Directory
                       : _allowsMultipleSelection ? QFileDialog::ExistingFiles
                                                  : QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::ShowDirsOnly, !_canChooseFiles);
    dialog.setOption(QFileDialog::ReadOnly, !_canCreateDirectories);
    if (_canChooseFiles && !patterns.isEmpty()) {
        dialog.setNameFilter(patterns.join(u' '));
    }
    if (const Ref<NSString> folder = _directoryURL ? _directoryURL->path() : nullptr) {
        if (QFileInfo(toQt(*folder)).isDir()) {
            dialog.setDirectory(toQt(*folder));
        }
    }
    if (const Ref<NSString> title = _title.get()) {
        dialog.setWindowTitle(toQt(*title));
    }
    if (const Ref<NSString> prompt = _prompt.get()) {
        dialog.setLabelText(QFileDialog::Accept, toQt(*prompt));
    }
    if (QWidget* const key = QApplication::activeWindow()) {
        dialog.lieOver(*key);
    }
    const bool chosen = dialog.exec() == QDialog::Accepted;
    _running = false;
    if (!chosen) {
        return NSModalResponseCancel;
    }
    std::vector<Ref<NSURL>> urls;
    for (const QUrl& url : dialog.selectedUrls()) {
        if (url.isLocalFile()) {
            urls.push_back(NSURL::fileURLWithPath(fromQt(url.toLocalFile()).get()));
        }
    }
    _urls = NSArray<NSURL>::arrayWithObjects(std::move(urls));
    return NSModalResponseOK;
}

Ref<NSArray<NSURL>> NSOpenPanel::URLs() const
{
    return _urls;
}
