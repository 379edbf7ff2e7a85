#include "archive/cabinet/CabTargetPath.h"

#include "base/Letters.h"
#include "base/OutputPathRule.h"

#include <string_view>

namespace cabinet {

namespace {

std::string FileNameWithoutExtension(std::string_view path) {
    const std::string_view name = path.substr(path.find_last_of('\\') + 1);
    return std::string(name.substr(0, name.find_last_of('.')));
}

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.find_last_of('\\') + 1);
}

} // namespace

CabTarget CabTargetPath(const std::string& cabName, const std::string& destination,
                        const std::string& namingSource, const std::string& name) {
    CabTarget target;
    target.root = destination.empty() ? FolderOf(cabName) : destination;
    if (!target.root.ends_with('\\'))
        target.root += '\\';
    const std::string base = FileNameWithoutExtension(namingSource.empty() ? name : namingSource);
    if (base::EqualsNoCase(base, name)) {
        target.file = base;
    } else {
        target.folder = base.empty() ? "" : base + '\\';
        target.file = name;
    }
    return target;
}

bool StaysBelowRoot(const CabTarget& target) {
    // The sub-folder is named after a file that exists, so only what would mean another folder is refused
    // there.
    return base::StaysInTarget(target.file) && !target.file.ends_with('\\') && !target.file.ends_with('/') &&
           target.folder != "..\\";
}

} // namespace cabinet
