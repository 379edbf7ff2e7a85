#include "ui/explorer/list/FileKinds.h"

#include "base/Letters.h"
#include "ui/common/WindowTexts.h"
#include "ui/desktop/ShellInfo.h"

namespace ui {

namespace {

/// Type text of every folder.
constexpr std::string_view kFolderType = "File Folder";
constexpr std::string_view kEncryptedExtension = ".enc";

/// Key of the kind of folders; no extension holds a backslash.
constexpr std::string_view kFolderKey = "\\";

} // namespace

FileKinds::Number FileKinds::KindOf(std::string_view name, bool isFolder) {
    const std::size_t dot = isFolder ? std::string_view::npos : name.rfind('.');
    std::string key(kFolderKey);
    if (!isFolder)
        key = dot == std::string_view::npos ? std::string() : base::ToLower(name.substr(dot));
    const auto known = numbers_.find(key);
    return known != numbers_.end() ? known->second : Add(key, name, isFolder, dot);
}

FileKinds::Number FileKinds::Add(const std::string& key, std::string_view name, bool isFolder,
                                 std::size_t dot) {
    Kind kind;
    kind.icon = FileIcon(std::string(name), isFolder);
    if (isFolder)
        kind.typeText = ToWindow(kFolderType);
    else if (key == kEncryptedExtension)
        kind.typeText = encryptedTypeText_;
    else if (dot != std::string_view::npos)
        kind.typeText = ToWindow(FileTypeName(std::string(name.substr(dot))));
    const auto number = static_cast<Number>(kinds_.size());
    kinds_.push_back(std::move(kind));
    numbers_.emplace(key, number);
    return number;
}

} // namespace ui
