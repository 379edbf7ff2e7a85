#pragma once

#include <string>
#include <vector>

namespace ui {

class FileListModel;
class ListView;

/// Selects the rows with these full paths, compared without regard to letter case, and no others, and scrolls
/// to the first. Takes time in proportion to the rows and the paths.
void SelectPaths(ListView& list, const FileListModel& files, const std::vector<std::string>& paths);

} // namespace ui
