#pragma once

#include <window/DragDropView.h>

#include <filesystem>
#include <vector>

class Label;
class NSColor;
class PhotoImport;
class ZuBorderView;
class ZuBox;
class ZuHyperlinkTextField;
class ZuProgressView;
class ZuSimpleButton;

/// The page that imports photos: what there is to import, how far an import has come or how it ended, and the
/// buttons that begin and cancel it. Photos that are dropped on it are imported instead of those that there
/// are. An import goes on while the view is hidden, and is cancelled when the view is let go.
class ImportView final : public DragDropView, public DragDropViewDeletegate
{
public:
    ImportView();

    ImportView* initWithFrame(NSRect frame) override;
    bool isFlipped() const override { return true; }

    /// What the next import copies and the folder that it names; one that runs is not concerned.
    void setFiles_folder(std::vector<std::filesystem::path> files, std::filesystem::path folder);

    /// The colour of what is done and of the buttons, which are darker under the pointer. Not null. Default
    /// #20BAEA.
    void setAccent(const Ref<NSColor>& color);

    ZuSimpleButton* importButton() const { return _importButton.get(); }
    ZuSimpleButton* cancelButton() const { return _cancelButton.get(); }
    /// A link to the folder, which shows when an import has ended that copied something.
    ZuHyperlinkTextField* folderLink() const { return _folderLink.get(); }
    const std::vector<std::filesystem::path>& files() const { return _files; }
    /// The import that was begun last; null before the first. One that is idle could not be started.
    PhotoImport* photoImport() const { return _import.get(); }

    /// Takes photos that were dropped; others are left out.
    void dragDropViewFileList(NSArray<NSString>* paths) override;

    // Actions of the buttons, of the link and of the import.
    void startImport(NSObject* sender);
    void cancelImport(NSObject* sender);
    void openFolder(NSObject* url);
    void importDidProceed(NSObject* sender);

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ImportView() override;

private:
    Ref<NSView> sourceBox();
    Ref<NSView> progressPanel();
    Ref<ZuSimpleButton> button(double x, const char* title, SEL action);
    void showSource();
    void showProgress();

    std::vector<std::filesystem::path> _files;
    std::filesystem::path _folder;
    Ref<PhotoImport> _import;
    Ref<ZuBox> _source;
    Ref<Label> _count;
    Ref<Label> _size;
    Ref<Label> _status;
    Ref<Label> _position;
    Ref<Label> _detail;
    Ref<ZuProgressView> _progress;
    Ref<ZuSimpleButton> _importButton;
    Ref<ZuSimpleButton> _cancelButton;
    Ref<ZuHyperlinkTextField> _folderLink;
};
