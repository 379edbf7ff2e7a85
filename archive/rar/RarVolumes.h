#pragma once

#include "platform/FileReader.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace rar {

/// Path of the volume behind the one at `path`: with the last number in its name one higher, or, by the old
/// numbering, with the endings .rar, .r00 to .r99, .s00 and so on. Empty when there is no such name.
std::string NextVolumePath(const std::string& path, bool oldNumbering);

/// The files of an archive.
class RarVolumes {
  public:
    using OpenFile = std::function<std::unique_ptr<platform::FileReader>(const std::string& path,
                                                                         base::SystemError& error)>;

    explicit RarVolumes(std::string path, OpenFile open = platform::FileReader::Open)
        : paths_{std::move(path)}, open_(std::move(open)) {}

    void SetOldNumbering(bool old) { oldNumbering_ = old; }

    const std::string& Path(std::size_t number) const { return paths_[number]; }

    /// Opens volume `number` (from 0, at most one behind the last that was opened). Returns null when it is
    /// not there.
    std::shared_ptr<platform::FileReader> Volume(std::size_t number);

  private:
    std::vector<std::string> paths_;
    OpenFile open_;
    bool oldNumbering_ = false;
    // The one that was asked for last.
    std::size_t openNumber_ = 0;
    std::shared_ptr<platform::FileReader> openFile_;
};

} // namespace rar
