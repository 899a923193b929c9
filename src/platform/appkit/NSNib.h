#pragma once

#include "platform/foundation/NSObject.h"

#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class NSString;
class NSView;

/// An interface file: a form of Qt Designer (".ui") that names classes of views, as promoted widgets, and
/// sets their properties by name. Any number of equal trees of views can be made of it. An application
/// (`NSApplication`) has to exist.
///
/// A form may name all views and cells of this layer, `NSTableColumn`, and the classes that are added. A
/// table in a scroll view becomes its document view; a column or header view in a table, and a cell in a
/// column or text field, become what that has. Other objects that are no views have no place in the tree:
/// they live as long as something that they are connected to keeps them. A class that nobody knows is
/// reported, and an `NSView` takes its place.
///
/// The toolkit's own widgets, layouts and tab order are what they are in any form, but for widgets that need
/// OpenGL. They read what files their pictures, texts and style sheets name. What is inside of a widget of
/// the toolkit's is a subview of the next view around that. A view that such a widget or a layout holds stays
/// where that places it, and its frame follows. All others have the frame that their `geometry` says, whose y
/// is counted from above in the form as it stands in the file, and keep it.
///
/// Properties are those of the class tables, and `visible` and `accessibleName` of all widgets; whatever else
/// widgets have does not count. A text stands for
///
/// - a text,
/// - an object, by its name in the form or the application, where the property takes one (`delegate`),
/// - a method of the `target`, as `action`,
/// - an image, by its path from the form's folder, or from the resources of the main bundle.
///
/// Icons and pixmaps stand for images likewise. The size of a font is in points of the drawing; one without a
/// family is "Arial". What cannot be set is reported with its line, and left out.
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

    /// Makes the views, sets their properties and connects them. Each property of the owner (borrowed, may be
    /// null) that has the name of an object of the form is then set to that; one that it does not fit is
    /// reported. In the end all views and cells are told to awake (`awakeFromNib`), once each, what is
    /// inside of others before these.
    ///
    /// Answers the view at the top, with the size that the form has. A plain widget there is a view; one of
    /// another class of the toolkit's fills a view. With that view goes all that nothing else keeps alive.
    ///
    /// Null, which is reported with the line, if the file is no form, or has more than 4,096 widgets,
    /// elements nested deeper than 200, layouts deeper than 16 without a widget between, or more than 256
    /// rows or columns in one place.
    Ref<NSView> instantiateWithOwner(NSObject* owner);

    /// The title for the window that what was made last has at its top; empty if it has none. Null before.
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
