#include "ui/explorer/list/ListFolderFiles.h"

#include "base/Letters.h"
#include "platform/Files.h"
#include "platform/FindFiles.h"
#include "ui/common/WindowTexts.h"

namespace ui {

namespace {

constexpr std::string_view kCabinetExtension = ".cab";

bool IsListed(std::string_view name) {
    return !name.empty() && name.back() != '.' && name.find('?') == std::string_view::npos;
}

void AddFileItem(std::vector<FileRow>& rows, const platform::FindData& found, FileKinds& kinds) {
    FileRow row;
    row.isFolder = (found.attributes & platform::kAttributeDirectory) != 0;
    if (!row.isFolder)
        row.size = (std::uint64_t{found.sizeHigh} << 32) | found.sizeLow;
    const platform::FileTime local = platform::FileTimeToLocalFileTime(found.lastWrite);
    row.modified = PackTime(platform::FileTimeToSystemTime(local));
    SetName(row, found.name, kinds);
    rows.push_back(std::move(row));
}

} // namespace

void SetName(FileRow& row, const std::string& name, FileKinds& kinds) {
    row.name = ToWindow(name);
    row.sortName = ToWindow(base::ToUpper(name));
    row.kind = kinds.KindOf(name, row.isFolder);
    row.isCabinet = base::EndsWithNoCase(name, kCabinetExtension);
}

std::vector<FileRow> ListFolderFiles(const std::string& folder, FileKinds& kinds,
                                     const std::function<bool()>& keepGoing) {
    std::vector<FileRow> rows;
    if (folder.empty())
        return rows;
    base::SystemError error;
    const auto search = platform::FindFiles::Start(folder, error);
    if (!search)
        return rows;
    platform::FindData found;
    while (search->Next(found)) {
        if (!keepGoing())
            break;
        if (IsListed(found.name))
            AddFileItem(rows, found, kinds);
    }
    return rows;
}

} // namespace ui
