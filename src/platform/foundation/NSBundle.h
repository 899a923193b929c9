#pragma once

#include "platform/foundation/NSObject.h"

class NSString;

/// The folder of the running program and the resources that are shipped with it.
class TESSALINE_EXPORT NSBundle final : public NSObject
{
public:
    /// The bundle of the running program: its resources are in the folder "Resources" beside the
    /// program, or in a Mac application folder in "Contents/Resources".
    static Ref<NSBundle> mainBundle();

    /// The full path of the resource `name` with the extension `type`; null if there is no such file.
    Ref<NSString> pathForResource_ofType(NSString* name, NSString* type) const;
};
