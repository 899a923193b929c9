#pragma once

#include <window/ZuFlippedView.h>

#include <filesystem>
#include <vector>

class Label;
class NSColor;
class PhotoImport;
class ZuBorderView;
class ZuProgressView;
class ZuSimpleButton;

/// The page that imports photos: what there is to import, how far an import has come or how it ended, and the
/// buttons that begin and cancel it. An import goes on while the view is hidden, and is cancelled when the
/// view is let go.
class ImportView final : public ZuFlippedView
{
public:
    ImportView();

    ImportView* initWithFrame(NSRect frame) override;

    /// What the next import copies and the folder that it names; one that runs is not concerned.
    void setFiles_folder(std::vector<std::filesystem::path> files, std::filesystem::path folder);

    /// The colour of what is done and of the buttons, which are darker under the pointer. Not null. Default
    /// #20BAEA.
    void setAccent(const Ref<NSColor>& color);

    ZuSimpleButton* importButton() const { return _importButton.get(); }
    ZuSimpleButton* cancelButton() const { return _cancelButton.get(); }
    /// The import that was begun last; null before the first. One that is idle could not be started.
    PhotoImport* photoImport() const { return _import.get(); }

    // Actions of the buttons and of the import.
    void startImport(NSObject* sender);
    void cancelImport(NSObject* sender);
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
    Ref<Label> _count;
    Ref<Label> _size;
    Ref<Label> _status;
    Ref<Label> _position;
    Ref<Label> _detail;
    Ref<ZuProgressView> _progress;
    Ref<ZuSimpleButton> _importButton;
    Ref<ZuSimpleButton> _cancelButton;
};
