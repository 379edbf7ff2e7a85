#pragma once

#include "ui/explorer/list/FileKinds.h"
#include "ui/explorer/list/FileListTexts.h"

#include <QString>

namespace ui {

/// One row of the file list. It holds only what its eight columns are made from. The full path of a row is
/// the listed folder and the name.
struct FileRow {
    QString name;
    QString sortName; ///< the name in upper case, as names are compared
    std::uint64_t size = 0;
    PackedTime modified = 0;
    FileKinds::Number kind = 0;
    bool isFolder = false;
    bool isCabinet = false; ///< the name ends in ".cab"
};

} // namespace ui
