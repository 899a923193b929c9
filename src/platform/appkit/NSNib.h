#pragma once

#include "platform/foundation/NSObject.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class NSString;
class NSView;

/// An interface file: a form of Qt Designer (".ui") that names classes of views, as promoted widgets, and
/// sets their properties by name. Any number of equal trees of views are made of it.
///
/// A form may name all views of this layer, cells, `NSTableColumn`, and the classes that are added. What
/// stands in a scroll view and is a table becomes its document view, what stands in a table becomes a column
/// or its header view, and a cell in a column or field becomes the cell of that. Other objects have no place
/// in the tree, and live only if something they are connected to keeps them. A class that nobody knows is
/// reported, and an `NSView` takes its place. The toolkit's own widgets and layouts are what they are in any
/// form; a view that is in one of them is the subview of the next view around that, and its frame follows.
/// All other views have the frames that their `geometry` says, as seen from above, at the size that the form
/// has.
///
/// Properties are those of the class tables, and of all widgets' `visible` and `accessibleName`. The rest of
/// what the toolkit's widgets have does not count. A text fits
///
/// - a text,
/// - an object property such as `delegate`, as the name of an object of the form or of the application,
/// - the `action` of a control, as the name of a method of its `target`,
/// - an image, as a path, beginning at the form's folder or else the main bundle's resources.
///
/// An icon stands for an image, a font's size is in points of the drawing. What cannot be set is reported
/// with its line and left out.
class TESSALINE_EXPORT NSNib final : public NSObject
{
public:
    /// The name that the owner has in every form.
    static constexpr std::string_view kOwnerName = "owner";

    NSNib();

    /// Reads a file. Null, which is reported, if that cannot be read or is larger than 4 MiB.
    NSNib* initWithContentsOfFile(NSString* path);

    /// Has the form name further classes by the names that their tables have; the tables are kept. Of equal
    /// names, the one added first counts, after those of this layer.
    void addClasses(std::span<const ClassTable* const> classes);

    /// Has the form name an object of the application, which is kept alive. Null takes the name away. The
    /// form's own object of that name is reported.
    void setObject_forName(Ref<NSObject> object, std::string_view name);

    /// Called with each text of the form that is not marked as one that is not translated ("notr"), and
    /// answers what is shown. Without, texts are shown as they stand.
    using Translation = std::function<Ref<NSString>(NSString* text)>;
    void setTranslation(Translation translation) { _translation = std::move(translation); }

    /// Makes the views, sets their properties and connects them. Then each property of the owner (borrowed,
    /// may be null) that has the name of an object is set to that; and last, all views and cells are told to
    /// awake (`awakeFromNib`), once each. Answers the view at the top, of the form's size; where that is a
    /// widget of the toolkit's, a view that is filled by it. Null, which is reported with the line, if the
    /// file is no form. It may hold 4,096 widgets, in no more than 200 elements at a time, and 256 rows and
    /// columns each.
    ///
    /// All of it goes when the view at the top does, but for what something else keeps alive.
    Ref<NSView> instantiateWithOwner(NSObject* owner);

    /// The title that the form has for its window, of what was made last; empty without.
    Ref<NSString> windowTitle() const;

protected:
    ~NSNib() override;

private:
    class Instance;

    const ClassTable* classNamed(std::string_view name) const;

    std::string _path;
    std::string _bytes;
    std::vector<const ClassTable*> _classes;
    std::map<std::string, Ref<NSObject>, std::less<>> _objects;
    Translation _translation;
    Ref<NSString> _windowTitle;
};
