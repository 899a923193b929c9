#pragma once

#include "platform/appkit/NSView.h"
#include "platform/foundation/Weak.h"

/// Gets the files that are dropped. To be implemented by an object (`NSObject`).
class TESSALINE_EXPORT DragDropViewDeletegate
{
public:
    /// The paths of a drop in the order of its source, without those of folders. The list is the view's:
    /// whoever wants to keep it keeps a reference.
    virtual void dragDropViewFileList(NSArray<NSString>* paths) = 0;

protected:
    ~DragDropViewDeletegate() = default;
};

/// An invisible view, to be laid over the part of a window that takes files: what is dropped on it goes to
/// its delegate. Whether the source is told that the drop was taken depends on its folders and extensions;
/// the delegate has the files by then, even those of a drop that is refused. Each drag that comes over the
/// view, also one without files, is noted in the log.
class TESSALINE_EXPORT DragDropView : public NSView
{
public:
    /// Value of `filePostfix` with which drops of any files are taken, and those without any.
    static constexpr std::u16string_view kAllTypes = u"all type";

    DragDropView();

    DragDropView* initWithFrame(NSRect frame) override;

    /// Draws nothing.
    void drawRect(NSRect rect) override;

    // Dragging

    bool wantsAllDrags() const override { return true; }
    NSDragOperation draggingEntered(NSDraggingInfo* drag) override;
    /// Hands the paths to the delegate, if that implements `DragDropViewDeletegate`, and answers true. A path
    /// at which nothing is counts as one of a file.
    bool prepareForDragOperation(NSDraggingInfo* drag) override;
    /// False if there is a folder among the paths, or none of them has an extension that `filePostfix` takes.
    bool performDragOperation(NSDraggingInfo* drag) override;

    /// The extensions of wanted files, such as "vcf,csv", or `kAllTypes`; copied. A drop is taken if the
    /// extension of one of its files stands anywhere in this text, in either case: "mp4" takes "p4", too. The
    /// extension is what follows the last full stop of the whole path, in whichever of its parts that is; an
    /// empty one is not wanted. With null, the default, every file is.
    Ref<NSString> filePostfix() const;
    void setFilePostfix(Ref<NSString> extensions);

    /// Not retained; null by default.
    Ref<NSObject> delegate() const { return _delegate.get(); }
    void setDelegate(NSObject* delegate) { _delegate = delegate; }

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~DragDropView() override;

private:
    CopyProperty<NSString> _filePostfix;
    Weak<NSObject> _delegate;
};
