#include "language/objects/OwnClasses.h"

namespace zn::language {

DispatchRef createOwnObject(TextView className, FileAccess& files)
{
    constexpr TextView library = u"Scripting.";
    if (startsWithNoCase(className, library))
        className.remove_prefix(library.size());
    if (equalNoCase(className, u"Collection") || equalNoCase(className, u"VBA.Collection"))
        return makeCollection();
    if (equalNoCase(className, u"Dictionary"))
        return makeDictionary();
    if (equalNoCase(className, u"FileSystemObject"))
        return makeFileSystemObject(files);
    for (const TextView name : {u"RegExp", u"VBScript.RegExp", u"VBScript_RegExp_55.RegExp"})
        if (equalNoCase(className, name))
            return makeRegExp();
    return nullptr;
}

} // namespace zn::language
